#include "app/TextOptionsPage.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QSyntaxHighlighter>
#include <QVBoxLayout>

#include "device/CodePage.h"
#include "device/ui/TextConversion.h"
#include "device/ui/Theme.h"

namespace inspector::app {
namespace {

class LostCharacterMarks : public QSyntaxHighlighter {
public:
  explicit LostCharacterMarks(QPlainTextEdit& text) : QSyntaxHighlighter(text.document()), m_Text(text) {}

protected:
  void highlightBlock(const QString& line) override {
    QTextCharFormat mark;
    const QColor colour = device::ui::AttentionColour(m_Text.palette());
    mark.setForeground(colour);
    mark.setUnderlineColor(colour);
    mark.setUnderlineStyle(QTextCharFormat::SingleUnderline);
    const Text text = device::ui::FromQString(line);
    for (std::size_t at = 0; at < text.size(); ++at)
      if (!device::FitsCodePage(TextView(text).substr(at, 1))) setFormat(static_cast<int>(at), 1, mark);
  }

private:
  QPlainTextEdit& m_Text;
};

}  // namespace

TextOptionsPage::TextOptionsPage(const OptionsPage& page, Remark remark, QWidget* parent)
    : COptionsPage(page, parent),
      m_Remark(remark),
      m_Text(findChild<QPlainTextEdit*>()),
      m_Below(new QLabel(this)) {
  new LostCharacterMarks(*m_Text);  // owned by the document
  m_Below->setObjectName(QStringLiteral("remark"));
  m_Below->setTextFormat(Qt::PlainText);
  m_Below->setWordWrap(true);
  layout()->addWidget(m_Below);
  connect(m_Text, &QPlainTextEdit::textChanged, this, [this] { ShowRemark(); });
  ShowRemark();
}

void TextOptionsPage::ShowRemark() {
  const Text remark = m_Remark(device::ui::FromLines(device::ui::LinesOf(*m_Text->document())));
  m_Below->setText(device::ui::ToQString(remark));
  m_Below->setVisible(!remark.empty());
}

}  // namespace inspector::app
