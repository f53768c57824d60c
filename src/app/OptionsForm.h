// The options as pages of named entries, read and saved as one.
#pragma once

#include <map>
#include <optional>
#include <span>

#include "data/StartUp.h"

namespace inspector::app {

using device::Text;
using device::TextView;

struct OptionEntry {
  enum class Kind { YesNo, Line, Lines, Number, Inches, Choice, Secret };

  TextView name;  // of the option; "Owner...", "Attached..." and "...Path" for what is kept elsewhere
  TextView caption;
  Kind kind = Kind::Line;
  std::vector<TextView> choices = {};  // as stored
  std::vector<TextView> shown = {};    // the same as shown, where that differs
  int limit = 0;                       // most characters, 0 for no limit
};

struct OptionsPage {
  // How it is shown: entry by entry, or as one long text of the reports.
  enum class View { Entries, Legal, DefOfTerms, Footer, ReportText };

  TextView title;
  TextView explanation;
  std::vector<OptionEntry> entries;
  View view = View::Entries;
};

const std::vector<OptionsPage>& OptionsPages();

class OptionsForm {
public:
  explicit OptionsForm(data::Workspace& workspace) : m_Workspace(workspace) {}

  using Values = std::map<TextView, Text>;
  // Yes/no as "TRUE" and "FALSE", lines with the device's line ends.
  Values Load();
  struct Problem {
    TextView page;  // its title
    Text text;      // the caption of the entry and why
  };
  // What a person must correct first; nothing when everything can be saved.
  std::optional<Problem> WhyNot(const Values& values);
  // `values` with those entries of `entered` that can be saved as they stand. The paths of the databases
  // stay: one that is half typed would keep the program from starting again.
  Values WithWhatStands(Values values, const Values& entered);
  // Owner, options and paths. After MustQuit the program must end.
  data::OptionsSaved Save(const Values& values);

private:
  data::Workspace& m_Workspace;
};

}  // namespace inspector::app
