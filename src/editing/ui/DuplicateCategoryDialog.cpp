#include "editing/ui/DuplicateCategoryDialog.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "device/ui/DialogSize.h"
#include "device/ui/OkCancel.h"
#include "device/ui/TextConversion.h"
#include "device/ui/TypingHistory.h"

namespace inspector::editing::ui {
namespace {

constexpr int kMostCopies = 99;  // more are a slip of the finger

}  // namespace

DuplicateCategoryDialog::DuplicateCategoryDialog(const EditingDialogs::CategoryCopies& suggested,
                                                 QWidget* parent)
    : QDialog(parent),
      m_Name(new QLineEdit(device::ui::ToQString(suggested.name), this)),
      m_Copies(new QSpinBox(this)),
      m_WithData(new QCheckBox(QStringLiteral("Duplicate with &data?"), this)) {
  setObjectName(QStringLiteral("duplicateCategoryDialog"));
  setWindowTitle(QStringLiteral("Duplicate Category"));
  auto* prompt = new QLabel(QStringLiteral("Enter the name for the new duplicated category:"), this);
  prompt->setWordWrap(true);
  prompt->setBuddy(m_Name);
  m_Name->setObjectName(QStringLiteral("nameField"));
  m_Name->setAccessibleName(prompt->text());
  m_Name->selectAll();
  auto* copies = new QLabel(QStringLiteral("How Many :"), this);
  copies->setBuddy(m_Copies);
  m_Copies->setObjectName(QStringLiteral("copiesField"));
  m_Copies->setAccessibleName(QStringLiteral("How Many"));
  m_Copies->setRange(1, kMostCopies);
  m_Copies->setValue(suggested.copies);
  m_Copies->setButtonSymbols(QAbstractSpinBox::NoButtons);  // its own are too small for a finger
  auto* fewer = new QPushButton(QStringLiteral("\u2212"), this);
  fewer->setObjectName(QStringLiteral("fewerButton"));
  fewer->setAccessibleName(QStringLiteral("One copy fewer"));
  auto* more = new QPushButton(QStringLiteral("+"), this);
  more->setObjectName(QStringLiteral("moreButton"));
  more->setAccessibleName(QStringLiteral("One copy more"));
  for (QPushButton* button : {fewer, more}) button->setAutoDefault(false);
  connect(fewer, &QPushButton::clicked, m_Copies, &QSpinBox::stepDown);
  connect(more, &QPushButton::clicked, m_Copies, &QSpinBox::stepUp);
  auto* number = new QHBoxLayout;
  number->addWidget(m_Copies, 1);
  number->addWidget(fewer);
  number->addWidget(more);
  m_WithData->setObjectName(QStringLiteral("withDataBox"));
  m_WithData->setAccessibleName(QStringLiteral("Duplicate with data?"));
  m_WithData->setChecked(suggested.withData);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(prompt);
  layout->addWidget(m_Name);
  layout->addWidget(copies);
  layout->addLayout(number);
  layout->addWidget(m_WithData);
  layout->addLayout(device::ui::HistoryBeside(*this, device::ui::MakeOkCancel(*this)));
  setTabOrder(m_Copies, fewer);
  setTabOrder(fewer, more);
  setTabOrder(more, m_WithData);
  device::ui::FitToWords(*this);
  m_Name->setFocus();
}

EditingDialogs::CategoryCopies DuplicateCategoryDialog::Wanted() const {
  return {device::ui::FromQString(m_Name->text()), m_Copies->value(), m_WithData->isChecked()};
}

}  // namespace inspector::editing::ui
