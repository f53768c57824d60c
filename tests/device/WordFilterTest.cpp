#include "device/WordFilter.h"

#include <gtest/gtest.h>

#include "device/ListColumns.h"

namespace inspector::device {
namespace {

TEST(WordFilterTest, FindsWordsInAnyOrderCaseAndAccent) {
  const std::tuple<Text, Text, bool> kCases[] = {
      {u"  \u00A0", u"anything", true},
      {u"lane juniper", u"418 Juniper Lane", true},
      {u"juniper road", u"418 Juniper Lane", false},
      {u"hopital", u"H\u00D4PITAL", true},
      {u"h\u00F4pital", u"hopital", true},
      {u"cafe", u"cafe\u0301", true},
      {u"boeuf strasse", u"B\u0153uf, Stra\u00DFe", true},
      {u"\u0417\u0438\u043C\u0430", u"\u0437\u0438\u043C\u0430", true},
      {u"\u00D73", u"2\u00D73", true},
      {u"lodz gdansk", u"Gda\u0144sk - \u0141\u00F3d\u017A", true}};
  for (const auto& [typed, text, found] : kCases)
    EXPECT_EQ(WordFilter(typed).Accepts(text), found) << ToUtf8(typed) << " / " << ToUtf8(text);
}

TEST(WordFilterTest, KnowsWhenFurtherTypingNarrows) {
  EXPECT_TRUE(WordFilter(u"roof").IsNarrowedBy(WordFilter(u"roofing old")));
  EXPECT_TRUE(WordFilter().IsNarrowedBy(WordFilter(u"x")));
  EXPECT_FALSE(WordFilter(u"roof old").IsNarrowedBy(WordFilter(u"roof")));
}

TEST(ListColumnsTest, FillTheScreenAndKeepTheMarkLargeEnough) {
  const ListColumn columns[] = {
      {u"*", 25, ListColumn::Align::Centre, true}, {u"Category", 125}, {u"Status", 100}};
  for (const int available : {240, 480, 800, 1280}) {
    const std::vector<int> widths = ScaleColumns(columns, available);
    EXPECT_EQ(widths[0] + widths[1] + widths[2], available);
    EXPECT_GE(widths[0], kSmallestTarget);
    EXPECT_LE(widths[0], 2 * kSmallestTarget);
    EXPECT_NEAR(widths[1] * 100.0 / widths[2], 125, 2);
  }
  EXPECT_EQ(ScaleColumns(columns, 480)[0], 50) << "twice the drawn width on a screen twice as wide";
}

}  // namespace
}  // namespace inspector::device
