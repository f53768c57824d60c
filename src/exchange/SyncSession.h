// A session with the office's server: headers of inspections are received for a period, those that the
// inspector marked are sent. protocol/Wire.h shows how both talk.
#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "data/InspectionTable.h"
#include "data/Workspace.h"
#include "exchange/ServerLink.h"
#include "exchange/SyncReport.h"
#include "protocol/Wire.h"

namespace inspector::exchange {

struct SyncRequest {
  std::optional<protocol::Period> receive;  // nothing: none are asked for
  std::vector<std::int32_t> send;           // keys, in the order in which they go
};

// One run. A row is received or sent whole or not at all: what breaks off in the middle of a record leaves
// the databases as they were before it, and the phases end there.
class SyncSession {
public:
  SyncSession(data::Workspace& workspace, SyncRequest request);

  // The options name a server and who logs in. Without that there is nothing to run.
  static bool HasServer(const data::OptionsTable& options);

  // Connects, logs in, receives, sends, logs out. True when the person is done with it, which includes a
  // server that could not be reached (that has been told) and one that refused; false when there was no
  // server to try. The report tells what was done.
  bool Run();
  const SyncReport& Report() const { return m_Report; }

private:
  // The texts of one inspection as they go to the server.
  using Values = std::vector<std::string>;
  struct Type {
    std::optional<std::int32_t> key;  // none: the server has none to tell
  };

  bool LogIn();
  void ReceiveInspections();
  bool ReceiveOneInspection();
  void Store(const Text& number, const std::vector<Text>& texts, const Type& type);
  void Note(const Text& number, TextView remark);
  void ChooseWhatCanBeSent();
  std::optional<Values> ValuesOf(std::int32_t inspectionID);
  void SendInspections();
  bool SendOneInspection(const Values& values);
  void LogOut();

  bool SendText(std::string_view text);
  std::optional<std::string> ReceiveText(std::size_t most = protocol::kBufferBytes);
  std::optional<Type> ReceiveType();
  bool IsConfirmed(std::string_view command, const Text& value);

  void OpenProgress();
  void ShowPhase(int position, TextView status, TextView detail);
  bool IsCancelled();
  bool GivesUp();

  data::Workspace& m_Workspace;
  const SyncRequest m_Request;
  SyncReport m_Report;
  std::vector<Values> m_ToSend;
  std::unique_ptr<device::ProgressWindow> m_Progress;
  std::chrono::steady_clock::time_point m_Begun = std::chrono::steady_clock::now();
  std::optional<std::chrono::steady_clock::time_point> m_CancelledAt;
  bool m_IsInRecord = false;  // which is finished first, if the server goes on talking
  bool m_IsConnected = false;
  ServerLink m_Link;
};

}  // namespace inspector::exchange
