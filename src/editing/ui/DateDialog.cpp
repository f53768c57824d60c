#include "editing/ui/DateDialog.h"

#include <QTableView>
#include <QToolButton>
#include <QVBoxLayout>

#include "device/ListColumns.h"
#include "device/ui/OkCancel.h"

namespace inspector::editing::ui {
namespace {

const QString kFormat = QStringLiteral("M/d/yyyy");

}  // namespace

DateDialog::DateDialog(const QString& title, const QString& current, QWidget* parent)
    : QDialog(parent), m_Calendar(new QCalendarWidget(this)) {
  setObjectName(QStringLiteral("dateDialog"));
  setWindowTitle(title);
  m_Calendar->setObjectName(QStringLiteral("calendar"));
  m_Calendar->setAccessibleName(title);
  m_Calendar->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
  const bool hasRoom = fontMetrics().horizontalAdvance(QStringLiteral("Wed")) < device::kSmallestTarget;
  m_Calendar->setHorizontalHeaderFormat(hasRoom ? QCalendarWidget::ShortDayNames
                                                : QCalendarWidget::SingleLetterDayNames);
  // A week of days that a finger hits, and a line of their names.
  m_Calendar->setMinimumSize(7 * device::kSmallestTarget, 8 * device::kSmallestTarget);
  for (auto* button : m_Calendar->findChildren<QToolButton*>())
    if (button->accessibleName().isEmpty()) button->setAccessibleName(button->objectName());
  m_Calendar->findChild<QAbstractItemView*>()->setAccessibleName(title);
  const QDate date = QDate::fromString(current, kFormat);
  if (date.isValid()) m_Calendar->setSelectedDate(date);
  connect(m_Calendar, &QCalendarWidget::activated, this, &QDialog::accept);
  QDialogButtonBox* const buttons = device::ui::MakeOkCancel(*this);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(m_Calendar);
  layout->addWidget(buttons);
}

QString DateDialog::Chosen() const {
  return m_Calendar->selectedDate().toString(kFormat);
}

}  // namespace inspector::editing::ui
