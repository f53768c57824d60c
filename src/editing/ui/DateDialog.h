// A calendar to choose a day from.
#pragma once

#include <QCalendarWidget>
#include <QDialog>

namespace inspector::editing::ui {

class DateDialog : public QDialog {
public:
  // Begins with `current` when that is a date ("5/28/2026"), else with today.
  DateDialog(const QString& title, const QString& current, QWidget* parent);

  // "5/28/2026".
  QString Chosen() const;

private:
  QCalendarWidget* m_Calendar;
};

}  // namespace inspector::editing::ui
