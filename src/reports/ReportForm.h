// What a person chooses before a report is made, on one page: which report, how it looks, what it holds,
// where it goes.
#pragma once

#include "reports/CategorySelection.h"
#include "reports/MakeReport.h"

namespace inspector::reports {

// Begins with what was chosen for the last report, of whichever inspection; only the categories that were
// left out are forgotten. What a kind of report does not use keeps its choice for the next one that does.
class ReportForm {
public:
  ReportForm(data::Workspace& workspace, std::int32_t inspectionID);

  // The inspection could not be read, which has been reported.
  bool Failed() const { return m_Failed || m_Categories.Failed(); }

  const ReportFormat& Kind() const { return *m_Kind; }
  // A file that a person has named keeps its name, with the end of the new kind.
  void ChooseKind(const ReportFormat& kind);

  // The ratings of the library, after "<All Ratings>".
  const std::vector<Text>& Ratings() const { return m_Ratings; }
  const ReportChoices& Choices() const { return m_Choices; }
  void ChooseLayout(const Text& layout) { m_Choices.layout = layout; }
  void ChooseRating(const Text& rating) { m_Choices.rating = rating; }
  void ChoosePictures(bool pictures) { m_Choices.pictures = pictures; }
  CategorySelection& Categories() { return m_Categories; }

  // As a person may type it: a path on the host, or on the device when it begins with a backslash; a bare
  // name lies in "My Documents".
  Text Target() const;
  // Why a report cannot be called so; empty when it can. The folder of a file means the usual name in it.
  static Text WhyNot(TextView target);
  // False while the options leave pictures out of every report.
  bool MayHavePictures() const { return m_Workspace.Options().m_OmitPictures == 0; }
  void ChooseTarget(const Text& target);
  // A person has agreed to replace what is there.
  void ChooseAgreedTarget(const std::filesystem::path& target);
  // What the dialog for saving begins with; nothing for a report that is a folder.
  std::optional<device::SaveQuestion> SaveQuestion() const;

  // Asks before it replaces a file. What was chosen is remembered when the report is written.
  ReportOutcome Make();

private:
  Text& OwnTarget();
  Text Suggestion() const;
  // ".rtf"
  Text EndOf(const ReportFormat& kind) const;
  std::filesystem::path Resolved() const;
  static bool IsWhole(TextView target);
  bool NamesFolder(const Text& target) const;
  void Remember();

  data::Workspace& m_Workspace;
  std::int32_t m_InspectionID;
  ReportHeader m_Header;  // only what names the file
  const ReportFormat* m_Kind;
  ReportChoices m_Choices;
  std::vector<Text> m_Ratings = {Text(kAllRatings)};
  CategorySelection m_Categories;
  Text m_OwnFile;    // that a person has named; empty for what is suggested
  Text m_OwnEnd;     // of the kind of file that it was named for
  Text m_OwnFolder;  // as the file
  Text m_LastFolder;
  std::filesystem::path m_Agreed;
  bool m_Failed = false;
};

}  // namespace inspector::reports
