#include "editing/ui/StepPropertySheet.h"

#include <QComboBox>
#include <QEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QScrollArea>
#include <QShortcut>
#include <QTabBar>
#include <QTabWidget>
#include <QTimer>
#include <QVBoxLayout>

#include "device/ui/DialogSize.h"
#include "device/ui/OkCancel.h"
#include "device/ui/PickerCombo.h"
#include "device/ui/TextConversion.h"
#include "device/ui/Theme.h"
#include "editing/ui/CommentsPage.h"
#include "editing/ui/MaterialsPage.h"
#include "editing/ui/PicturePage.h"
#include "editing/ui/StepInfoPage.h"

namespace inspector::editing::ui {

using device::ui::ToQString;

namespace {

constexpr int kSaveAfter = 700;             // milliseconds
constexpr qsizetype kLongestCaption = 300;  // letters

}  // namespace

CStepPropertySheet::CStepPropertySheet(inspection::CInspectorDoc& document, QWidget* parent)
    : QDialog(parent),
      m_Dialogs(*this),
      m_Sheet(document),
      m_Pause(
          kSaveAfter, document.GetWorkspace().GetMachine().faults,
          [&document] { return document.GetWorkspace().IsBusy(); }, [this] { return Store(); }) {
  setObjectName(QStringLiteral("stepPropertySheet"));
  setWindowTitle(QStringLiteral("Step Properties"));
  m_Caption = new QLabel(this);
  m_Caption->setObjectName(QStringLiteral("stepCaption"));
  m_Caption->setTextFormat(Qt::PlainText);
  m_Caption->setWordWrap(true);
  QFont bold = m_Caption->font();
  bold.setBold(true);
  m_Caption->setFont(bold);
  m_Rating = new device::ui::DropDown(this, 150);
  m_Rating->setObjectName(QStringLiteral("rating"));
  m_Rating->setAccessibleName(tr("Rating"));
  auto* ratingCaption = new QLabel(tr("Ratin&g"), this);
  ratingCaption->setBuddy(m_Rating);
  connect(m_Rating, &QComboBox::activated, this, [this](int entry) { PickRating(entry); });

  m_Tabs = new QTabWidget(this);
  m_Tabs->setObjectName(QStringLiteral("pages"));
  m_Tabs->setAccessibleName(tr("Pages"));
  m_Tabs->tabBar()->setAccessibleName(tr("Pages"));
  m_Materials = new CMaterialsPage(m_Sheet, m_Dialogs, this);
  m_Comments = new CCommentsPage(m_Sheet, m_Dialogs, this);
  m_Picture = new CPicturePage(m_Sheet, m_Dialogs, this);
  m_Info = new CStepInfoPage(m_Sheet, this);
  m_Materials->onTicked = [this] { Save(); };
  m_Materials->onHasComments = [this](std::int32_t material) { m_Comments->OfferMaterialComments(material); };
  for (std::function<void()>* edited : {&m_Materials->onEdited, &m_Comments->onEdited, &m_Picture->onEdited})
    *edited = [this] { SaveSoon(); };

  m_NotStored = new QLabel(this);
  m_NotStored->setObjectName(QStringLiteral("notStored"));
  m_NotStored->setTextFormat(Qt::PlainText);
  m_NotStored->setWordWrap(true);
  m_NotStored->hide();

  m_Previous = new QPushButton(QStringLiteral("<<"), this);
  m_Previous->setObjectName(QStringLiteral("previousButton"));
  m_Previous->setAccessibleName(tr("Previous step"));
  m_Next = new QPushButton(QStringLiteral(">>"), this);
  m_Next->setObjectName(QStringLiteral("nextButton"));
  m_Next->setAccessibleName(tr("Next step"));
  auto* unfinished = new QPushButton(QStringLiteral("!"), this);
  unfinished->setObjectName(QStringLiteral("nextUnfinishedButton"));
  unfinished->setAccessibleName(tr("Next unfinished"));
  unfinished->setToolTip(tr("Next unfinished (F8)"));
  unfinished->setShortcut(Qt::Key_F8);
  connect(unfinished, &QPushButton::clicked, this, [this] {
    m_WantsNextUnfinished = true;
    accept();
  });
  for (QPushButton* button : {m_Previous, m_Next, unfinished}) button->setAutoDefault(false);
  connect(m_Previous, &QPushButton::clicked, this, [this] { Move(false); });
  connect(m_Next, &QPushButton::clicked, this, [this] { Move(true); });
  connect(new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_PageUp), this), &QShortcut::activated, this,
          [this] { Move(false); });
  connect(new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_PageDown), this), &QShortcut::activated, this,
          [this] { Move(true); });
  QDialogButtonBox* const buttons = device::ui::MakeOkCancel(*this);
  // Enter in a field ends the field, not the sheet.
  for (QAbstractButton* button : buttons->buttons()) static_cast<QPushButton*>(button)->setAutoDefault(false);
  connect(new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_Return), this), &QShortcut::activated, this,
          &QDialog::accept);

  connect(qGuiApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
    if (state != Qt::ApplicationActive) Flush();
  });

  auto* rating = new QHBoxLayout;
  rating->addWidget(ratingCaption);
  rating->addWidget(m_Rating, 1);
  auto* bottom = new QHBoxLayout;
  bottom->addWidget(m_Previous);
  bottom->addWidget(m_Next);
  bottom->addWidget(unfinished);
  bottom->addWidget(buttons, 1);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(m_Caption);
  layout->addLayout(rating);
  // On a low screen the pages scroll, and the buttons below stay.
  m_Area = new QScrollArea(this);
  m_Area->setObjectName(QStringLiteral("pageArea"));
  m_Area->setFrameShape(QFrame::NoFrame);
  m_Area->setFocusPolicy(Qt::NoFocus);
  m_Area->setWidgetResizable(true);
  m_Area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  m_Area->setWidget(m_Tabs);
  layout->addWidget(m_Area, 1);
  layout->addWidget(m_NotStored);
  layout->addLayout(bottom);
  device::ui::ResizeWithin(*this, {480, 760});
}

