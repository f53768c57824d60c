// A visit made with finger and keyboard in the program itself, and the same visit made with the command line.

#include <QAbstractItemView>
#include <QDateTimeEdit>
#include <QDialogButtonBox>
#include <QImage>
#include <QMenu>
#include <QTabBar>
#include <sstream>

#include "app/MainFrame.h"
#include "app/Program.h"
#include "cli/CommandLine.h"
#include "editing/StepList.h"
#include "support/Screens.h"
#include "support/VisitFixture.h"

namespace inspector::app {
namespace {

using device::ui::ListView;
using editing::StepList;
using Lines = std::vector<std::string>;

constexpr char kComment[] = "Leaves in the east gutter.  No ground fault, seen.";
constexpr char kTag[] = " ***Path=\\My Documents\\Pictures\\1001\\gutter.jpg;Scaling=100***";

// A tablet with the small library and something for the picker and for the fingers to save.
class Tablet : public VisitDevice {
public:
  Tablet() {
    Library().AddCommentToStep(2, u"Leaves in the ^(east,west)^ gutter.", u"Drainage");
    Library().AddShortcut(u"gfi", u"ground fault");
    Close();
  }

  // Every row of every table.
  Lines Visit() const {
    Lines all;
    for (const std::string& table :
         Visits().Rows("SELECT name FROM sqlite_master WHERE type = 'table' ORDER BY name"))
      for (const std::string& row : Visits().Rows("SELECT rowid, * FROM \"" + table + '"'))
        all.push_back(table + ' ' + row);
    return all;
  }
};

class WholeVisitTest : public ::testing::Test {
protected:
  // From the start of the program to its end. `visit` begins when the window is there.
  void RunScreens(const Tablet& tablet, const std::function<void(CMainFrame&)>& visit) {
    QTimer::singleShot(0, [&] {
      for (QWidget* window : QApplication::topLevelWidgets())
        if (auto* frame = dynamic_cast<CMainFrame*>(window)) {
          frame->resize(480, 800);
          ASSERT_TRUE(QTest::qWaitForWindowActive(frame));
          visit(*frame);
          return Press(*frame, Qt::Key_Q, Qt::ControlModifier);
        }
      ADD_FAILURE() << "no main window";
    });
    EXPECT_EQ(RunProgram(*qApp, {tablet.Root()}), 0);
    QApplication::setQuitOnLastWindowClosed(false);
  }
  void RunCommands(const std::vector<Lines>& commands) {
    for (Lines words : commands) {
      words.insert(words.begin(), {"--home", m_Commands.Root(), "--yes"});
      std::ostringstream out;
      std::ostringstream problems;
      EXPECT_EQ(cli::RunCommandLine(words, out, problems), 0) << words[3] << ": " << problems.str();
    }
  }

  // A command's key. Without a display no window becomes active by itself when another one has closed.
  static void Press(CMainFrame& frame, Qt::Key key, Qt::KeyboardModifiers modifiers) {
    frame.activateWindow();
    EXPECT_TRUE(QTest::qWaitFor([&] { return frame.isActiveWindow(); }));
    QTest::keyClick(&frame, key, modifiers);
  }
  static void Tap(QWidget& screen, const char* button) {
    QTest::mouseClick(&Part<QPushButton>(screen, button), Qt::LeftButton);
  }
  static void Type(QWidget& screen, const char* field, const char* text) {
    auto& entry = Part<QWidget>(screen, field);
    entry.setFocus();
    // As an input method does: not every letter has a key.
    for (const QChar letter : QString::fromUtf8(text))
      letter == u'\n' ? QTest::keyClick(&entry, Qt::Key_Return)
                      : QTest::sendKeyEvent(QTest::Click, &entry, Qt::Key_unknown, letter, Qt::NoModifier);
  }
  static ListView& Rows(CMainFrame& frame, const char* name = "rows") {
    return Part<ListView>(*frame.CurrentScreen(), name);
  }
  static void Pick(QComboBox& box, Qt::Key way) {
    box.showPopup();
    QTest::keyClick(box.view(), way);
    QTest::keyClick(box.view(), Qt::Key_Return);
  }
  static void Choose(CMainFrame& frame, const char* rating) {
    auto& menu = Part<QMenu>(*frame.CurrentScreen(), "ratingMenu");
    for (QAction* action : menu.actions())
      if (action->text() == QLatin1String(rating))
        return QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(action).center());
    ADD_FAILURE() << rating << " is not offered";
  }
  void ExpectFile(const char* dialog, const std::filesystem::path& file) {
    m_Dialogs.Expect(dialog, [file](QDialog& files) {
      Fill(files, "fileNameEdit", file);
      files.accept();
    });
  }

