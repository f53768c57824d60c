#include "device/ui/QtPrompts.h"

#include <QApplication>
#include <QLabel>
#include <QLayout>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QScroller>
#include <algorithm>

#include "device/ui/DatabasePathsDialog.h"
#include "device/ui/FileDialog.h"
#include "device/ui/QtProgressWindow.h"
#include "device/ui/TextConversion.h"
#include "device/ui/TextEntryDialog.h"
#include "device/ui/Theme.h"
#include "device/ui/WrappingCheckBox.h"

namespace inspector::device::ui {
namespace {

QMessageBox::Icon IconOf(Icon icon) {
  switch (icon) {
    case Icon::Information:
      return QMessageBox::Information;
    case Icon::Exclamation:
      return QMessageBox::Warning;
    case Icon::Hand:
      return QMessageBox::Critical;
    case Icon::None:
      break;
  }
  return QMessageBox::NoIcon;
}

// "Rich Text Format (*.rtf)|*.rtf|" as "Rich Text Format (*.rtf)": the pattern in brackets is what counts
// here.
QString FilterOf(const Text& filter) {
  QStringList entries;
  const std::vector<Text> parts = Split(filter, u'|');
  for (std::size_t n = 0; n + 1 < parts.size(); n += 2) {
    const QString caption = ToQString(parts[n]);
    entries +=
        caption.contains(u'(') ? caption : caption + QStringLiteral(" (") + ToQString(parts[n + 1]) + u')';
  }
  return entries.join(QStringLiteral(";;"));
}

// What a box needs besides its words, in logical pixels: the icon and the margins, the buttons and the title.
constexpr int kBesideWords = 120;
constexpr int kBelowWords = 200;

// How much there is of a screen for a box.
QSize RoomFor(const QMessageBox& box) {
  constexpr int kLeastWidth = 320;
  QSize room = box.screen()->availableSize();
  // The main window shows it; small dialogs do not.
  if (const QWidget* const parent = box.parentWidget())
    room.setWidth(std::clamp(parent->window()->width(), std::min(kLeastWidth, room.width()), room.width()));
  return room;
}

// The toolkit keeps a box to half of a narrow screen, where long words go on beyond its lower edge, and the
// answers with them.
void FitToScreen(QMessageBox& box, int leastWidth) {
  constexpr int kWideScreen = 900;
  constexpr int kToolkitsWidth = 500;  // that it makes a box at most, and half of the screen
  auto* const words = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
  if (words == nullptr) return;
  const QSize room = RoomFor(box);
  box.ensurePolished();
  const QRect lines =
      words->fontMetrics().boundingRect(QRect(0, 0, QWIDGETSIZE_MAX, QWIDGETSIZE_MAX), 0, words->text());
  if (room.width() < kWideScreen)
    words->setMinimumWidth(std::min(std::max(lines.width() + 1, leastWidth), room.width() - kBesideWords));
  if (lines.width() <= words->minimumWidth() && lines.height() < room.height() - kBelowWords) return;
  words->setWordWrap(true);
  const QFont full = words->font();
  ShrinkToFit(*words, full,
              std::max(words->minimumWidth(), std::min(room.width() / 2, kToolkitsWidth) - kBesideWords),
              room.height() - kBelowWords);
}

// What is too long to be read at one glance, and has to be read all the same. To be called when the box has
// everything else, because it lays itself out anew for each part.
void ShowScrolling(QMessageBox& box, const QString& words) {
  constexpr qsizetype kMostLetters = 500'000;
  constexpr QSize kPreferred(480, 360);
  auto* const label = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
  if (label == nullptr) return;
  auto* const text = new QPlainTextEdit(Shortened(words, kMostLetters), &box);
  text->setObjectName(QStringLiteral("longMessage"));
  text->setAccessibleName(QStringLiteral("Message"));
  text->setReadOnly(true);
  text->setTabChangesFocus(true);
  QScroller::grabGesture(text->viewport(), QScroller::TouchGesture);
  text->setMinimumSize(kPreferred.boundedTo(RoomFor(box) - QSize(kBesideWords, kBelowWords)));
  delete box.layout()->replaceWidget(label, text);
  label->hide();
}

class WaitCursor : public Prompts::Waiting {
public:
  WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
  ~WaitCursor() override { QApplication::restoreOverrideCursor(); }
};

}  // namespace

QWidget* QtPrompts::Parent() const {
  if (QWidget* const dialog = QApplication::activeModalWidget()) return dialog;
  return m_Window;
}

Answer QtPrompts::Show(const Message& message) {
  constexpr qsizetype kMostLetters = 2000;
  constexpr int kOfferWidth = 340;
  QMessageBox box(Parent());
  const QString words = ToDisplay(message.text);
  box.setObjectName(QStringLiteral("messageBox"));
  box.setTextFormat(Qt::PlainText);
  box.setWindowTitle(ToQString(message.title));
  box.setText(Shortened(words, kMostLetters));
  box.setIcon(IconOf(message.icon));
  // Boxes that come one after the other keep their buttons under the finger.
  const bool isLong = words.size() > kMostLetters;
  if (!isLong) FitToScreen(box, message.offer.empty() ? 0 : kOfferWidth);
  const auto ask = [&] {
    if (isLong) ShowScrolling(box, words);
    return box.exec();
  };
  switch (message.buttons) {
    case Buttons::Ok:
      box.setStandardButtons(QMessageBox::Ok);
      if (!message.offer.empty()) {
        auto* const offer = new WrappingCheckBox(&box);
        offer->setObjectName(QStringLiteral("offer"));
        offer->setText(ToQString(message.offer));
        const QSizePolicy wrapping = offer->sizePolicy();
        box.setCheckBox(offer);  // which then owns it, and makes it as wide as its words
        offer->setSizePolicy(wrapping);
        QWidget::setTabOrder(offer, box.button(QMessageBox::Ok));
        box.button(QMessageBox::Ok)->setFocus();  // a blank pressed again and again ticks nothing
      }
      box.setDefaultButton(QMessageBox::Ok);
      ask();
      return box.checkBox() && box.checkBox()->isChecked() ? Answer::OkForAll : Answer::Ok;
    case Buttons::OkCancel:
      box.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel);
      box.setDefaultButton(QMessageBox::Ok);
      return ask() == QMessageBox::Ok ? Answer::Ok : Answer::Cancel;
    case Buttons::YesNo:
      box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
      box.setDefaultButton(message.isNoFirst ? QMessageBox::No : QMessageBox::Yes);
      box.setEscapeButton(QMessageBox::No);
      return ask() == QMessageBox::Yes ? Answer::Yes : Answer::No;
  }
  return Answer::Cancel;
}