bool CStepPropertySheet::OpenStep(std::int32_t categoryID, std::int32_t stepID, std::optional<int> tab) {
  if (!m_Sheet.Open(categoryID, stepID)) return false;
  ShowStep();
  ShowPage(tab ? m_Sheet.PageAt(*tab) : m_Sheet.DefaultPage());
  return true;
}

void CStepPropertySheet::ShowPage(StepSheet::Page page) {
  for (std::size_t n = 0; n < m_Sheet.Pages().size(); ++n)
    if (m_Sheet.Pages()[n] == page) m_Tabs->setCurrentIndex(static_cast<int>(n));
  // Who is asked to explain a rating types at once; in the rating the letters would choose another one.
  if (page == StepSheet::Page::Comments) m_Comments->BeginTyping();
}

void CStepPropertySheet::ShowStep() {
  const QWidget* const front = m_Tabs->currentWidget();
  const QPointer<QWidget> focus = focusWidget();
  const bool isInPage = front && focus && front->isAncestorOf(focus);
  m_Caption->setText(device::ui::Shortened(ToQString(m_Sheet.Caption()), kLongestCaption));
  m_Materials->ShowStep(*m_Tabs->tabBar());
  m_Comments->ShowStep();
  m_Picture->ShowStep();
  m_Info->ShowStep();
  ArrangePages();
  if (isInPage) KeepFocusInPage(focus);
  m_Rating->clear();
  for (const Text& entry : m_Sheet.Ratings().Entries()) m_Rating->addItem(ToQString(entry));
  ShowRating();
  m_Previous->setEnabled(!m_Sheet.IsFirst());
  m_Next->setEnabled(!m_Sheet.IsLast());
  if (onStepShown) onStepShown();
}

// The page in front stays in front where the next step has it as well.
void CStepPropertySheet::ArrangePages() {
  const bool hasMaterials = m_Sheet.Pages().front() == StepSheet::Page::Materials;
  const int place = m_Tabs->indexOf(m_Materials);
  if (m_Tabs->count() > 0 && hasMaterials == (place >= 0)) return;
  QWidget* const front = m_Tabs->currentWidget();
  m_Tabs->clear();
  m_Materials->setVisible(hasMaterials);
  if (hasMaterials) m_Tabs->addTab(m_Materials, tr("&Materials"));
  m_Tabs->addTab(m_Comments, tr("&Comments"));
  m_Tabs->addTab(m_Picture, tr("Pict&ure"));
  m_Tabs->addTab(m_Info, tr("In&fo"));
  if (front && m_Tabs->indexOf(front) >= 0) m_Tabs->setCurrentWidget(front);
  FitTabs();
}

