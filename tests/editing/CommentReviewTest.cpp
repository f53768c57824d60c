#include "editing/CommentReview.h"

#include "editing/Unfinished.h"
#include "support/VisitFixture.h"

namespace inspector::editing {
namespace {

class VisitReviewTest : public RoofTest {
protected:
  void SetUp() override {
    // Another visit, which must not be seen.
    m_Device.Visit(u"House", {u"Cellar"});
    Find(u"9.1", u"Yes", u"Elsewhere.");
    ASSERT_TRUE(Document().SelectInspection(m_House));
    m_Cellar = m_Device.OpenCategory(u"Cellar");
    Find(u"20.1", u"Poor", u"Worn.");
    Find(u"20.2", u"Good \"as new\"", u"New.");
    Find(u"9.1", u"Poor", u"Not a choice of its type.");
  }
  std::int32_t Find(const Text& number, const Text& result, const Text& comments) {
    m_Device.Enter(number, "InspectResult = " + Quoted(result) + ", Comments = " + Quoted(comments));
    return m_Device.StepKey(number);
  }

  std::int32_t m_Cellar = 0;
};

TEST_F(VisitReviewTest, ShowsCommentedStepsByRating) {
  Find(u"20.3", u"Good", u"");  // without a comment
  CommentReview review(m_Device.GetWorkspace(), m_House);
  EXPECT_EQ(Joined(review.Filters()), u"<All Ratings>|Good|Poor|Good \"as new\"|Yes|No|***Summary Only***");
  const auto shown = [&review](TextView filter) {
    EXPECT_TRUE(review.SetFilter(filter));
    std::vector<Text> lines;
    for (int n = 0; n < review.RowCount(); ++n)
      lines.push_back(review.RowAt(n).stepNumber + u" " + review.RowAt(n).result);
    return Joined(lines);
  };
  EXPECT_EQ(shown(u"***Summary Only***"), u"20.1 Poor");
  EXPECT_EQ(shown(u"Poor"), u"20.1 Poor|9.1 Poor");
  EXPECT_EQ(shown(u"Good \"as new\""), u"20.2 Good \"as new\"");
  EXPECT_EQ(shown(u"Good"), u"");
  EXPECT_EQ(shown(u"<All Ratings>"), u"20.1 Poor|20.2 Good \"as new\"|9.1 Poor");
  EXPECT_EQ(review.RowAt(0).comments, u"Worn.");
  EXPECT_EQ(review.RememberedRow(), std::nullopt);
  review.Remember(m_Device.StepKey(u"20.2"));
  EXPECT_EQ(review.RememberedRow(), 1);
  EXPECT_EQ(review.RowAt(7).stepID, 0);
}

TEST_F(VisitReviewTest, UnfinishedStepsAreListedCountedAndReached) {
  Find(u"20.1", u"Poor", u" \r\n");
  Find(u"20.2", u"Good", u"See ***Path=\\gone.jpg*** ***odd***");
  const std::int32_t notes = Find(u"20.3", u"", u"Only words.");
  const std::int32_t sump = Find(u"9.1", u"Poor", u"");  // "Poor" of its type asks for nothing
  m_Device.Enter(u"9.1", "BitmapPath = '\\Pictures\\sump.jpg'");
  m_Device.RunInVisits("UPDATE Category SET NotPresentFlag = 1 WHERE CategoryTitle = 'Safety'");
  Unfinished unfinished(m_Device.GetWorkspace(), m_House);
  const auto shown = [&unfinished] {
    EXPECT_TRUE(unfinished.Refresh());
    return Joined(unfinished.Steps(), [](const UnfinishedStep& step) {
      return step.categoryTitle + u" " + step.stepNumber + u": " + step.Reasons();
    });
  };
  EXPECT_EQ(
      shown(),
      u"Attic : Not opened yet|Roof 20.1: The rating asks for a comment|Roof 20.2: A picture is missing|"
      u"Roof 20.3: No rating|Cellar 9.1: A picture is missing");
  std::vector<std::optional<StepSheet::Page>> pages;
  for (const UnfinishedStep& step : unfinished.Steps()) pages.push_back(step.Where());
  using enum StepSheet::Page;
  EXPECT_THAT(pages, ElementsAre(testing::_, Comments, Comments, std::nullopt, Picture))
      << "where it is done";
  EXPECT_EQ(unfinished.Count(), 5);
  EXPECT_EQ(unfinished.CountByCategory()->at(m_Roof).steps, 3);
  {
    const MissingTable missing(m_Device, "RatingChoices");
    EXPECT_FALSE(unfinished.CountByCategory()) << "not known is not none";
  }
  EXPECT_EQ(unfinished.NextAfter({})->categoryTitle, u"Attic") << "the first, when the place is unknown";
  EXPECT_EQ(unfinished.NextAfter({m_Roof, 0})->stepID, m_Shingles);
  EXPECT_EQ(unfinished.NextAfter({m_Roof, m_Gutters})->stepID, notes);
  EXPECT_EQ(unfinished.NextAfter({m_Roof, notes})->stepID, sump);
  EXPECT_EQ(unfinished.NextAfter({m_Cellar, sump})->categoryTitle, u"Attic") << "it begins anew";

  Find(u"20.1", u"Poor", u"Explained.");
  Find(u"20.3", u"Good", u"");
  EXPECT_EQ(shown(),
            u"Attic : Not opened yet|Roof 20.2: A picture is missing|Cellar 9.1: A picture is missing");
  EXPECT_EQ(unfinished.NextAfter({m_Roof, notes})->stepID, sump) << "from a step that is done";

  // What is only counted agrees with what is listed.
  const std::pair<TextView, TextView> comments[] = {
      {u"\t\r\n", u"The rating asks for a comment"},
      {u"A ^size^ crack, ^(old,new)^.", u"A gap (^) is not filled"},
      {u"Wet: 8 ft^2 of 40 ft^2.", u""},
      {u"Seen ***Path=\\plan^a^.jpg***", u"A picture is missing"},
      {u" \u00a0", u""}};
  for (const auto& [comment, reason] : comments) {
    Find(u"20.1", u"Poor", Text(comment));
    ASSERT_TRUE(unfinished.Refresh());
    const UnfinishedStep& first = unfinished.Steps()[1];
    EXPECT_EQ(first.stepNumber == u"20.1" ? first.Reasons() : u"", reason);
    EXPECT_EQ(unfinished.CountByCategory()->at(m_Roof).steps, reason.empty() ? 1 : 2) << ToUtf8(comment);
  }
}

}  // namespace
}  // namespace inspector::editing
