#include "device/ui/QtProgressWindow.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QDialog>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "device/ui/TextConversion.h"

namespace inspector::device::ui {
namespace {

constexpr qint64 kBetweenBreaths = 40;     // milliseconds
constexpr qsizetype kLongestStatus = 150;  // letters: Cancel must stay on the screen
constexpr QLatin1String kName("progressWindow");

}  // namespace

QtProgressWindow::QtProgressWindow(const Text& title, bool cancellable, QWidget* parent)
    : m_Window(new QDialog(parent)) {
  m_Window->setObjectName(kName);
  m_Window->setWindowTitle(ToQString(title));
  m_Window->setWindowModality(Qt::ApplicationModal);
  m_Window->setWindowFlag(Qt::WindowCloseButtonHint, false);
  m_Status = new QLabel(m_Window);
  m_Status->setWordWrap(true);
  m_Status->setAccessibleName(QStringLiteral("Status"));
  m_Bar = new QProgressBar(m_Window);
  m_Bar->setRange(0, 0);
  m_Bar->setTextVisible(false);
  m_Bar->setAccessibleName(QStringLiteral("Progress"));
  m_Detail = new QLabel(m_Window);
  m_Detail->setObjectName(QStringLiteral("progressDetail"));
  m_Detail->hide();
  auto* layout = new QVBoxLayout(m_Window);
  layout->addWidget(m_Status);
  layout->addWidget(m_Bar);
  layout->addWidget(m_Detail);
  if (cancellable) {
    m_Cancel = new QPushButton(QStringLiteral("Cancel"), m_Window);
    m_Cancel->setObjectName(QStringLiteral("cancelButton"));
    // Enter that was pressed twice for the question before must not cancel; Escape does.
    m_Cancel->setAutoDefault(false);
    m_Status->setFocusPolicy(Qt::ClickFocus);
    m_Status->setFocus();
    layout->addWidget(m_Cancel, 0, Qt::AlignRight);
  }
  // Escape closes a dialog; here it must ask to stop and leave the window where it is.
  QObject::connect(m_Window, &QDialog::rejected, m_Window, [this] {
    if (m_Cancel) AskToStop();
    m_Window->show();
  });
  if (m_Cancel) QObject::connect(m_Cancel, &QPushButton::clicked, m_Window, [this] { AskToStop(); });
  m_Window->setMinimumWidth(320);
  m_Window->show();
  Breathe(true);
}

QtProgressWindow::~QtProgressWindow() {
  delete m_Window;
}

void QtProgressWindow::AskToStop() {
  m_Cancelled = true;
  m_Cancel->setEnabled(false);
}

void QtProgressWindow::CancelAll() {
  for (QWidget* const window : QApplication::topLevelWidgets())
    if (window->objectName() == kName) static_cast<QDialog*>(window)->reject();
}

void QtProgressWindow::Breathe(bool atOnce) {
  const qint64 now = QDeadlineTimer::current().deadline();
  if (!atOnce && now - m_LastBreath < kBetweenBreaths) return;
  QApplication::processEvents(m_Cancel ? QEventLoop::AllEvents : QEventLoop::ExcludeUserInputEvents);
  m_LastBreath = QDeadlineTimer::current().deadline();
}

void QtProgressWindow::SetStatus(const Text& status) {
  m_Status->setText(Shortened(ToDisplay(status), kLongestStatus));
  FitHeight();
  Breathe(true);
}

void QtProgressWindow::SetDetail(const Text& detail) {
  m_Detail->setText(ToDisplay(detail));
  if (m_Detail->isHidden() != detail.empty()) {
    m_Detail->setVisible(!detail.empty());
    FitHeight();
  }
  Breathe(false);
}

// Words that became longer take another line.
void QtProgressWindow::FitHeight() {
  const int needed = m_Window->layout()->totalHeightForWidth(m_Window->width());
  if (needed > m_Window->height()) m_Window->resize(m_Window->width(), needed);
}

void QtProgressWindow::SetRange(int low, int high) {
  // An empty range would turn the bar into one that runs to and fro.
  m_Bar->setRange(low, high > low ? high : low + 1);
  m_Bar->setValue(low);
}

void QtProgressWindow::SetPosition(int position) {
  m_Bar->setValue(position);
  Breathe(false);
}

void QtProgressWindow::Step() {
  SetPosition(m_Bar->value() + 1);
}

bool QtProgressWindow::Cancelled() {
  Breathe(false);
  return m_Cancelled;
}

}  // namespace inspector::device::ui
