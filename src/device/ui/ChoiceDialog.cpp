#include "device/ui/ChoiceDialog.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

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
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  QPushButton* const ok = buttons->button(QDialogButtonBox::Ok);
  ok->setEnabled(false);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  m_List->onSelect = [ok](int row) { ok->setEnabled(row >= 0); };
  m_List->onOpen = [this](int) { accept(); };
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(label);
  layout->addWidget(m_List, 1);
  layout->addWidget(buttons);
  resize(460, 520);
  m_List->setFocus();
}

}  // namespace inspector::device::ui
