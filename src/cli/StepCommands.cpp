#include "cli/CommandGroups.h"
#include "cli/Listing.h"
#include "data/FieldTable.h"
#include "device/Format.h"
#include "editing/CategoryOpening.h"
#include "editing/Completeness.h"
#include "editing/Materials.h"
#include "editing/RatingDropDown.h"
#include "editing/StepEditing.h"

namespace inspector::cli {
namespace {

using device::Format;
using device::Text;
using editing::StepEditing;

const Argument kStep{"STEPID", "the step's key, as \"steps\" shows it", Argument::Kind::Number, false};

ExitCode RunCategories(Session& session, const Input& input) {
  if (!session.SelectInspection(input.Number(0))) return ExitCode::Failed;
  Listing listing({"id", "number", "title", "status"});
  data::CategoryTable& categories = session.Document().Categories();
  for (int n = 0; n < categories.RecordCount(); ++n) {
    if (!categories.GetRecord(n)) continue;
    listing.Add({categories.m_CategoryID, categories.m_CategoryNumber, categories.m_CategoryTitle,
                 editing::StatusOf(categories)});
  }
  listing.Print(session.Out(), input.Has("--json"));
  return ExitCode::Done;
}

void PrintFields(Session& session, std::int32_t categoryID) {
  Listing listing({"id", "field", "value"});
  data::FieldTable fields(session.Workspace().GetDatabases());
  const Text& table = fields.TableName();
  fields.OpenSQL(Format(u"SELECT * FROM %s WHERE %s.CategoryID = %d Order By %s.SequenceNumber", table, table,
                        categoryID, table));
  for (int n = 0; n < fields.RecordCount(); ++n)
    if (fields.GetRecord(n)) listing.Add({fields.m_ID, fields.m_FieldLabel, fields.m_AssignedValue});
  listing.Print(session.Out(), false);
}

ExitCode RunSteps(Session& session, const Input& input) {
  data::Databases& databases = session.Workspace().GetDatabases();
  const std::int32_t categoryID = input.Number(0);
  data::CategoryTable category(databases);
  category.OpenSQL(Format(u"SELECT * FROM Category WHERE CategoryID = %d", categoryID));
  if (category.RecordCount() == 0 || !category.GetRecord(0)) {
    session.Fail(
        Format(u"There is no category %d. \"categories\" shows those of an inspection.", categoryID));
    return ExitCode::Failed;
  }
  if (!editing::OpenCategory(databases, category)) return ExitCode::Failed;
  const bool asJson = input.Has("--json");
  if (category.m_Type == editing::kFormCategory && !asJson) {
    PrintFields(session, categoryID);
    return ExitCode::Done;
  }
  Listing listing({"id", "number", "title", "rating", "materials", "comments"});
  data::StepTable steps(databases);
  steps.OpenSQL(
      Format(u"SELECT * FROM %s WHERE CategoryID = %d Order By StepNumber", steps.TableName(), categoryID));
  for (int n = 0; n < steps.RecordCount(); ++n) {
    if (!steps.GetRecord(n)) continue;
    listing.Add({steps.m_StepID, steps.m_StepNumber, steps.m_StepTitle, steps.m_InspectResult,
                 steps.m_Materials, steps.m_Comments},
                {steps.m_StepID, steps.m_StepNumber, steps.m_StepTitle, steps.m_InspectResult,
                 editing::MaterialsForDisplay(steps.m_Materials), steps.m_Comments});
  }
  listing.Print(session.Out(), asJson);
  return ExitCode::Done;
}

ExitCode Finish(Session& session, StepEditing::Result result, std::int32_t stepID, const Text& whyNot) {
  switch (result) {
    case StepEditing::Result::Done:
      return ExitCode::Done;
    case StepEditing::Result::NoSuchStep:
      session.Fail(Format(u"There is no step %d. \"steps\" shows those of a category.", stepID));
      break;
    case StepEditing::Result::NotOffered:
      session.Fail(whyNot);
      break;
    case StepEditing::Result::Failed:
      break;
  }
  return ExitCode::Failed;
}

Text OfferedRatings(Session& session, std::int32_t stepID) {
  data::Databases& databases = session.Workspace().GetDatabases();
  data::StepTable step(databases);
  step.OpenSQL(Format(u"SELECT * FROM Step WHERE StepID = %d", stepID));
  Text names;
  if (step.RecordCount() == 0 || !step.GetRecord(0)) return u"nothing that could be read";
  const editing::RatingDropDown offered(databases, step.m_RatingType);
  for (const Text& entry : offered.Entries())
    if (const Text result = editing::RatingDropDown::ResultOf(entry); !result.empty())
      names += (names.empty() ? u"" : u", ") + result;
  return names.empty() ? u"nothing that could be read" : names;
}

ExitCode RunRate(Session& session, const Input& input) {
  const std::int32_t stepID = input.Number(0);
  bool prompts = false;
  const auto result = StepEditing(session.Workspace()).Rate(stepID, input.Argument(1), &prompts);
  if (prompts) session.Note(u"This rating should be explained: add a comment.");
  if (result != StepEditing::Result::NotOffered) return Finish(session, result, stepID, {});
  return Finish(session, result, stepID,
                Format(u"%s is no rating of this step. It offers: %s", input.Argument(1),
                       OfferedRatings(session, stepID)));
}

ExitCode RunComment(Session& session, const Input& input) {
  return Finish(session, StepEditing(session.Workspace()).AppendComment(input.Number(0), input.Argument(1)),
                input.Number(0), {});
}

ExitCode RunMaterial(Session& session, const Input& input) {
  StepEditing::MaterialNote note;
  const auto result = StepEditing(session.Workspace()).AddMaterial(input.Number(0), input.Argument(1), &note);
  if (note.hasComments) session.Note(u"The library has comments for this material.");
  if (!note.lost.empty()) session.Note(editing::LossOfMaterials(note.lost));
  return Finish(
      session, result, input.Number(0),
      Format(
          u"%s is no material of this step, and nothing that its free box could take. One with a gap (^) is "
          u"given with the gap filled.",
          input.Argument(1)));
}

}  // namespace

std::vector<Command> StepCommands() {
  return {
      {"categories",
       "list the categories of an inspection",
       {{"ID", "the inspection's key", Argument::Kind::Number, false}},
       {JsonOption()},
       "",
       RunCategories},
      {"steps",
       "list the steps of a category, creating them on first opening",
       {{"CATEGORYID", "the category's key, as \"categories\" shows it", Argument::Kind::Number, false}},
       {JsonOption()},
       "For a form category, the table shows its fields.",
       RunSteps},
      {"rate",
       "rate a step",
       {kStep, {"RATING", "a choice of the step's rating type; \"\" clears", Argument::Kind::Text, false}},
       {},
       "",
       RunRate},
      {"comment",
       "append a comment to a step",
       {kStep, {"TEXT", "the comment", Argument::Kind::Text, false}},
       {},
       "Between two comments stands a blank line or two blanks, by the option BlankLineBetweenComments. The "
       "text is stored as given; a line break of its own is carriage return and line feed.",
       RunComment},
      {"material",
       "tick a material of a step",
       {kStep, {"TEXT", "a material of the step, or words for its free box", Argument::Kind::Text, false}},
       {},
       "",
       RunMaterial},
  };
}

}  // namespace inspector::cli
