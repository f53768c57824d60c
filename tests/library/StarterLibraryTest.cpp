#include <algorithm>
#include <map>
#include <set>

#include "LibraryDevice.h"
#include "device/CodePage.h"

namespace inspector::tests {
namespace {

// Imported once; no test changes it.
class StarterLibraryTest : public testing::Test {
protected:
  static void SetUpTestSuite() {
    s_Device = std::make_unique<LibraryDevice>();
    s_Problem = s_Device->Import(StarterLibrary());
  }
  static void TearDownTestSuite() { s_Device.reset(); }
  void SetUp() override { ASSERT_EQ(s_Problem, u""); }

  static std::vector<NamedRow> Rows(TextView table) { return s_Device->Rows(table); }

  static std::set<int> Numbers(TextView table, TextView column) {
    std::set<int> numbers;
    for (const NamedRow& row : Rows(table)) numbers.insert(row.Number(column));
    return numbers;
  }
  static std::set<Text> Strings(TextView table, TextView column) {
    std::set<Text> strings;
    for (const NamedRow& row : Rows(table)) strings.insert(row.String(column));
    return strings;
  }

  // Choices by rating type, and the rating type by step.
  static std::map<int, std::set<Text>> Choices() {
    std::map<int, std::set<Text>> choices;
    for (const NamedRow& row : Rows(u"RatingChoices"))
      choices[row.Number(u"RatingTypeID")].insert(row.String(u"ChoiceName"));
    return choices;
  }
  static std::map<int, int> RatingTypes() {
    std::map<int, int> types;
    for (const NamedRow& row : Rows(u"StepTemplate")) types[row.Number(u"ID")] = row.Number(u"RatingTypeID");
    return types;
  }

