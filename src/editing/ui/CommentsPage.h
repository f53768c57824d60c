// The Comments tab: the comment, its prepared comments and its pictures.
#pragma once

#include <QWidget>
#include <filesystem>
#include <functional>
#include <optional>
#include <vector>

#include "editing/CardPictures.h"
#include "editing/CommentEditing.h"
#include "editing/ui/PictureConverter.h"

class QMimeData;
class QPushButton;

namespace inspector::editing::ui {

class CommentBox;
class PicklistBox;
class PictureStrip;

class CCommentsPage : public QWidget {
public:
  CCommentsPage(StepSheet& sheet, SheetDialogs& dialogs, QWidget* parent);
  ~CCommentsPage() override;

  void ShowStep();
  // The keys go to the comment, behind what stands there.
  void BeginTyping();
  void OfferMaterialComments(std::int32_t materialID);
  // Copies each picture into the inspection's folder and puts its tag into the comment.
  void Attach(const std::vector<std::filesystem::path>& files);

  std::function<void()> onEdited;  // the comment changed

private:
  QPushButton* AddButton(const QString& caption, const char* name);
  void InsertPicked();
  void OfferCutShort(const std::vector<std::pair<Text, QByteArray>>& pictures);
  void AttachNewest();
  CardPictures Card() const;
  void KeepSelection();
  void AttachFrom(const QMimeData& pictures);
  void AttachImage(const QImage& picture);
  bool Store(const Text& name, const QByteArray& jpeg);
  void Do(const std::function<std::vector<TextChange>()>& work);

  StepSheet& m_Sheet;
  CommentEditing m_Editing;
  PictureConverter m_Converter;
  CommentBox* m_Comment;
  CommentBox* m_Summary;
  PictureStrip* m_Pictures;
  PicklistBox* m_Picklist;
  bool m_IsApplying = false;
};

}  // namespace inspector::editing::ui
