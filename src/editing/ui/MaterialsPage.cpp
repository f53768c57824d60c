#include "editing/ui/MaterialsPage.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include "device/ui/FieldArea.h"
#include "device/ui/TextConversion.h"
#include "device/ui/TypingHistory.h"
#include "device/ui/WrappingCheckBox.h"

namespace inspector::editing::ui {

using device::ui::FromQString;
using device::ui::ToQString;

CMaterialsPage::CMaterialsPage(StepSheet& sheet, SheetDialogs& dialogs, QWidget* parent)
    : QWidget(parent), m_Sheet(sheet), m_Dialogs(dialogs) {
  setObjectName(QStringLiteral("materialsPage"));
  auto* area = new device::ui::FieldArea(this);
  auto* boxes = new QWidget(area);
  auto* rows = new QVBoxLayout(boxes);
  m_Column = new QVBoxLayout;
  rows->addLayout(m_Column);
  rows->addStretch(1);
  area->setWidget(boxes);
  auto* caption = new QLabel(tr("No&te"), this);
  m_Note = new QLineEdit(this);
  m_Note->setObjectName(QStringLiteral("materialNote"));
  m_Note->setAccessibleName(tr("Note"));
  caption->setBuddy(m_Note);
  connect(m_Note, &QLineEdit::textEdited, this, [this](const QString& text) {
    m_Sheet.SetMaterialNote(FromQString(text));
    if (onEdited) onEdited();
  });
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(area, 1);
  auto* noteRow = new QHBoxLayout;
  noteRow->addWidget(m_Note, 1);
  noteRow->addWidget(new device::ui::TypingHistory(*this));
  layout->addWidget(caption);
  layout->addLayout(noteRow);
}

void CMaterialsPage::ShowStep(QWidget& before) {
  const auto needed = m_Sheet.Materials().size();
  while (m_Boxes.size() > needed) {
    delete m_Boxes.back();
    m_Boxes.pop_back();
  }
  while (m_Boxes.size() < needed) {
    const std::size_t n = m_Boxes.size();
    auto* box = new device::ui::WrappingCheckBox(this);
    box->setObjectName(QStringLiteral("material%1").arg(n));
    m_Column->addWidget(box);
    m_Boxes.push_back(box);
    connect(box, &QCheckBox::clicked, this, [this, n](bool ticked) { Tick(n, ticked); });
  }
  QWidget* previous = &before;
  for (QCheckBox* box : m_Boxes) {
    setTabOrder(previous, box);
    previous = box;
  }
  m_Note->setText(ToQString(m_Sheet.Draft().materialNote));
  ShowBoxes();
}

void CMaterialsPage::ShowBoxes() {
  for (std::size_t n = 0; n < m_Boxes.size(); ++n) {
    const MaterialBox& material = m_Sheet.Materials()[n];
    const QString caption = ToQString(material.caption);
    m_Boxes[n]->setText(QString(caption).replace(u'&', QLatin1String("&&")));
    m_Boxes[n]->setAccessibleName(caption);
    m_Boxes[n]->setChecked(material.ticked);
  }
}

void CMaterialsPage::Tick(std::size_t n, bool ticked) {
  const bool done = m_Sheet.TickMaterial(m_Dialogs, n, ticked);
  ShowBoxes();
  if (!done) return;
  if (onTicked) onTicked();
  const MaterialBox& box = m_Sheet.Materials()[n];
  if (box.ticked && box.hasComments && onHasComments) onHasComments(box.materialID);
}

}  // namespace inspector::editing::ui
