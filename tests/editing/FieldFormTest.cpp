#include "editing/FieldForm.h"

#include "support/TestSupport.h"

namespace inspector::editing {
namespace {

TEST(FieldDoubtTest, IsAboutNumbersAndDates) {
  using Words = std::vector<Text>;
  const Words numbers = {u"", u"72", u"-4", u"+3.5", u"1,25", u".5", u"5."};
  const Words noNumbers = {u"-", u".", u"1.2.3", u"about 5", u"1968?"};
  const Words dates = {u"", u"5/28/2026", u"02/29/2024"};
  const Words noDates = {u"2026-05-28", u"2/29/2023", u"13/1/2026", u"5/28", u"5//2026", u"5/28/02026"};
  for (const auto& [kind, isDoubtful, words] : {std::tuple(FieldKind::Number, false, numbers),
                                                {FieldKind::Number, true, noNumbers},
                                                {FieldKind::Date, false, dates},
                                                {FieldKind::Date, true, noDates},
                                                {FieldKind::Words, false, noNumbers}})
    for (const Text& word : words) EXPECT_EQ(!DoubtAbout(kind, word).empty(), isDoubtful) << ToUtf8(word);
}

}  // namespace
}  // namespace inspector::editing
