// A person at the screen whose moves are known beforehand: for dialogs that run a loop of their own.
#pragma once

#include <QDialog>

#include "support/TestSupport.h"

namespace inspector::tests {

// Each move is made on the next dialog that opens, in order. A dialog for which no move is left fails the
// test and is rejected; so do moves that are left over at the end.
class ScriptedDialogs {
public:
  ScriptedDialogs();
  ~ScriptedDialogs();

  // `objectName` is that of the dialog; the test fails when another one opens.
  void Expect(const char* objectName, std::function<void(QDialog&)> move);
  // Presses the button with this caption (without its mnemonic) in the next dialog.
  void ExpectPress(const char* objectName, const QString& caption);
  // "Title: text" of each message box that came, in order.
  const std::vector<Text>& Boxes() const { return m_Boxes; }

private:
  void Look();
  void LookAgainSoon();

  struct Move {
    QString dialog;
    std::function<void(QDialog&)> act;
  };
  QObject m_Context;  // its end stops the looking
  std::deque<Move> m_Moves;
  std::vector<Text> m_Boxes;
  const QDialog* m_Seen = nullptr;
};

// Clicks a button below `parent` by its object name; fails the test when there is none or it is disabled.
void PressButton(QWidget& parent, const char* objectName);

}  // namespace inspector::tests
