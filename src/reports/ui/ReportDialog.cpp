#include "reports/ui/ReportDialog.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "device/ui/DialogSize.h"
#include "device/ui/FieldArea.h"
#include "device/ui/FileDialog.h"
#include "device/ui/TextConversion.h"
#include "device/ui/TypingHistory.h"
#include "device/ui/WrappingCheckBox.h"
#include "reports/ReportLayout.h"
#include "reports/ui/SelectCategoriesPage.h"

namespace inspector::reports::ui {

using device::ui::DropDown;
using device::ui::FromQString;
using device::ui::ToQString;

namespace {

constexpr int kDevicePixels = 150;

DropDown* MakeDropDown(const char* name, QWidget* parent) {
  auto* box = new DropDown(parent, kDevicePixels);
  box->setObjectName(QLatin1String(name));
  return box;
}

}  // namespace

ReportDialog::ReportDialog(ReportForm& form, device::Prompts& prompts, QWidget* parent)
    : QDialog(parent), m_Form(form), m_Prompts(prompts) {
  setObjectName(QStringLiteral("reportDialog"));
  setWindowTitle(QStringLiteral("Report"));
  // On a handheld that is turned, or with large text, the fields scroll and the buttons stay.
  auto* area = new device::ui::FieldArea(this);
  auto* fields = new QWidget;
  auto* layout = new QVBoxLayout(fields);
  layout->setContentsMargins(0, 0, 0, 0);
  area->setWidget(fields);
  m_Kind = MakeDropDown("reportKind", fields);
  m_Layout = MakeDropDown("reportLayout", fields);
  m_Rating = MakeDropDown("reportRating", fields);
  m_Categories = new QPushButton(fields);
  m_Categories->setObjectName(QStringLiteral("reportCategories"));
  m_Categories->setAutoDefault(false);
  m_Pictures = new device::ui::WrappingCheckBox(fields);
  m_Pictures->setObjectName(QStringLiteral("reportPictures"));
  m_Pictures->setText(tr("With &pictures"));
  m_Target = new QLineEdit(fields);
  m_Target->setObjectName(QStringLiteral("reportTarget"));
  m_Browse = new QPushButton(tr("&Browse..."), fields);
  m_Browse->setObjectName(QStringLiteral("reportBrowse"));
  m_Browse->setAutoDefault(false);

  for (const ReportFormat* const kind : Formats()) m_Kind->addItem(ToQString(kind->Title()));
  for (const ReportLayout* const each : Layouts()) m_Layout->addItem(ToQString(each->Name()));
  for (const Text& rating : m_Form.Ratings()) m_Rating->addItem(ToQString(rating));
  connect(m_Kind, &QComboBox::activated, this, [this](int row) {
    m_Form.ChooseTarget(FromQString(m_Target->text()));
    m_Form.ChooseKind(*Formats()[static_cast<std::size_t>(row)]);
    ShowKind();
  });
  connect(m_Layout, &QComboBox::activated, this,
          [this] { m_Form.ChooseLayout(FromQString(m_Layout->currentText())); });
  connect(m_Rating, &QComboBox::activated, this,
          [this] { m_Form.ChooseRating(FromQString(m_Rating->currentText())); });
  connect(m_Pictures, &QCheckBox::clicked, this, [this](bool on) { m_Form.ChoosePictures(on); });
  connect(m_Categories, &QPushButton::clicked, this, [this] { ChooseCategories(); });
  connect(m_Browse, &QPushButton::clicked, this, [this] { Browse(); });

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
  QPushButton* const write = buttons->addButton(tr("&Write"), QDialogButtonBox::AcceptRole);
  write->setObjectName(QStringLiteral("writeButton"));
  write->setDefault(true);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

  auto* target = new QHBoxLayout;
  target->addWidget(m_Target, 1);
  target->addWidget(m_Browse);
  layout->addWidget(AddField(tr("&Report"), *m_Kind));
  layout->addWidget(m_Kind);
  layout->addWidget(AddField(tr("&Layout"), *m_Layout));
  layout->addWidget(m_Layout);
  layout->addWidget(AddField(tr("Ra&ting"), *m_Rating));
  layout->addWidget(m_Rating);
  layout->addWidget(m_Categories);
  layout->addWidget(m_Pictures);
  layout->addWidget(AddField(tr("&File or folder"), *m_Target));
  layout->addLayout(target);
  layout->addStretch(1);
  auto* whole = new QVBoxLayout(this);
  whole->addWidget(area, 1);
  whole->addLayout(device::ui::HistoryBeside(*this, buttons));
  m_Kind->setFocus();
  device::ui::ResizeWithin(*this, {460, 620});

  const auto kinds = Formats();
  m_Kind->setCurrentIndex(
      static_cast<int>(std::find(kinds.begin(), kinds.end(), &m_Form.Kind()) - kinds.begin()));
  m_Layout->setCurrentText(ToQString(m_Form.Choices().layout));
  m_Rating->setCurrentText(ToQString(m_Form.Choices().rating));
  m_Pictures->setChecked(m_Form.Choices().pictures && m_Form.MayHavePictures());
  ShowKind();
  ShowCategories();
}

QLabel* ReportDialog::AddField(const QString& caption, QWidget& field) {
  auto* label = new QLabel(caption, this);
  label->setBuddy(&field);
  field.setAccessibleName(QString(caption).remove(u'&'));
  return label;
}

void ReportDialog::ShowKind() {
  const ReportFormat::Uses& uses = m_Form.Kind().Used();
  m_Layout->setEnabled(uses.layout);
  m_Rating->setEnabled(uses.rating);
  m_Categories->setEnabled(uses.categories);
  m_Pictures->setEnabled(uses.pictures && m_Form.MayHavePictures());
  m_Pictures->setToolTip(m_Form.MayHavePictures() ? QString()
                                                  : tr("The options leave pictures out of reports."));
  m_Target->setEnabled(!uses.ownFolder);
  m_Browse->setEnabled(!uses.ownFolder);
  m_Target->setText(ToQString(m_Form.Target()));
  m_Target->setCursorPosition(0);
}

void ReportDialog::ShowCategories() {
  const CategorySelection::Count count = m_Form.Categories().Counted();
  m_Categories->setText(tr("&Categories: %1 of %2...").arg(count.chosen).arg(count.present));
}

void ReportDialog::ChooseCategories() {
  CategorySelection chosen = m_Form.Categories();
  CSelectCategoriesPage page(chosen, this);
  if (page.exec() == QDialog::Accepted) m_Form.Categories() = std::move(chosen);
  ShowCategories();
}

void ReportDialog::Browse() {
  if (const auto question = m_Form.SaveQuestion()) {
    if (const auto chosen = m_Prompts.AskSavePath(*question)) m_Form.ChooseAgreedTarget(*chosen);
  } else {
    device::ui::FileDialog dialog(this, tr("Folder of the pages"), "folderDialog");
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    if (const auto chosen = dialog.Ask(); !chosen.empty())
      m_Form.ChooseTarget(device::FromUtf8(chosen.front().native()));
  }
  ShowKind();
}

void ReportDialog::accept() {
  const Text target = FromQString(m_Target->text().trimmed());
  if (const Text problem = ReportForm::WhyNot(target); !problem.empty())
    return device::ShowError(m_Prompts, problem);
  m_Form.ChooseTarget(target);
  m_Outcome = m_Form.Make();
  if (m_Outcome.result == ReportResult::Written) QDialog::accept();
}

}  // namespace inspector::reports::ui
