#include "editing/ui/StepPropertySheet.h"

#include <sys/stat.h>

#include <QImage>
#include <QKeyEvent>
#include <QMimeData>
#include <QTabWidget>
#include <QUrl>
#include <fstream>
#include <thread>

#include "device/ui/TextConversion.h"
#include "editing/ui/CommentBox.h"
#include "editing/ui/PictureConverter.h"
#include "editing/ui/PictureFile.h"
#include "editing/ui/PictureReader.h"
#include "support/Screens.h"
#include "support/VisitFixture.h"

namespace inspector::editing::ui {
namespace {

using device::ui::FromQString;

class StepPropertySheetTest : public tests::VisitTest {
protected:
  void SetUp() override {
    m_Device.Visit(u"House");
    m_Roof = m_Device.OpenCategory(u"Roof");
    m_Shingles = m_Device.StepKey(u"20.1");
    m_Gutters = m_Device.StepKey(u"20.2");
    m_Device.Library().AddShortcut(u"gfi", u"ground fault");
    ASSERT_TRUE(m_Sheet.OpenStep(m_Roof, m_Shingles, 1));
    m_Sheet.show();
    QApplication::processEvents();
  }
  template <typename Control>
  Control& Find(const char* name) {
    return tests::Part<Control>(m_Sheet, name);
  }
  CommentBox& Comment() {
    return *static_cast<CommentBox*>(m_Sheet.findChild<QPlainTextEdit*>("commentBox"));
  }
  void Type(QWidget& field, const QString& text) {
    for (const QChar letter : text) {
      const int key = letter == u'\n' ? Qt::Key_Return : 0;
      QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier,
                      letter == u'\n' ? QStringLiteral("\r") : QString(letter));
      QApplication::sendEvent(&field, &press);
    }
  }
  void WaitUntil(const std::function<bool()>& holds) { EXPECT_TRUE(QTest::qWaitFor(holds)); }
  void Pick(int entry) { tests::Choose(Find<QComboBox>("rating"), entry); }

