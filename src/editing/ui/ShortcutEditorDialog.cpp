#include "editing/ui/ShortcutEditorDialog.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <algorithm>

#include "device/ListColumns.h"
#include "device/ui/DialogSize.h"
#include "device/ui/LinesEdit.h"
#include "device/ui/TextConversion.h"
#include "device/ui/TypingHistory.h"

namespace inspector::editing::ui {

using device::ui::FromQString;
using device::ui::ToDisplay;
using device::ui::ToQString;

ShortcutEditorDialog::ShortcutEditorDialog(data::Workspace& workspace, QWidget* parent)
    : QDialog(parent), m_Prompts(workspace.GetPrompts()), m_Editor(workspace) {
  setObjectName(QStringLiteral("shortcutEditorDialog"));
  setWindowTitle(tr("Edit Shortcuts"));
  m_List = new QListWidget(this);
  m_List->setObjectName(QStringLiteral("shortcuts"));
  m_List->setAccessibleName(tr("Shortcuts"));
  m_ShortCut = new QLineEdit(this);
  m_ShortCut->setObjectName(QStringLiteral("shortCut"));
  m_ShortCut->setAccessibleName(tr("Shortcut"));
  auto* shortCut = new QLabel(tr("&Shortcut"), this);
  shortCut->setBuddy(m_ShortCut);
  m_Expanded = new device::ui::LinesEdit(this);
  m_Expanded->setObjectName(QStringLiteral("expanded"));
  m_Expanded->setAccessibleName(tr("Stands for"));
  m_Expanded->setTabChangesFocus(true);
  auto* expanded = new QLabel(tr("Stands &for"), this);
  expanded->setBuddy(m_Expanded);
  m_Problem = new QLabel(this);
  m_Problem->setObjectName(QStringLiteral("problem"));
  m_Problem->setWordWrap(true);
  const auto makeButton = [this](const QString& text, const char* name) {
    auto* button = new QPushButton(text, this);
    button->setObjectName(QLatin1String(name));
    button->setAutoDefault(false);
    return button;
  };
  QPushButton* add = makeButton(tr("&Add"), "addShortcutButton");
  m_Change = makeButton(tr("C&hange"), "changeShortcutButton");
  m_Delete = makeButton(tr("&Delete"), "deleteShortcutButton");
  const auto selected = [this] { return m_Shown[static_cast<std::size_t>(m_List->currentRow())].id; };
  connect(m_List, &QListWidget::currentRowChanged, this, [this](int row) { Select(row); });
  connect(add, &QPushButton::clicked, this, [this] { Store(std::nullopt); });
  connect(m_Change, &QPushButton::clicked, this, [this, selected] { Store(selected()); });
  connect(m_Delete, &QPushButton::clicked, this, [this, selected] {
    if (m_Editor.Delete(selected())) Fill();
  });
  auto* close = new QDialogButtonBox(QDialogButtonBox::Close, this);
  connect(close, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* layout = new QGridLayout(this);
  layout->addWidget(m_List, 0, 0, 1, 3);
  layout->addWidget(shortCut, 1, 0);
  layout->addWidget(m_ShortCut, 1, 1, 1, 2);
  layout->addWidget(expanded, 2, 0);
  layout->addWidget(m_Expanded, 2, 1, 1, 2);
  layout->addWidget(m_Problem, 3, 0, 1, 3);
  layout->addWidget(add, 4, 0);
  layout->addWidget(m_Change, 4, 1);
  layout->addWidget(m_Delete, 4, 2);
  layout->addLayout(device::ui::HistoryBeside(*this, close), 5, 0, 1, 3);
  layout->setRowStretch(0, 2);
  layout->setRowStretch(2, 1);
  device::ui::ResizeWithin(*this, {440, 560});
  Fill();
}

bool ShortcutEditorDialog::MayDrop() {
  const ShortcutEditor::Shortcut shown =
      m_Row >= 0 ? m_Shown[static_cast<std::size_t>(m_Row)] : ShortcutEditor::Shortcut();
  if (m_ShortCut->text() == ToQString(shown.shortCut) &&
      device::ui::LinesOf(*m_Expanded->document()) == ToDisplay(shown.expanded))
    return true;
  // Enter keeps it.
  return device::ConfirmLoss(m_Prompts,
                             u"The shortcut that you typed is not stored. Do you wish to drop it?");
}

void ShortcutEditorDialog::Select(int row) {
  if (row == m_Row) return;
  if (MayDrop()) return ShowSelected();
  // Later: a list that was clicked selects the row after it has said so.
  QMetaObject::invokeMethod(
      this,
      [this] {
        const QSignalBlocker quiet(m_List);
        m_List->setCurrentRow(m_Row);
      },
      Qt::QueuedConnection);
}

void ShortcutEditorDialog::reject() {
  if (MayDrop()) QDialog::reject();
}

void ShortcutEditorDialog::Fill() {
  const int row = m_List->currentRow();
  m_Shown = m_Editor.All();
  const QSignalBlocker quiet(m_List);
  m_List->clear();
  for (const ShortcutEditor::Shortcut& each : m_Shown) {
    auto* item = new QListWidgetItem(
        ToQString(each.shortCut) + QStringLiteral(" – ") + ToDisplay(each.expanded).replace(u'\n', u' '),
        m_List);
    // As wide as the list: the whole text of the selected one stands below.
    item->setSizeHint({1, std::max(device::kSmallestTarget, m_List->fontMetrics().height())});
  }
  m_List->setCurrentRow(std::min(row, m_List->count() - 1));
  ShowSelected();
}

void ShortcutEditorDialog::ShowSelected() {
  const int row = m_Row = m_List->currentRow();
  m_Change->setEnabled(row >= 0);
  m_Delete->setEnabled(row >= 0);
  m_Problem->clear();
  const ShortcutEditor::Shortcut shown =
      row >= 0 ? m_Shown[static_cast<std::size_t>(row)] : ShortcutEditor::Shortcut();
  m_ShortCut->setText(ToQString(shown.shortCut));
  m_Expanded->setPlainText(ToDisplay(shown.expanded));
}

void ShortcutEditorDialog::Store(std::optional<std::int32_t> id) {
  using Result = ShortcutEditor::Result;
  const Text shortCut = FromQString(m_ShortCut->text().trimmed());
  const Text expanded = device::ui::FromLines(device::ui::LinesOf(*m_Expanded->document()));
  const Result result = id ? m_Editor.Change(*id, shortCut, expanded) : m_Editor.Add(shortCut, expanded);
  if (result == Result::Done) Fill();
  switch (result) {
    case Result::NotOneWord:
      m_Problem->setText(tr("A shortcut is one word of at most 80 letters."));
      break;
    case Result::NothingToExpand:
      m_Problem->setText(tr("Say what the shortcut stands for."));
      break;
    case Result::Taken:
      m_Problem->setText(tr("There is such a shortcut already."));
      break;
    case Result::Done:
    case Result::Failed:
      break;
  }
}

}  // namespace inspector::editing::ui
