#include "editing/ui/PicturePage.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

#include "device/ui/TextConversion.h"
#include "device/ui/TypingHistory.h"
#include "device/ui/WrappingCheckBox.h"
#include "editing/CardPictures.h"
#include "editing/PictureAttachment.h"

namespace inspector::editing::ui {

using device::ui::FromQString;
using device::ui::ToQString;

namespace {

constexpr QSize kLargestPreview(1280, 1280);

}  // namespace

void PicturePreview::Show(const QImage& picture, const QString& words) {
  m_Picture = picture;
  m_Words = words;
  update();
}

void PicturePreview::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  if (m_Picture.isNull()) {
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextWordWrap, m_Words);
    return;
  }
  QSize size = m_Picture.size();
  if (size.width() > width() || size.height() > height()) size.scale(this->size(), Qt::KeepAspectRatio);
  QRect target({}, size);
  target.moveCenter(rect().center());
  painter.drawImage(target, m_Picture);
}

CPicturePage::CPicturePage(StepSheet& sheet, SheetDialogs& dialogs, QWidget* parent)
    : QWidget(parent), m_Sheet(sheet), m_Dialogs(dialogs) {
  setObjectName(QStringLiteral("picturePage"));
  setWindowTitle(QStringLiteral("Pict"));
  auto* caption = new QLabel(tr("Image &Path"), this);
  m_Path = new QLineEdit(this);
  m_Path->setObjectName(QStringLiteral("imagePath"));
  m_Path->setAccessibleName(tr("Image Path"));
  caption->setBuddy(m_Path);
  auto* browse = new QPushButton(tr("&Browse..."), this);
  browse->setObjectName(QStringLiteral("browseButton"));
  browse->setAutoDefault(false);
  m_Preview = new PicturePreview(this);
  m_Preview->setObjectName(QStringLiteral("preview"));
  m_Preview->setAccessibleName(tr("Picture of the step"));
  m_Preview->setMinimumHeight(120);
  m_Before = new device::ui::WrappingCheckBox(this);
  m_Before->setText(tr("P&rint picture before step"));
  m_Before->setObjectName(QStringLiteral("pictureBefore"));
  auto* clear = new QPushButton(tr("C&lear Picture"), this);
  clear->setObjectName(QStringLiteral("clearPictureButton"));
  clear->setAutoDefault(false);
  connect(m_Path, &QLineEdit::textEdited, this, [this](const QString& text) {
    m_Sheet.SetBitmapPath(FromQString(text));
    const device::Machine& machine = m_Sheet.GetWorkspace().GetMachine();
    // Undo, or the end of a name; in the midst of one there is nothing to show yet.
    if (text.isEmpty() || machine.files.Exists(machine.paths.ResolvePicture(FromQString(text))))
      ShowPicture();
    if (onEdited) onEdited();
  });
  connect(m_Path, &QLineEdit::editingFinished, this, [this] { ShowPicture(); });
  connect(browse, &QPushButton::clicked, this, [this] { Browse(); });
  connect(clear, &QPushButton::clicked, this, [this] { SetPath({}); });
  connect(m_Before, &QCheckBox::clicked, this, [this](bool before) {
    m_Sheet.SetPictureBefore(before);
    if (onEdited) onEdited();
  });
  auto* path = new QHBoxLayout;
  path->addWidget(m_Path, 1);
  path->addWidget(browse);
  auto* layout = new QVBoxLayout(this);
  auto* captionRow = new QHBoxLayout;
  captionRow->addWidget(caption, 1, Qt::AlignBottom);
  captionRow->addWidget(new device::ui::TypingHistory(*this));
  layout->addLayout(captionRow);
  layout->addLayout(path);
  layout->addWidget(m_Preview, 1);
  layout->addWidget(m_Before);
  layout->addWidget(clear);
}

void CPicturePage::ShowStep() {
  m_Path->setText(ToQString(m_Sheet.Draft().bitmapPath));
  m_Before->setChecked(m_Sheet.Draft().pictureBefore);
  ShowPicture();
}

void CPicturePage::Browse() {
  data::Workspace& workspace = m_Sheet.GetWorkspace();
  const device::Machine& machine = workspace.GetMachine();
  const CardPictures card(machine.files, machine.paths, workspace.Options().m_DefaultPictCardPath);
  const auto file = m_Dialogs.AskPictureFile(
      card.HostFolder(), u"Graphic Files (*.jpg;*.gif;*.bmp;*.2bp)|*.jpg; *.gif; *.bmp; *.2bp||");
  if (file) SetPath(PicturePathOf(machine.paths, *file));
}

void CPicturePage::SetPath(const Text& path) {
  // As if it had been typed, so that undo knows it.
  m_Path->selectAll();
  m_Path->insert(ToQString(path));
  m_Sheet.SetBitmapPath(path);
  ShowPicture();
  if (onEdited) onEdited();
}

void CPicturePage::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  if (m_IsStale) ShowPicture();
}

void CPicturePage::ShowPicture() {
  m_Reader.Forget();
  m_Preview->Show({}, {});
  m_IsStale = !isVisible();
  const Text& path = m_Sheet.Draft().bitmapPath;
  if (m_IsStale || path.empty()) return;
  const device::Machine& machine = m_Sheet.GetWorkspace().GetMachine();
  const std::filesystem::path file = machine.paths.ResolvePicture(path);
  if (!machine.files.Exists(file)) {
    m_Preview->Show({}, tr("This picture is missing."));
    return;
  }
  m_Reader.Read(file, kLargestPreview, [this](const QImage& picture) {
    m_Preview->Show(picture, tr("This picture cannot be read."));
  });
}

}  // namespace inspector::editing::ui
