// The Picture tab: one picture file of the step.
#pragma once

#include <QImage>
#include <QWidget>
#include <functional>

#include "editing/StepSheet.h"
#include "editing/ui/PictureReader.h"

class QCheckBox;
class QLineEdit;

namespace inspector::editing::ui {

// Shows a picture as large as it fits, and never larger than it is.
class PicturePreview : public QWidget {
public:
  using QWidget::QWidget;
  void Show(const QImage& picture, const QString& words);
  QSize sizeHint() const override { return {240, 180}; }

protected:
  void paintEvent(QPaintEvent* event) override;

private:
  QImage m_Picture;
  QString m_Words;  // in place of a picture
};

class CPicturePage : public QWidget {
public:
  CPicturePage(StepSheet& sheet, SheetDialogs& dialogs, QWidget* parent);

  void ShowStep();

  std::function<void()> onEdited;

protected:
  void showEvent(QShowEvent* event) override;

private:
  void Browse();
  void SetPath(const Text& path);
  void ShowPicture();

  StepSheet& m_Sheet;
  SheetDialogs& m_Dialogs;
  QLineEdit* m_Path;
  PicturePreview* m_Preview;
  QCheckBox* m_Before;
  PictureReader m_Reader{this};
  bool m_IsStale = false;  // the picture is read when somebody looks at the page
};

}  // namespace inspector::editing::ui
