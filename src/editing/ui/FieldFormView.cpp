#include "editing/ui/FieldFormView.h"

#include <QVBoxLayout>

#include "device/ListColumns.h"
#include "device/ui/FieldArea.h"
#include "device/ui/TextConversion.h"
#include "editing/ui/Captions.h"
#include "editing/ui/FieldEditor.h"

namespace inspector::editing::ui {
namespace {

using device::ui::ToQString;

constexpr int kStoreAfter = 700;  // milliseconds from the first key that is not stored yet
constexpr int kWidestForm = 640;  // logical pixels; longer lines are hard to read

QLabel* MakeLabel(const char* name, QWidget* parent) {
  auto* label = new QLabel(parent);
  label->setObjectName(QLatin1String(name));
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  return label;
}

}  // namespace

CFieldFormView::CFieldFormView(inspection::CInspectorDoc& document, EditingDialogs& dialogs, QWidget* parent)
    : Screen(parent),
      m_Form(document, dialogs),
      m_Caption(MakeLabel("caption", this)),
      m_Area(new device::ui::FieldArea(this)),
      m_Left(MakeLabel("whatIsLeft", this)),
      m_Pause(
          kStoreAfter, document.GetWorkspace().GetMachine().faults,
          [&document] { return document.GetWorkspace().IsBusy(); }, [this] { return Flush(); }),
      m_Faults(document.GetWorkspace().GetMachine().faults) {
  m_Area->setObjectName(QStringLiteral("fields"));
  m_Area->setAccessibleName(QStringLiteral("Fields"));
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(6, 6, 6, 6);
  layout->addWidget(m_Caption);
  layout->addWidget(m_Area, 1);
  layout->addWidget(m_Left);
}

CFieldFormView::~CFieldFormView() {
  // The focus leaves a field while the window goes, when nothing is left to store it with.
  for (const auto& [field, editor] : m_Editors) editor->onEntered = nullptr;
}

QString CFieldFormView::Title() const {
  return ToQString(m_Form.CategoryTitle());
}

void CFieldFormView::OnShow() {
  m_Form.Show();
  MakeEditors();
  ShowCaptions();
  if (!m_Editors.empty()) m_Editors.begin()->second->Entry()->setFocus();
}

void CFieldFormView::MakeEditors() {
  m_Editors.clear();
  auto* form = new QWidget;
  form->setMaximumWidth(kWidestForm);
  auto* layout = new QVBoxLayout(form);
  layout->setContentsMargins(0, 0, 6, 0);
  for (int field = 0; field < m_Form.FieldCount(); ++field) {
    const std::optional<FieldForm::Field> shown = m_Form.FieldAt(field);
    if (!shown) continue;
    auto* editor = new FieldEditor(*shown, m_Form.Choices(field), field, form);
    editor->onTyped = [this] { m_Pause.Begin(); };
    editor->onEntered = [this] {
      const device::FaultLog::Unattended unattended(m_Faults);  // the next field has the keys by now
      Flush();
    };
    editor->onEditList = [this, field] { EditList(field); };
    m_Editors.emplace(field, editor);
    layout->addWidget(editor);
  }
  layout->addStretch(1);
  m_Area->setWidget(form);  // deletes the form before
}

bool CFieldFormView::Store(int field, FieldEditor& editor) {
  if (!editor.HasChanges()) return true;
  if (!m_Form.Enter(field, editor.Value())) return false;
  editor.Stored();
  const std::optional<FieldForm::Field> stored = m_Form.FieldAt(field);
  editor.ShowDoubt(stored ? stored->doubt : device::Text());
  return true;
}

bool CFieldFormView::Flush() {
  m_Pause.stop();
  bool stored = true;
  bool changed = false;
  for (const auto& [field, editor] : m_Editors) {
    changed = changed || editor->HasChanges();
    stored = Store(field, *editor) && stored;
  }
  if (changed) ShowCaptions();
  if (!stored) m_Pause.Begin();
  if (onStored) onStored(stored);
  return stored;
}

void CFieldFormView::Discard() {
  m_Pause.stop();
  for (const auto& [field, editor] : m_Editors) editor->Stored();
}

bool CFieldFormView::OnLeave() {
  const bool stored = Flush();
  return m_Form.Leave() && stored;
}

void CFieldFormView::EditList(int field) {
  m_Form.EditList(field);
  if (const auto editor = m_Editors.find(field); editor != m_Editors.end())
    editor->second->SetChoices(m_Form.Choices(field));
}

void CFieldFormView::ShowCaptions() {
  const device::Text caption = m_Form.Caption();
  m_Caption->setText(ToQString(caption));
  m_Left->setText(ToQString(m_Form.LeftCaption()));
  FitCaptions();
}

void CFieldFormView::FitCaptions() {
  const int fields = 2 * (device::kSmallestTarget + fontMetrics().lineSpacing());
  ShowWhereRoomIs({m_Left, m_Caption},
                  contentsRect().marginsRemoved(layout()->contentsMargins()).size() - QSize(0, fields));
}

void CFieldFormView::resizeEvent(QResizeEvent* event) {
  Screen::resizeEvent(event);
  FitCaptions();
}

}  // namespace inspector::editing::ui
