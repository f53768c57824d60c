#include "device/ui/TypingHistory.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

namespace inspector::device::ui {
namespace {

class TypingHistoryTest : public ::testing::Test {
protected:
  TypingHistoryTest() {
    m_Combo->setEditable(true);
    m_Fixed->setReadOnly(true);
    auto* layout = new QVBoxLayout(&m_Form);
    for (QWidget* each : std::initializer_list<QWidget*>{m_Line, m_Lines, m_Combo, m_Fixed, m_Box, m_History})
      layout->addWidget(each);
    m_Form.show();
    m_Form.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&m_Form));
  }
  QPushButton* Button(const char* name) { return m_History->findChild<QPushButton*>(QLatin1String(name)); }
  // What the field shows after each of: the letters, undo, redo.
  template <typename Field, typename Text>
  std::vector<QString> Shown(Field& field, Text text) {
    field.setFocus();
    QTest::keyClicks(field.focusWidget() ? field.focusWidget() : &field, QStringLiteral("oak"));
    std::vector<QString> shown{text(field)};
    for (QPushButton* button : {m_Undo, m_Redo}) {
      QTest::mouseClick(button, Qt::LeftButton);
      shown.push_back(text(field));
      EXPECT_TRUE(field.hasFocus());
    }
    return shown;
  }

  QWidget m_Form;
  QLineEdit* m_Line = new QLineEdit;
  QPlainTextEdit* m_Lines = new QPlainTextEdit;
  QComboBox* m_Combo = new QComboBox;
  QLineEdit* m_Fixed = new QLineEdit(QStringLiteral("1968"));
  QCheckBox* m_Box = new QCheckBox;
  TypingHistory* m_History = new TypingHistory(m_Form);
  QPushButton* m_Undo = Button("undoTypingButton");
  QPushButton* m_Redo = Button("redoTypingButton");
};

TEST_F(TypingHistoryTest, ActsOnTheFieldThatIsWrittenIn) {
  const std::vector<QString> expected{QStringLiteral("oak"), QString(), QStringLiteral("oak")};
  EXPECT_EQ(Shown(*m_Line, [](QLineEdit& field) { return field.text(); }), expected);
  EXPECT_EQ(Shown(*m_Lines, [](QPlainTextEdit& field) { return field.toPlainText(); }), expected);
  EXPECT_EQ(Shown(*m_Combo, [](QComboBox& field) { return field.currentText(); }), expected);
  EXPECT_EQ(m_Line->text(), QStringLiteral("oak")) << "each field has its own";
}

TEST_F(TypingHistoryTest, OffersOnlyWhatCanBeTakenBack) {
  const auto offered = [this] { return std::pair(m_Undo->isEnabled(), m_Redo->isEnabled()); };
  m_Line->setFocus();
  EXPECT_EQ(offered(), std::pair(false, false));
  QTest::keyClicks(m_Line, QStringLiteral("oak"));
  EXPECT_EQ(offered(), std::pair(true, false));
  m_Undo->click();
  EXPECT_EQ(offered(), std::pair(false, true));
  m_Fixed->setFocus();
  EXPECT_EQ(offered(), std::pair(false, false));
  // The program shows another house: its words have no history.
  m_Line->setFocus();
  QTest::keyClicks(m_Line, QStringLiteral("ash"));
  m_Line->setText(QStringLiteral("elm"));
  m_Undo->click();
  EXPECT_EQ(m_Line->text(), QStringLiteral("elm"));
  // A box is ticked: what was typed in another field is not what an arrow is pressed for then.
  QTest::keyClicks(m_Line, QStringLiteral("s"));
  EXPECT_EQ(offered(), std::pair(true, false));
  m_Box->setFocus();
  EXPECT_EQ(offered(), std::pair(false, false));
  m_Undo->click();
  EXPECT_EQ(m_Line->text(), QStringLiteral("elms"));
  m_Line->setFocus();
  delete m_Line;
  EXPECT_EQ(offered(), std::pair(false, false));
}

}  // namespace
}  // namespace inspector::device::ui