  void FillHeader(CMainFrame& frame) {
    m_Dialogs.ExpectPress("messageBox", QStringLiteral("Yes"));
    Tap(frame, "newButton");
    Type(frame, "numberField", "A-17");
    Type(frame, "clientField", "Ana Ru\u00EDz");
    Type(frame, "addressField", "418 \"Juniper\" Lane");
    Type(frame, "citystatezipField", "Salem, OR");
    auto& type = Part<QComboBox>(frame, "docTypeField");
    Pick(type, Qt::Key_Home);
    // While the worker is at it.
    Type(frame, "notesField", "Dog\nin the yard");
    ASSERT_TRUE(QTest::qWaitFor([&] { return type.isEnabled(); }));
    Tap(frame, "agentsButton");
    Type(frame, "agentField", "B. Lund");
    Part<QDateTimeEdit>(frame, "dateField").setDateTime({{2026, 5, 31}, {14, 5}});
  }

  // The sheet has opened on the comments, because the rating asks for one.
  void CommentOnGutters(QDialog& sheet) {
    m_Dialogs.Expect("commentPickerDialog", [](QDialog& picker) {
      QTest::keyClicks(&Part<QLineEdit>(picker, "filterField"), QStringLiteral("GUTTER lea"));
      ClickCell(Part<ListView>(picker, "commentList"), 1, 1);  // below its group
      Part<QDialogButtonBox>(picker, "").button(QDialogButtonBox::Ok)->click();
    });
    m_Dialogs.Expect("placeholderDialog", [](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Return); });
    Tap(sheet, "pickerButton");
    auto& box = Part<QPlainTextEdit>(sheet, "commentBox");
    QTest::keyClicks(&box, QStringLiteral("  No GFI,"));
    const std::filesystem::path picture = m_Screens.Root() / "Camera/gutter.jpg";
    ExpectFile("attachDialog", picture);
    Tap(sheet, "attachButton");
    EXPECT_EQ(box.toPlainText().toStdString(),
              std::string("Leaves in the east gutter.  No ground fault,") + kTag);
    Part<QDialogButtonBox>(sheet, "").button(QDialogButtonBox::Ok)->click();
  }

  void InspectRoof(CMainFrame& frame) {
    Press(frame, Qt::Key_4, Qt::ControlModifier);
    for (const char* button : {"Yes", "OK"})  // a question and "Done!"
      m_Dialogs.ExpectPress("messageBox", QLatin1String(button));
    Press(frame, Qt::Key_D, Qt::ControlModifier | Qt::ShiftModifier);
    ClickCell(Rows(frame), 1, 1);
    m_Dialogs.Expect("stepPropertySheet", [this](QDialog& sheet) { CommentOnGutters(sheet); });
    ClickCell(Rows(frame), 1, StepList::kRating);
    Choose(frame, "Poor");
    m_Dialogs.Expect("stepPropertySheet", [this](QDialog& sheet) {
      QTest::keyClick(&Part<QAbstractButton>(sheet, "material1"), Qt::Key_Space);
      m_Dialogs.Expect("textEntryDialog", [](QDialog& entry) {
        QTest::keyClicks(&Part<QLineEdit>(entry, "entryField"), QStringLiteral("Slate"));
        QTest::keyClick(&entry, Qt::Key_Return);
      });
      QTest::keyClick(&Part<QAbstractButton>(sheet, "material3"), Qt::Key_Space);
      QTest::keyClick(&sheet, Qt::Key_Escape);
    });
    ClickCell(Rows(frame), 0, StepList::kMaterials);
    Press(frame, Qt::Key_Left, Qt::AltModifier);
    ClickCell(Rows(frame), 4, 1);  // the checklist
  }

