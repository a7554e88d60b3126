// Small media for tests, made from nothing.
#pragma once

#include <QByteArray>
#include <QSize>

namespace sorvan::test {

/// A picture with a different colour in each pixel.
QByteArray samplePng(QSize size = {24, 16});
QByteArray sampleJpeg(QSize size = {64, 48});
/// Mono, 8,000 samples a second, 16 bits: a tone.
QByteArray sampleWav(double seconds = 0.25);
/// The boxes of an MP4 file, one of each name and length; no more than a skeleton.
QByteArray boxes(std::initializer_list<std::pair<const char*, int>> boxes);

}  // namespace sorvan::test
