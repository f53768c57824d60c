#include "reports/ui/SelectCategoriesPage.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include "device/ui/DialogSize.h"
#include "device/ui/OkCancel.h"
#include "device/ui/TextConversion.h"

namespace inspector::reports::ui {

CSelectCategoriesPage::CSelectCategoriesPage(CategorySelection& selection, QWidget* parent)
    : QDialog(parent),
      m_Selection(selection),
      m_Caption(new QLabel(this)),
      m_Rows(new device::ui::ListView(selection, CategorySelection::Columns(), this)) {
  setObjectName(QStringLiteral("selectCategoriesPage"));
  setWindowTitle(QStringLiteral("Select Categories"));
  m_Caption->setObjectName(QStringLiteral("caption"));
  m_Caption->setWordWrap(true);
  m_Rows->setObjectName(QStringLiteral("categories"));
  m_Rows->setAccessibleName(QStringLiteral("Categories of the report"));
  m_Rows->SetEmptyText(QStringLiteral("This inspection has no categories."));
  m_Rows->onClick = [this](int row, int) {
    m_Selection.Toggle(row);
    Show();
  };
  auto* choices = new QHBoxLayout;
  const auto addChoice = [&](const QString& caption, const char* name, bool chosen) {
    auto* button = new QPushButton(caption, this);
    button->setObjectName(QLatin1String(name));
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, [this, chosen] {
      m_Selection.ChooseAll(chosen);
      Show();
    });
    choices->addWidget(button);
  };
  addChoice(QStringLiteral("&All"), "allButton", true);
  addChoice(QStringLiteral("&None"), "noneButton", false);
  QDialogButtonBox* const buttons = device::ui::MakeOkCancel(*this);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(m_Caption);
  layout->addWidget(m_Rows, 1);
  layout->addLayout(choices);
  layout->addWidget(buttons);
  device::ui::ResizeWithin(*this, {460, 640});
  Show();
  m_Rows->setCurrentIndex(m_Rows->Model().index(0, 1));
  m_Rows->setFocus();
}

void CSelectCategoriesPage::Show() {
  m_Rows->Model().RefreshAll();
  m_Caption->setText(device::ui::ToQString(m_Selection.Caption()));
}

}  // namespace inspector::reports::ui
