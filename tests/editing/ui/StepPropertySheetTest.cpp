#include "editing/ui/StepPropertySheet.h"

#include <sys/stat.h>

#include <QImage>
#include <QKeyEvent>
#include <QMimeData>
#include <QTabWidget>
#include <QUrl>
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

class StepPropertySheetTest : public RoofTest {
protected:
  void SetUp() override {
    ASSERT_TRUE(m_Sheet.OpenStep(m_Roof, m_Shingles, 1));
    m_Sheet.show();
    QApplication::processEvents();
  }
  template <typename Control>
  Control& Find(const char* name) {
    return Part<Control>(m_Sheet, name);
  }
  CommentBox& Comment() { return static_cast<CommentBox&>(Find<QPlainTextEdit>("commentBox")); }
  const StepDraft& Draft() { return m_Sheet.Logic().Draft(); }
  void Type(const QString& text) {
    for (const QChar letter : text) {
      const bool isLineEnd = letter == u'\n';
      QKeyEvent press(QEvent::KeyPress, isLineEnd ? Qt::Key_Return : 0, Qt::NoModifier,
                      isLineEnd ? QStringLiteral("\r") : QString(letter));
      QApplication::sendEvent(&Comment(), &press);
    }
  }
  // Files of the device's root, dropped into the comment.
  void Drop(const std::vector<const char*>& names) {
    QList<QUrl> files;
    for (const char* name : names)
      files.push_back(QUrl::fromLocalFile(QString::fromStdString(m_Device.Root() / name)));
    QMimeData dropped;
    dropped.setUrls(files);
    Comment().onPictures(dropped);
  }
  void PutPicture(const char* name, int width, int height) {
    QImage picture(width, height, QImage::Format_RGB32);
    picture.fill(Qt::blue);
    EXPECT_TRUE(picture.save(QString::fromStdString(m_Device.Root() / name)));
  }
  // The answer to the gap of a prepared text that is asked for next.
  void ExpectGap(const QString& prompt, const QString& words) {
    m_Person.Expect("placeholderDialog", [=](QDialog& dialog) {
      EXPECT_TRUE(dialog.findChild<QLabel*>()->text().startsWith(prompt)) << prompt.toStdString();
      if (auto* const choices = dialog.findChild<QComboBox*>("replacementChoices"))
        choices->setCurrentText(words);
      else
        Fill(dialog, "replacementField", words.toStdString());
      dialog.accept();
    });
  }
  void WaitUntil(const std::function<bool()>& holds) { EXPECT_TRUE(QTest::qWaitFor(holds)); }
  void Pick(int entry) { Choose(Find<QComboBox>("rating"), entry); }

  ScriptedDialogs m_Person;
  CStepPropertySheet m_Sheet{Document(), nullptr};
};

// In the rating, letters would choose another one; on a button, a blank would press it.
TEST_F(StepPropertySheetTest, MovesToThePagesOfEachStepAndKeysGoToItsComment) {
  auto& tabs = Find<QTabWidget>("pages");
  m_Sheet.activateWindow();
  const auto shown = [&] {
    return Words(m_Sheet, "stepCaption") + ", page " + std::to_string(tabs.currentIndex() + 1) + " of " +
           std::to_string(tabs.count()) + (m_Sheet.focusWidget() == &Comment() ? ", comment" : "");
  };
  EXPECT_EQ(shown(), "20.1. Shingles, page 2 of 4, comment");
  EXPECT_FALSE(Find<QAbstractButton>("previousButton").isEnabled());
  PressButton(m_Sheet, "nextButton");
  PressButton(m_Sheet, "nextButton");
  EXPECT_EQ(shown(), "20.3. Notes, page 1 of 3, comment") << "no materials";
  EXPECT_EQ(Find<QComboBox>("rating").itemText(0), QStringLiteral("<no ratings>"));
  EXPECT_FALSE(Find<QAbstractButton>("nextButton").isEnabled());
  PressButton(m_Sheet, "previousButton");
  EXPECT_EQ(shown(), "20.2. Gutters, page 2 of 4, comment") << "the comments stay in front";
  tabs.setCurrentIndex(0);
  Find<QLineEdit>("materialNote").setFocus();
  PressButton(m_Sheet, "nextButton");
  EXPECT_EQ(shown(), "20.3. Notes, page 1 of 3, comment") << "the page that had the focus is gone";
}

