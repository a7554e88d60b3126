// Reads off a widget's own strokes how well each of its texts stands out from what was painted beneath it.
#pragma once

#include <QColor>
#include <QRect>
#include <QString>

#include <vector>

class QWidget;

namespace sorvan::test {

// The ratio of two colours' luminances, 1 to 21.
double contrastOf(const QColor& text, const QColor& ground);

struct PaintedText {
  QString text;
  QColor color;         // as the pen had it
  QRect place;          // in the widget
  double contrast = 0;  // against the ground beneath it; nearly the worst of its pixels
};

// Every text that the widget and what it holds paint now, but for what is disabled, which nobody has to read. Each text
// is held against the pixels that were there when it was painted, so gradients and pictures count too.
std::vector<PaintedText> paintedTexts(QWidget& widget);

// One line for each text that is under 4.5:1.
QString faintTexts(QWidget& widget);

}  // namespace sorvan::test
