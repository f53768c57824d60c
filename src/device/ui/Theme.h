// The look of the whole program: colours and size of text.
#pragma once

#include <QApplication>
#include <QColor>
#include <QLabel>

namespace inspector::device::ui {

// Of the text at 100 %; smaller it is hard to read.
inline constexpr double kUsualPoints = 10.5;

enum class Colours { Light, Dark, HighContrast };

struct Theme {
  Colours colours = Colours::Light;
  int textPercent = 100;  // 100 to 200
};

// Sets TouchStyle, palette and font. May be called again at any time; open windows follow.
void ApplyTheme(QApplication& application, const Theme& theme);

// Gives the widget the largest text at which it asks for no more than `width`, at least half of the usual.
void ShrinkToFit(QWidget& widget, int width);

// Gives a label that wraps its words the largest text, from `full` down to its half, at which it is no higher
// than `height`.
void ShrinkToFit(QLabel& label, const QFont& full, int width, int height);

// For rows and words that ask for attention, on the palette in use.
QColor AttentionColour(const QPalette& palette);
bool IsDark(const QPalette& palette);

}  // namespace inspector::device::ui