TEST_F(StepPropertySheetTest, WritesAMomentAfterTheFirstKeyAndCancelKeepsItUntilUndo) {
  inspection::UndoLog undo(Document());
  ASSERT_TRUE(m_Sheet.OpenStep(m_Roof, m_Gutters, std::nullopt));
  ASSERT_TRUE(m_Sheet.OpenStep(m_Roof, m_Shingles, std::nullopt));
  const Text before = m_Device.Finding(m_Shingles);
  // Somebody who never pauses: 20 keys of a tenth of a second each.
  for (int key = 0; key < 20 && m_Device.Finding(m_Shingles) == before; ++key) {
    Type(QStringLiteral("x"));
    QTest::qWait(100);
  }
  EXPECT_NE(m_Device.Finding(m_Shingles), before);
  Type(QStringLiteral("\nMore."));
  m_Sheet.reject();
  EXPECT_TRUE(m_Device.Finding(m_Shingles).ends_with(u"x\r\nMore.")) << "Cancel keeps what was typed";
  EXPECT_EQ(undo.Action(), u"Step 20.1");
  EXPECT_TRUE(undo.Undo());
  EXPECT_EQ(m_Device.Finding(m_Shingles), before);
}

TEST_F(StepPropertySheetTest, WhatCannotBeStoredIsSaidInTheSheetAndNotInABox) {
  auto& notStored = Find<QLabel>("notStored");
  {
    Shell other = m_Device.Visits();
    other.Run("BEGIN IMMEDIATE");
    Type(QStringLiteral("Typed while another program writes."));
    WaitUntil([&] { return notStored.isVisible(); });
    EXPECT_TRUE(notStored.text().contains(QStringLiteral("has locked the database")));
    EXPECT_TRUE(Prompts().Messages().empty());
    other.Run("ROLLBACK");
  }
  WaitUntil([&] { return !notStored.isVisible(); });
  EXPECT_TRUE(m_Device.Finding(m_Shingles).ends_with(u"Typed while another program writes."));
}

TEST_F(StepPropertySheetTest, PreparedTextsAskForTheirGapsAndOneUndoTakesAllBack) {
  m_Device.Library().AddShortcut(u"wat", u"Stain at ^(wall,ceiling)^, ^^ wide.");
  ExpectGap(QStringLiteral("Replace ^(wall,ceiling)^ with:"), QStringLiteral("wall"));
  m_Person.ExpectPress("placeholderDialog", QStringLiteral("Cancel"));
  Type(QStringLiteral("wat "));
  EXPECT_EQ(Draft().comments, u"wat ") << "a gap was cancelled";
  ExpectGap(QStringLiteral("Replace ^(wall,ceiling)^ with:"), QStringLiteral("wall"));
  ExpectGap(QStringLiteral("Replace ^ with:"), QStringLiteral("2 ft"));
  Type(QStringLiteral("wat "));
  EXPECT_EQ(Draft().comments, u"wat Stain at wall, 2 ft wide. ");
  Comment().undo();
  Type(QStringLiteral("!"));
  EXPECT_EQ(Draft().comments, u"wat wat !") << "the caret is where it was";

  m_Device.Library().AddCommentToStep(1, u"Worn at ^(eaves,ridge)^.", u"Wear");
  auto& picklist = Find<QComboBox>("picklist");
  picklist.showPopup();
  picklist.hidePopup();
  ASSERT_EQ(picklist.count(), 2);
  EXPECT_EQ(picklist.itemText(0), QStringLiteral("<<Wear>>"));
  picklist.setCurrentIndex(1);
  ExpectGap(QStringLiteral("Replace ^(eaves,ridge)^ with:"), QStringLiteral("ridge & hip"));
  Comment().onLeft();  // to the button
  PressButton(m_Sheet, "insertButton");
  EXPECT_EQ(Draft().comments, u"wat wat !  Worn at ridge & hip.");
  Comment().undo();
  EXPECT_EQ(Draft().comments, u"wat wat !");
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
  EXPECT_THAT(progress.statuses, ElementsAre(u"slow.jpg"));
  EXPECT_TRUE(progress.cancellable);
  while (!isStopped) std::this_thread::yield();
}

