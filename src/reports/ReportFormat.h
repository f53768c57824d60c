// The kinds of report that can be made, each with its format. A new one is a file with a class and a line in
// Formats().
#pragma once

#include <functional>
#include <span>
#include <vector>

#include "data/OptionsTable.h"
#include "reports/ReportContent.h"
#include "reports/ReportPictures.h"
#include "reports/ReportRun.h"

namespace inspector::reports {

// What a person can choose about a report. A format ignores what it does not use.
struct ReportChoices {
  Text layout{};                   // the name of a ReportLayout
  Text rating{kAllRatings};        // or a rating's name
  std::vector<Text> deselected{};  // titles of the categories to leave out
  bool pictures = true;            // an option of the office can leave them out as well
};

// What a format writes from. All of it outlives the writing.
struct ReportSource {
  const ReportContent& content;
  ReportPictures& pictures;
  const data::OptionsTable& options;
  const ReportChoices& choices;
  const Text& inspection;  // the same in every report of this inspection, and in no other
  // All that the inspection's reports could show, those that this one leaves out as well; read anew each
  // time. Nothing when that failed, which has been reported.
  std::function<std::optional<std::vector<std::filesystem::path>>()> allPictures;
};

class ReportFormat {
public:
  // Which of the choices make a difference, and what kind of place it goes to.
  struct Uses {
    bool layout = false;
    bool rating = false;
    bool categories = true;
    bool pictures = true;
    bool ownFolder = false;  // which no person can choose; only with `folder`
    bool folder = false;     // it is written into one, which nobody is asked for
  };

  ReportFormat(TextView name, TextView title, Uses uses) : m_Name(name), m_Title(title), m_Uses(uses) {}
  virtual ~ReportFormat() = default;
  ReportFormat(const ReportFormat&) = delete;
  ReportFormat& operator=(const ReportFormat&) = delete;

  TextView Name() const { return m_Name; }    // "major-systems", for command lines and settings
  TextView Title() const { return m_Title; }  // "Major systems report"
  const Uses& Used() const { return m_Uses; }

  virtual StepSelection Selection(const ReportChoices& choices) const = 0;
  // Where the report goes, for a person to agree to or to change; a folder has no filter.
  virtual device::SaveQuestion Question(const ReportHeader& header) const = 0;
  virtual TextView ProgressTitle() const = 0;
  // How often Write calls PartDone.
  virtual int Parts(const ReportContent& content) const { return static_cast<int>(content.sections.size()); }
  // Returns early when the person wishes to stop or the disk fails.
  virtual void Write(const ReportSource& source, ReportRun& run) const = 0;

private:
  TextView m_Name;
  TextView m_Title;
  Uses m_Uses;
};

// In the order in which a person chooses among them. They live as long as the program.
std::span<const ReportFormat* const> Formats();
// Null when there is none of that name.
const ReportFormat* FindFormat(TextView name);

}  // namespace inspector::reports
