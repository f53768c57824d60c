#include "editing/ui/CommentsPage.h"

#include <QFile>
#include <QGridLayout>
#include <QLabel>
#include <QMimeData>
#include <QPushButton>
#include <QUrl>
#include <QVBoxLayout>

#include "device/Format.h"
#include "device/ListColumns.h"
#include "device/ui/FileDialog.h"
#include "device/ui/TextConversion.h"
#include "device/ui/TypingHistory.h"
#include "editing/PictureAttachment.h"
#include "editing/ui/CommentBox.h"
#include "editing/ui/PicklistBox.h"
#include "editing/ui/PictureFile.h"
#include "editing/ui/PictureStrip.h"

namespace inspector::editing::ui {

using device::ui::FromQString;
using device::ui::ToQString;

namespace {

std::filesystem::path HostPath(const QString& name) {
  return QFile::encodeName(name).toStdString();
}

}  // namespace

CCommentsPage::CCommentsPage(StepSheet& sheet, SheetDialogs& dialogs, QWidget* parent)
    : QWidget(parent),
      m_Sheet(sheet),
      m_Editing(sheet, dialogs),
      m_Converter(sheet.GetWorkspace().GetPrompts()) {
  setObjectName(QStringLiteral("commentsPage"));
  m_Comment = new CommentBox(this);
  m_Comment->setObjectName(QStringLiteral("commentBox"));
  m_Comment->setAccessibleName(tr("Comment"));
  m_Comment->onEdited = [this] {
    if (m_IsApplying) return;
    m_Sheet.SetComments(m_Comment->Stored());
    m_Pictures->ShowPicturesOf(m_Sheet.Draft().comments);
    if (onEdited) onEdited();
  };
  m_Comment->onLeft = [this] { m_Editing.SaveSelection(m_Comment->StoredSelection()); };
  m_Comment->onPictures = [this](const QMimeData& pictures) { AttachFrom(pictures); };
  m_Pictures = new PictureStrip(sheet.GetWorkspace(), this);
  m_Pictures->onChange = [this](const Text& comment) {
    m_Comment->Replace(comment);
    m_Editing.SaveSelection(m_Comment->StoredSelection());  // what was saved counts in the former text
  };

  m_Picklist = new PicklistBox(this);
  m_Picklist->onOpen = [this] { m_Picklist->SetComments(m_Editing.Picklist().Comments()); };
  m_Picklist->setObjectName(QStringLiteral("picklist"));
  m_Picklist->setAccessibleName(tr("Prepared comments"));
  m_Picklist->setPlaceholderText(tr("Prepared comments"));
  QPushButton* insert = AddButton(tr("&Insert"), "insertButton");
  QPushButton* pick = AddButton(tr("Pic&ker..."), "pickerButton");
  QPushButton* add = AddButton(tr("A&dd Com"), "addCommentButton");
  QPushButton* camera = AddButton(tr("Came&ra"), "cameraButton");
  QPushButton* attach = AddButton(tr("&Attach..."), "attachButton");
  QPushButton* newest = AddButton(tr("Ne&west"), "newestButton");
  newest->setToolTip(tr("Attach the newest picture of the card"));
  connect(insert, &QPushButton::clicked, this, [this] { InsertPicked(); });
  connect(pick, &QPushButton::clicked, this, [this] { Do([this] { return m_Editing.OpenPicker(); }); });
  connect(add, &QPushButton::clicked, this, [this] {
    KeepSelection();
    m_Editing.AddToPicklist();
  });
  connect(camera, &QPushButton::clicked, this, [this] {
    Do([this]() -> std::vector<TextChange> {
      if (auto change = m_Editing.AddCameraPicture()) return {*change};
      return {};
    });
  });
  connect(attach, &QPushButton::clicked, this, [this] {
    device::ui::FileDialog dialog(this, tr("Attach pictures"), "attachDialog");
    dialog.ShowFolder(Card().HostFolder());
    dialog.setNameFilter(tr("Pictures (*.jpg *.jpeg *.png *.gif *.bmp *.2bp)"));
    dialog.setFileMode(QFileDialog::ExistingFiles);
    Attach(dialog.Ask());
  });
  connect(newest, &QPushButton::clicked, this, [this] { AttachNewest(); });

  m_Summary = new CommentBox(this);
  m_Summary->setObjectName(QStringLiteral("summaryComment"));
  m_Summary->setAccessibleName(tr("Summary comment"));
  m_Summary->setFixedHeight(std::max(device::kSmallestTarget, 2 * fontMetrics().lineSpacing() + 14));
  m_Summary->onEdited = [this] {
    m_Sheet.SetSummaryComment(m_Summary->Stored());
    if (onEdited) onEdited();
  };
  for (CommentBox* box : {m_Comment, m_Summary})
    box->onWordFinished = [this](TextView line, std::size_t wordEnd) {
      return m_Editing.ExpandWord(line, wordEnd);
    };
  auto* history = new device::ui::TypingHistory(*this);
  history->Follow(m_Comment);
  auto* caption = new QLabel(tr("&Summary comment"), this);
  caption->setBuddy(m_Summary);

  auto* buttons = new QGridLayout;
  buttons->addWidget(m_Picklist, 0, 0, 1, 2);
  buttons->addWidget(insert, 0, 2);
  buttons->addWidget(pick, 1, 0);
  buttons->addWidget(add, 1, 1);
  buttons->addWidget(camera, 1, 2);
  buttons->addWidget(attach, 2, 0);
  buttons->addWidget(newest, 2, 1);
  buttons->addWidget(history, 2, 2);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(m_Comment, 3);
  layout->addWidget(m_Pictures);
  layout->addLayout(buttons);
  layout->addWidget(caption);
  layout->addWidget(m_Summary);
}

CCommentsPage::~CCommentsPage() = default;

QPushButton* CCommentsPage::AddButton(const QString& caption, const char* name) {
  auto* button = new QPushButton(caption, this);
  button->setObjectName(QLatin1String(name));
  button->setAutoDefault(false);
  return button;
}

void CCommentsPage::ShowStep() {
  m_Editing.ShowStep();
  m_Comment->Load(m_Sheet.Draft().comments);
  m_Comment->moveCursor(QTextCursor::End);
  m_Editing.SaveSelection(m_Comment->StoredSelection());  // where one sees it, also before one was there
  m_Summary->Load(m_Sheet.Draft().summaryComment);
  m_Pictures->BeginStep();
  m_Pictures->ShowPicturesOf(m_Sheet.Draft().comments);
  m_Picklist->SetComments({});
}

void CCommentsPage::BeginTyping() {
  m_Comment->setFocus();
}

void CCommentsPage::InsertPicked() {
  const Text text = m_Picklist->Chosen();
  if (text.empty()) return;
  Do([&]() -> std::vector<TextChange> {
    if (auto change = m_Editing.Insert(text)) return {*change};
    return {};
  });
}

// A command that comes by its key does not take the focus, so the field has not handed its selection over.
void CCommentsPage::KeepSelection() {
  if (m_Comment->hasFocus()) m_Editing.SaveSelection(m_Comment->StoredSelection());
}

// What the logic did to the draft is done to the text field as well, so that undo knows it.
void CCommentsPage::Do(const std::function<std::vector<TextChange>()>& work) {
  KeepSelection();
  const Text before = m_Sheet.Draft().comments;
  const std::vector<TextChange> changes = work();
  // Behind another page it would take the keys in secret.
  if (m_Comment->isVisible()) m_Comment->setFocus();
  if (changes.empty()) return;
  m_IsApplying = true;
  m_Comment->Apply(before, changes, m_Editing.Selection());
  m_IsApplying = false;
  // From now on the lines end as in the field, and both count the same positions.
  m_Sheet.SetComments(m_Comment->Stored());
  m_Editing.SaveSelection(m_Comment->StoredSelection());
  m_Pictures->ShowPicturesOf(m_Sheet.Draft().comments);
  if (onEdited) onEdited();
}

void CCommentsPage::OfferMaterialComments(std::int32_t materialID) {
  Do([&] { return m_Editing.OfferMaterialComments(materialID); });
}

bool CCommentsPage::Store(const Text& name, const QByteArray& jpeg) {
  data::Workspace& workspace = m_Sheet.GetWorkspace();
  const auto path = StoreAttachment(workspace.GetMachine(), m_Sheet.InspectionID(), name,
                                    {jpeg.constData(), static_cast<std::size_t>(jpeg.size())});
  if (!path) return false;
  Do([&]() -> std::vector<TextChange> { return {m_Editing.AddKnownPicture(*path)}; });
  return true;
}

void CCommentsPage::Attach(const std::vector<std::filesystem::path>& files) {
  data::Workspace& workspace = m_Sheet.GetWorkspace();
  const AttachmentForm form = ReadAttachmentForm(workspace.GetMachine().registry);
  Text problems;
  std::vector<std::pair<Text, QByteArray>> cutShort;
  {
    PictureConverter::Run run(m_Converter, static_cast<int>(files.size()));
    for (const std::filesystem::path& file : files) {
      const Text name = device::FromUtf8(file.filename().native());
      const auto isCut = std::make_shared<bool>(false);
      const std::optional<QByteArray> jpeg =
          run.Next(name, [file, form, isCut](const std::atomic<bool>& stop) {
            QByteArray made = MakeJpeg(file, form, stop);
            *isCut = !made.isEmpty() && IsCutShort(file);
            return made;
          });
      if (!jpeg) break;  // what is attached by now stays
      if (jpeg->isEmpty())
        problems += device::Format(u"%s%s %s.", problems.empty() ? u"" : u"\n", name, WhyNoJpeg(file));
      else if (*isCut)
        cutShort.emplace_back(name, *jpeg);
      else if (!Store(name, *jpeg))
        break;  // the next one would have no room either
    }
  }
  if (!problems.empty()) device::Alert(workspace.GetPrompts(), problems);
  if (!cutShort.empty()) OfferCutShort(cutShort);
}

// What is left of a picture may show all that matters, and be the only one there is.
void CCommentsPage::OfferCutShort(const std::vector<std::pair<Text, QByteArray>>& pictures) {
  Text names;
  for (const auto& [name, jpeg] : pictures) names += name + u"\n";
  if (!device::ConfirmCaution(
          m_Sheet.GetWorkspace().GetPrompts(),
          device::Format(
              u"The end of the file is missing, so a part of the picture is grey:\n%s\nThe copy may "
              u"have been interrupted; try to copy the file again. Attach what is there anyway?",
              names)))
    return;
  for (const auto& [name, jpeg] : pictures)
    if (!Store(name, jpeg)) return;
}

void CCommentsPage::AttachImage(const QImage& picture) {
  data::Workspace& workspace = m_Sheet.GetWorkspace();
  const AttachmentForm form = ReadAttachmentForm(workspace.GetMachine().registry);
  std::optional<QByteArray> jpeg;
  {
    PictureConverter::Run run(m_Converter, 1);
    jpeg = run.Next(u"Pasted", [picture, form](const std::atomic<bool>&) { return MakeJpeg(picture, form); });
  }
  if (!jpeg) return;
  if (jpeg->isEmpty())
    device::Alert(workspace.GetPrompts(), u"What was copied is no picture that can be read.");
  else
    Store(u"Pasted.jpg", *jpeg);
}

CardPictures CCommentsPage::Card() const {
  data::Workspace& workspace = m_Sheet.GetWorkspace();
  const device::Machine& machine = workspace.GetMachine();
  return {machine.files, machine.paths, workspace.Options().m_DefaultPictCardPath};
}

void CCommentsPage::AttachNewest() {
  const CardPictures::Newest newest = Card().FindNewest();
  if (newest.file.empty())
    device::Alert(m_Sheet.GetWorkspace().GetPrompts(), newest.problem);
  else
    Attach({newest.file});
}

void CCommentsPage::AttachFrom(const QMimeData& pictures) {
  std::vector<std::filesystem::path> files;
  for (const QUrl& url : pictures.urls()) files.push_back(HostPath(url.toLocalFile()));
  if (!files.empty())
    Attach(files);
  else
    AttachImage(qvariant_cast<QImage>(pictures.imageData()));
}

}  // namespace inspector::editing::ui
