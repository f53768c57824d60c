#include "support/ScriptedDialogs.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QTimer>

#include "device/ui/TextConversion.h"

namespace inspector::tests {

using device::ui::FromQString;

ScriptedDialogs::ScriptedDialogs() {
  LookAgainSoon();
}

// A new timer each time: one whose handler has not returned does not fire in the loop that the handler runs.
void ScriptedDialogs::LookAgainSoon() {
  QTimer::singleShot(1, &m_Context, [this] { Look(); });
}

ScriptedDialogs::~ScriptedDialogs() {
  for (const Move& move : m_Moves) ADD_FAILURE() << move.dialog.toStdString() << " did not open.";
}

void ScriptedDialogs::Expect(const char* objectName, std::function<void(QDialog&)> move) {
  m_Moves.push_back({QLatin1String(objectName), std::move(move)});
}

void ScriptedDialogs::ExpectPress(const char* objectName, const QString& caption) {
  Expect(objectName, [caption](QDialog& dialog) {
    for (QAbstractButton* button : dialog.findChildren<QAbstractButton*>())
      if (QString(button->text()).remove(u'&') == caption) return button->click();
    ADD_FAILURE() << "No button " << caption.toStdString() << " in " << dialog.objectName().toStdString();
    dialog.reject();
  });
}

void ScriptedDialogs::Look() {
  LookAgainSoon();
  auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
  if (!dialog || !dialog->isVisible()) {
    m_Seen = nullptr;
    return;
  }
  // A progress window is nobody's question.
  if (dialog == m_Seen || dialog->objectName() == QLatin1String("progressWindow")) return;
  m_Seen = dialog;
  if (const auto* box = qobject_cast<const QMessageBox*>(dialog))
    m_Boxes.push_back(FromQString(box->windowTitle() + QStringLiteral(": ") + box->text()));
  if (m_Moves.empty() || m_Moves.front().dialog != dialog->objectName()) {
    ADD_FAILURE() << "Unexpected dialog " << dialog->objectName().toStdString() << " \""
                  << dialog->windowTitle().toStdString() << "\", expected "
                  << (m_Moves.empty() ? "none" : m_Moves.front().dialog.toStdString())
                  << "; last box: " << (m_Boxes.empty() ? "" : ToUtf8(m_Boxes.back()));
    dialog->reject();
    return;
  }
  // Taken out first: the move may open the next dialog.
  const Move move = std::move(m_Moves.front());
  m_Moves.pop_front();
  move.act(*dialog);
  if (m_Seen == dialog) m_Seen = nullptr;
}

void PressButton(QWidget& parent, const char* objectName) {
  auto* const button = parent.findChild<QAbstractButton*>(QLatin1String(objectName));
  if (button && button->isEnabled()) return button->click();
  ADD_FAILURE() << (button ? "Disabled: " : "No button ") << objectName;
}

}  // namespace inspector::tests
