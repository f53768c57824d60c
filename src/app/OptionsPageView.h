// One page of the options.
#pragma once

#include <QWidget>
#include <map>

#include "app/OptionsForm.h"

namespace inspector::app {

class COptionsPage : public QWidget {
public:
  // `page` outlives the widget.
  explicit COptionsPage(const OptionsPage& page, QWidget* parent = nullptr);

  void Show(const OptionsForm::Values& values);
  void TakeOver(OptionsForm::Values& values) const;

private:
  QWidget* MakeControl(const OptionEntry& entry);

  const OptionsPage& m_Page;
  std::map<TextView, QWidget*> m_Controls;
};

}  // namespace inspector::app
