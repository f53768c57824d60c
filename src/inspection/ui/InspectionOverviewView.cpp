#include "inspection/ui/InspectionOverviewView.h"

#include <QAction>
#include <QLineEdit>
#include <QVBoxLayout>
#include <utility>

#include "device/ui/TextConversion.h"

namespace inspector::inspection::ui {

using device::ui::ListView;

namespace {

std::vector<device::ListColumn> Columns() {
  return {{u"Client Name", 66}, {u"Address", 70}, {u"City/State/Zip", 56}, {u"Doc #", 48}};
}

}  // namespace

CInspectionOverview::CInspectionOverview(CInspectorDoc& document, QWidget* parent)
    : Screen(parent),
      m_Document(document),
      m_Overview(document),
      m_Rows(m_Overview),
      m_Find(new device::ui::FindField("findField", QStringLiteral("Find inspections"), this)),
      m_List(new ListView(m_Rows, Columns(), this)) {
  setObjectName(QStringLiteral("inspectionOverview"));
  m_List->setObjectName(QStringLiteral("inspectionList"));
  m_List->setAccessibleName(QStringLiteral("Inspections"));
  m_List->setSelectionMode(QAbstractItemView::ExtendedSelection);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(8, 8, 8, 0);
  layout->addWidget(m_Find);
  layout->addWidget(m_List, 1);

  connect(m_Find, &QLineEdit::textChanged, this, [this](const QString& text) {
    m_Rows.SetFilter(device::ui::FromQString(text));
    m_List->SetEmptyText(m_Rows.IsFiltering() ? QStringLiteral("No inspection holds these words.")
                                              : QString());
    m_List->Model().Reset();
    SelectAgain();
    UpdateCommands();
  });
  connect(m_Find, &QLineEdit::returnPressed, this, [this] {
    if (m_List->SelectedRow() < 0) m_List->SelectRow(0);
    m_List->setFocus();
  });
  m_Find->LeadTo(*m_List);
  m_List->onSelect = [this](int shown) { OnSelect(shown); };
  m_List->onOpen = [this](int) { Open(); };
  AddCommands();
}

void CInspectionOverview::AddCommands() {
  const auto needsSelection = [this](QAction* action) { m_NeedSelection.push_back(action); };
  needsSelection(
      AddCommand("open", QStringLiteral("&Open"), QKeySequence(Qt::CTRL | Qt::Key_O), [this] { Open(); }));
  AddCommand("new", QStringLiteral("&New"), QKeySequence::New, [this] { New(); });
  needsSelection(AddCommand("duplicate", QStringLiteral("D&uplicate"), QKeySequence(Qt::CTRL | Qt::Key_D),
                            [this] { Duplicate(); }));
  needsSelection(AddCommand("delete", QStringLiteral("&Delete"), QKeySequence(Qt::CTRL | Qt::Key_Delete),
                            [this] { Delete(); }));
  // Stays enabled without a selection, because it says what is missing.
  AddCommand("merge", QStringLiteral("&Merge"), QKeySequence(Qt::CTRL | Qt::Key_M), [this] { Merge(); });
  AddCommand("deleteAll", QStringLiteral("Delete &All"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Delete),
             [this] { DeleteAll(); });
  UpdateCommands();
}

void CInspectionOverview::UpdateCommands() {
  const bool selected = m_List->SelectedRow() >= 0;
  for (QAction* action : m_NeedSelection) action->setEnabled(selected);
}

void CInspectionOverview::OnShow() {
  Refill();
  const std::int32_t current = m_Document.Inspection().m_InspectionID;
  if (std::exchange(m_CurrentID, current) != current)
    SelectCurrent();
  else
    SelectAgain();
  m_List->setFocus();
}

void CInspectionOverview::OnSelect(int shown) {
  UpdateCommands();
  if (const auto row = m_Overview.RowAt(m_Rows.PositionOf(shown))) m_SelectedID = row->inspectionID;
}

void CInspectionOverview::SelectCurrent() {
  if (m_Document.HasInspection()) Select(m_Document.Inspection().m_InspectionID);
}

void CInspectionOverview::Refill() {
  m_Overview.Refill();
  m_Rows.Refill();
  m_List->Refill();
  UpdateCommands();
}

void CInspectionOverview::Select(std::int32_t inspectionID) {
  m_List->SelectRow(m_Rows.ShownOf(m_Overview.RowOf(inspectionID)));
}

void CInspectionOverview::Changed(std::int32_t selectID) {
  Refill();
  Select(selectID);
  m_CurrentID = m_Document.Inspection().m_InspectionID;
  if (onChanged) onChanged();
}

bool CInspectionOverview::TakeSelected() {
  if (m_Document.HasInspection() && SelectedPosition() < 0) {
    device::Alert(m_Document.GetWorkspace().GetPrompts(), u"Select an inspection first.");
    return false;
  }
  return MakeSelectedCurrent();
}

bool CInspectionOverview::MakeSelectedCurrent() {
  const int position = SelectedPosition();
  if (position < 0) return true;
  const auto row = m_Overview.RowAt(position);
  if (row && row->inspectionID == m_Document.Inspection().m_InspectionID) return true;
  const bool opened = m_Overview.OnOpen(position);
  m_CurrentID = m_Document.Inspection().m_InspectionID;
  if (!opened) Refill();
  return opened;
}

void CInspectionOverview::Open() {
  const int position = SelectedPosition();
  if (position < 0 || !MayChange()) return;
  if (m_Overview.OnOpen(position)) {
    if (onOpened) onOpened();
  } else {
    Refill();
  }
}

void CInspectionOverview::New() {
  if (!MayChange()) return;
  const auto key = m_Document.NewInspection();
  if (!key) return;
  m_Find->clear();  // a new inspection has no words to be found by
  Changed(*key);
  if (onOpened) onOpened();
}

void CInspectionOverview::Duplicate() {
  if (!MayChange()) return;
  const auto key = m_Overview.OnDuplicate(SelectedPosition());
  if (!key) return;
  Changed(*key);
  if (m_List->SelectedRow() < 0) {  // its number may hold none of the words that are looked for
    m_Find->clear();
    Select(*key);
  }
  MakeSelectedCurrent();
}

void CInspectionOverview::Delete() {
  const int shown = m_List->SelectedRow();
  if (!MayChange() || !m_Overview.OnDelete(SelectedPosition(), m_List->SelectedCount())) return;
  Changed(-1);
  m_List->SelectRow(std::min(shown, m_Rows.RowCount() - 1));
}

void CInspectionOverview::Merge() {
  const std::optional<std::int32_t> target = m_Overview.OnMerge(SelectedPosition());
  if (target && onMerge) onMerge(*target);
}

void CInspectionOverview::DeleteAll() {
  if (!MayChange() || !m_Document.DeleteAllInspections()) return;
  m_Find->clear();
  Changed(m_Document.Inspection().m_InspectionID);
}

}  // namespace inspector::inspection::ui