// A pipe that nobody writes to would hold whoever opens it for good.
TEST_F(StepPropertySheetTest, WhatIsNoFileIsNotWaitedFor) {
  const std::filesystem::path pipe = m_Device.Root() / "pipe.jpg";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  Drop({"pipe.jpg"});
  EXPECT_TRUE(device::Contains(Prompts().Messages().back().text, u"pipe.jpg is not a file"));
  EXPECT_TRUE(ReadPicture(pipe, QSize(8, 8)).isNull());
}

TEST_F(StepPropertySheetTest, APictureThatIsCutShortIsOffered) {
  QImage noise(64, 64, QImage::Format_RGB32);
  for (int n = 0; n < 64 * 64; ++n) noise.setPixel(n % 64, n / 64, static_cast<uint>(n) * 2654435761U);
  const std::string whole = MakeJpeg(noise, {}).toStdString();
  m_Device.Put("cut.jpg", whole.substr(0, whole.size() / 2));
  for (const auto answer : {Answer::No, Answer::Yes}) {
    EXPECT_EQ(Draft().comments, u"");
    Prompts().Queue(u"Caution", answer);
    Drop({"cut.jpg"});
    EXPECT_TRUE(device::Contains(Prompts().Messages().back().text, u"\ncut.jpg\n"));
  }
  EXPECT_TRUE(device::Contains(Draft().comments, u"cut.jpg;Scaling=100***"));
}

// A clipboard that nobody has put anything into is none at all.
TEST_F(StepPropertySheetTest, NothingIsPastedFromNowhere) {
  class Open : public CommentBox {
  public:
    using CommentBox::canInsertFromMimeData;
    using CommentBox::insertFromMimeData;
  } box;
  box.onPictures = Comment().onPictures;
  box.setPlainText(QStringLiteral("Worn."));
  const QMimeData empty;
  for (const QMimeData* source : {static_cast<const QMimeData*>(nullptr), &empty}) {
    EXPECT_FALSE(box.canInsertFromMimeData(source));
    box.insertFromMimeData(source);
  }
  EXPECT_EQ(box.Stored(), u"Worn.");
}

TEST_F(StepPropertySheetTest, RatingIsPickedAndClearedAlsoAfterAFailure) {
  Pick(1);
  EXPECT_EQ(m_Device.Finding(m_Shingles), u"20.1|Shingles|Poor||");
  Pick(3);
  EXPECT_EQ(Find<QComboBox>("rating").currentIndex(), -1);
  EXPECT_EQ(m_Device.Finding(m_Shingles), u"20.1|Shingles|||");
  m_Device.RunInVisits(NoRoomFor("UPDATE ON Step"));
  Pick(0);
  m_Device.RunInVisits(kRoomAgain);
  WaitUntil([this] { return m_Device.Finding(m_Shingles) == u"20.1|Shingles|Good||"; });
}

TEST_F(StepPropertySheetTest, ATickedMaterialIsWrittenAndOffersItsComments) {
  m_Person.Expect("commentPickerDialog", [](QDialog& dialog) {
    Part<device::ui::ListView>(dialog, "commentList").onClick(0, 1);
    dialog.accept();
  });
  PressButton(m_Sheet, "material0");
  EXPECT_FALSE(Comment().hasFocus()) << "behind the page of the materials it would take keys in secret";
  Prompts().QueueText(u"Enter the new material for: \r\nShingles", std::nullopt);
  PressButton(m_Sheet, "material3");
  EXPECT_FALSE(Find<QCheckBox>("material3").isChecked());
  PressButton(m_Sheet, "nextButton");
  EXPECT_EQ(m_Device.Finding(m_Shingles), u"20.1|Shingles||Asphalt;|Shingles last 20 years.");
}

