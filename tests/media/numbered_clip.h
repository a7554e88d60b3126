// Clips whose frames and sounds tell their own moment.
#pragma once

#include <QImage>
#include <QString>

namespace sorvan::test {

inline constexpr int framesPerSecond = 25;

// A clip whose frames carry their number and whose sound clicks at each whole second, in step.
void makeNumberedClip(const QString& path, int frames, bool sound);
// The number that a frame carries.
int numberOn(const QImage& frame);

}  // namespace sorvan::test
