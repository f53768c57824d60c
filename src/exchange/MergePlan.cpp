#include "exchange/MergePlan.h"

#include <map>
#include <set>

#include "data/CategoryTable.h"
#include "data/StepTable.h"
#include "device/Format.h"
#include "exchange/TitleIndex.h"

namespace inspector::exchange {
namespace {

using device::Format;

bool IsEmpty(const data::StepTable& step) {
  return step.m_InspectResult.empty() && step.m_Comments.empty() && step.m_Materials.empty();
}

// All that somebody would miss, to be compared.
Text FindingsOf(const data::StepTable& step) {
  Text findings;
  for (const Text* const each : {&step.m_InspectResult, &step.m_Comments, &step.m_Materials,
                                 &step.m_MaterialNote, &step.m_SummaryComment, &step.m_BitmapPath})
    findings.append(*each).push_back(u'\0');
  return findings;
}
Text WordsOf(const data::CategoryTable& category) {
  Text words;
  for (const Text* const each : {&category.m_CategoryNumber, &category.m_Remarks, &category.m_CommentText})
    words.append(*each).push_back(u'\0');
  return words;
}
bool SaysSomething(const Text& findings) {
  return findings.find_first_not_of(u'\0') != Text::npos;
}

// What a person may have written where there are no findings: what it is called, and what it says.
struct Words {
  TextView what;
  Text text;
};
using AllWords = std::vector<Words>;
AllWords WordsBeside(const data::StepTable& step) {
  return {{u"material note", step.m_MaterialNote},
          {u"summary comment", step.m_SummaryComment},
          {u"picture", step.m_BitmapPath},
          {u"major system", step.m_MajorSystem}};
}
AllWords WordsBeside(const data::CategoryTable& category) {
  return {{u"remarks", category.m_Remarks}, {u"comments", category.m_CommentText}};
}
// "remarks, comments": those that `after` has no more.
Text Lost(const AllWords& before, const AllWords& after) {
  Text lost;
  for (std::size_t n = 0; n < before.size(); ++n)
    if (!before[n].text.empty() && before[n].text != after[n].text)
      lost.append(lost.empty() ? u"" : u", ").append(before[n].what);
  return lost;
}

// Rows as they will stand when the plan has been carried out so far.
struct TargetStep {
  Text number;
  Text findings;
  AllWords beside;  // as it was stored; of an occupied one nothing, since it stays
  bool isEmpty = true;
  bool isAdded = false;    // by a staged step
  bool isReached = false;  // likewise
};
struct TargetCategory {
  std::int64_t key = 0;
  Text number;
  Text words;
  AllWords beside;  // as it was stored
  bool isComplete = false;
  bool isReached = false;
};
struct TargetSteps {
  TitleIndex titles;
  std::vector<TargetStep> rows;
};

class Planner {
public:
  explicit Planner(data::Databases& databases) : m_Databases(databases) {}

  std::optional<MergePlan> Plan(std::int32_t target, std::int32_t staged) {
    if (!ReadTarget(target)) return std::nullopt;
    data::CategoryTable category(m_Databases, u"MERGE_Category");
    category.OpenSQL(Format(kStagedCategories, staged));
    if (category.Failed()) return std::nullopt;
    for (int n = 0; n < category.RecordCount(); ++n)
      if (!category.GetRecord(n) || !PlanCategory(n, category)) return std::nullopt;
    return std::move(m_Plan);
  }

private:
  bool ReadTarget(std::int32_t target) {
    data::CategoryTable category(m_Databases);
    category.OpenSQL(Format(kTargetCategories, target));
    for (int row = 0; row < category.RecordCount(); ++row) {
      if (!category.GetRecord(row)) return false;
      m_Titles.Add(category.m_CategoryTitle, category.m_CategoryNumber, row);
      m_Categories.push_back({category.m_CategoryID, category.m_CategoryNumber, WordsOf(category),
                              WordsBeside(category), category.m_CompleteFlag != 0});
    }
    return !category.Failed();
  }

  bool PlanCategory(int row, const data::CategoryTable& staged) {
    const std::optional<int> found = m_Titles.First(staged.m_CategoryTitle);
    CategoryMerge merge{row, found.value_or(static_cast<int>(m_Categories.size())), !found};
    if (!found) {
      m_Titles.Add(staged.m_CategoryTitle, {}, merge.target);
      // Above every key that a stored category can have.
      m_Categories.push_back({(std::int64_t{1} << 32) + merge.target, {}, {}, {}});
      ++m_Plan.addedCategories;
    }
    TargetCategory& target = m_Categories[static_cast<std::size_t>(merge.target)];
    if (target.isReached) m_Plan.repeatedCategories.push_back(staged.m_CategoryTitle);
    target.isReached = true;
    merge.isTaken = !target.isComplete;
    if (merge.isTaken) {
      m_Titles.Renumber(staged.m_CategoryTitle, merge.target, target.number, staged.m_CategoryNumber);
      NoteLost(staged.m_CategoryTitle, target.beside, staged);
      target.number = staged.m_CategoryNumber;
      target.words = WordsOf(staged);
      target.isComplete = staged.m_CompleteFlag != 0;
      m_Plan.takenCategories += !merge.isNew;
    } else if (WordsOf(staged) != target.words) {
      m_Plan.completeCategories.push_back(staged.m_CategoryTitle);
    }
    // The steps of a category whose key stands twice go with its first row.
    if (m_Done.insert(staged.m_CategoryID).second && !PlanSteps(staged, target, merge)) return false;
    m_Plan.categories.push_back(std::move(merge));
    return true;
  }

