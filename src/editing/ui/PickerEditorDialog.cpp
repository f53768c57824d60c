#include "editing/ui/PickerEditorDialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScroller>
#include <QShortcut>

#include "device/ui/DialogSize.h"
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
  m_Items = new QListWidget(this);
  m_Items->setObjectName(QStringLiteral("pickerItems"));
  m_Items->setAccessibleName(tr("Items of the picker"));
  m_Items->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  m_Items->setWordWrap(true);
  QScroller::grabGesture(m_Items->viewport(), QScroller::TouchGesture);
  const auto makeButton = [this](const QString& text, const char* name) {
    auto* button = new QPushButton(text, this);
    button->setObjectName(QLatin1String(name));
    button->setAutoDefault(false);
    return button;
  };
  QPushButton* newPicker = makeButton(tr("New Pic&ker..."), "newPickerButton");
  m_DeletePicker = makeButton(tr("De&lete Picker"), "deletePickerButton");
  m_New = makeButton(tr("&New Item"), "newItemButton");
  m_Edit = makeButton(tr("&Edit Item"), "editItemButton");
  m_EditText = makeButton(tr("Edit &Text"), "editTextButton");
  m_Delete = makeButton(tr("&Delete Item"), "deleteItemButton");
  connect(m_Pickers, &QComboBox::activated, this, [this] { FillItems(); });
  connect(newPicker, &QPushButton::clicked, this, [this] { NewPicker(); });
  connect(m_DeletePicker, &QPushButton::clicked, this, [this] {
    if (m_Editor.DeletePicker(Picker())) FillPickers({});
  });
  // Also when it failed: the word may be gone.
  const auto withSelected = [this](bool (PickerEditor::*change)(std::int32_t)) {
    return [this, change] {
      const std::optional<std::int32_t> id = Selected();
      if (!id) return;
      (m_Editor.*change)(*id);
      FillItems();
    };
  };
  const auto edit = withSelected(&PickerEditor::EditItem);
  const auto remove = withSelected(&PickerEditor::DeleteItem);
  connect(m_New, &QPushButton::clicked, this, [this] {
    if (const auto id = m_Editor.AddItem(Picker())) FillItems(id);
  });
  connect(m_Edit, &QPushButton::clicked, this, edit);
  connect(m_Items, &QListWidget::itemActivated, this, edit);
  connect(m_EditText, &QPushButton::clicked, this, withSelected(&PickerEditor::EditText));
  connect(m_Delete, &QPushButton::clicked, this, remove);
  connect(new QShortcut(QKeySequence::Delete, m_Items), &QShortcut::activated, this, remove);
  connect(m_Items, &QListWidget::currentRowChanged, this, [this](int row) {
    for (QPushButton* button : {m_Edit, m_EditText, m_Delete}) button->setEnabled(row >= 0);
  });
  auto* close = new QDialogButtonBox(QDialogButtonBox::Close, this);
  connect(close, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* layout = new QGridLayout(this);
  layout->addWidget(caption, 0, 0, 1, 2);
  layout->addWidget(m_Pickers, 1, 0, 1, 2);
  layout->addWidget(newPicker, 2, 0);
  layout->addWidget(m_DeletePicker, 2, 1);
  layout->addWidget(m_Items, 3, 0, 1, 2);
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
  setTabOrder(m_DeletePicker, m_Items);
  device::ui::ResizeWithin(*this, {440, 560});
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
  FillItems();
}

std::optional<std::int32_t> PickerEditorDialog::Selected() const {
  const int row = m_Items->currentRow();
  return row < 0 ? std::nullopt : std::optional(m_Shown[static_cast<std::size_t>(row)].id);
}

// The word that was selected stays so, wherever it stands now; for one that is gone, its neighbour.
void PickerEditorDialog::FillItems(std::optional<std::int32_t> selected) {
  const bool isOne = m_Pickers->currentIndex() >= 0;
  m_New->setEnabled(isOne);
  m_DeletePicker->setEnabled(isOne);
  if (!selected) selected = Selected();
  int row = std::max(0, m_Items->currentRow());
  m_Items->clear();
  m_Shown = isOne ? m_Editor.Items(Picker()) : std::vector<PickerEditor::Item>();
  for (const PickerEditor::Item& item : m_Shown) {
    if (item.id == selected) row = m_Items->count();
    m_Items->addItem(ToQString(item.word));
  }
  m_Items->setCurrentRow(std::min(row, m_Items->count() - 1));
  for (QPushButton* button : {m_Edit, m_EditText, m_Delete}) button->setEnabled(m_Items->count() > 0);
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
