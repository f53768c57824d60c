// The pictures of a comment beside its text: remove, scale, put in order.
#pragma once

#include <QWidget>
#include <functional>
#include <vector>

#include "data/Workspace.h"
#include "editing/PictureTagText.h"
#include "editing/ui/PictureReader.h"

class QComboBox;
class QListWidget;
class QPushButton;

namespace inspector::editing::ui {

// Hidden while the comment has no pictures. Thumbnails are read one at a time between events, and kept for
// the pictures that stay.
class PictureStrip : public QWidget {
public:
  PictureStrip(data::Workspace& workspace, QWidget* parent);

  // Looks for the files again when the tags are others than before, or for another step.
  void ShowPicturesOf(TextView comment);
  void BeginStep() { m_IsStale = true; }

  // The comment as it is to be after a change.
  std::function<void(const Text& comment)> onChange;

private:
  void Remove();
  void Move(int by);
  void Scale(int percent);
  void ShowSelected();
  void ReadThumbnail(int n);

  data::Workspace& m_Workspace;
  QListWidget* m_List;
  QPushButton* m_Remove;
  QPushButton* m_Earlier;
  QPushButton* m_Later;
  QComboBox* m_Scaling;
  std::vector<Text> m_Tags;  // of the comment shown
  bool m_IsStale = true;     // the files have to be looked at again
  Text m_Comment;
  std::vector<CommentPicture> m_Pictures;
  PictureReader m_Reader{this};
};

}  // namespace inspector::editing::ui
