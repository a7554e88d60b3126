// The colours of a painted scene.
#pragma once
#include <QColor>
#include <QString>

namespace sandbox {

struct Palette {
  QColor skyTop, skyMiddle, skyLow;
  QColor light;      // sun or moon
  QColor far, near;  // the farthest and the nearest ground
  QColor accent;
  bool night = false;
};

// A palette that suits the words ("night", "golden", "green" …), else one that the number picks.
Palette paletteFor(const QString& words, quint64 pick);

QColor blend(const QColor& a, const QColor& b, double share);  // share of b, 0 to 1
QColor faded(QColor color, double opacity);

}  // namespace sandbox
