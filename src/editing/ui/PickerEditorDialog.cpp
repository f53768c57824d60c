#include "editing/ui/PickerEditorDialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScroller>
#include <QShortcut>

#include "device/ui/PickerCombo.h"
#include "device/ui/TextConversion.h"

namespace inspector::editing::ui {

using device::ui::FromQString;
using device::ui::ToQString;

PickerEditorDialog::PickerEditorDialog(data::Workspace& workspace, const Text& picker, QWidget* parent)
    : QDialog(parent), m_Workspace(workspace), m_Editor(workspace) {
  setObjectName(QStringLiteral("pickerEditorDialog"));
  setWindowTitle(tr("Edit Pickers"));
  m_Pickers = new device::ui::DropDown(this);
  m_Pickers->setObjectName(QStringLiteral("pickers"));
  m_Pickers->setAccessibleName(tr("Picker"));
  auto* caption = new QLabel(tr("&Picker"), this);
  caption->setBuddy(m_Pickers);
  m_Choices = new QListWidget(this);
  m_Choices->setObjectName(QStringLiteral("pickerItems"));
  m_Choices->setAccessibleName(tr("Items of the picker"));
  m_Choices->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  m_Choices->setWordWrap(true);
  QScroller::grabGesture(m_Choices->viewport(), QScroller::TouchGesture);
  const auto makeButton = [this](const QString& text, const char* name) {
    auto* button = new QPushButton(text, this);
    button->setObjectName(QLatin1String(name));
    button->setAutoDefault(false);
    return button;
  };
  QPushButton* newPicker = makeButton(tr("New Pic&ker..."), "newPickerButton");
  m_DeletePicker = makeButton(tr("De&lete Picker"), "deletePickerButton");
  m_New = makeButton(tr("&New Item..."), "newItemButton");
  m_Edit = makeButton(tr("&Edit Item..."), "editItemButton");
  m_EditText = makeButton(tr("Edit &Text..."), "editTextButton");
  m_Delete = makeButton(tr("&Delete Item"), "deleteItemButton");
  const auto item = [this] { return static_cast<std::size_t>(std::max(0, m_Choices->currentRow())); };
  connect(m_Pickers, &QComboBox::activated, this, [this] { FillChoices({}); });
  connect(newPicker, &QPushButton::clicked, this, [this] { NewPicker(); });
  connect(m_DeletePicker, &QPushButton::clicked, this, [this] {
    if (m_Editor.DeletePicker(Picker())) FillPickers({});
  });
  // The word that was stored is the one selected afterwards.
  const auto show = [this](const std::optional<Text>& word) {
    if (word) FillChoices(*word);
  };
  const auto edit = [this, item, show] {
    if (m_Choices->currentRow() >= 0) show(m_Editor.EditItem(Picker(), item()));
  };
  const auto remove = [this, item] {
    if (m_Choices->currentRow() >= 0 && m_Editor.DeleteItem(Picker(), item())) FillChoices({});
  };
  connect(m_New, &QPushButton::clicked, this, [this, show] { show(m_Editor.AddItem(Picker())); });
  connect(m_Edit, &QPushButton::clicked, this, edit);
  connect(m_Choices, &QListWidget::itemActivated, this, edit);
  connect(m_EditText, &QPushButton::clicked, this,
          [this, item, show] { show(m_Editor.EditText(Picker(), item())); });
  connect(m_Delete, &QPushButton::clicked, this, remove);
  connect(new QShortcut(QKeySequence::Delete, m_Choices), &QShortcut::activated, this, remove);
  connect(m_Choices, &QListWidget::currentRowChanged, this, [this](int row) {
    for (QPushButton* button : {m_Edit, m_EditText, m_Delete}) button->setEnabled(row >= 0);
  });
  auto* close = new QDialogButtonBox(QDialogButtonBox::Close, this);
  connect(close, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* layout = new QGridLayout(this);
  layout->addWidget(caption, 0, 0, 1, 2);
  layout->addWidget(m_Pickers, 1, 0, 1, 2);
  layout->addWidget(newPicker, 2, 0);
  layout->addWidget(m_DeletePicker, 2, 1);
  layout->addWidget(m_Choices, 3, 0, 1, 2);
  layout->addWidget(m_New, 4, 0);
  layout->addWidget(m_Edit, 4, 1);
  layout->addWidget(m_EditText, 5, 0);
  layout->addWidget(m_Delete, 5, 1);
  layout->addWidget(close, 6, 0, 1, 2);
  layout->setRowStretch(3, 1);
  layout->setColumnStretch(0, 1);
  layout->setColumnStretch(1, 1);
  setTabOrder(m_Pickers, newPicker);
  setTabOrder(newPicker, m_DeletePicker);
  setTabOrder(m_DeletePicker, m_Choices);
  resize(440, 560);
  FillPickers(picker);
}

Text PickerEditorDialog::Picker() const {
  return FromQString(m_Pickers->currentText());
}

void PickerEditorDialog::FillPickers(const Text& chosen) {
  m_Pickers->clear();
  for (const Text& name : m_Editor.Names()) m_Pickers->addItem(ToQString(name));
  const QString wanted = ToQString(chosen);
  if (!wanted.isEmpty() && m_Pickers->findText(wanted, Qt::MatchExactly | Qt::MatchCaseSensitive) < 0)
    m_Pickers->addItem(wanted);
  if (!wanted.isEmpty())
    m_Pickers->setCurrentIndex(m_Pickers->findText(wanted, Qt::MatchExactly | Qt::MatchCaseSensitive));
  FillChoices({});
}

void PickerEditorDialog::FillChoices(const Text& selected) {
  const bool isOne = m_Pickers->currentIndex() >= 0;
  m_New->setEnabled(isOne);
  m_DeletePicker->setEnabled(isOne);
  int row = std::max(0, m_Choices->currentRow());
  m_Choices->clear();
  if (isOne)
    for (const Text& choice : m_Editor.Choices(Picker())) {
      if (choice == selected) row = m_Choices->count();
      m_Choices->addItem(ToQString(choice));
    }
  m_Choices->setCurrentRow(std::min(row, m_Choices->count() - 1));
  for (QPushButton* button : {m_Edit, m_EditText, m_Delete}) button->setEnabled(m_Choices->count() > 0);
}

void PickerEditorDialog::NewPicker() {
  const std::optional<Text> name =
      m_Workspace.GetPrompts().AskText({u"Enter the name of the new picker.", u"New Picker", {}});
  const Text entered = device::StripLeadingControls(name.value_or(Text()));
  if (entered.empty()) return;
  m_Editor.AddItem(entered);
  FillPickers(entered);
}

}  // namespace inspector::editing::ui
