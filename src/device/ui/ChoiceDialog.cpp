#include "device/ui/ChoiceDialog.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "device/ui/DialogSize.h"
#include "device/ui/OkCancel.h"

namespace inspector::device::ui {

ChoiceDialog::ChoiceDialog(const QString& title, const QString& prompt, RowSource& source,
                           std::vector<ListColumn> columns, QWidget* parent)
    : QDialog(parent),
      m_List(new ListView(source, std::move(columns), this)),
      m_Buttons(MakeOkCancel(*this)) {
  setObjectName(QStringLiteral("choiceDialog"));
  setWindowTitle(title);
  auto* label = new QLabel(prompt, this);
  label->setWordWrap(true);
  m_List->setObjectName(QStringLiteral("choiceList"));
  m_List->setAccessibleName(prompt);
  EnableFor(-1);
  m_List->onSelect = [this](int row) { EnableFor(row); };
  m_List->onOpen = [this](int) { accept(); };
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(label);
  layout->addWidget(m_List, 1);
  layout->addWidget(m_Buttons);
  ResizeWithin(*this, {460, 520});
  m_List->setFocus();
}

void ChoiceDialog::Offer(const QString& caption, const char* objectName, std::function<void(int row)> run) {
  QPushButton* const button = m_Buttons->addButton(caption, QDialogButtonBox::ActionRole);
  button->setObjectName(QLatin1String(objectName));
  button->setAutoDefault(false);
  connect(button, &QPushButton::clicked, this, [this, run = std::move(run)] {
    run(Chosen());
    m_List->Refill();
    EnableFor(Chosen());
  });
  EnableFor(Chosen());
}

void ChoiceDialog::EnableFor(int row) {
  for (QAbstractButton* const button : m_Buttons->buttons())
    if (m_Buttons->buttonRole(button) != QDialogButtonBox::RejectRole) button->setEnabled(row >= 0);
}

}  // namespace inspector::device::ui