// Another program's line ends count one unit, those of the field two.
TEST_F(StepPropertySheetTest, CommentsGoInAtTheCaretWhateverTheLineEnds) {
  m_Device.Enter(u"20.2", "Comments = 'one\ntwo\nthree four'");
  for (const std::int32_t step : {m_Gutters, m_Shingles, m_Gutters})
    ASSERT_TRUE(m_Sheet.OpenStep(m_Roof, step, 1));
  for (const int caret : {3, 9}) {
    QTextCursor cursor = Comment().textCursor();
    cursor.setPosition(caret);
    Comment().setTextCursor(cursor);
    Comment().onLeft();  // to the button
    PressButton(m_Sheet, "cameraButton");
    Type(QStringLiteral("!"));
  }
  EXPECT_TRUE(Draft().comments.starts_with(u"one!\r\ntwo\r\n!three four")) << ToUtf8(Draft().comments);
}

TEST_F(StepPropertySheetTest, PicturesStandBesideTheComment) {
  PutPicture("a;b.png", 2000, 1000);
  PressButton(m_Sheet, "cameraButton");
  Drop({"a;b.png", "none.jpg"});
  EXPECT_EQ(Prompts().Transcript().back(), u"Alert: none.jpg is not there any more.");
  const Text known = u" ***Path=\\My Documents\\Pictures\\" + Decimal(m_House) + u"\\a-b.jpg;Scaling=100***";
  const Text numbered = u" ***Picture-1;Scaling=100***";
  EXPECT_EQ(Draft().comments, numbered + known);
  const auto stored = m_Device.Root() / "My Documents/Pictures" / std::to_string(m_House) / "a-b.jpg";
  EXPECT_EQ(QImage(QString::fromStdString(stored)).size(), QSize(1600, 800));

  auto& strip = Find<QListWidget>("commentPictures");
  ASSERT_EQ(strip.count(), 2);
  EXPECT_EQ(strip.item(0)->text(), QStringLiteral("missing"));
  strip.setCurrentRow(1);
  PressButton(m_Sheet, "pictureEarlierButton");
  EXPECT_EQ(Draft().comments, known + numbered);
  strip.setCurrentRow(1);
  PressButton(m_Sheet, "removePictureButton");
  EXPECT_EQ(Draft().comments, known);
  Comment().undo();
  EXPECT_EQ(Draft().comments, known + numbered);
}

TEST_F(StepPropertySheetTest, ThePictureOfTheStepIsSetAndCleared) {
  auto& path = Find<QLineEdit>("imagePath");
  QTest::keyClicks(&path, QStringLiteral("\\gone.jpg"));
  Q_EMIT path.editingFinished();
  PressButton(m_Sheet, "pictureBefore");
  EXPECT_EQ(Draft().bitmapPath, u"\\gone.jpg");
  EXPECT_TRUE(Draft().pictureBefore);
  PressButton(m_Sheet, "clearPictureButton");
  EXPECT_EQ(Draft().bitmapPath, u"");
  EXPECT_TRUE(path.text().isEmpty());
}

TEST_F(StepPropertySheetTest, ClosesOverAFailureOnlyWhenThePersonSaysSo) {
  m_Device.RunInVisits(NoRoomFor("UPDATE ON Step"));
  Type(QStringLiteral("Typed."));
  const Text question = u"This step could not be written yet. Stay here and keep what was entered?";
  Prompts().Queue(question, Answer::Yes);
  PressButton(m_Sheet, "nextUnfinishedButton");
  EXPECT_TRUE(m_Sheet.isVisible());
  m_Device.RunInVisits(kRoomAgain);
  m_Sheet.accept();
  EXPECT_FALSE(m_Sheet.isVisible());
  EXPECT_FALSE(m_Sheet.WantsNextUnfinished()) << "that was given up with the first attempt";
  EXPECT_EQ(m_Device.Finding(m_Shingles), u"20.1|Shingles|||Typed.");
}

TEST_F(StepPropertySheetTest, PicturesAreReadBesideTheWork) {
  PutPicture("good.png", 40, 40);
  m_Device.Put("bad.jpg", "no picture");
  PictureReader reader(nullptr);
  std::vector<QSize> received;
  const auto read = [&](const char* name, const QSize& bounds) {
    reader.Read(m_Device.Root() / name, bounds,
                [&](const QImage& picture) { received.push_back(picture.size()); });
  };
  read("good.png", {64, 64});
  reader.Forget();
  read("bad.jpg", {64, 64});
  read("good.png", {20, 64});
  EXPECT_TRUE(received.empty()) << "nothing comes before the events are looked at";
  WaitUntil([&] { return received.size() == 2; });
  EXPECT_THAT(received, ElementsAre(QSize(0, 0), QSize(20, 20)));

  Type(QStringLiteral("***Path=\\bad.jpg***"));
  WaitUntil([&] { return Entries(m_Sheet, "commentPictures") == "unreadable"; });
}