// It would fall on a button, which the next blank presses.
void CStepPropertySheet::KeepFocusInPage(QWidget* former) {
  QWidget* const front = m_Tabs->currentWidget();
  if (former && front->isAncestorOf(former)) {
    former->setFocus();
  } else if (front == m_Comments) {
    m_Comments->BeginTyping();
  } else {
    m_Tabs->tabBar()->setFocus();
  }
}

// With large text on a narrow screen the tabs take a smaller one, so that all stand side by side.
void CStepPropertySheet::FitTabs() {
  const QMargins beside = layout()->contentsMargins();
  device::ui::ShrinkToFit(*m_Tabs->tabBar(), width() - beside.left() - beside.right());
}

void CStepPropertySheet::ShowRating() {
  const auto entry = m_Sheet.Ratings().EntryOf(m_Sheet.Draft().result);
  // A result that is no choice any more is shown, and stays until another is picked.
  m_Rating->setPlaceholderText(ToQString(m_Sheet.Draft().result));
  m_Rating->setCurrentIndex(entry ? static_cast<int>(*entry) : -1);
}

void CStepPropertySheet::PickRating(int entry) {
  if (entry < 0) return;
  m_Sheet.PickRating(static_cast<std::size_t>(entry));
  ShowRating();
  Save();
}

void CStepPropertySheet::Move(bool forward) {
  m_Pause.stop();
  if (!Store())
    SaveSoon();
  else if (forward ? m_Sheet.MoveToNext() : m_Sheet.MoveToPrevious())
    ShowStep();
}

void CStepPropertySheet::SaveSoon() {
  m_Pause.Begin();
}

// What cannot be written is said in the sheet for as long as it cannot.
bool CStepPropertySheet::Store(bool (StepSheet::*save)()) {
  const bool stored = (m_Sheet.*save)();
  if (!stored) m_NotStored->setText(ToQString(device::NotStored(m_Sheet.GetWorkspace().GetMachine().faults)));
  if (m_NotStored->isHidden() != stored) {
    m_NotStored->setVisible(!stored);
    // Once the pages have got their new height.
    QTimer::singleShot(0, this, &CStepPropertySheet::ShowCaret);
  }
  return stored;
}

// Who is typing goes on seeing it when the line below takes room from the pages.
void CStepPropertySheet::ShowCaret() {
  auto* const text = qobject_cast<QPlainTextEdit*>(focusWidget());
  if (!text || !m_Area->isAncestorOf(text)) return;
  text->ensureCursorVisible();
  const QRect caret = text->cursorRect();
  const QPoint place = text->viewport()->mapTo(m_Area->widget(), caret.center());
  m_Area->ensureVisible(place.x(), place.y(), 0, caret.height());
}

bool CStepPropertySheet::Save() {
  const bool stored = Store();
  if (!stored) SaveSoon();
  return stored;
}

bool CStepPropertySheet::Flush() {
  if (m_Sheet.GetWorkspace().IsBusy()) return false;  // what was typed has the timer running
  const device::FaultLog::Unattended unattended(m_Sheet.GetWorkspace().GetMachine().faults);
  return Save();
}

void CStepPropertySheet::resizeEvent(QResizeEvent* event) {
  QDialog::resizeEvent(event);
  FitTabs();
}

void CStepPropertySheet::changeEvent(QEvent* event) {
  QDialog::changeEvent(event);
  if (event->type() == QEvent::FontChange) FitTabs();
  if (event->type() == QEvent::ActivationChange && !isActiveWindow()) Flush();
}

void CStepPropertySheet::done(int result) {
  m_Pause.stop();
  if (!Store(&StepSheet::SaveOnLeaving)) {
    // Yes, which Enter takes, loses nothing.
    if (device::ConfirmCaution(m_Sheet.GetWorkspace().GetPrompts(),
                               u"This step could not be written yet. Stay here and keep what was entered?")) {
      SaveSoon();
      m_WantsNextUnfinished = false;
      return;
    }
    m_Sheet.Discard();
  }
  // Cancel loses nothing that was typed; whoever meant it that way takes it back.
  if (result == Rejected) m_Sheet.LetUndo();
  QDialog::done(result);
}

}  // namespace inspector::editing::ui
