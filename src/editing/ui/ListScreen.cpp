#include "editing/ui/ListScreen.h"

#include <QSignalBlocker>
#include <QVBoxLayout>

#include "device/WordFilter.h"
#include "device/ui/TextConversion.h"
#include "editing/ui/Captions.h"

namespace inspector::editing::ui {

using device::ui::ToQString;

namespace {

constexpr qsizetype kLongestCaption = 300;  // letters

}  // namespace

void ListScreen::Build(device::RowSource& source, std::vector<device::ListColumn> columns,
                       const QString& what) {
  m_Caption = new QLabel(this);
  m_Caption->setObjectName(QStringLiteral("caption"));
  m_Caption->setTextFormat(Qt::PlainText);
  m_Caption->setWordWrap(true);

  m_Search = new device::ui::FindField("searchField", QStringLiteral("Find ") + what, this);
  connect(m_Search, &QLineEdit::textChanged, this, [this](const QString& text) {
    ShowEmptyText();
    OnSearch(device::ui::FromQString(text));
  });
  connect(m_Search, &QLineEdit::returnPressed, this, [this] { m_Rows->setFocus(); });
  m_Rows = new device::ui::ListView(source, std::move(columns), this);
  m_Rows->setObjectName(QStringLiteral("rows"));
  m_Search->LeadTo(*m_Rows);
  m_NothingFound = QStringLiteral("No %1 hold these words.").arg(what);
  m_Rows->setAccessibleName(QString(what).replace(0, 1, what.at(0).toUpper()));

  m_Left = new QLabel(this);
  m_Left->setObjectName(QStringLiteral("whatIsLeft"));
  m_Left->setTextFormat(Qt::PlainText);
  m_Left->setWordWrap(true);

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(6, 6, 6, 6);
  for (QWidget* part : {static_cast<QWidget*>(m_Caption), static_cast<QWidget*>(m_Search)})
    layout->addWidget(part);
  layout->addWidget(m_Rows, 1);
  layout->addWidget(m_Left);
}

void ListScreen::ShowCaptions(device::TextView caption, device::TextView left) {
  m_Caption->setText(device::ui::Shortened(ToQString(caption), kLongestCaption));
  m_Left->setText(ToQString(left));
  FitCaptions();
}

// On a low screen the rows need the room more than what is said about them.
void ListScreen::FitCaptions() {
  const int used = m_Search->sizeHint().height() + m_Rows->UsefulHeight() + 2 * layout()->spacing();
  ShowWhereRoomIs({m_Left, m_Caption},
                  contentsRect().marginsRemoved(layout()->contentsMargins()).size() - QSize(0, used));
}

void ListScreen::resizeEvent(QResizeEvent* event) {
  Screen::resizeEvent(event);
  FitCaptions();
}

void ListScreen::SetEmptyText(const QString& text) {
  m_EmptyText = text;
  ShowEmptyText();
}

void ListScreen::ShowEmptyText() {
  const bool searches = !device::WordFilter(device::ui::FromQString(m_Search->text())).IsEmpty();
  m_Rows->SetEmptyText(searches ? m_NothingFound : m_EmptyText);
}

void ListScreen::ClearSearch() {
  m_Search->clear();
}

}  // namespace inspector::editing::ui
