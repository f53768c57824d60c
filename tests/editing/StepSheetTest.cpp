#include "editing/StepSheet.h"

#include "editing/CommentEditing.h"
#include "editing/CommentPicker.h"
#include "support/ScriptedSheetDialogs.h"
#include "support/VisitFixture.h"

namespace inspector::editing {
namespace {

using Page = StepSheet::Page;

class StepSheetTest : public RoofTest {
protected:
  void SetUp() override { ASSERT_TRUE(m_Sheet.Open(m_Roof, m_Shingles)); }
  bool IsRoofComplete() {
    return InVisits("SELECT CompleteFlag FROM Category WHERE CategoryTitle = 'Roof'") == "1";
  }
  bool Tick(std::size_t box, bool ticked = true) { return m_Sheet.TickMaterial(m_Dialogs, box, ticked); }

  ScriptedSheetDialogs m_Dialogs;
  StepSheet m_Sheet{Document()};
};

TEST_F(StepSheetTest, PagesFollowTheMaterialsOfTheStep) {
  EXPECT_EQ(m_Sheet.StepInfo(), u"Look");
  EXPECT_THAT(m_Sheet.Pages(), ElementsAre(Page::Materials, Page::Comments, Page::Picture, Page::Info));
  ASSERT_TRUE(m_Sheet.MoveTo(m_Device.StepKey(u"20.3")));
  EXPECT_THAT(m_Sheet.Pages(), ElementsAre(Page::Comments, Page::Picture, Page::Info));
  EXPECT_EQ(m_Sheet.PageAt(9), Page::Info);
  for (const auto& [option, page] :
       {std::pair(0, Page::Comments), {2, Page::Picture}, {3, Page::Info}, {7, Page::Comments}}) {
    m_Device.GetWorkspace().Options().m_DefStepTab = option;
    EXPECT_EQ(m_Sheet.DefaultPage(), page) << option;
  }
  EXPECT_FALSE(m_Sheet.Open(m_Roof, 4711));
  EXPECT_FALSE(m_Sheet.HasStep());
}

TEST_F(StepSheetTest, MovingWritesEverythingBack) {
  m_Device.RunInVisits("UPDATE Step SET InspectResult = 'Good' WHERE StepNumber <> '20.1'");
  m_Sheet.PickRating(1);
  m_Sheet.SetComments(u"\tWorn.\r\n\"Twice\"");
  m_Sheet.SetSummaryComment(u"In short.");
  m_Sheet.SetMaterialNote(u"North side.");
  m_Sheet.SetBitmapPath(u"\\roof.jpg");
  m_Sheet.SetPictureBefore(true);
  EXPECT_TRUE(Tick(1));
  EXPECT_FALSE(IsRoofComplete());
  ASSERT_TRUE(m_Sheet.MoveToNext());
  EXPECT_TRUE(IsRoofComplete());
  EXPECT_EQ(Finding(u"20.1"), u"20.1|Shingles|Poor|Wood;|Worn.\r\n\"Twice\"");
  EXPECT_EQ(InVisits("SELECT SummaryComment, MaterialNote, BitmapPath, PictureBefore FROM Step WHERE "
                     "StepNumber = '20.1'"),
            "In short.|North side.|\\roof.jpg|1");

  EXPECT_EQ(m_Sheet.Draft().result, u"Good");
  m_Sheet.PickRating(3);  // "<clear>"
  ASSERT_TRUE(m_Sheet.MoveToPrevious());
  EXPECT_FALSE(IsRoofComplete());
  EXPECT_EQ(Finding(u"20.2"), u"20.2|Gutters|||");
  EXPECT_EQ(m_Sheet.Draft().comments, u"Worn.\r\n\"Twice\"");
  m_Device.RunInVisits(NoRoomFor("UPDATE ON Step"));
  EXPECT_TRUE(m_Sheet.SaveNow() && m_Sheet.MoveToNext() && m_Sheet.MoveToNext() && m_Sheet.MoveToPrevious())
      << "nothing is written without a change";
}

TEST_F(StepSheetTest, LeavingBuildsTheMaterialsAnewAndSaysWhatGoes) {
  m_Device.Enter(u"20.1", "Materials = 'Asphalt;Tin;'");
  ASSERT_TRUE(m_Sheet.Open(m_Roof, m_Sheet.StepID()));
  EXPECT_TRUE(m_Sheet.SaveNow());
  EXPECT_EQ(Finding(u"20.1"), u"20.1|Shingles||Asphalt;Tin;|") << "a pause in typing drops nothing";
  EXPECT_TRUE(m_Sheet.MoveToNext());
  EXPECT_EQ(Finding(u"20.1"), u"20.1|Shingles||Asphalt;|");
  EXPECT_EQ(Prompts().Messages().back().text,
            u"20.1. Shingles\r\nNo longer among the materials of this step, so taken out: Tin");
}

TEST_F(StepSheetTest, WhatCannotBeWrittenStaysInTheSheet) {
  m_Device.RunInVisits(NoRoomFor("UPDATE ON Category"));
  m_Sheet.SetComments(u"Typed.");
  EXPECT_FALSE(m_Sheet.MoveToNext());
  EXPECT_EQ(m_Sheet.Caption() + m_Sheet.Draft().comments, u"20.1. ShinglesTyped.");
  EXPECT_EQ(Finding(u"20.1"), u"20.1|Shingles|||");
  m_Device.RunInVisits(kRoomAgain);
  EXPECT_TRUE(m_Sheet.SaveNow());
  EXPECT_EQ(Finding(u"20.1"), u"20.1|Shingles|||Typed.");
}

TEST_F(StepSheetTest, AnotherProgramsWritingStaysWhereThePersonChangedNothing) {
  m_Device.Enter(u"20.1", "InspectResult = 'Poor', Materials = 'Wood;'");
  m_Sheet.SetComments(u"Mine.");
  EXPECT_TRUE(m_Sheet.SaveNow());
  EXPECT_EQ(Finding(u"20.1"), u"20.1|Shingles|Poor|Wood;|Mine.");

  m_Device.RunInVisits("DELETE FROM Step WHERE StepNumber IN ('20.1', '20.2')");
  m_Sheet.SetComments(u"Too late.");
  EXPECT_FALSE(m_Sheet.MoveToNext()) << "and it is told";
  EXPECT_EQ(m_Device.Faults().Count(), 1);
  m_Sheet.Discard();
  EXPECT_TRUE(m_Sheet.MoveToNext()) << "over the step that is gone as well";
  EXPECT_EQ(m_Sheet.Title(), u"Notes");
}

TEST_F(StepSheetTest, FreeMaterialAndPlaceholdersAreAskedFor) {
  m_Device.Library().AddMaterial(1, u"^(Tin,Lead)^ sheet");
  ASSERT_TRUE(m_Sheet.Open(m_Roof, m_Sheet.StepID()));
  const auto tickFree = [this](const std::optional<Text>& entered) {
    Prompts().QueueText(u"Enter the new material for: \r\nShingles", entered);
    return Tick(3);
  };
  EXPECT_FALSE(tickFree(std::nullopt));
  EXPECT_FALSE(tickFree(u"  "));
  EXPECT_FALSE(m_Sheet.Materials()[3].ticked);
  EXPECT_TRUE(tickFree(u"Slate; black"));
  EXPECT_EQ(Prompts().TextQuestions()[0].title, u"Other Material");
  m_Dialogs.QueueReplacement(std::nullopt);
  EXPECT_FALSE(Tick(4));
  m_Dialogs.QueueReplacement(u"Lead");
  EXPECT_TRUE(Tick(4));
  ASSERT_TRUE(m_Sheet.MoveToNext());
  EXPECT_EQ(Finding(u"20.1"), u"20.1|Shingles||Other:Slate, black;Lead sheet;|");

  ASSERT_TRUE(m_Sheet.MoveToPrevious());
  EXPECT_EQ(m_Sheet.Materials()[4].caption, u"Lead sheet");
  EXPECT_TRUE(m_Sheet.Materials()[4].ticked);
  EXPECT_TRUE(Tick(4, false));
  EXPECT_EQ(m_Sheet.Materials()[4].caption, u"^(Tin,Lead)^ sheet");
  EXPECT_TRUE(Tick(3, false));
  EXPECT_FALSE(tickFree(std::nullopt));
  EXPECT_EQ(Prompts().TextQuestions().back().initial, u"Slate, black");
}

TEST_F(StepSheetTest, MaterialsThatCouldNotBeReadAreLeftAlone) {
  m_Device.Enter(u"20.2", "Materials = 'Copper;'");
  {
    const MissingTable missing(m_Device, "MaterialTemplate");
    ASSERT_TRUE(m_Sheet.MoveToNext());
  }
  m_Sheet.SetComments(u"Dented.");
  ASSERT_TRUE(m_Sheet.MoveToNext());
  EXPECT_EQ(Finding(u"20.2"), u"20.2|Gutters||Copper;|Dented.");
}

class CommentEditingTest : public StepSheetTest {
protected:
  void SetUp() override {
    StepSheetTest::SetUp();
    m_Device.Library().AddCommentToStep(1, u"Worn at ^(eaves,ridge)^.", u"Wear");
    m_Device.Library().AddCommentToStep(1, u"Steep.");
    m_Comments.ShowStep();
  }
  // What is done in the picker that opens next, and whether it is closed with OK.
  void ExpectPicker(std::vector<std::size_t> chosen, std::optional<std::size_t> deleted = {},
                    bool ok = true) {
    m_Dialogs.QueuePicker([=](CommentPicker& picker) {
      for (const std::size_t comment : chosen) picker.ToggleChoice(comment);
      if (deleted) picker.Delete(*deleted);
      return ok;
    });
  }
  const Text& Draft() { return m_Sheet.Draft().comments; }

