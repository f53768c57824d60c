#include "inspection/ui/InspectionSetupView2.h"

#include <QAbstractItemView>
#include <QCalendarWidget>
#include <QDateTimeEdit>
#include <QEvent>
#include <QLineEdit>

#include "device/ListColumns.h"

namespace inspector::inspection::ui {
namespace {

// "MM/dd/yyy hh:mm tt" in the words of this toolkit: three letters of a year show all four of its digits.
constexpr auto kDisplayFormat = "MM/dd/yyyy hh:mm AP";

QDateTime ToQDateTime(const device::CalendarTime& time) {
  return {QDate(time.year, time.month, time.day), QTime(time.hour, time.minute, time.second)};
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
  m_Date->setMinimumDateTime(QDateTime(QDate(1800, 1, 1), QTime(0, 0)));
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
  if (event->type() == QEvent::MouseButtonPress && m_Date->dateTime() == m_Date->minimumDateTime())
    m_Date->setDateTime(QDateTime::currentDateTime());
  return HeaderView::eventFilter(watched, event);
}

void CInspectionSetupView2::Fill() {
  HeaderView::Fill();
  const device::CalendarTime& stored = Document().Inspection().m_InspectionDate;
  const QSignalBlocker quiet(m_Date);
  m_Date->setDateTime(stored.IsZero() ? m_Date->minimumDateTime() : ToQDateTime(stored));
  m_DateTouched = false;
}

bool CInspectionSetupView2::Flush() {
  if (m_DateTouched && !Document().IsChangingDocType()) {
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
