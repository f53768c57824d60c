#include "editing/CommentReview.h"

#include "device/Format.h"
#include "editing/Unfinished.h"
#include "support/VisitFixture.h"

namespace inspector::editing {
namespace {

using ::testing::ElementsAre;

class VisitReviewTest : public tests::VisitTest {
protected:
  void SetUp() override {
    // Another visit, which must not be seen.
    m_Device.Visit(u"House");
    m_Device.OpenCategory(u"Cellar");
    Find(u"9.1", u"Yes", u"Elsewhere.");
    m_Visit = m_Device.Visit(u"House");
    m_Roof = m_Device.OpenCategory(u"Roof");
    m_Cellar = m_Device.OpenCategory(u"Cellar");
    Find(u"20.1", u"Poor", u"Worn.");
    Find(u"20.2", u"Good \"as new\"", u"New.");
    Find(u"9.1", u"Poor", u"Not a choice of its type.");
  }
  std::int32_t Find(const Text& number, const Text& result, const Text& comments) {
    m_Device.Enter(number,
                   "InspectResult = " + tests::Quoted(result) + ", Comments = " + tests::Quoted(comments));
    return m_Device.StepKey(number);
  }

  std::int32_t m_Visit = 0;
  std::int32_t m_Roof = 0;
  std::int32_t m_Cellar = 0;
};

TEST_F(VisitReviewTest, ShowsCommentedStepsByRating) {
  Find(u"20.3", u"Good", u"");
  CommentReview review(m_Device.GetWorkspace(), m_Visit);
  EXPECT_THAT(review.Filters(), ElementsAre(u"<All Ratings>", u"Good", u"Poor", u"Good \"as new\"", u"Yes",
                                            u"No", u"***Summary Only***"));
  const auto shown = [&review](TextView filter) {
    std::vector<Text> lines;
    EXPECT_TRUE(review.SetFilter(filter));
    for (int n = 0; n < review.RowCount(); ++n)
      lines.push_back(device::Format(u"%s|%s|%s", review.RowAt(n).stepNumber, review.RowAt(n).result,
                                     review.RowAt(n).comments));
    return lines;
  };
  EXPECT_THAT(shown(u"***Summary Only***"), ElementsAre(u"20.1|Poor|Worn."));
  EXPECT_THAT(shown(u"Poor"), ElementsAre(u"20.1|Poor|Worn.", u"9.1|Poor|Not a choice of its type."));
  EXPECT_THAT(shown(u"Good \"as new\""), ElementsAre(u"20.2|Good \"as new\"|New."));
  EXPECT_THAT(shown(u"Good"), ElementsAre()) << "rated without a comment";
  EXPECT_THAT(shown(u"<All Ratings>"), ElementsAre(u"20.1|Poor|Worn.", u"20.2|Good \"as new\"|New.",
                                                   u"9.1|Poor|Not a choice of its type."));
  EXPECT_EQ(review.RememberedRow(), std::nullopt);
  review.Remember(m_Device.StepKey(u"20.2"));
  EXPECT_EQ(review.RememberedRow(), 1);
  EXPECT_EQ(review.RowAt(7).stepID, 0);
  EXPECT_TRUE(m_Device.Faults().Count() == 0);
}

TEST_F(VisitReviewTest, UnfinishedStepsAreListedCountedAndReached) {
  const std::int32_t shingles = Find(u"20.1", u"Poor", u" \r\n");
  const std::int32_t gutters = Find(u"20.2", u"Good", u"See ***Path=\\gone.jpg*** ***odd***");
  const std::int32_t notes = Find(u"20.3", u"", u"Only words.");
  const std::int32_t sump = Find(u"9.1", u"Poor", u"");  // "Poor" of its type asks for nothing
  m_Device.Enter(u"9.1", "BitmapPath = '\\Pictures\\sump.jpg'");
  m_Device.RunInVisits("UPDATE Category SET NotPresentFlag = 1 WHERE CategoryTitle = 'Safety'");

  Unfinished unfinished(m_Device.GetWorkspace(), m_Visit);
  ASSERT_TRUE(unfinished.Refresh());
  const auto shown = [&unfinished] {
    std::vector<Text> lines;
    for (const UnfinishedStep& step : unfinished.Steps())
      lines.push_back(device::Format(u"%s %s: %s", step.categoryTitle, step.stepNumber, step.Reasons()));
    return lines;
  };
  EXPECT_THAT(shown(), ElementsAre(u"Attic : Not opened yet", u"Roof 20.1: The rating asks for a comment",
                                   u"Roof 20.2: A picture is missing", u"Roof 20.3: No rating",
                                   u"Cellar 9.1: A picture is missing"));
  EXPECT_EQ(unfinished.Count(), 5);
  EXPECT_EQ(unfinished.CountByCategory()->at(m_Roof).steps, 3);
  m_Device.RunInLibrary("ALTER TABLE RatingChoices RENAME TO Gone");
  EXPECT_FALSE(unfinished.CountByCategory()) << "not known is not none";
  m_Device.RunInLibrary("ALTER TABLE Gone RENAME TO RatingChoices");

  EXPECT_EQ(unfinished.NextAfter({})->categoryTitle, u"Attic") << "the first, when the place is unknown";
  EXPECT_EQ(unfinished.NextAfter({m_Roof, 0})->stepID, shingles);
  EXPECT_EQ(unfinished.NextAfter({m_Roof, gutters})->stepID, notes);
  EXPECT_EQ(unfinished.NextAfter({m_Roof, notes})->stepID, sump);
  EXPECT_EQ(unfinished.NextAfter({m_Cellar, sump})->categoryTitle, u"Attic") << "it begins anew";

  Find(u"20.1", u"Poor", u"Explained.");
  Find(u"20.3", u"Good", u"");
  ASSERT_TRUE(unfinished.Refresh());
  EXPECT_THAT(shown(), ElementsAre(u"Attic : Not opened yet", u"Roof 20.2: A picture is missing",
                                   u"Cellar 9.1: A picture is missing"));
  EXPECT_EQ(unfinished.NextAfter({m_Roof, notes})->stepID, sump) << "from a step that is done";
}

}  // namespace
}  // namespace inspector::editing
