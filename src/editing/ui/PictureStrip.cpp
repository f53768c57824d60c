#include "editing/ui/PictureStrip.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QListWidget>
#include <QPixmapCache>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

#include "device/ListColumns.h"
#include "device/ui/TextConversion.h"
#include "editing/PictureTags.h"
#include "editing/ui/PictureFile.h"

namespace inspector::editing::ui {
namespace {

constexpr QSize kThumbnail(72, 72);
constexpr int kScalings[] = {25, 50, 75, 100};

QString Missing() {
  return QObject::tr("missing");
}

QPushButton* MakeButton(const QString& caption, const char* name, const QString& accessible,
                        QWidget* parent) {
  auto* button = new QPushButton(caption, parent);
  button->setObjectName(QLatin1String(name));
  button->setAccessibleName(accessible);
  button->setToolTip(accessible);
  return button;
}

}  // namespace

PictureStrip::PictureStrip(data::Workspace& workspace, QWidget* parent)
    : QWidget(parent), m_Workspace(workspace) {
  setObjectName(QStringLiteral("pictureStrip"));
  m_List = new QListWidget(this);
  m_List->setObjectName(QStringLiteral("commentPictures"));
  m_List->setAccessibleName(tr("Pictures of this comment"));
  m_List->setViewMode(QListView::IconMode);
  m_List->setFlow(QListView::LeftToRight);
  m_List->setWrapping(false);
  m_List->setMovement(QListView::Static);
  m_List->setIconSize(kThumbnail);
  m_List->setFixedHeight(kThumbnail.height() + 2 * fontMetrics().height() + 24);
  m_Remove = MakeButton(tr("Remove"), "removePictureButton", tr("Remove picture"), this);
  m_Earlier = MakeButton(QStringLiteral("←"), "pictureEarlierButton", tr("Picture one place earlier"), this);
  m_Later = MakeButton(QStringLiteral("→"), "pictureLaterButton", tr("Picture one place later"), this);
  m_Scaling = new QComboBox(this);
  m_Scaling->setObjectName(QStringLiteral("pictureScaling"));
  m_Scaling->setAccessibleName(tr("Size of the picture in the report, in percent"));
  connect(m_Remove, &QPushButton::clicked, this, [this] { Remove(); });
  connect(m_Earlier, &QPushButton::clicked, this, [this] { Move(-1); });
  connect(m_Later, &QPushButton::clicked, this, [this] { Move(+1); });
  connect(m_Scaling, &QComboBox::activated, this, [this](int n) { Scale(m_Scaling->itemData(n).toInt()); });
  connect(m_List, &QListWidget::currentRowChanged, this, [this] { ShowSelected(); });
  auto* buttons = new QHBoxLayout;
  for (QWidget* each : {static_cast<QWidget*>(m_Earlier), static_cast<QWidget*>(m_Later),
                        static_cast<QWidget*>(m_Scaling), static_cast<QWidget*>(m_Remove)})
    buttons->addWidget(each);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(m_List);
  layout->addLayout(buttons);
  hide();
}

void PictureStrip::ShowPicturesOf(TextView comment) {
  m_Comment = Text(comment);
  if (FindFirstTag(comment).empty() && m_Pictures.empty()) return;
  const device::Machine& machine = m_Workspace.GetMachine();
  CardPictures card(machine.files, machine.paths, m_Workspace.Options().m_DefaultPictCardPath);
  std::vector<CommentPicture> pictures = PicturesOfComment(comment, card, machine);
  const auto isSame = [](const CommentPicture& a, const CommentPicture& b) {
    return a.tag == b.tag && a.path == b.path && a.missing == b.missing;
  };
  if (std::equal(pictures.begin(), pictures.end(), m_Pictures.begin(), m_Pictures.end(), isSame)) return;
  const int row = m_List->currentRow();
  m_Pictures = std::move(pictures);
  m_List->clear();
  for (const CommentPicture& picture : m_Pictures) {
    QString caption = QStringLiteral("%1 %").arg(picture.scaling);
    if (picture.missing) caption = Missing();
    auto* item = new QListWidgetItem(caption, m_List);
    item->setToolTip(device::ui::ToQString(picture.path.empty() ? picture.tag : picture.path));
    QPixmap blank(kThumbnail);
    blank.fill(palette().color(picture.missing ? QPalette::Mid : QPalette::AlternateBase));
    item->setIcon(blank);
    item->setData(Qt::UserRole, picture.missing);  // true once there is nothing more to read
  }
  m_List->setCurrentRow(std::clamp(row, 0, std::max(0, m_List->count() - 1)));
  setVisible(!m_Pictures.empty());
  ShowSelected();
  if (!m_IsReading) ReadNext();
}

// One at a time, so that typing goes on between two large pictures.
void PictureStrip::ReadNext() {
  m_IsReading = false;
  for (int n = 0; n < m_List->count(); ++n) {
    QListWidgetItem* item = m_List->item(n);
    if (item->data(Qt::UserRole).toBool()) continue;
    m_IsReading = true;
    QTimer::singleShot(0, this, [this, n] {
      if (n < m_List->count() && !m_List->item(n)->data(Qt::UserRole).toBool()) {
        QListWidgetItem* shown = m_List->item(n);
        shown->setData(Qt::UserRole, true);
        const Text& path = m_Pictures[static_cast<std::size_t>(n)].path;
        const QString key = QStringLiteral("thumbnail:") + device::ui::ToQString(path);
        QPixmap picture;
        if (!QPixmapCache::find(key, &picture)) {
          picture = QPixmap::fromImage(
              ReadPicture(m_Workspace.GetMachine().paths.ResolvePicture(path), kThumbnail));
          if (!picture.isNull()) QPixmapCache::insert(key, picture);
        }
        if (picture.isNull())
          shown->setText(tr("unreadable"));
        else
          shown->setIcon(picture);
      }
      ReadNext();
    });
    return;
  }
}

void PictureStrip::ShowSelected() {
  const int row = m_List->currentRow();
  const bool isOne = row >= 0 && row < static_cast<int>(m_Pictures.size());
  m_Remove->setEnabled(isOne);
  m_Scaling->setEnabled(isOne);
  m_Earlier->setEnabled(isOne && row > 0);
  m_Later->setEnabled(isOne && row + 1 < m_List->count());
  m_Scaling->clear();
  if (!isOne) return;
  const int stored = m_Pictures[static_cast<std::size_t>(row)].scaling;
  for (const int percent : kScalings) m_Scaling->addItem(QStringLiteral("%1 %").arg(percent), percent);
  if (m_Scaling->findData(stored) < 0) m_Scaling->addItem(QStringLiteral("%1 %").arg(stored), stored);
  m_Scaling->setCurrentIndex(m_Scaling->findData(stored));
}

void PictureStrip::Remove() {
  const int row = m_List->currentRow();
  if (row < 0 || !onChange) return;
  onChange(WithoutPicture(m_Comment, m_Pictures[static_cast<std::size_t>(row)].tag));
}

void PictureStrip::Move(int by) {
  const int row = m_List->currentRow();
  if (row < 0 || row + by < 0 || row + by >= m_List->count() || !onChange) return;
  onChange(WithPictureMoved(m_Comment, static_cast<std::size_t>(row), static_cast<std::size_t>(row + by)));
  m_List->setCurrentRow(row + by);
}

void PictureStrip::Scale(int percent) {
  const int row = m_List->currentRow();
  if (row < 0 || !onChange) return;
  onChange(WithScaling(m_Comment, m_Pictures[static_cast<std::size_t>(row)].tag, percent));
}

}  // namespace inspector::editing::ui