  bool PlanSteps(const data::CategoryTable& category, const TargetCategory& target, CategoryMerge& merge) {
    TargetSteps* const steps = StepsOf(target.key);
    if (!steps) return false;
    data::StepTable staged(m_Databases, u"MERGE_Step");
    staged.OpenSQL(Format(kStagedSteps, staged.TableName(), category.m_CategoryID));
    for (int row = 0; row < staged.RecordCount(); ++row) {
      if (!staged.GetRecord(row)) return false;
      merge.steps.push_back(PlanStep(row, staged, category.m_CategoryTitle, *steps));
      const bool isNew = merge.steps.back().isNew;
      merge.newSteps += isNew;
      if (isNew && target.isComplete && staged.m_InspectResult.empty())
        m_Plan.unratedSteps.push_back(NameOf(category.m_CategoryTitle, staged));
    }
    return !staged.Failed();
  }

  StepMerge PlanStep(int row, const data::StepTable& staged, const Text& category, TargetSteps& steps) {
    const std::optional<int> found = steps.titles.First(staged.m_StepTitle);
    StepMerge merge{row, found.value_or(static_cast<int>(steps.rows.size())), !found};
    if (!found) {
      steps.titles.Add(staged.m_StepTitle, {}, merge.target);
      steps.rows.push_back({{}, {}, {}, true, true});
    }
    TargetStep& target = steps.rows[static_cast<std::size_t>(merge.target)];
    merge.isTaken = target.isEmpty;
    const Text name = NameOf(category, staged);
    Text findings = FindingsOf(staged);
    const bool isSame = findings == target.findings;
    if (!merge.isTaken && isSame)
      ++m_Plan.sameSteps;
    else if (!merge.isTaken && SaysSomething(findings))
      (target.isReached ? m_Plan.repeatedSteps : m_Plan.occupiedSteps).push_back(name);
    if (merge.isTaken) {
      steps.titles.Renumber(staged.m_StepTitle, merge.target, target.number, staged.m_StepNumber);
      target.number = staged.m_StepNumber;
      target.isEmpty = IsEmpty(staged);
      NoteLost(name, target.beside, staged);
      m_Plan.filledSteps += SaysSomething(findings) && !target.isAdded;
      target.findings = std::move(findings);
    }
    m_Plan.addedSteps += merge.isNew;
    target.isReached = true;
    return merge;
  }

  static Text NameOf(const Text& category, const data::StepTable& step) {
    return category + u": " + step.m_StepTitle;
  }

  // What was there before the merge is told once.
  template <typename Row>
  void NoteLost(const Text& name, AllWords& before, const Row& staged) {
    if (before.empty()) return;
    if (const Text lost = Lost(before, WordsBeside(staged)); !lost.empty())
      m_Plan.replacedWords.push_back(Format(u"%s (%s)", name, lost));
    before.clear();
  }

  // Null when they could not be read.
  TargetSteps* StepsOf(std::int64_t category) {
    const auto [known, isNew] = m_Steps.try_emplace(category);
    if (!isNew || category > INT32_MAX) return &known->second;
    data::StepTable step(m_Databases);
    step.OpenSQL(Format(kTargetSteps, step.TableName(), category));
    for (int row = 0; row < step.RecordCount(); ++row) {
      if (!step.GetRecord(row)) return nullptr;
      known->second.titles.Add(step.m_StepTitle, step.m_StepNumber, row);
      const bool isEmpty = IsEmpty(step);
      known->second.rows.push_back(
          {step.m_StepNumber, FindingsOf(step), isEmpty ? WordsBeside(step) : AllWords(), isEmpty});
    }
    return step.Failed() ? nullptr : &known->second;
  }

  data::Databases& m_Databases;
  TitleIndex m_Titles;  // of the target's categories
  std::vector<TargetCategory> m_Categories;
  std::map<std::int64_t, TargetSteps> m_Steps;  // by the key of the target's category
  std::set<std::int32_t> m_Done;                // staged categories
  MergePlan m_Plan;
};

}  // namespace

std::optional<MergePlan> ReadMergePlan(data::Databases& databases, std::int32_t targetInspectionID,
                                       std::int32_t stagedInspectionID) {
  const data::ReadScope reading(databases.Inspection());
  return Planner(databases).Plan(targetInspectionID, stagedInspectionID);
}

}  // namespace inspector::exchange
