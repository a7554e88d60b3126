// How loud a sound is over its length, as numbers and as a picture.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include <QImage>
#include <QString>

#include "core/room.h"

namespace sorvan::core {

/// Only this much of a long sound is measured, seconds.
inline constexpr double waveformSeconds = 600;
/// Samples a second that are measured.
inline constexpr int waveformRate = 8'000;
/// Bars of the picture.
inline constexpr int waveformBars = 120;

/// At most `count` levels from 0 to 1, the loudest at 1 unless the sound is all but silent. Reads the file as a stream.
/// Any thread, blocks. SorvanError "This sound is empty." or "This sound could not be read.".
std::vector<float> waveformLevels(const QString& path, int count);
/// The same for samples at hand; empty for none.
std::vector<float> waveformLevels(std::span<const std::int16_t> samples, int count);

/// Draws bars from rose to blue on a dark ground. SorvanError "Cannot draw the waveform.", or the failure of the
/// levels.
QImage waveformPicture(const QString& path, const QSize& size);
QImage waveformPicture(std::span<const float> levels, const QSize& size);

}  // namespace sorvan::core
