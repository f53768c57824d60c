#include "device/ui/Theme.h"

#include <QFont>
#include <QPalette>
#include <QWidget>
#include <algorithm>

#include "device/ui/TouchStyle.h"

namespace inspector::device::ui {
namespace {

struct Shades {
  QRgb window, base, alternate, text, button, highlight, highlightedText, placeholder, muted, link;
};

constexpr Shades kLight{0xFFF3F4F2, 0xFFFFFFFF, 0xFFF7F8F6, 0xFF1B1F1D, 0xFFE4E8E5,
                        0xFF1F6F54, 0xFFFFFFFF, 0xFF5F6763, 0xFF6A726E, 0xFF14557F};
constexpr Shades kDark{0xFF1E2220, 0xFF151817, 0xFF1B1F1D, 0xFFE8ECEA, 0xFF2F3532,
                       0xFF3C9A78, 0xFF07100C, 0xFF9AA39F, 0xFF8E9793, 0xFF7FC4F2};
constexpr Shades kHighContrast{0xFF000000, 0xFF000000, 0xFF000000, 0xFFFFFFFF, 0xFF000000,
                               0xFFFFFF00, 0xFF000000, 0xFFFFFFFF, 0xFFC8C8C8, 0xFF00FFFF};

QPalette MakePalette(const Shades& shades) {
  QPalette palette(QColor::fromRgb(shades.button), QColor::fromRgb(shades.window));
  const auto set = [&](QPalette::ColorRole role, QRgb colour) {
    palette.setColor(role, QColor::fromRgb(colour));
  };
  set(QPalette::WindowText, shades.text);
  set(QPalette::Base, shades.base);
  set(QPalette::AlternateBase, shades.alternate);
  set(QPalette::Text, shades.text);
  set(QPalette::ButtonText, shades.text);
  set(QPalette::BrightText, shades.text);
  set(QPalette::Highlight, shades.highlight);
  set(QPalette::HighlightedText, shades.highlightedText);
  set(QPalette::PlaceholderText, shades.placeholder);
  set(QPalette::ToolTipBase, shades.base);
  set(QPalette::ToolTipText, shades.text);
  set(QPalette::Link, shades.link);
  for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
    palette.setColor(QPalette::Disabled, role, QColor::fromRgb(shades.muted));
  return palette;
}

}  // namespace

void ApplyTheme(QApplication& application, const Theme& theme) {
  application.setStyle(new TouchStyle);
  switch (theme.colours) {
    case Colours::Light:
      application.setPalette(MakePalette(kLight));
      break;
    case Colours::Dark:
      application.setPalette(MakePalette(kDark));
      break;
    case Colours::HighContrast:
      application.setPalette(MakePalette(kHighContrast));
      break;
  }
  QFont font = application.font();
  font.setPointSizeF(kUsualPoints * std::clamp(theme.textPercent, 100, 200) / 100);
  application.setFont(font);
}

void ShrinkToFit(QWidget& widget, int width) {
  QFont font = QApplication::font();
  const qreal full = font.pointSizeF();
  for (qreal size = full; size >= full / 2; size -= full / 16) {
    font.setPointSizeF(size);
    if (widget.font() != font) widget.setFont(font);
    if (widget.sizeHint().width() <= width) return;
  }
}

void ShrinkToFit(QLabel& label, const QFont& full, int width, int height) {
  QFont font = full;
  for (qreal size = full.pointSizeF(); size >= full.pointSizeF() / 2; size -= full.pointSizeF() / 16) {
    font.setPointSizeF(size);
    const QRect words = QFontMetrics(font).boundingRect({0, 0, width - 2 * label.margin(), 10'000},
                                                        Qt::TextWordWrap, label.text());
    if (words.height() + 2 * label.margin() <= height && words.width() + 2 * label.margin() <= width) break;
  }
  label.setFont(font);
}

bool IsDark(const QPalette& palette) {
  return palette.color(QPalette::Base).lightness() < 128;
}

QColor AttentionColour(const QPalette& palette) {
  return IsDark(palette) ? QColor(0xFF, 0xB4, 0x54) : QColor(0x9A, 0x3B, 0x00);
}

}  // namespace inspector::device::ui
