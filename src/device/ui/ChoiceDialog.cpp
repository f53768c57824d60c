#include "device/ui/ChoiceDialog.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "device/ui/DialogSize.h"
#include "device/ui/OkCancel.h"

namespace inspector::device::ui {

ChoiceDialog::ChoiceDialog(const QString& title, const QString& prompt, RowSource& source,
                           std::vector<ListColumn> columns, QWidget* parent)
    : QDialog(parent), m_List(new ListView(source, std::move(columns), this)) {
  setObjectName(QStringLiteral("choiceDialog"));
  setWindowTitle(title);
  auto* label = new QLabel(prompt, this);
  label->setWordWrap(true);
  m_List->setObjectName(QStringLiteral("choiceList"));
  m_List->setAccessibleName(prompt);
  QDialogButtonBox* const buttons = MakeOkCancel(*this);
  QPushButton* const ok = buttons->button(QDialogButtonBox::Ok);
  ok->setEnabled(false);
  m_List->onSelect = [ok](int row) { ok->setEnabled(row >= 0); };
  m_List->onOpen = [this](int) { accept(); };
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(label);
  layout->addWidget(m_List, 1);
  layout->addWidget(buttons);
  ResizeWithin(*this, {460, 520});
  m_List->setFocus();
}

}  // namespace inspector::device::ui
