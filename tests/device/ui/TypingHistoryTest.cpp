#include "device/ui/TypingHistory.h"

#include <QVBoxLayout>

#include "support/Screens.h"

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
  // What the field shows in this property after each of: the letters, undo, redo.
  QString Shown(QWidget& field, const char* text) {
    field.setFocus();
    QTest::keyClicks(field.focusWidget() ? field.focusWidget() : &field, QStringLiteral("oak"));
    QString shown = field.property(text).toString();
    for (QPushButton* button : {m_Undo, m_Redo}) {
      QTest::mouseClick(button, Qt::LeftButton);
      shown += u'|' + field.property(text).toString();
      EXPECT_TRUE(field.hasFocus());
    }
    return shown;
  }
  // Which arrows can be pressed: "u" for undo, "r" for redo.
  std::string Offered() const {
    return std::string(m_Undo->isEnabled() ? "u" : "") + (m_Redo->isEnabled() ? "r" : "");
  }

  QWidget m_Form;
  QLineEdit* m_Line = new QLineEdit;
  QPlainTextEdit* m_Lines = new QPlainTextEdit;
  QComboBox* m_Combo = new QComboBox;
  QLineEdit* m_Fixed = new QLineEdit(QStringLiteral("1968"));
  QCheckBox* m_Box = new QCheckBox;
  TypingHistory* m_History = new TypingHistory(m_Form);
  QPushButton* m_Undo = &Part<QPushButton>(*m_History, "undoTypingButton");
  QPushButton* m_Redo = &Part<QPushButton>(*m_History, "redoTypingButton");
};

TEST_F(TypingHistoryTest, ActsOnTheFieldThatIsWrittenIn) {
  EXPECT_EQ(Shown(*m_Line, "text"), QStringLiteral("oak||oak"));
  EXPECT_EQ(Shown(*m_Lines, "plainText"), QStringLiteral("oak||oak"));
  EXPECT_EQ(Shown(*m_Combo, "currentText"), QStringLiteral("oak||oak"));
  EXPECT_EQ(m_Line->text(), QStringLiteral("oak")) << "each field has its own";
}

TEST_F(TypingHistoryTest, OffersOnlyWhatCanBeTakenBack) {
  m_Line->setFocus();
  EXPECT_EQ(Offered(), "");
  QTest::keyClicks(m_Line, QStringLiteral("oak"));
  EXPECT_EQ(Offered(), "u");
  m_Undo->click();
  EXPECT_EQ(Offered(), "r");
  m_Fixed->setFocus();
  EXPECT_EQ(Offered(), "");
  // The program shows another house: its words have no history.
  m_Line->setFocus();
  QTest::keyClicks(m_Line, QStringLiteral("ash"));
  m_Line->setText(QStringLiteral("elm"));
  m_Undo->click();
  EXPECT_EQ(m_Line->text(), QStringLiteral("elm"));
  // A box is ticked: what was typed in another field is not what an arrow is pressed for then.
  QTest::keyClicks(m_Line, QStringLiteral("s"));
  EXPECT_EQ(Offered(), "u");
  m_Box->setFocus();
  EXPECT_EQ(Offered(), "");
  m_Undo->click();
  EXPECT_EQ(m_Line->text(), QStringLiteral("elms"));
  m_Line->setFocus();
  delete m_Line;
  EXPECT_EQ(Offered(), "");
}

}  // namespace
}  // namespace inspector::device::ui
