#include "editing/ui/CommentPickerDialog.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "device/ui/DialogSize.h"
#include "device/ui/FindField.h"
#include "device/ui/ListView.h"
#include "device/ui/OkCancel.h"
#include "device/ui/TextConversion.h"

namespace inspector::editing::ui {

using device::ui::FromQString;
using device::ui::ToQString;

CommentPickerDialog::CommentPickerDialog(CommentPicker& picker, QWidget* parent)
    : QDialog(parent), m_Picker(picker) {
  setObjectName(QStringLiteral("commentPickerDialog"));
  setWindowTitle(tr("Comment Picker"));
  auto* prompt = new QLabel(ToQString(CommentPicker::kPrompt), this);
  prompt->setWordWrap(true);
  auto* filter = new device::ui::FindField("filterField", tr("Find"), this);
  m_List = new device::ui::ListView(
      *this, {{u"", 30, device::ListColumn::Align::Centre, true}, {u"Comment", 210}}, this);
  m_List->setObjectName(QStringLiteral("commentList"));
  m_List->setAccessibleName(tr("Comments"));
  m_List->SetEmptyText(tr("No comment matches."));
  m_List->onClick = [this](int row, int) { Click(row); };
  connect(filter, &QLineEdit::textChanged, this, [this](const QString& typed) {
    m_Picker.SetFilter(FromQString(typed));
    m_List->Refill();
  });
  connect(filter, &QLineEdit::returnPressed, this, [this] { ChooseFirst(); });
  QDialogButtonBox* const buttons = device::ui::MakeOkCancel(*this);
  for (QAbstractButton* button : buttons->buttons()) static_cast<QPushButton*>(button)->setAutoDefault(false);
  if (picker.MayDelete()) {
    QPushButton* remove = buttons->addButton(tr("&Delete"), QDialogButtonBox::ActionRole);
    remove->setObjectName(QStringLiteral("deleteButton"));
    connect(remove, &QPushButton::clicked, this, [this] { DeleteSelected(); });
  }
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(prompt);
  layout->addWidget(filter);
  layout->addWidget(m_List, 1);
  layout->addWidget(buttons);
  device::ui::ResizeWithin(*this, {460, 640});
}

device::ListRow CommentPickerDialog::ShownRow(int row) {
  const auto& rows = m_Picker.Rows();
  if (row < 0 || row >= RowCount()) return {};
  const CommentPicker::Row& shown = rows[static_cast<std::size_t>(row)];
  if (shown.isHeading)
    return {{u"", (m_Picker.IsFolded(shown) ? u"▸ " : u"▾ ") + m_Picker.TextOf(shown)},
            device::CheckImage::None,
            device::RowTone::Heading};
  return {{u"", m_Picker.TextOf(shown)},
          m_Picker.IsChosen(shown) ? device::CheckImage::Ticked : device::CheckImage::Empty,
          device::RowTone::Normal};
}

void CommentPickerDialog::Click(int row) {
  if (row < 0 || row >= RowCount()) return;
  const CommentPicker::Row shown = m_Picker.Rows()[static_cast<std::size_t>(row)];
  if (shown.isHeading) {
    m_Picker.ToggleGroup(shown.index);
    m_List->Refill();
  } else {
    m_Picker.ToggleChoice(shown.index);
    m_List->Model().RefreshRow(row);
  }
}

// What was typed leads to a comment: Enter takes the first one, Enter again leaves with it.
void CommentPickerDialog::ChooseFirst() {
  if (!m_Picker.Chosen().empty()) return accept();
  for (int row = 0; row < RowCount(); ++row) {
    if (m_Picker.Rows()[static_cast<std::size_t>(row)].isHeading) continue;
    Click(row);
    m_List->SelectRow(row);
    return;
  }
}

void CommentPickerDialog::DeleteSelected() {
  const int row = m_List->SelectedRow();
  if (row < 0 || row >= RowCount()) return;
  const CommentPicker::Row shown = m_Picker.Rows()[static_cast<std::size_t>(row)];
  if (shown.isHeading) return;
  m_Picker.Delete(shown.index);
  m_List->Refill();
}

}  // namespace inspector::editing::ui
