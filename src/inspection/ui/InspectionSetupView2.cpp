#include "inspection/ui/InspectionSetupView2.h"

#include <QAbstractItemView>
#include <QCalendarWidget>
#include <QDateTimeEdit>
#include <QKeyEvent>
#include <QLineEdit>
#include <algorithm>
#include <iterator>

#include "device/ListColumns.h"

namespace inspector::inspection::ui {
namespace {

// "MM/dd/yyy hh:mm tt" in the words of this toolkit: three letters of a year show all four of its digits.
constexpr auto kDisplayFormat = "MM/dd/yyyy hh:mm AP";

// The database knows no time zone, so no hour is left out of a night in spring.
QDateTime AsShown(QDate day, QTime time) {
  return {day, time, Qt::UTC};
}

QDateTime ToQDateTime(const device::CalendarTime& time) {
  return AsShown({time.year, time.month, time.day}, {time.hour, time.minute, time.second});
}

// A click, or a key other than those that lead elsewhere or mean something only together with another.
bool IsTouch(const QEvent& event) {
  static constexpr int kOthers[] = {Qt::Key_Tab,   Qt::Key_Backtab, Qt::Key_Escape, Qt::Key_Back,
                                    Qt::Key_Enter, Qt::Key_Return,  Qt::Key_Shift,  Qt::Key_Control,
                                    Qt::Key_Alt,   Qt::Key_AltGr,   Qt::Key_Meta,   Qt::Key_CapsLock};
  if (event.type() != QEvent::KeyPress) return event.type() == QEvent::MouseButtonPress;
  const int key = static_cast<const QKeyEvent&>(event).key();
  return std::find(std::begin(kOthers), std::end(kOthers), key) == std::end(kOthers);
}

bool IsBetweenParts(const QKeyEvent& event) {
  return event.text().size() == 1 && QStringLiteral("/: ").contains(event.text());
}

}  // namespace

CInspectionSetupView2::CInspectionSetupView2(CInspectorDoc& document, QWidget* parent)
    : HeaderView(document, HeaderPage::SetUp, parent) {
  setObjectName(QStringLiteral("inspectionSetupView2"));
  AddFields();
  m_Date = new QDateTimeEdit(this);  // after the fields, in the order of Tab as well
  m_Date->setObjectName(QStringLiteral("dateField"));
  m_Date->setLocale(QLocale::c());
  m_Date->setDisplayFormat(QLatin1String(kDisplayFormat));
  m_Date->setTimeSpec(Qt::UTC);
  m_Date->setMinimumDateTime(AsShown({100, 1, 1}, {0, 0}));
  m_Date->setSpecialValueText(QStringLiteral("No date"));
  m_Date->setCalendarPopup(true);
  m_Date->calendarWidget()->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
  m_Date->calendarWidget()->setMinimumSize(7 * device::kSmallestTarget, 8 * device::kSmallestTarget);
  m_Date->calendarWidget()->findChild<QAbstractItemView*>()->setAccessibleName(QStringLiteral("Date"));
  connect(m_Date, &QDateTimeEdit::dateTimeChanged, this, [this] {
    if (IsFilling()) return;
    m_DateTouched = true;
    Touched();
  });
  for (QObject* touched :
       {static_cast<QObject*>(m_Date), static_cast<QObject*>(m_Date->findChild<QLineEdit*>())})
    touched->installEventFilter(this);
  AddRow(QStringLiteral("Date"), m_Date);
}

// Who touches an empty date means today; nobody pages through a calendar from its first year on.
bool CInspectionSetupView2::eventFilter(QObject* watched, QEvent* event) {
  const bool turns = event->type() == QEvent::Wheel && m_Date->hasFocus();
  if (m_Date->dateTime() == m_Date->minimumDateTime() && (turns || IsTouch(*event))) {
    const QDateTime now = QDateTime::currentDateTime();
    m_Date->setDateTime(AsShown(now.date(), {now.time().hour(), now.time().minute()}));
    // A key begins at the beginning; a click says itself where.
    if (event->type() == QEvent::KeyPress) m_Date->setSelectedSection(m_Date->sectionAt(0));
  }
  if (event->type() == QEvent::KeyPress && IsBetweenParts(static_cast<const QKeyEvent&>(*event))) {
    PassToNextPart();
    return true;
  }
  return HeaderView::eventFilter(watched, event);
}

// A part that is full has led on already: then the next one is selected and waits to be typed.
void CInspectionSetupView2::PassToNextPart() {
  const int next = m_Date->currentSectionIndex() + 1;
  if (next < m_Date->sectionCount() && !m_Date->findChild<QLineEdit*>()->hasSelectedText())
    m_Date->setSelectedSection(m_Date->sectionAt(next));
}

void CInspectionSetupView2::Fill() {
  HeaderView::Fill();
  const device::CalendarTime& stored = Document().Inspection().m_InspectionDate;
  const QSignalBlocker quiet(m_Date);
  m_Date->setDateTime(stored.IsZero() ? m_Date->minimumDateTime() : ToQDateTime(stored));
  m_DateTouched = false;
}

bool CInspectionSetupView2::Flush() {
  if (m_DateTouched) {
    m_DateTouched = false;
    const QDateTime shown = m_Date->dateTime();
    device::CalendarTime date;
    if (shown != m_Date->minimumDateTime()) {
      const QDate day = shown.date();
      const QTime time = shown.time();
      date = device::MakeCalendarTime(day.year(), day.month(), day.day(), time.hour(), time.minute(),
                                      time.second());
    }
    Form().TakeOverDate(date);
  }
  return HeaderView::Flush();
}

}  // namespace inspector::inspection::ui
