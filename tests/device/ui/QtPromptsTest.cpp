#include "device/ui/QtPrompts.h"

#include <QFileDialog>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>

#include "device/ui/TextConversion.h"
#include "support/Screens.h"
#include "support/TestSupport.h"

namespace inspector::device::ui {
namespace {

class QtPromptsTest : public ::testing::Test {
protected:
  TemporaryFolder m_Folder;
  DevicePaths m_Paths{m_Folder.Path()};
  QtPrompts m_Prompts{m_Paths};
  ScriptedDialogs m_Person;
};

TEST_F(QtPromptsTest, ShowsTitleIconAndButtons) {
  m_Person.Expect("messageBox", [](QDialog& dialog) {
    auto& box = static_cast<QMessageBox&>(dialog);
    EXPECT_EQ(box.icon(), QMessageBox::Critical);
    EXPECT_EQ(box.standardButtons(), QMessageBox::Ok);
    box.button(QMessageBox::Ok)->click();
  });
  ShowError(m_Prompts, u"Line one.\r\rLine <b>two</b>.");
  EXPECT_EQ(m_Person.Boxes().front(), u"Error: Line one.\n\nLine <b>two</b>.");
  for (const auto& [ask, button, proceeds] : {std::tuple{&ConfirmWarning, "Yes", true},
                                              {&ConfirmCaution, "No", false},
                                              {&ConfirmDataAlert, "OK", true}}) {
    m_Person.ExpectPress("messageBox", QLatin1String(button));
    EXPECT_EQ(ask(m_Prompts, u"Go on?"), proceeds) << button;
  }
  for (const auto ask : {ConfirmUpdate, ConfirmCaution}) {  // Escape and the window's own button
    m_Person.Expect("messageBox", [](QDialog& dialog) { dialog.reject(); });
    EXPECT_FALSE(ask(m_Prompts, u"Go on?"));
  }
}

TEST_F(QtPromptsTest, OffersToShowNoMoreOfAKind) {
  const Message message{u"vtBuffer = ",    u"Alert", Buttons::Ok,
                        Icon::Information, false,    u"Don't show this again"};
  for (const bool isTicked : {false, true}) {
    m_Person.Expect("messageBox", [=](QDialog& dialog) {
      auto& box = static_cast<QMessageBox&>(dialog);
      EXPECT_EQ(box.checkBox()->text(), QStringLiteral("Don't show this again"));
      EXPECT_FALSE(box.checkBox()->isChecked());
      EXPECT_EQ(box.focusWidget(), box.button(QMessageBox::Ok)) << "Enter and the blank go on";
      box.checkBox()->setChecked(isTicked);
      box.button(QMessageBox::Ok)->click();
    });
    EXPECT_EQ(m_Prompts.Show(message), isTicked ? Answer::OkForAll : Answer::Ok);
  }
}

TEST_F(QtPromptsTest, LongWordsScrollToTheirEnd) {
  const Text words = Text(5000, u'x') + u" end";
  m_Person.Expect("messageBox", [&](QDialog& dialog) {
    const auto& text = Part<QPlainTextEdit>(dialog, "longMessage");
    EXPECT_EQ(FromQString(text.toPlainText()), words);
    EXPECT_TRUE(text.isReadOnly());
    EXPECT_TRUE(text.isVisible());
    EXPECT_TRUE(dialog.screen()->availableGeometry().contains(dialog.geometry()));
    static_cast<QMessageBox&>(dialog).button(QMessageBox::Ok)->click();
  });
  Alert(m_Prompts, words);
}

TEST_F(QtPromptsTest, OpensAFileThatIsThere) {
  m_Folder.Put("My Documents/house.rtf");
  const OpenQuestion question{u"\\My Documents\\", u"Rich Text Format (*.rtf)|*.rtf|"};
  m_Person.Expect("openDialog", [](QDialog& dialog) {
    EXPECT_EQ(static_cast<QFileDialog&>(dialog).nameFilters(), QStringList("Rich Text Format (*.rtf)"));
    Part<QLineEdit>(dialog, "fileNameEdit").setText(QStringLiteral("house.rtf"));
    QMetaObject::invokeMethod(&dialog, "accept");
  });
  EXPECT_EQ(m_Prompts.AskOpenPath(question), m_Folder / "My Documents/house.rtf");
  m_Person.Expect("openDialog", [](QDialog& dialog) { dialog.reject(); });
  EXPECT_EQ(m_Prompts.AskOpenPath(question), std::nullopt);
}

TEST_F(QtPromptsTest, TakesTextAndPaths) {
  m_Person.Expect("textEntryDialog", [](QDialog& dialog) {
    auto* const entry = dialog.findChild<QLineEdit*>();
    EXPECT_EQ(entry->text(), QStringLiteral("7"));
    entry->setText(QStringLiteral("2026-014"));
    dialog.accept();
  });
  EXPECT_EQ(m_Prompts.AskText({u"Enter the Doc #:", u"Duplicate", u"7"}), u"2026-014");
  m_Person.ExpectPress("textEntryDialog", QStringLiteral("Cancel"));
  EXPECT_EQ(m_Prompts.AskText({u"Enter the Doc #:", u"Duplicate", u"7"}), std::nullopt);

  m_Person.Expect("databasePathsDialog", [](QDialog& dialog) {
    Part<QLineEdit>(dialog, "templatePath").setText(QStringLiteral("\\T.cdb"));
    dialog.accept();
  });
  const auto paths = m_Prompts.AskDatabasePaths({u"\\a.cdb", u"\\b.cdb"});
  ASSERT_TRUE(paths);
  EXPECT_EQ(paths->templatePath + paths->inspectionPath, u"\\T.cdb\\b.cdb");
}

TEST_F(QtPromptsTest, SavesWhereThePersonSaysAndAsksBeforeReplacing) {
  const SaveQuestion question{u"Inspection_7.rtf", u"\\My Documents\\", u"Rich Text (*.rtf)|*.rtf|", u"rtf"};
  m_Person.Expect("saveDialog", [](QDialog& dialog) {
    Part<QLineEdit>(dialog, "fileNameEdit").setText(QStringLiteral("Elm Street"));
    QMetaObject::invokeMethod(&dialog, "accept");
  });
  EXPECT_EQ(m_Prompts.AskSavePath(question), m_Folder / "My Documents/Elm Street.rtf");

  m_Folder.Put("My Documents/Inspection_7.rtf", "before");
  m_Person.Expect("saveDialog", [](QDialog& dialog) {
    QMetaObject::invokeMethod(&dialog, "accept");
    dialog.reject();
  });
  m_Person.Expect("", [](QDialog& box) { static_cast<QMessageBox&>(box).button(QMessageBox::No)->click(); });
  EXPECT_EQ(m_Prompts.AskSavePath(question), std::nullopt);
  EXPECT_TRUE(Contains(m_Person.Boxes().back(), u"already exists"));
}

TEST_F(QtPromptsTest, ProgressCanBeCancelledOnlyWhereOffered) {
  const auto window = m_Prompts.OpenProgress(u"Exporting...", true);
  window->SetRange(0, 10);
  window->SetPosition(4);
  window->Step();
  auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
  ASSERT_TRUE(dialog);
  EXPECT_EQ(dialog->windowTitle(), QStringLiteral("Exporting..."));
  EXPECT_EQ(dialog->findChild<QProgressBar*>()->value(), 5);
  EXPECT_FALSE(window->Cancelled());
  dialog->reject();  // Escape
  EXPECT_TRUE(window->Cancelled());
  EXPECT_TRUE(dialog->isVisible()) << "it goes when the work has ended";

  const auto other = m_Prompts.OpenProgress(u"Deleting Inspection...", false);
  auto* const second = static_cast<QDialog*>(QApplication::activeModalWidget());
  EXPECT_FALSE(second->findChild<QPushButton*>());
  second->reject();
  EXPECT_FALSE(other->Cancelled());
}

}  // namespace
}  // namespace inspector::device::ui
