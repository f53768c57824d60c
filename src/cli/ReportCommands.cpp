#include <algorithm>
#include <filesystem>
#include <system_error>

#include "cli/CommandGroups.h"
#include "device/Format.h"
#include "editing/Ratings.h"
#include "reports/CategorySelection.h"
#include "reports/MakeReport.h"
#include "reports/ReportLayout.h"

namespace inspector::cli {
namespace {

using device::Text;

// "x", "y" or "z".
Text Listed(const std::vector<std::string>& choices) {
  Text names;
  for (std::size_t i = 0; i < choices.size(); ++i) {
    const device::TextView joint = i == 0 ? u"" : i + 1 < choices.size() ? u", " : u" or ";
    names += device::Phrase(u"%s\"%s\"", joint, device::FromUtf8(choices[i]));
  }
  return names;
}

// Whatever is one file; some of them are commands of their own as well.
std::vector<std::string> KindChoices() {
  std::vector<std::string> kinds;
  for (const reports::ReportFormat* const format : reports::Formats())
    if (!format->Used().folder) kinds.push_back(device::ToUtf8(format->Name()));
  return kinds;
}

std::vector<std::string> LayoutChoices() {
  std::vector<std::string> names;
  for (const reports::ReportLayout* const layout : reports::Layouts())
    names.push_back(device::ToUtf8(layout->Name()));
  return names;
}

// What --skip names, as the titles that a report goes by. False when there is no such category.
bool TakeSkipped(Session& session, const Input& input, reports::ReportRequest& request) {
  const auto skipped = input.lists.find("--skip");
  if (skipped == input.lists.end()) return true;
  reports::CategorySelection categories(session.Workspace(), request.inspectionID);
  for (const std::string& category : skipped->second) {
    if (categories.LeaveOut(device::FromUtf8(category))) continue;
    session.Fail(device::Phrase(u"There is no category \"%s\" in this inspection. \"categories\" shows them.",
                                device::FromUtf8(category)));
    return false;
  }
  request.choices.deselected = categories.Deselected();
  return !categories.Failed();
}

// "summary report", from the title of a kind.
Text InSentence(device::TextView title) {
  Text words(title);
  if (!words.empty()) words.front() = device::FoldCase(words.front());
  return words;
}

// False when the file after --out has no name that can be used.
bool TakeTarget(Session& session, const Input& input, reports::ReportRequest& request) {
  if (!input.Has("--out")) return true;
  request.mayReplace = true;
  request.target = TypedFile(session, u"after --out", input.options.at("--out"));
  return request.target.has_value();
}

// What makes no difference to this kind of report is said, not refused: scripts give all of them to each.
void WarnOfUnused(Session& session, const Input& input, const reports::ReportFormat& format) {
  const auto& uses = format.Used();
  const auto warn = [&](const char* option, bool isUsed) {
    if ((input.Has(option) || input.lists.contains(option)) && !isUsed)
      session.Note(device::Format(u"%s makes no difference to the %s.", device::FromUtf8(option),
                                  InSentence(format.Title())));
  };
  warn("--layout", uses.layout);
  warn("--rating", uses.rating);
  warn("--skip", uses.categories);
  warn("--no-pictures", uses.pictures);
}

ExitCode Make(Session& session, const reports::ReportRequest& request) {
  const reports::ReportOutcome outcome = reports::MakeReport(session.Workspace(), request);
  for (const Text& note : outcome.notes) session.Note(note);
  if (outcome.result == reports::ReportResult::Cancelled) session.Note(u"The report was not written.");
  if (outcome.result != reports::ReportResult::Written) return ExitCode::Failed;
  session.Out() << outcome.file.string() << "\n";
  return ExitCode::Done;
}

// False when neither the library nor a step of the visit has such a rating: a summary of it would say that
// nothing was found.
bool TakeRating(Session& session, const Input& input, reports::ReportChoices& choices) {
  if (!input.Has("--rating")) return true;
  choices.rating = device::FromUtf8(input.options.at("--rating"));
  if (choices.rating == reports::kAllRatings) return true;
  std::vector<std::string> known = {device::ToUtf8(reports::kAllRatings)};
  for (const Text& rating : editing::RatingsFor(session.Workspace().GetDatabases(), input.Number(0))) {
    if (rating == choices.rating) return true;
    known.push_back(device::ToUtf8(rating));
  }
  session.Fail(device::Phrase(u"Neither the library nor the visit has a rating \"%s\". It must be %s.",
                              choices.rating, Listed(known)));
  return false;
}

// Everything that the commands have in common. `request` names the format.
ExitCode MakeChosen(Session& session, const Input& input, reports::ReportRequest& request) {
  request.inspectionID = input.Number(0);
  if (!TakeTarget(session, input, request)) return ExitCode::Usage;
  request.choices.pictures = !input.Has("--no-pictures");
  if (!session.SelectInspection(request.inspectionID)) return ExitCode::Failed;
  const reports::ReportFormat* const format = reports::FindFormat(request.format);
  if (format != nullptr) WarnOfUnused(session, input, *format);
  const bool usesCategories = format != nullptr && format->Used().categories;
  if (usesCategories && !TakeSkipped(session, input, request)) return ExitCode::Failed;
  if (format != nullptr && format->Used().rating && !TakeRating(session, input, request.choices))
    return ExitCode::Failed;
  return Make(session, request);
}

ExitCode RunReport(Session& session, const Input& input) {
  reports::ReportRequest request;
  request.format = input.Has("--kind") ? device::FromUtf8(input.options.at("--kind")) : u"inspection";
  if (const auto kinds = KindChoices();
      std::find(kinds.begin(), kinds.end(), device::ToUtf8(request.format)) == kinds.end()) {
    session.Fail(
        device::Phrase(u"There is no report \"%s\". It must be %s.", request.format, Listed(KindChoices())));
    return ExitCode::Usage;
  }
  if (input.Has("--layout")) {
    request.choices.layout = device::FromUtf8(input.options.at("--layout"));
    if (!reports::FindLayout(request.choices.layout)) {
      session.Fail(device::Phrase(u"There is no layout \"%s\". It must be %s.", request.choices.layout,
                                  Listed(LayoutChoices())));
      return ExitCode::Usage;
    }
  } else {
    request.choices.layout = reports::LayoutOf(session.Workspace(), input.Number(0));
  }
  return MakeChosen(session, input, request);
}

ExitCode RunHtml(Session& session, const Input& input) {
  reports::ReportRequest request;
  request.format = input.Has("--view") ? u"html-view" : u"html";
  return MakeChosen(session, input, request);
}

ExitCode RunText(Session& session, const Input& input) {
  reports::ReportRequest request;
  request.format = u"text";
  return MakeChosen(session, input, request);
}

ExitCode RunWeb(Session& session, const Input& input) {
  reports::ReportRequest request;
  request.format = u"web";
  return MakeChosen(session, input, request);
}

}  // namespace

std::vector<Command> ReportCommands() {
  const Argument visit{"ID", "the inspection's key", Argument::Kind::Number, false};
  const CommandOption skip{"--skip", "CATEGORY", "leave these categories out, by title or key",
                           false,    {},         true};
  const CommandOption noPictures{"--no-pictures", "", "leave the pictures out", false};
  const CommandOption out{"--out", "FILE", "where to write; replaces without asking", false};
  return {
      {"report",
       "write a report in Rich Text and print where it is",
       {visit},
       {{"--kind", "KIND", device::ToUtf8(Listed(KindChoices())) + "; else inspection", false, KindChoices()},
        {"--layout", "NAME", device::ToUtf8(Listed(LayoutChoices())) + "; else that of the inspection's type",
         false, LayoutChoices()},
        {"--rating", "NAME", "a summary of the steps with this rating; else of all marked for it", false},
        skip,
        noPictures,
        out},
       "Without --out the file lies in \"My Documents\" on the device and is called Inspection_, Summary_ or "
       "MajorSystems_ and the document number. A path that begins with a backslash lies on the device. Major "
       "systems have no categories to skip; a summary takes only its language from the layout.",
       RunReport},
      {"html",
       "write web pages with frames into a folder and print where it is",
       {visit},
       {skip,
        noPictures,
        {"--out", "DIR", "the folder; pages that lie there are replaced", false},
        {"--view", "", "write the pages for viewing, into the program's folder", false}},
       "The folder holds index.htm, toc.htm, inspection.htm and the pictures. Without --out it lies in "
       "\"Program Files/Brindlecove\" on the device and is called Inspection and the document number. A page "
       "cannot hold more than 100,096 bytes; --yes writes as much of a larger one.",
       RunHtml},
      {"text",
       "write plain text and print where it is",
       {visit},
       {skip, out},
       "Lines have at most 78 characters of the Windows code page and end with CR LF. Without --out the file "
       "is Inspection1.txt in \"My Documents\" on the device.",
       RunText},
      {"web",
       "write a web page in one file and print where it is",
       {visit},
       {skip, noPictures, out},
       "The page holds its pictures and needs no other file; what needs attention stands first. Without "
       "--out it lies in \"My Documents\" on the device and is called Inspection_ and the document number.",
       RunWeb},
  };
}

}  // namespace inspector::cli
