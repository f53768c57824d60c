// Between the program's text and Qt's: both hold 16-bit units, so each way is one copy at most.
#pragma once

#include <QString>
#include <QTextDocument>

#include "device/Text.h"

namespace inspector::device::ui {

inline QString ToQString(TextView text) {
  return QString(reinterpret_cast<const QChar*>(text.data()), static_cast<qsizetype>(text.size()));
}
inline Text FromQString(QStringView text) {
  return Text(text.utf16(), static_cast<std::size_t>(text.size()));
}
// What a person typed into a field of several lines: the device ends its lines with carriage return and line
// feed.
inline Text FromLines(const QString& text) {
  return FromQString(QString(text).replace(u'\n', QLatin1String("\r\n")));
}
// The lines of a text field as they were typed. QTextDocument's own reading turns each no-break space into a
// blank.
inline QString LinesOf(const QTextDocument& document) {
  return document.toRawText().replace(QChar::ParagraphSeparator, u'\n').replace(QChar::LineSeparator, u'\n');
}
// Lines as the device writes them ("\r\n" or "\r") as lines of a message box.
inline QString ToDisplay(TextView text) {
  return ToQString(text).replace(QLatin1String("\r\n"), QLatin1String("\n")).replace(u'\r', u'\n');
}

// What is shown as a caption or a row: a million letters in a title would stop everything while lines are
// broken.
inline QString Shortened(const QString& text, qsizetype most) {
  return text.size() <= most ? text : text.left(most) + QChar(0x2026);
}

}  // namespace inspector::device::ui
