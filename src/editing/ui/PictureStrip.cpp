#include "editing/ui/PictureStrip.h"

#include <QComboBox>
#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QListWidget>
#include <QPixmapCache>
#include <QPushButton>
#include <QVBoxLayout>

#include "device/ListColumns.h"
#include "device/ui/PickerCombo.h"
#include "device/ui/TextConversion.h"
#include "editing/PictureTags.h"

namespace inspector::editing::ui {
namespace {

constexpr QSize kThumbnail(64, 48);
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
  m_List->setFlow(QListView::LeftToRight);
  m_List->setWrapping(false);
  m_List->setIconSize(kThumbnail);
  m_List->setFixedHeight(std::max(kThumbnail.height(), fontMetrics().height()) + 2 * m_List->frameWidth() +
                         12);
  m_List->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  m_List->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);  // selecting scrolls
  m_Earlier = MakeButton(QStringLiteral("←"), "pictureEarlierButton", tr("Picture one place earlier"), this);
  m_Later = MakeButton(QStringLiteral("→"), "pictureLaterButton", tr("Picture one place later"), this);
  m_Scaling = new device::ui::DropDown(this);
  m_Scaling->setObjectName(QStringLiteral("pictureScaling"));
  m_Scaling->setMinimumContentsLength(4);  // with large text all four have to fit a handheld
  m_Scaling->setAccessibleName(tr("Size of the picture in the report, in percent"));
  for (QPushButton* arrow : {m_Earlier, m_Later}) arrow->setFixedWidth(device::kSmallestTarget);
  m_Remove = MakeButton(tr("Remove"), "removePictureButton", tr("Remove picture"), this);
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
  std::vector<Text> tags = DistinctTags(comment);
  if (!m_IsStale && tags == m_Tags) return;  // the words between them matter to nothing here
  m_IsStale = false;
  m_Tags = std::move(tags);
  if (m_Tags.empty() && m_Pictures.empty()) return;
  const device::Machine& machine = m_Workspace.GetMachine();
  CardPictures card(machine.files, machine.paths, m_Workspace.Options().m_DefaultPictCardPath);
  std::vector<CommentPicture> pictures = PicturesOfComment(comment, card, machine);
  const auto isSame = [](const CommentPicture& a, const CommentPicture& b) {
    return a.tag == b.tag && a.path == b.path && a.missing == b.missing;
  };
  if (std::equal(pictures.begin(), pictures.end(), m_Pictures.begin(), m_Pictures.end(), isSame)) return;
  const int row = m_List->currentRow();
  m_Pictures = std::move(pictures);
  m_Reader.Forget();
  m_List->clear();
  for (const CommentPicture& picture : m_Pictures) {
    QString caption = QStringLiteral("%1 %").arg(picture.scaling);
    if (picture.missing) caption = Missing();
    auto* item = new QListWidgetItem(caption, m_List);
    item->setToolTip(device::ui::ToQString(picture.path.empty() ? picture.tag : picture.path));
    QPixmap blank(kThumbnail);
    blank.fill(palette().color(picture.missing ? QPalette::Mid : QPalette::AlternateBase));
    item->setIcon(blank);
  }
  m_List->setCurrentRow(std::clamp(row, 0, std::max(0, m_List->count() - 1)));
  setVisible(!m_Pictures.empty());
  ShowSelected();
  for (int n = 0; n < m_List->count(); ++n)
    if (!m_Pictures[static_cast<std::size_t>(n)].missing) ReadThumbnail(n);
}

void PictureStrip::ReadThumbnail(int n) {
  const Text& path = m_Pictures[static_cast<std::size_t>(n)].path;
  const std::filesystem::path file = m_Workspace.GetMachine().paths.ResolvePicture(path);
  const QFileInfo info(QFile::decodeName(file.c_str()));
  // Another card may have another picture of that name.
  const QString key = QStringLiteral("thumbnail:%1:%2:%3")
                          .arg(info.filePath())
                          .arg(info.size())
                          .arg(info.lastModified().toMSecsSinceEpoch());
  QPixmap known;
  if (QPixmapCache::find(key, &known)) {
    m_List->item(n)->setIcon(known);
    return;
  }
  const auto show = [this, n, key](const QImage& picture) {
    if (picture.isNull()) {
      m_List->item(n)->setText(tr("unreadable"));
      return;
    }
    const QPixmap thumbnail = QPixmap::fromImage(picture);
    QPixmapCache::insert(key, thumbnail);
    m_List->item(n)->setIcon(thumbnail);
  };
  m_Reader.Read(file, kThumbnail, show);
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