TEST(PictureFileTest, ReadsTheDevicesBitmap) {
  const TemporaryFolder folder;
  std::string bitmap = QByteArray::fromHex(
                           "424D0000000000000000"  // then, where the pixels begin
                           "4600000028000000"      // and the size of what follows:
                           "0500000002000000"      // five columns, two rows
                           "01000200"              // two bits a pixel
                           "000000000000000000000000000000000000000000000000"
                           "000000000000FF0000FF0000FFFFFF00"  // black, red, green, white
                           "1B400000E4C00000")                 // 0 1 2 3 1; 3 2 1 0 3
                           .toStdString();
  const QImage picture = ReadPicture(folder.Put("a.2bp", bitmap), {100, 100});
  ASSERT_EQ(picture.size(), QSize(5, 2));
  for (const auto& [x, y, colour] : {std::tuple(0, 0, Qt::white),  // the last row stored is the first shown
                                     {1, 0, Qt::green},
                                     {1, 1, Qt::red},
                                     {4, 1, Qt::red}})
    EXPECT_EQ(picture.pixelColor(x, y), QColor(colour)) << x << ", " << y;
  EXPECT_EQ(ReadPicture(folder / "a.2bp", {2, 2}).size(), QSize(2, 1));
  for (const std::size_t size : {std::size_t{2}, std::size_t{54}, bitmap.size() - 1})
    EXPECT_TRUE(ReadPicture(folder.Put("cut.2bp", bitmap.substr(0, size)), {100, 100}).isNull()) << size;
}

TEST(PictureFileTest, MakesJpegsOfWhatCameFromACamera) {
  const TemporaryFolder folder;
  const auto broken = folder.Put("broken.jpg", "\xFF\xD8\xFF\xE0 no picture");
  EXPECT_TRUE(MakeJpeg(broken, {}).isEmpty());
  EXPECT_EQ(WhyNoJpeg(broken), u"is no picture that can be read");
  EXPECT_TRUE(ReadPicture(folder / "none.jpg", {100, 100}).isNull());

  // Held sideways, as its EXIF block says.
  const QByteArray plain = MakeJpeg(QImage(16, 8, QImage::Format_RGB32), {});
  const QByteArray exif =
      QByteArray::fromHex("FFE100224578696600004D4D002A00000008000101120003000000010006000000000000");
  const QByteArray turned = plain.left(2) + exif + plain.mid(2);
  const auto sideways = folder.Put("sideways.jpg", turned.toStdString());
  EXPECT_EQ(MakeJpeg(sideways, {0, false}), turned) << "as it is";
  for (const auto& [form, size] : {std::pair(AttachmentForm{}, QSize(8, 16)), {{4, false}, {4, 2}}})
    EXPECT_EQ(QImage::fromData(MakeJpeg(sideways, form)).size(), size);

  // The preview that a camera puts into the first segment is whole and says nothing about the picture.
  const QByteArray preview = QByteArray::fromHex("FFE10006FFD8FFD9");
  const std::string whole = (plain.left(2) + preview + plain.mid(2)).toStdString();
  EXPECT_FALSE(IsCutShort(folder.Put("whole.jpg", whole + "what a phone adds")));
  const auto cut = folder.Put("cut.jpg", whole.substr(0, whole.size() - 2));
  EXPECT_TRUE(IsCutShort(cut));
  EXPECT_FALSE(IsCutShort(folder.Put("rewritten.jpg", MakeJpeg(cut, {}).toStdString())));

  QImage clear(3, 3, QImage::Format_ARGB32);
  clear.fill(Qt::transparent);
  EXPECT_GT(QImage::fromData(MakeJpeg(clear, {})).pixelColor(1, 1).red(), 250) << "as white as paper";
}

}  // namespace
}  // namespace inspector::editing::ui
