#include "app/OptionsSheet.h"

#include "app/ReportTextPages.h"
#include "editing/PictureAttachment.h"
#include "support/Screens.h"
#include "support/VisitFixture.h"

namespace inspector::app {
namespace {

class OptionsSheetTest : public VisitTest {
protected:
  data::Workspace& m_Workspace = m_Device.GetWorkspace();
  OptionsForm m_Form{m_Workspace};
  OptionsForm::Values m_Values = m_Form.Load();
};

TEST_F(OptionsSheetTest, OptionsAreSavedWholeOrRefused) {
  m_Values[u"Port"] = u"x";
  EXPECT_EQ(m_Form.WhyNot(m_Values)->text, u"\"Port\" takes a number from 10 to 10000.");
  m_Values[u"Port"] = u"4000";
  m_Values[u"ShowStepNumbers"] = u"TRUE";
  m_Values[u"OwnerName"] = u"Ana Ruiz";
  EXPECT_FALSE(m_Form.WhyNot(m_Values));
  EXPECT_EQ(m_Form.Save(m_Values), data::OptionsSaved::Done);
  m_Workspace.ForgetOptions();
  EXPECT_EQ(OptionsForm(m_Workspace).Load(), m_Values);
  EXPECT_EQ(m_Workspace.Options().m_Port, 4000);
  // A report of this very run must not have columns without a width.
  for (auto& [name, value] : m_Values)
    if (name.starts_with(u"ColumnWidth")) value = u"0";
  EXPECT_EQ(m_Form.Save(m_Values), data::OptionsSaved::Done);
  EXPECT_GT(m_Workspace.Options().m_ColumnWidth[0], 0);
  m_Values[u"TemplatePath"] = u"\\my documents\\Template_Data.cdb";  // another path by its case alone
  EXPECT_EQ(m_Form.Save(m_Values), data::OptionsSaved::MustQuit);
}

TEST_F(OptionsSheetTest, WhatCouldNotBeSavedWholeIsTakenBack) {
  m_Device.RunInLibrary(
      NoRoomFor("INSERT ON Options BEGIN SELECT RAISE(FAIL, 'no room'); END;CREATE TRIGGER Full2 "
                "BEFORE UPDATE ON Options"));
  m_Values[u"OwnerName"] = u"Somebody Else";
  m_Values[u"FinePrint"] = u"New.";
  EXPECT_EQ(m_Form.Save(m_Values), data::OptionsSaved::Failed);
  EXPECT_NE(m_Form.Load()[u"OwnerName"], u"Somebody Else");
}

TEST_F(OptionsSheetTest, TheTextsOfTheReportsShowWhatIsToBeKnownAndAreSaved) {
  m_Workspace.Options().m_FinePrint = u"One.\rTwo.";  // in the line ends of another program
  COptionsSheet sheet(m_Workspace);
  const QWidget& terms = *Part<QPlainTextEdit>(sheet, "DefinitionOfTerms").parentWidget();
  EXPECT_THAT(Words(terms, "remark"), HasSubstr("nine usual ratings"));
  Fill(terms, "DefinitionOfTerms", "Fair \u2713\nPoor");
  EXPECT_EQ(Words(terms, "remark"), "Reports print ? in the place of these characters: \u2713");
  Part<QCheckBox>(sheet, "AttachedSized").setChecked(false);
  sheet.accept();
  EXPECT_EQ(m_Workspace.Options().m_DefinitionOfTerms, u"Fair \u2713\r\nPoor");
  EXPECT_EQ(m_Workspace.Options().m_FinePrint, u"One.\rTwo.");
  EXPECT_EQ(editing::ReadAttachmentForm(m_Workspace.GetMachine().registry),
            (editing::AttachmentForm{0, true}));
}

TEST(ReportTextTest, SaysWhatAReportWouldLose) {
  EXPECT_EQ(LostCharacters(u"Caf\u00e9 \u20ac5 \u2192 \u2713\u2713 \U0001F3E0."), u"\u2192\u2713\U0001F3E0");
  EXPECT_EQ(ReportTextRemark(u"Plain.\r\nText."), u"");
  EXPECT_EQ(ReportTextRemark(u"a\\b \u2713"),
            u"Reports print ? in the place of these characters: \u2713\n"
            u"A backslash is a command in a report; it and the word behind it may be missing.");
  EXPECT_EQ(FooterRemark(u"1\r\n2\r\n3\r\n\r\n"), u"");
  EXPECT_EQ(FooterRemark(u"1\r\n2\r\n3\r\n4"), u"4 lines at the foot leave each page less room.");
}

}  // namespace
}  // namespace inspector::app
