// The look of the whole program: colours and size of text.
#pragma once

#include <QApplication>
#include <QColor>

namespace inspector::device::ui {

enum class Colours { Light, Dark, HighContrast };

struct Theme {
  Colours colours = Colours::Light;
  int textPercent = 100;  // 100 to 200
};

// Sets TouchStyle, palette and font. May be called again at any time; open windows follow.
void ApplyTheme(QApplication& application, const Theme& theme);

// Gives the widget the largest text at which it asks for no more than `width`, at least half of the usual.
void ShrinkToFit(QWidget& widget, int width);

// For rows and words that ask for attention, on the palette in use.
QColor AttentionColour(const QPalette& palette);
bool IsDark(const QPalette& palette);

}  // namespace inspector::device::ui
