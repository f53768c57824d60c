// Everything the program asks a person or tells one: message boxes, questions, text entry, file choosing,
// progress. Screens, console and tests each bring their own adapter.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <vector>

#include "device/Text.h"

namespace inspector::device {

enum class Icon { None, Information, Exclamation, Hand };
enum class Buttons { Ok, OkCancel, YesNo };
enum class Answer { Ok, Cancel, Yes, No, OkForAll };

struct Message {
  Text text;
  Text title;
  Buttons buttons = Buttons::Ok;
  Icon icon = Icon::None;
  bool isNoFirst = false;  // of Yes and No: a key pressed twice must not say Yes
  // Of a box with OK alone: words beside a box to tick, "Don't show this again". Ticked, the answer is
  // OkForAll.
  Text offer{};
};

struct TextQuestion {
  Text prompt;
  Text title;
  Text initial;
};

struct SaveQuestion {
  Text suggestedName;     // a bare file name, with its extension
  Text folder;            // a device path, "\My Documents\", or one of the host that begins with '/'
  Text filter;            // "Rich Text Format (*.rtf)|*.rtf|"
  Text defaultExtension;  // "rtf"
};

struct OpenQuestion {
  Text folder;  // as for SaveQuestion
  Text filter;
};

struct DatabasePaths {
  Text templatePath;
  Text inspectionPath;
};

// A modeless window with a title, a status line and a bar. Destroyed when the work ends.
class ProgressWindow {
public:
  virtual ~ProgressWindow() = default;
  virtual void SetStatus(const Text& status) = 0;
  // How much of how much, "3 of 20", beside the status; empty takes it away.
  virtual void SetDetail(const Text& detail) = 0;
  virtual void SetRange(int low, int high) = 0;
  virtual void SetPosition(int position) = 0;
  virtual void Step() = 0;
  // True once the person asked to stop; always false where stopping is not offered.
  virtual bool Cancelled() = 0;
};

class Prompts {
public:
  virtual ~Prompts() = default;
  virtual Answer Show(const Message& message) = 0;
  virtual std::optional<Text> AskText(const TextQuestion& question) = 0;
  // The path to write, on the host; nothing when the person cancels. Asks before it names an existing file.
  virtual std::optional<std::filesystem::path> AskSavePath(const SaveQuestion& question) = 0;
  // A file that is there; nothing when the person cancels, or where there is no way to choose one.
  virtual std::optional<std::filesystem::path> AskOpenPath(const OpenQuestion&) { return std::nullopt; }
  virtual std::optional<DatabasePaths> AskDatabasePaths(const DatabasePaths& current) = 0;
  virtual std::unique_ptr<ProgressWindow> OpenProgress(const Text& title, bool cancellable) = 0;

  // While what comes back lives, the program shows that it works and asks for patience. Nothing where there
  // is no way to show it.
  class Waiting {
  public:
    virtual ~Waiting() = default;
  };
  virtual std::unique_ptr<Waiting> ShowWaiting() { return nullptr; }
};

// The fixed kinds of box. Alert and Error have one button; the others answer true only to Yes or OK.
void Alert(Prompts& prompts, const Text& text);
void ShowError(Prompts& prompts, const Text& text);         // "Error", hand
bool ConfirmCaution(Prompts& prompts, const Text& text);    // "Caution", Yes/No, exclamation
bool ConfirmLoss(Prompts& prompts, const Text& text);       // likewise, with No as the first choice
bool ConfirmWarning(Prompts& prompts, const Text& text);    // "Warning", Yes/No, exclamation
bool ConfirmUpdate(Prompts& prompts, const Text& text);     // "Update Required", OK/Cancel, exclamation
bool ConfirmDataAlert(Prompts& prompts, const Text& text);  // "Data Alert", OK/Cancel, exclamation

}  // namespace inspector::device