  void ReviewAndReport(CMainFrame& frame) {
    Press(frame, Qt::Key_5, Qt::ControlModifier);
    ListView& commented = Rows(frame, "commentedSteps");
    ASSERT_EQ(commented.Model().rowCount(), 2);
    Pick(Part<QComboBox>(frame, "ratingFilter"), Qt::Key_End);
    ASSERT_EQ(commented.Model().rowCount(), 1) << "for the summary";
    m_Dialogs.Expect("stepPropertySheet", [](QDialog& sheet) {
      auto& box = Part<QPlainTextEdit>(sheet, "commentBox");
      QTextCursor cursor = box.textCursor();
      cursor.setPosition(static_cast<int>(box.toPlainText().indexOf(QStringLiteral(" ***"))));
      box.setTextCursor(cursor);
      QTest::keyClicks(&box, QStringLiteral(" seen."));
      QTest::keyClick(&sheet, Qt::Key_Escape);
    });
    ClickCell(commented, 0, 2);

    const std::filesystem::path reports = m_Screens.Root() / "Reports";
    m_Dialogs.Expect("reportDialog", [&](QDialog& dialog) {
      Pick(Part<QComboBox>(dialog, "reportLayout"), Qt::Key_Home);
      ExpectFile("saveDialog", reports / "visit");
      PressButton(dialog, "reportBrowse");
      m_Dialogs.ExpectPress("reportWritten", QStringLiteral("Close"));
      dialog.accept();
    });
    Press(frame, Qt::Key_R, Qt::ControlModifier);
    EXPECT_EQ(Words(frame, "message"), "The report is written: " + (reports / "visit.rtf").string());
  }

  ScriptedDialogs m_Dialogs;
  Tablet m_Screens;
  Tablet m_Commands;
};

TEST_F(WholeVisitTest, ScreensAndCommandsStoreTheSameAndWriteTheSameReport) {
  std::filesystem::create_directories(m_Screens.Root() / "Reports");
  std::filesystem::create_directories(m_Screens.Root() / "Camera");
  QImage gutter(320, 240, QImage::Format_RGB32);
  gutter.fill(Qt::darkGreen);
  const std::filesystem::path camera = m_Screens.Root() / "Camera/gutter.jpg";
  ASSERT_TRUE(gutter.save(QString::fromStdString(camera)));
  RunScreens(m_Screens, [this](CMainFrame& frame) {
    FillHeader(frame);
    InspectRoof(frame);
    ReviewAndReport(frame);
  });

  const std::filesystem::path pictures = m_Commands.Root() / "My Documents/Pictures/1001";
  std::filesystem::create_directories(pictures);
  std::filesystem::copy(camera, pictures / "gutter.jpg");
  RunCommands({{"new"},
               {"set", "1001", "number=A-17", "client=Ana Ru\u00EDz", "address=418 \"Juniper\" Lane",
                "citystatezip=Salem, OR", "notes=Dog\r\nin the yard"},
               {"apply-type", "1001", "House"},
               {"set", "1001", "agent=B. Lund", "date=2026-05-31 14:05"},
               {"defaults", "1001"}});
  const auto key = [this](const std::string& sql) { return m_Commands.Visits().Ask("SELECT " + sql); };
  const std::string shingles = key("StepID FROM Step WHERE StepNumber = '20.1'");
  const std::string gutters = key("StepID FROM Step WHERE StepNumber = '20.2'");
  RunCommands({{"rate", gutters, "Poor"},
               {"comment", gutters, std::string(kComment) + kTag},
               {"material", shingles, "Wood"},
               {"material", shingles, "Slate"},
               {"steps", key("CategoryID FROM Category WHERE CategoryTitle = 'Checklist'")},
               {"report", "1001", "--layout", "4 Column", "--out", m_Commands.Root() / "visit.rtf"}});

  EXPECT_EQ(m_Screens.Visit(), m_Commands.Visit());
  const std::string report = ContentOf(m_Screens.Root() / "Reports/visit.rtf");
  EXPECT_NE(report.find("jpegblip"), std::string::npos) << "the picture is in it";
  EXPECT_TRUE(report == ContentOf(m_Commands.Root() / "visit.rtf"));
}

}  // namespace
}  // namespace inspector::app