std::optional<Text> QtPrompts::AskText(const TextQuestion& question) {
  TextEntryDialog dialog(question, Parent());
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return dialog.Entered();
}

std::optional<std::filesystem::path> QtPrompts::AskSavePath(const SaveQuestion& question) {
  // Asks before an existing file is named.
  FileDialog dialog(Parent(), QStringLiteral("Save As"), "saveDialog");
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setFileMode(QFileDialog::AnyFile);
  const std::filesystem::path folder = m_Paths.ResolveStored(question.folder);
  // The device's own folders come into being as they are needed; one of the person's that is gone does not.
  std::error_code passedOver;  // the dialog shows another folder then
  if (!question.folder.starts_with(u'/')) std::filesystem::create_directories(folder, passedOver);
  dialog.ShowFolder(folder);
  dialog.setNameFilter(FilterOf(question.filter));
  dialog.setDefaultSuffix(ToQString(question.defaultExtension));
  dialog.selectFile(ToQString(question.suggestedName));
  const std::vector<std::filesystem::path> files = dialog.Ask();
  return files.empty() ? std::nullopt : std::optional(files.front());
}

std::optional<std::filesystem::path> QtPrompts::AskOpenPath(const OpenQuestion& question) {
  FileDialog dialog(Parent(), QStringLiteral("Open"), "openDialog");
  dialog.setFileMode(QFileDialog::ExistingFile);
  dialog.ShowFolder(m_Paths.ResolveStored(question.folder));
  dialog.setNameFilter(FilterOf(question.filter));
  const std::vector<std::filesystem::path> files = dialog.Ask();
  return files.empty() ? std::nullopt : std::optional(files.front());
}

std::optional<DatabasePaths> QtPrompts::AskDatabasePaths(const DatabasePaths& current) {
  Text missing;
  for (const Text& path : {current.templatePath, current.inspectionPath}) {
    std::error_code error;
    if (!std::filesystem::exists(m_Paths.ResolveStored(path), error))
      missing += (missing.empty() ? u"" : u"\n") + path;
  }
  DatabasePathsDialog dialog(current, missing, Parent());
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return dialog.Paths();
}

std::unique_ptr<Prompts::Waiting> QtPrompts::ShowWaiting() {
  return std::make_unique<WaitCursor>();
}

std::unique_ptr<ProgressWindow> QtPrompts::OpenProgress(const Text& title, bool cancellable) {
  return std::make_unique<QtProgressWindow>(title, cancellable, Parent());
}

}  // namespace inspector::device::ui
