#include "app/OptionsSheet.h"

#include "app/ReportTextPages.h"
#include "editing/PictureAttachment.h"
#include "support/Screens.h"
#include "support/VisitFixture.h"

namespace inspector::app {
namespace {

using OptionsSheetTest = tests::VisitTest;

TEST(ReportTextTest, SaysWhatAReportWouldLose) {
  EXPECT_EQ(LostCharacters(u"Caf\u00e9 \u20ac5 \u2192 \u2713\u2713 \U0001F3E0."), u"\u2192\u2713\U0001F3E0");
  EXPECT_EQ(ReportTextRemark(u"Plain.\r\nText."), u"");
  EXPECT_EQ(ReportTextRemark(u"a\\b \u2713"),
            u"Reports print ? in the place of these characters: \u2713\n"
            u"A backslash is a command in a report; it and the word behind it may be missing.");
  EXPECT_EQ(FooterRemark(u"1\r\n2\r\n3\r\n\r\n"), u"");
  EXPECT_EQ(FooterRemark(u"1\r\n2\r\n3\r\n4"), u"4 lines at the foot leave each page less room.");
  EXPECT_NE(DefinitionsRemark(u""), u"");
}

TEST_F(OptionsSheetTest, TheTextsOfTheReportsShowWhatIsToBeKnownAndAreSaved) {
  data::Workspace& workspace = m_Device.GetWorkspace();
  workspace.Options().m_FinePrint = u"One.\rTwo.";  // in the line ends of another program
  COptionsSheet sheet(workspace);
  const auto remark = [](const QWidget* page) {
    return tests::Part<QLabel>(*page, "remark").text().toStdString();
  };
  auto* terms =
      dynamic_cast<CDefOfTermsPage*>(tests::Part<QPlainTextEdit>(sheet, "DefinitionOfTerms").parentWidget());
  ASSERT_NE(terms, nullptr);
  EXPECT_NE(remark(terms).find("nine usual ratings"), std::string::npos);
  terms->findChild<QPlainTextEdit*>()->setPlainText(QStringLiteral("Fair \u2713\nPoor"));
  EXPECT_EQ(remark(terms), "Reports print ? in the place of these characters: \u2713");
  tests::Part<QCheckBox>(sheet, "AttachedSized").setChecked(false);
  sheet.accept();
  EXPECT_EQ(workspace.Options().m_DefinitionOfTerms, u"Fair \u2713\r\nPoor");
  EXPECT_EQ(workspace.Options().m_FinePrint, u"One.\rTwo.");
  EXPECT_EQ(editing::ReadAttachmentForm(workspace.GetMachine().registry), (editing::AttachmentForm{0, true}));
  EXPECT_EQ(OptionsForm(workspace).Load()[u"AttachedSized"], u"FALSE");
}

// A report of this very run must not have columns without a width.
TEST_F(OptionsSheetTest, WidthsOfNothingFollowTheFirstTypeAtOnce) {
  OptionsForm form(m_Device.GetWorkspace());
  OptionsForm::Values values = form.Load();
  for (auto& [name, value] : values)
    if (name.starts_with(u"ColumnWidth")) value = u"0";
  EXPECT_EQ(form.Save(values), data::OptionsSaved::Done);
  EXPECT_GT(m_Device.GetWorkspace().Options().m_ColumnWidth[0], 0);
}

TEST_F(OptionsSheetTest, WhatCouldNotBeSavedWholeIsTakenBack) {
  OptionsForm form(m_Device.GetWorkspace());
  OptionsForm::Values values = form.Load();
  values[u"OwnerName"] = u"Somebody Else";
  m_Device.RunInLibrary(
      tests::NoRoomFor("INSERT ON Options BEGIN SELECT RAISE(FAIL, 'no room'); END;CREATE TRIGGER Full2 "
                       "BEFORE UPDATE ON Options"));
  values[u"FinePrint"] = u"New.";
  EXPECT_EQ(form.Save(values), data::OptionsSaved::Failed);
  EXPECT_NE(form.Load()[u"OwnerName"], u"Somebody Else");
}

}  // namespace
}  // namespace inspector::app