  CommentEditing m_Comments{m_Sheet, m_Dialogs};
};

TEST_F(CommentEditingTest, PickedCommentsGoInOneAfterTheOther) {
  m_Sheet.SetComments(u"Before.");
  m_Comments.SaveSelection({7, 7});
  ExpectPicker({1, 0});
  m_Dialogs.QueueReplacement(u"ridge");
  Text replayed = u"Before.";
  for (const TextChange& change : m_Comments.OpenPicker()) change.ApplyTo(replayed);
  EXPECT_EQ(Draft(), u"Before.  Worn at ridge.  Steep.");
  EXPECT_EQ(replayed, Draft());
  m_Device.GetWorkspace().Options().m_BlankLineBetweenComments = -1;
  EXPECT_TRUE(m_Comments.Insert(u"Next."));
  EXPECT_EQ(Draft(), u"Before.  Worn at ridge.  Steep.\r\n\r\nNext.");
}

TEST_F(CommentEditingTest, PickerDeletesBeforeItInsertsUnlessItIsCancelled) {
  ExpectPicker({0}, 1, false);
  EXPECT_TRUE(m_Comments.OpenPicker().empty());
  m_Dialogs.QueueReplacement(std::nullopt);
  EXPECT_FALSE(m_Comments.Insert(u"^^ is loose."));
  EXPECT_EQ(Draft(), u"");
  ExpectPicker({0}, 1);
  Prompts().Queue(u"Please confirm the deleting of these comments.", Answer::Yes);
  m_Comments.OpenPicker();
  EXPECT_EQ(Draft(), u"Steep.");
  EXPECT_EQ(m_Comments.Picklist().Comments().size(), 1u);
}

TEST_F(CommentEditingTest, WhatIsSelectedBecomesAPreparedComment) {
  m_Sheet.SetComments(u"Typed words.");
  m_Comments.SaveSelection({0, 5});
  Prompts().Queue(u"Are you sure you want to add this comment to your picklist?", Answer::Yes);
  EXPECT_EQ(m_Comments.AddToPicklist(), CommentPicklist::Result::Done);
  EXPECT_EQ(m_Comments.Picklist().Comments().back().text, u"Typed");
}

TEST_F(CommentEditingTest, ATickedMaterialOffersItsComments) {
  ExpectPicker({1}, 1);  // none of these can be deleted
  m_Comments.OfferMaterialComments(m_Sheet.Materials()[0].materialID);
  EXPECT_EQ(Draft(), u"Second comment.");
  EXPECT_TRUE(m_Comments.OfferMaterialComments(m_Sheet.Materials()[1].materialID).empty()) << "it has none";
}

TEST_F(CommentEditingTest, CameraPicturesAreNumberedOn) {
  m_Device.GetWorkspace().Options().m_NextPictNumber = -3;
  m_Sheet.SetComments(u"See.");
  ASSERT_TRUE(m_Comments.AddCameraPicture() && m_Comments.AddCameraPicture());
  EXPECT_EQ(Draft(), u"See. ***Picture-1;Scaling=100*** ***Picture-2;Scaling=100***");
  m_Device.GetWorkspace().ForgetOptions();
  EXPECT_EQ(m_Device.GetWorkspace().Options().m_NextPictNumber, 3);
  m_Device.RunInLibrary(NoRoomFor("UPDATE ON Options"));
  EXPECT_FALSE(m_Comments.AddCameraPicture()) << "a number must not be given twice";
  EXPECT_EQ(m_Device.GetWorkspace().Options().m_NextPictNumber, 3);
}

}  // namespace
}  // namespace inspector::editing