  std::int32_t m_Roof = 0;
  std::int32_t m_Shingles = 0;
  std::int32_t m_Gutters = 0;
  tests::ScriptedDialogs m_Person;
  CStepPropertySheet m_Sheet{Document(), nullptr};
};

TEST_F(StepPropertySheetTest, MovesAndShowsThePagesOfEachStep) {
  auto& tabs = Find<QTabWidget>("pages");
  EXPECT_EQ(m_Sheet.windowTitle(), QStringLiteral("Step Properties"));
  EXPECT_EQ(Find<QLabel>("stepCaption").text(), QStringLiteral("20.1. Shingles"));
  EXPECT_EQ(tabs.count(), 4);
  EXPECT_EQ(tabs.currentIndex(), 1);
  EXPECT_FALSE(Find<QAbstractButton>("previousButton").isEnabled());
  tests::PressButton(m_Sheet, "nextButton");
  tests::PressButton(m_Sheet, "nextButton");
  EXPECT_EQ(Find<QLabel>("stepCaption").text(), QStringLiteral("20.3. Notes"));
  EXPECT_EQ(tabs.count(), 3) << "no materials";
  EXPECT_EQ(tabs.currentWidget()->objectName(), QStringLiteral("commentsPage"));
  EXPECT_EQ(Find<QComboBox>("rating").itemText(0), QStringLiteral("<no ratings>"));
  EXPECT_FALSE(Find<QAbstractButton>("nextButton").isEnabled());
  tests::PressButton(m_Sheet, "previousButton");
  EXPECT_EQ(tabs.count(), 4);
  EXPECT_EQ(tabs.currentIndex(), 1) << "the comments stay in front";
}

// In the rating, letters would choose another one; on a button, a blank would press it.
TEST_F(StepPropertySheetTest, KeysGoToTheCommentOfAStepThatIsToBeExplained) {
  m_Sheet.activateWindow();
  EXPECT_EQ(m_Sheet.focusWidget(), &Comment());
  tests::PressButton(m_Sheet, "nextButton");
  tests::PressButton(m_Sheet, "nextButton");
  EXPECT_EQ(m_Sheet.focusWidget(), &Comment()) << "also where another page has come or gone";
  ASSERT_TRUE(m_Sheet.OpenStep(m_Roof, m_Gutters, 0));
  Find<QLineEdit>("materialNote").setFocus();
  tests::PressButton(m_Sheet, "nextButton");
  EXPECT_EQ(Find<QLabel>("stepCaption").text(), QStringLiteral("20.3. Notes"));
  EXPECT_EQ(m_Sheet.focusWidget(), &Comment()) << "the page that had the focus is not there any more";
}

TEST_F(StepPropertySheetTest, WritesAMomentAfterTheFirstKeyAndCancelKeepsItUntilUndo) {
  inspection::UndoLog undo(Document());
  ASSERT_TRUE(m_Sheet.OpenStep(m_Roof, m_Gutters, std::nullopt));
  ASSERT_TRUE(m_Sheet.OpenStep(m_Roof, m_Shingles, std::nullopt));
  const Text before = m_Device.Finding(m_Shingles);
  // Somebody who never pauses: 20 keys of a tenth of a second each.
  for (int key = 0; key < 20 && m_Device.Finding(m_Shingles) == before; ++key) {
    Type(Comment(), QStringLiteral("x"));
    QTest::qWait(100);
  }
  EXPECT_NE(m_Device.Finding(m_Shingles), before);
  Type(Comment(), QStringLiteral("\nMore."));
  m_Sheet.reject();
  EXPECT_TRUE(m_Device.Finding(m_Shingles).ends_with(u"x\r\nMore.")) << "Cancel keeps what was typed";
  EXPECT_EQ(undo.Action(), u"Step 20.1");
  EXPECT_TRUE(undo.Undo());
  EXPECT_EQ(m_Device.Finding(m_Shingles), before);
}

TEST_F(StepPropertySheetTest, OneUndoTakesAShortcutBack) {
  Type(Comment(), QStringLiteral("No GFI, "));
  EXPECT_EQ(m_Sheet.Logic().Draft().comments, u"No ground fault, ");
  Comment().undo();  // the blank
  Comment().undo();
  EXPECT_EQ(m_Sheet.Logic().Draft().comments, u"No GFI,");
  Type(Comment(), QStringLiteral(" here"));
  EXPECT_EQ(m_Sheet.Logic().Draft().comments, u"No GFI, here") << "the caret is where it was";
}

TEST_F(StepPropertySheetTest, WhatCannotBeStoredIsSaidInTheSheetAndNotInABox) {
  auto& notStored = Find<QLabel>("notStored");
  {
    tests::Shell other = m_Device.Visits();
    other.Run("BEGIN IMMEDIATE");
    Type(Comment(), QStringLiteral("Typed while another program writes."));
    WaitUntil([&] { return notStored.isVisible(); });
    EXPECT_TRUE(notStored.text().contains(QStringLiteral("has locked the database")));
    EXPECT_TRUE(Prompts().Messages().empty());
    other.Run("ROLLBACK");
  }
  WaitUntil([&] { return !notStored.isVisible(); });
  EXPECT_TRUE(m_Device.Finding(m_Shingles).ends_with(u"Typed while another program writes."));
}

TEST_F(StepPropertySheetTest, AShortcutAsksForItsGapsAndOneUndoTakesAllBack) {
  m_Device.Library().AddShortcut(u"wat", u"Stain at ^(wall,ceiling)^, ^^ wide.");
  const auto answer = [this](const QString& prompt, const char* field, const QString& words) {
    m_Person.Expect("placeholderDialog", [=](QDialog& dialog) {
      EXPECT_TRUE(dialog.findChild<QLabel*>()->text().startsWith(prompt))
          << dialog.findChild<QLabel*>()->text().toStdString();
      if (auto* choices = dialog.findChild<QComboBox*>(QLatin1String(field))) choices->setCurrentText(words);
      if (auto* line = dialog.findChild<QLineEdit*>(QLatin1String(field))) line->setText(words);
      dialog.accept();
    });
  };
  answer(QStringLiteral("Replace ^(wall,ceiling)^ with:"), "replacementChoices", QStringLiteral("wall"));
  m_Person.ExpectPress("placeholderDialog", QStringLiteral("Cancel"));
  Type(Comment(), QStringLiteral("wat "));
  EXPECT_EQ(m_Sheet.Logic().Draft().comments, u"wat ") << "a gap was cancelled";
  answer(QStringLiteral("Replace ^(wall,ceiling)^ with:"), "replacementChoices", QStringLiteral("wall"));
  answer(QStringLiteral("Replace ^ with:"), "replacementField", QStringLiteral("2 ft"));
  Type(Comment(), QStringLiteral("wat "));
  EXPECT_EQ(m_Sheet.Logic().Draft().comments, u"wat Stain at wall, 2 ft wide. ");
  Comment().undo();
  EXPECT_EQ(m_Sheet.Logic().Draft().comments, u"wat wat ");
}

TEST_F(StepPropertySheetTest, ALargePictureIsReadBesideTheWorkAndCanBeCancelled) {
  Prompts().CancelAtStep(1);  // the first is done at once
  PictureConverter converter(Prompts());
  PictureConverter::Run run(converter, 3);
  std::atomic<bool> isStopped = false;
  const auto slow = [&isStopped](const std::atomic<bool>& stop) {
    while (!stop) std::this_thread::yield();
    isStopped = true;
    return QByteArray("late");
  };
  EXPECT_EQ(run.Next(u"quick.png", [](const auto&) { return QByteArray("made"); }), "made");
  EXPECT_TRUE(Prompts().ProgressWindows().empty()) << "for a moment nobody needs one";
  EXPECT_EQ(run.Next(u"slow.jpg", slow), std::nullopt);
  EXPECT_EQ(run.Next(u"third.png", slow), std::nullopt);
  ASSERT_EQ(Prompts().ProgressWindows().size(), 1u);
  const auto& progress = *Prompts().ProgressWindows().back();
  EXPECT_EQ(progress.title, u"Attaching Pictures...");
  EXPECT_THAT(progress.statuses, ::testing::ElementsAre(u"slow.jpg"));
  EXPECT_TRUE(progress.cancellable);
  while (!isStopped) std::this_thread::yield();
}

// A pipe that nobody writes to would hold whoever opens it for good.
TEST_F(StepPropertySheetTest, WhatIsNoFileIsNotWaitedFor) {
  const std::filesystem::path pipe = m_Device.Root() / "pipe.jpg";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  QMimeData dropped;
  dropped.setUrls({QUrl::fromLocalFile(QString::fromStdString(pipe))});
  Comment().onPictures(dropped);
  EXPECT_TRUE(device::Contains(Prompts().Messages().back().text, u"pipe.jpg is not a file"));
  EXPECT_TRUE(ReadPicture(pipe, QSize(8, 8)).isNull());
}

TEST_F(StepPropertySheetTest, APictureThatIsCutShortIsOffered) {
  QImage noise(64, 64, QImage::Format_RGB32);
  for (int n = 0; n < 64 * 64; ++n) noise.setPixel(n % 64, n / 64, static_cast<uint>(n) * 2654435761U);
  const std::string whole = MakeJpeg(noise, {}).toStdString();
  std::ofstream(m_Device.Root() / "cut.jpg") << whole.substr(0, whole.size() / 2);
  QMimeData dropped;
  dropped.setUrls({QUrl::fromLocalFile(QString::fromStdString(m_Device.Root() / "cut.jpg"))});
  for (const auto answer : {device::Answer::No, device::Answer::Yes}) {
    EXPECT_EQ(m_Sheet.Logic().Draft().comments, u"");
    Prompts().Queue(u"Caution", answer);
    Comment().onPictures(dropped);
    EXPECT_TRUE(device::Contains(Prompts().Messages().back().text, u"\ncut.jpg\n"));
  }
  EXPECT_TRUE(device::Contains(m_Sheet.Logic().Draft().comments, u"cut.jpg;Scaling=100***"));
}

// A clipboard that nobody has put anything into is none at all.
TEST_F(StepPropertySheetTest, NothingIsPastedFromNowhere) {
  class Open : public CommentBox {
  public:
    using CommentBox::canInsertFromMimeData;
    using CommentBox::insertFromMimeData;
  } box;
  box.setPlainText(QStringLiteral("Worn."));
  const QMimeData empty;
  for (const QMimeData* source : {static_cast<const QMimeData*>(nullptr), &empty}) {
    EXPECT_FALSE(box.canInsertFromMimeData(source));
    box.insertFromMimeData(source);
  }
  EXPECT_EQ(box.Stored(), u"Worn.");
}

TEST_F(StepPropertySheetTest, RatingIsPickedAndCleared) {
  Pick(1);
  EXPECT_EQ(m_Device.Finding(m_Shingles), u"20.1|Shingles|Poor||");
  Pick(3);
  EXPECT_EQ(Find<QComboBox>("rating").currentIndex(), -1);
  EXPECT_EQ(m_Device.Finding(m_Shingles), u"20.1|Shingles|||");
}

TEST_F(StepPropertySheetTest, ATickedMaterialIsWrittenAndOffersItsComments) {
  m_Person.Expect("commentPickerDialog", [](QDialog& dialog) {
    auto& list = tests::Part<device::ui::ListView>(dialog, "commentList");
    tests::Part<QLineEdit>(dialog, "filterField").setText(QStringLiteral("years LAST"));
    EXPECT_EQ(list.Model().rowCount(), 1);
    list.onClick(0, 1);
    dialog.accept();
  });
  tests::PressButton(m_Sheet, "material0");
  EXPECT_EQ(m_Sheet.Logic().Draft().comments, u"Shingles last 20 years.");
  EXPECT_FALSE(Comment().hasFocus()) << "behind the page of the materials it would take keys in secret";
  Prompts().QueueText(u"Enter the new material for: \r\nShingles", std::nullopt);
  tests::PressButton(m_Sheet, "material3");
  EXPECT_FALSE(Find<QCheckBox>("material3").isChecked());
  tests::PressButton(m_Sheet, "nextButton");
  EXPECT_EQ(m_Device.Finding(m_Shingles), u"20.1|Shingles||Asphalt;|Shingles last 20 years.");
}

// Another program's line ends count one unit, those of the field two.
TEST_F(StepPropertySheetTest, CommentsGoInAtTheCaretWhateverTheLineEnds) {
  m_Device.Library().AddCommentToStep(1, u"Moss.", u"");
  m_Device.Enter(u"20.2", "Comments = 'one\ntwo\nthree four'");
  ASSERT_TRUE(m_Sheet.OpenStep(m_Roof, m_Gutters, 1));
  ASSERT_TRUE(m_Sheet.OpenStep(m_Roof, m_Shingles, 1));
  ASSERT_TRUE(m_Sheet.OpenStep(m_Roof, m_Gutters, 1));
  for (const int caret : {3, 9}) {
    QTextCursor cursor = Comment().textCursor();
    cursor.setPosition(caret);
    Comment().setTextCursor(cursor);
    Comment().onLeft();  // to the button
    tests::PressButton(m_Sheet, "cameraButton");
    Type(Comment(), QStringLiteral("!"));
  }
  EXPECT_TRUE(m_Sheet.Logic().Draft().comments.starts_with(u"one!\r\ntwo\r\n!three four"))
      << device::ToUtf8(m_Sheet.Logic().Draft().comments);
}

TEST_F(StepPropertySheetTest, PreparedCommentsFillTheirGapsAndUndoTakesThemBack) {
  m_Device.Library().AddCommentToStep(1, u"Worn at ^(eaves,ridge)^.", u"Wear");
  auto& picklist = Find<QComboBox>("picklist");
  picklist.showPopup();
  picklist.hidePopup();
  ASSERT_EQ(picklist.count(), 2);
  EXPECT_EQ(picklist.itemText(0), QStringLiteral("<<Wear>>"));
  picklist.setCurrentIndex(1);
  m_Person.ExpectPress("placeholderDialog", QStringLiteral("Cancel"));
  tests::PressButton(m_Sheet, "insertButton");
  EXPECT_EQ(m_Sheet.Logic().Draft().comments, u"");
  m_Person.Expect("placeholderDialog", [](QDialog& dialog) {
    auto* choices = dialog.findChild<QComboBox*>("replacementChoices");
    EXPECT_EQ(choices->count(), 2);
    choices->setCurrentText(QStringLiteral("ridge & hip"));
    dialog.accept();
  });
  tests::PressButton(m_Sheet, "insertButton");
  EXPECT_EQ(m_Sheet.Logic().Draft().comments, u"Worn at ridge & hip.");
  EXPECT_EQ(Comment().toPlainText(), QStringLiteral("Worn at ridge & hip."));
  Comment().undo();
  EXPECT_EQ(m_Sheet.Logic().Draft().comments, u"");
}

TEST_F(StepPropertySheetTest, PicturesStandBesideTheComment) {
  QImage large(2000, 1000, QImage::Format_RGB32);
  large.fill(Qt::red);
  const std::filesystem::path folder = m_Device.Root() / "Camera";
  std::filesystem::create_directories(folder);
  ASSERT_TRUE(large.save(QString::fromStdString(folder / "a;b.png")));
  QMimeData dropped;
  dropped.setUrls({QUrl::fromLocalFile(QString::fromStdString(folder / "a;b.png")),
                   QUrl::fromLocalFile(QString::fromStdString(folder / "none.jpg"))});
  tests::PressButton(m_Sheet, "cameraButton");
  Comment().onPictures(dropped);
  EXPECT_EQ(Prompts().Transcript().back(), u"Alert: none.jpg is not there any more.");
  const Text visit = device::Decimal(Document().Inspection().m_InspectionID);
  const Text known = u" ***Path=\\My Documents\\Pictures\\" + visit + u"\\a-b.jpg;Scaling=100***";
  EXPECT_EQ(m_Sheet.Logic().Draft().comments, u" ***Picture-1;Scaling=100***" + known);
  const auto stored = m_Device.Root() / "My Documents/Pictures" / device::ToUtf8(visit) / "a-b.jpg";
  EXPECT_EQ(QImage(QString::fromStdString(stored)).size(), QSize(1600, 800));
  ASSERT_TRUE(WriteAttachmentForm(m_Device.GetWorkspace().GetMachine().registry, {0, true}));
  EXPECT_EQ(QImage::fromData(MakeJpeg(folder / "a;b.png",
                                      ReadAttachmentForm(m_Device.GetWorkspace().GetMachine().registry)))
                .size(),
            QSize(2000, 1000));

  auto& strip = Find<QListWidget>("commentPictures");
  ASSERT_EQ(strip.count(), 2);
  EXPECT_EQ(strip.item(0)->text(), QStringLiteral("missing"));
  strip.setCurrentRow(1);
  tests::PressButton(m_Sheet, "pictureEarlierButton");
  EXPECT_EQ(m_Sheet.Logic().Draft().comments, known + u" ***Picture-1;Scaling=100***");
  strip.setCurrentRow(1);
  tests::PressButton(m_Sheet, "removePictureButton");
  EXPECT_EQ(m_Sheet.Logic().Draft().comments, known);
  Comment().undo();
  EXPECT_EQ(m_Sheet.Logic().Draft().comments, known + u" ***Picture-1;Scaling=100***");
}

TEST_F(StepPropertySheetTest, ThePictureOfTheStepIsSetAndCleared) {
  auto& path = Find<QLineEdit>("imagePath");
  path.setText(QStringLiteral("\\gone.jpg"));
  Q_EMIT path.textEdited(path.text());
  Q_EMIT path.editingFinished();
  tests::PressButton(m_Sheet, "pictureBefore");
  EXPECT_EQ(m_Sheet.Logic().Draft().bitmapPath, u"\\gone.jpg");
  EXPECT_TRUE(m_Sheet.Logic().Draft().pictureBefore);
  tests::PressButton(m_Sheet, "clearPictureButton");
  EXPECT_EQ(m_Sheet.Logic().Draft().bitmapPath, u"");
  EXPECT_TRUE(path.text().isEmpty());
}

TEST_F(StepPropertySheetTest, ClosesOverAFailureOnlyWhenThePersonSaysSo) {
  m_Device.RunInVisits(tests::NoRoomFor("UPDATE ON Step"));
  Type(Comment(), QStringLiteral("Typed."));
  const Text question = u"This step could not be written yet. Stay here and keep what was entered?";
  Prompts().Queue(question, device::Answer::Yes);
  tests::PressButton(m_Sheet, "nextUnfinishedButton");
  EXPECT_TRUE(m_Sheet.isVisible());
  m_Device.RunInVisits(tests::kRoomAgain);
  m_Sheet.accept();
  EXPECT_FALSE(m_Sheet.isVisible());
  EXPECT_FALSE(m_Sheet.WantsNextUnfinished()) << "that was given up with the first attempt";
  EXPECT_EQ(m_Device.Finding(m_Shingles), u"20.1|Shingles|||Typed.");
}

TEST_F(StepPropertySheetTest, ARatingThatCouldNotBeWrittenIsTriedAgain) {
  m_Device.RunInVisits(tests::NoRoomFor("UPDATE ON Step"));
  Pick(0);
  m_Device.RunInVisits(tests::kRoomAgain);
  WaitUntil([this] { return m_Device.Finding(m_Shingles) == u"20.1|Shingles|Good||"; });
}

TEST_F(StepPropertySheetTest, PicturesAreReadBesideTheWork) {
  const auto& root = m_Device.Root();
  QImage small(40, 40, QImage::Format_RGB32);
  small.fill(Qt::blue);
  ASSERT_TRUE(small.save(QString::fromStdString(root / "good.png")));
  std::filesystem::copy(root / "registry.toml", root / "bad.jpg");
  PictureReader reader(nullptr);
  std::vector<QSize> received;
  const auto receive = [&](const QImage& picture) { received.push_back(picture.size()); };
  reader.Read(root / "good.png", {64, 64}, receive);
  reader.Forget();
  reader.Read(root / "bad.jpg", {64, 64}, receive);
  reader.Read(root / "good.png", {20, 64}, receive);
  EXPECT_TRUE(received.empty()) << "nothing comes before the events are looked at";
  WaitUntil([&] { return received.size() == 2; });
  EXPECT_THAT(received, ::testing::ElementsAre(QSize(0, 0), QSize(20, 20)));

  Type(Comment(), QStringLiteral("***Path=\\bad.jpg***"));
  const auto& strip = Find<QListWidget>("commentPictures");
  ASSERT_EQ(strip.count(), 1);
  WaitUntil([&] { return strip.item(0)->text() == QStringLiteral("unreadable"); });
}

TEST(PictureFileTest, ReadsTheDevicesBitmapAndPassesOverWhatIsBroken) {
  const tests::TemporaryFolder folder;
  std::string bitmap("BM", 2);
  const auto add = [&bitmap](std::uint32_t value, int bytes) {
    for (int n = 0; n < bytes; ++n)
      bitmap.push_back(n < 4 ? static_cast<char>(value >> (8 * n) & 0xFF) : '\0');
  };
  add(0, 8);
  add(70, 4);  // where the pixels begin
  add(40, 4);
  add(5, 4);
  add(2, 4);
  add(1, 2);
  add(2, 2);  // bits a pixel
  add(0, 24);
  for (const std::uint32_t colour : {0x000000u, 0xFF0000u, 0x00FF00u, 0xFFFFFFu}) add(colour, 4);
  bitmap += std::string("\x1B\x40\x00\x00", 4) + std::string("\xE4\xC0\x00\x00", 4);  // 0 1 2 3 1; 3 2 1 0 3
  const QImage picture = ReadPicture(folder.Put("a.2bp", bitmap), {100, 100});
  ASSERT_EQ(picture.size(), QSize(5, 2));
  EXPECT_EQ(picture.pixelColor(0, 0), QColor(Qt::white)) << "the last row stored is the first shown";
  EXPECT_EQ(picture.pixelColor(1, 0), QColor(0, 255, 0));
  EXPECT_EQ(picture.pixelColor(1, 1), QColor(255, 0, 0));
  EXPECT_EQ(picture.pixelColor(4, 1), QColor(255, 0, 0));
  EXPECT_EQ(ReadPicture(folder / "a.2bp", {2, 2}).size(), QSize(2, 1));
  for (std::size_t size : {std::size_t{2}, std::size_t{54}, bitmap.size() - 1})
    EXPECT_TRUE(ReadPicture(folder.Put("cut.2bp", bitmap.substr(0, size)), {100, 100}).isNull());
  EXPECT_TRUE(ReadPicture(folder / "none.jpg", {100, 100}).isNull());
  EXPECT_TRUE(MakeJpeg(folder.Put("broken.jpg", "\xFF\xD8\xFF\xE0 no picture"), {}).isEmpty());

  // Held sideways, as its EXIF block says.
  const QByteArray plain = MakeJpeg(QImage(16, 8, QImage::Format_RGB32), {});
  const QByteArray exif =
      QByteArray::fromHex("FFE100224578696600004D4D002A00000008000101120003000000010006000000000000");
  const QByteArray turned = plain.left(2) + exif + plain.mid(2);
  const auto sideways = folder.Put("sideways.jpg", turned.toStdString());
  EXPECT_EQ(QImage::fromData(MakeJpeg(sideways, {})).size(), QSize(8, 16));
  EXPECT_EQ(MakeJpeg(sideways, {0, false}), turned) << "as it is";
  EXPECT_EQ(QImage::fromData(MakeJpeg(sideways, {4, false})).size(), QSize(4, 2));
  EXPECT_EQ(WhyNoJpeg(folder / "broken.jpg"), u"is no picture that can be read");

  // The preview that a camera puts into the first segment is whole and says nothing about the picture.
  const QByteArray preview = QByteArray::fromHex("FFE10006FFD8FFD9");
  const std::string whole = (plain.left(2) + preview + plain.mid(2)).toStdString();
  EXPECT_FALSE(IsCutShort(folder.Put("whole.jpg", whole + "what a phone adds")));
  const auto cut = folder.Put("cut.jpg", whole.substr(0, whole.size() - 2));
  EXPECT_TRUE(IsCutShort(cut));
  EXPECT_FALSE(IsCutShort(folder.Put("rewritten.jpg", MakeJpeg(cut, {}).toStdString())));

  QImage clear(3, 3, QImage::Format_ARGB32);
  clear.fill(Qt::transparent);
  const QImage paper = QImage::fromData(MakeJpeg(clear, {}));
  EXPECT_GT(paper.pixelColor(1, 1).red(), 250) << "what is transparent is as white as paper";
}

}  // namespace
}  // namespace inspector::editing::ui