  static inline std::unique_ptr<LibraryDevice> s_Device;
  static inline Text s_Problem;
};

std::string Where(const NamedRow& row) {
  return device::ToUtf8(row.table->name) + " " + std::to_string(row.Number(u"ID"));
}

TEST_F(StarterLibraryTest, IsLargeEnoughToStartABusinessWith) {
  EXPECT_GE(Rows(u"InspectionType").size(), 4u);
  std::set<Text> layouts = Strings(u"InspectionType", u"Layout");
  EXPECT_EQ(layouts, (std::set<Text>{u"4 Column", u"3 Column", u"2 Column", u"2 Column French"}));
  EXPECT_EQ(Rows(u"InspectionType").at(0).String(u"Layout"), u"4 Column");

  std::set<int> english;
  std::set<int> forms;
  for (const NamedRow& row : Rows(u"InspectionTypeCategory"))
    if (row.Number(u"InspectionTypeID") < 4) english.insert(row.Number(u"CategoryID"));
  for (const NamedRow& row : Rows(u"CategoryTemplate")) {
    EXPECT_GE(row.Number(u"CategoryNumber"), 10) << Where(row);
    EXPECT_LE(row.Number(u"CategoryNumber"), 99) << Where(row);
    if (row.Number(u"FormType") == 1) forms.insert(row.Number(u"ID"));
  }
  EXPECT_GE(english.size(), 14u);
  EXPECT_EQ(forms.size(), 2u);
  EXPECT_EQ(Numbers(u"FieldTemplate", u"CategoryID"), forms);
  EXPECT_GE(Rows(u"StepTemplate").size(), 120u);
  EXPECT_GE(Rows(u"RatingType").size(), 4u);
  EXPECT_GE(Rows(u"MaterialTemplate").size(), 250u);
  EXPECT_GE(Rows(u"Comments").size(), 500u);
  EXPECT_GE(Strings(u"Pickers", u"PickerName").size(), 12u);
  EXPECT_GE(Rows(u"ExpandedText").size(), 40u);

  const NamedRow options = Rows(u"Options").at(0);
  for (const TextView text : {u"FinePrint", u"DefinitionOfTerms", u"FooterText", u"SummaryDisclaimer"})
    EXPECT_FALSE(options.String(text).empty()) << device::ToUtf8(text);
  for (const TextView width :
       {u"ColumnWidth1", u"ColumnWidth2", u"ColumnWidth3", u"ColumnWidth4", u"ColumnWidth5"})
    EXPECT_EQ(std::get<double>(options[width]), 0);
  // Zero stands for the widths of the first type, four columns here.
  EXPECT_EQ(s_Device->GetWorkspace().Options().m_ColumnWidth[3], 1.0);
}

TEST_F(StarterLibraryTest, EveryLinkLeadsToARow) {
  struct Reference {
    TextView table;
    TextView column;
    TextView target;
  };
  for (const auto& [table, column, target] :
       std::initializer_list<Reference>{{u"InspectionTypeCategory", u"InspectionTypeID", u"InspectionType"},
                                        {u"InspectionTypeCategory", u"CategoryID", u"CategoryTemplate"},
                                        {u"InspectionTypeComment", u"InspectionTypeID", u"InspectionType"},
                                        {u"InspectionTypeComment", u"CommentID", u"Comments"},
                                        {u"CategoryStep", u"CategoryID", u"CategoryTemplate"},
                                        {u"CategoryStep", u"StepID", u"StepTemplate"},
                                        {u"StepComment", u"StepID", u"StepTemplate"},
                                        {u"StepComment", u"CommentID", u"Comments"},
                                        {u"CategoryComment", u"CategoryID", u"CategoryTemplate"},
                                        {u"CategoryComment", u"CommentID", u"Comments"},
                                        {u"MaterialComment", u"MaterialID", u"MaterialTemplate"},
                                        {u"MaterialComment", u"CommentID", u"Comments"},
                                        {u"MaterialTemplate", u"StepID", u"StepTemplate"},
                                        {u"StepTemplate", u"RatingTypeID", u"RatingType"},
                                        {u"RatingChoices", u"RatingTypeID", u"RatingType"},
                                        {u"FieldTemplate", u"CategoryID", u"CategoryTemplate"}}) {
    const std::set<int> targets = Numbers(target, u"ID");
    for (const NamedRow& row : Rows(table))
      EXPECT_TRUE(targets.contains(row.Number(column)))
          << device::ToUtf8(table) << "." << device::ToUtf8(column) << " " << row.Number(column);
  }
  // Nothing is out of reach.
  EXPECT_EQ(Numbers(u"CategoryStep", u"StepID"), Numbers(u"StepTemplate", u"ID"));
  EXPECT_EQ(Numbers(u"InspectionTypeCategory", u"CategoryID"), Numbers(u"CategoryTemplate", u"ID"));
  std::set<int> linked;
  for (const TextView table :
       {u"StepComment", u"CategoryComment", u"MaterialComment", u"InspectionTypeComment"})
    linked.merge(Numbers(table, u"CommentID"));
  EXPECT_EQ(linked, Numbers(u"Comments", u"ID"));
}

TEST_F(StarterLibraryTest, KeysAreUniqueAndBelowThoseOfTheDevice) {
  for (const TextView table :
       {u"InspectionType", u"CategoryTemplate", u"StepTemplate", u"Comments", u"RatingType", u"RatingChoices",
        u"MaterialTemplate", u"Pickers", u"FieldTemplate", u"ExpandedText"}) {
    const std::set<int> keys = Numbers(table, u"ID");
    EXPECT_EQ(keys.size(), Rows(table).size()) << device::ToUtf8(table);
    EXPECT_GT(*keys.begin(), 0) << device::ToUtf8(table);
    EXPECT_LT(*keys.rbegin(), 25000) << device::ToUtf8(table);
  }
  EXPECT_EQ(Strings(u"ExpandedText", u"ShortCut").size(), Rows(u"ExpandedText").size());
  EXPECT_TRUE(Rows(u"UniqueID").empty());
}

TEST_F(StarterLibraryTest, RatingsOfCommentsAreChoicesOfTheirSteps) {
  const auto choices = Choices();
  const auto types = RatingTypes();
  std::map<int, int> defaults;
  for (const NamedRow& row : Rows(u"RatingChoices"))
    defaults[row.Number(u"RatingTypeID")] += row.IsSet(u"DefaultFlag");
  for (const NamedRow& row : Rows(u"RatingType")) EXPECT_EQ(defaults[row.Number(u"ID")], 1) << Where(row);
  // A serious finding stands out at every step, whatever scale it is rated on; "Data" judges nothing.
  for (const NamedRow& type : Rows(u"RatingType")) {
    if (type.String(u"RatingType") == u"Data") continue;
    std::set<Text> set;
    for (const NamedRow& row : Rows(u"RatingChoices"))
      for (const TextView flag : {u"BoldFlag", u"RedFlag", u"SummaryFlag", u"CommentPromptFlag"})
        if (row.Number(u"RatingTypeID") == type.Number(u"ID") && row.IsSet(flag)) set.emplace(flag);
    EXPECT_EQ(set.size(), 4U) << Where(type);
  }
  for (const TextView flag : {u"BoldFlag", u"CommentPromptFlag", u"SummaryFlag", u"RedFlag"})
    EXPECT_EQ(Numbers(u"RatingChoices", flag), (std::set<int>{-1, 0})) << device::ToUtf8(flag);

  std::map<int, std::set<int>> stepsOfComment;
  std::map<int, int> stepOfMaterial;
  for (const NamedRow& row : Rows(u"StepComment"))
    stepsOfComment[row.Number(u"CommentID")].insert(row.Number(u"StepID"));
  for (const NamedRow& row : Rows(u"MaterialTemplate"))
    stepOfMaterial[row.Number(u"ID")] = row.Number(u"StepID");
  for (const NamedRow& row : Rows(u"MaterialComment"))
    stepsOfComment[row.Number(u"CommentID")].insert(stepOfMaterial[row.Number(u"MaterialID")]);
  for (const NamedRow& row : Rows(u"Comments")) {
    const Text& rating = row.String(u"Rating");
    if (rating.empty()) continue;
    const auto& steps = stepsOfComment[row.Number(u"ID")];
    EXPECT_FALSE(steps.empty()) << Where(row) << " has a rating but no step";
    for (const int step : steps)
      EXPECT_TRUE(choices.at(types.at(step)).contains(rating))
          << Where(row) << ": " << device::ToUtf8(rating);
  }
}

TEST_F(StarterLibraryTest, MaterialsAreToldApartInsideAStep) {
  std::map<int, std::vector<NamedRow>> byStep;
  for (const NamedRow& row : Rows(u"MaterialTemplate")) byStep[row.Number(u"StepID")].push_back(row);
  const std::set<int> commented = Numbers(u"MaterialComment", u"MaterialID");
  for (auto& [step, materials] : byStep) {
    std::sort(materials.begin(), materials.end(), [](const NamedRow& left, const NamedRow& right) {
      return left.Number(u"MaterialOrder") < right.Number(u"MaterialOrder");
    });
    int defaults = 0;
    for (std::size_t at = 0; at < materials.size(); ++at) {
      const NamedRow& row = materials[at];
      const Text& material = row.String(u"Material");
      defaults += row.IsSet(u"DefaultMaterial");
      EXPECT_FALSE(material.empty()) << Where(row);
      EXPECT_EQ(material.find_first_of(u";^"), Text::npos) << Where(row);
      EXPECT_EQ(row.IsSet(u"CommentsExist"), commented.contains(row.Number(u"ID"))) << Where(row);
      EXPECT_TRUE(material != u"Other:" || at + 1 == materials.size()) << Where(row) << " is not the last";
      // The tablet looks for "material;" in the step's text, which the end of a longer one would answer.
      for (std::size_t other = 0; other < materials.size(); ++other)
        EXPECT_FALSE(other != at && materials[other].String(u"Material").ends_with(material))
            << Where(row) << " ends " << Where(materials[other]);
    }
    EXPECT_LE(defaults, 1) << "step " << step;
  }
}

TEST_F(StarterLibraryTest, TextsCanBeShownPrintedAndParsed) {
  for (const data::TableLayout& layout : data::AllLayouts()) {
    if (layout.database != data::DatabaseKind::Template || layout.name == u"UniqueID") continue;
    for (const NamedRow& row : Rows(layout.name)) {
      for (const data::RawValue& value : row.values) {
        const Text* const text = std::get_if<Text>(&value);
        if (!text) continue;
        const std::string shown = device::ToUtf8(layout.name) + ": " + device::ToUtf8(*text);
        EXPECT_TRUE(device::FitsCodePage(*text)) << shown;
        // Line breaks come in pairs; nothing else is below a blank.
        const Text plain = device::ReplaceAll(*text, u"\r\n", u"");
        EXPECT_TRUE(std::none_of(plain.begin(), plain.end(), [](char16_t unit) { return unit < u' '; }))
            << shown;
      }
    }
  }
  const std::set<Text> pickers = Strings(u"Pickers", u"PickerName");
  bool hasGap = false;
  bool hasAlternatives = false;
  bool hasPicker = false;
  for (const NamedRow& row : Rows(u"Comments")) {
    const Text& text = row.String(u"Comments");
    EXPECT_FALSE(text.empty() || TextView(u"{}\u00ac").find(text[0]) != TextView::npos) << Where(row);
    EXPECT_EQ(text.find(u"***"), Text::npos) << Where(row);
    const std::vector<Text> parts = device::Split(text, u'^');
    EXPECT_EQ(parts.size() % 2, 1u) << Where(row) << ": a placeholder is open";
    for (std::size_t at = 1; at < parts.size(); at += 2) {
      const Text& name = parts[at];
      hasGap |= name.empty();
      if (name.empty()) continue;
      if (name.starts_with(u'(')) {
        hasAlternatives = true;
        EXPECT_TRUE(name.ends_with(u')') && device::Contains(name, u",")) << Where(row);
      } else {
        hasPicker = true;
        EXPECT_TRUE(pickers.contains(name)) << Where(row) << ": " << device::ToUtf8(name);
      }
    }
  }
  EXPECT_TRUE(hasGap && hasAlternatives && hasPicker);
  for (const NamedRow& row : Rows(u"FieldTemplate"))
    EXPECT_TRUE(row.Number(u"Type") != 5 || pickers.contains(row.String(u"Label"))) << Where(row);
}

TEST_F(StarterLibraryTest, DefaultCommentsHangOnTypesAndCategoriesOnly) {
  std::set<int> general = Numbers(u"CategoryComment", u"CommentID");
  general.merge(Numbers(u"InspectionTypeComment", u"CommentID"));
  const std::set<int> ofSteps = Numbers(u"StepComment", u"CommentID");
  int defaults = 0;
  for (const NamedRow& row : Rows(u"Comments")) {
    if (!row.String(u"Comments").starts_with(u"[*")) continue;
    ++defaults;
    EXPECT_NE(row.String(u"Comments").find(u']'), Text::npos) << Where(row);
    EXPECT_TRUE(general.contains(row.Number(u"ID")) && !ofSteps.contains(row.Number(u"ID"))) << Where(row);
  }
  EXPECT_GE(defaults, 4);
}

TEST_F(StarterLibraryTest, StepsSortByTheirNumbersAndSomeAreMajorSystems) {
  const std::set<int> forms = Numbers(u"FieldTemplate", u"CategoryID");
  std::map<int, NamedRow> steps;
  for (const NamedRow& row : Rows(u"StepTemplate")) steps[row.Number(u"ID")] = row;
  std::map<int, std::vector<Text>> numbers;
  for (const NamedRow& row : Rows(u"CategoryStep")) {
    EXPECT_FALSE(forms.contains(row.Number(u"CategoryID")));
    numbers[row.Number(u"CategoryID")].push_back(steps[row.Number(u"StepID")].String(u"StepNumber"));
  }
  for (const NamedRow& row : Rows(u"CategoryTemplate")) {
    const auto& found = numbers[row.Number(u"ID")];
    EXPECT_NE(found.empty(), !forms.contains(row.Number(u"ID"))) << Where(row);
    for (std::size_t at = 0; at < found.size(); ++at) {
      EXPECT_EQ(found[at].size(), 5u) << device::ToUtf8(found[at]);
      EXPECT_TRUE(found[at].starts_with(device::Decimal(row.Number(u"CategoryNumber")) + u".")) << Where(row);
      EXPECT_TRUE(at == 0 || found[at - 1] < found[at]) << Where(row);
    }
  }
  int major = 0;
  for (const auto& [id, row] : steps) {
    const Text& keyword = row.String(u"Keyword");
    if (keyword.empty()) continue;
    EXPECT_TRUE(device::Contains(keyword, u"-")) << Where(row);
    ++major;
  }
  EXPECT_GE(major, 20);
}

}  // namespace
}  // namespace inspector::tests
