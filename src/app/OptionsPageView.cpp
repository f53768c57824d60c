#include "app/OptionsPageView.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QVBoxLayout>

#include "device/ui/LinesEdit.h"
#include "device/ui/PickerCombo.h"
#include "device/ui/TextConversion.h"
#include "device/ui/WrappingCheckBox.h"

namespace inspector::app {

using device::ui::DropDown;
using device::ui::FromQString;
using device::ui::ToQString;
using device::ui::WrappingCheckBox;
using Kind = OptionEntry::Kind;

namespace {

QCheckBox* MakeCheckBox(const QString& caption, QWidget* parent) {
  auto* check = new device::ui::WrappingCheckBox(parent);
  check->setText(caption);
  return check;
}

}  // namespace

COptionsPage::COptionsPage(const OptionsPage& page, QWidget* parent) : QWidget(parent), m_Page(page) {
  auto* layout = new QVBoxLayout(this);
  layout->setSpacing(4);
  if (!page.explanation.empty()) {
    auto* explanation = new QLabel(ToQString(page.explanation), this);
    explanation->setWordWrap(true);
    layout->addWidget(explanation);
  }
  bool hasTall = false;
  for (const OptionEntry& entry : page.entries) {
    QWidget* const control = MakeControl(entry);
    control->setObjectName(ToQString(entry.name));
    control->setAccessibleName(ToQString(entry.caption));
    m_Controls[entry.name] = control;
    if (entry.kind != Kind::YesNo) {
      auto* caption = new QLabel(ToQString(entry.caption), this);
      caption->setWordWrap(true);
      caption->setBuddy(control);
      layout->addWidget(caption);
    }
    // The only text of a page takes all its room.
    const bool tall = entry.kind == Kind::Lines && page.entries.size() == 1;
    layout->addWidget(control, tall ? 1 : 0);
    hasTall = hasTall || tall;
  }
  if (!hasTall) layout->addStretch(1);
}

QWidget* COptionsPage::MakeControl(const OptionEntry& entry) {
  switch (entry.kind) {
    case Kind::YesNo:
      return MakeCheckBox(ToQString(entry.caption), this);
    case Kind::Lines: {
      auto* lines = new device::ui::LinesEdit(this);
      lines->setTabChangesFocus(true);
      lines->setMinimumHeight(4 * lines->fontMetrics().lineSpacing() + 16);
      return lines;
    }
    case Kind::Choice: {
      auto* choice = new DropDown(this);
      for (std::size_t n = 0; n < entry.choices.size(); ++n)
        choice->addItem(ToQString(entry.shown.empty() ? entry.choices[n] : entry.shown[n]),
                        ToQString(entry.choices[n]));
      return choice;
    }
    default: {
      auto* line = new QLineEdit(this);
      if (entry.kind == Kind::Secret) line->setEchoMode(QLineEdit::Password);
      if (entry.limit > 0) line->setMaxLength(entry.limit);
      return line;
    }
  }
}

void COptionsPage::Show(const OptionsForm::Values& values) {
  for (const auto& [name, control] : m_Controls) {
    const Text& value = values.at(name);
    if (auto* check = qobject_cast<QCheckBox*>(control)) {
      check->setChecked(value == u"TRUE");
    } else if (auto* lines = qobject_cast<QPlainTextEdit*>(control)) {
      lines->setPlainText(device::ui::ToDisplay(value));
    } else if (auto* choice = qobject_cast<QComboBox*>(control)) {
      const QString stored = ToQString(value);
      if (choice->findData(stored) < 0) choice->addItem(stored, stored);
      choice->setCurrentIndex(choice->findData(stored));
    } else {
      static_cast<QLineEdit*>(control)->setText(ToQString(value));
      static_cast<QLineEdit*>(control)->setCursorPosition(0);  // a long value shows how it begins
    }
  }
}

void COptionsPage::TakeOver(OptionsForm::Values& values) const {
  for (const auto& [name, control] : m_Controls) {
    Text& value = values[name];
    if (const auto* check = qobject_cast<const QCheckBox*>(control)) {
      value = check->isChecked() ? u"TRUE" : u"FALSE";
    } else if (const auto* lines = qobject_cast<const QPlainTextEdit*>(control)) {
      // Text that nobody touched keeps the line ends that it came with.
      if (device::ui::LinesOf(*lines->document()) != device::ui::ToDisplay(value))
        value = device::ui::FromLines(device::ui::LinesOf(*lines->document()));
    } else if (const auto* choice = qobject_cast<const QComboBox*>(control)) {
      value = FromQString(choice->currentData().toString());
    } else {
      value = FromQString(static_cast<const QLineEdit*>(control)->text());
    }
  }
}

}  // namespace inspector::app
