// A picture read row by row as if it had been scaled to another size, without a scaled copy in memory.
#pragma once

#include <vector>

#include <QImage>
#include <QRect>

#include "platform/room.h"

namespace sorvan::platform {

/// Rows of a part of a scaled picture. Bicubic, widened where the picture shrinks; alpha is heeded, so that colours
/// under transparent pixels never show. A picture that has the size already is passed through untouched.
///
/// `Channel` is quint8 for a picture in ARGB32 or RGB32 and quint16 for one in RGBA64 or RGBX64: rows have the
/// channels in the order of that format, four to a pixel, alpha straight and last. One thread at a time; the picture is
/// only read, so several readers may share it. Rows are cheap in ascending order.
template <class Channel>
class ScaledRows {
 public:
  /// `part` lies in a picture of `size`.
  ScaledRows(const QImage& picture, QSize size, QRect part);

  /// The pixels of row `y` of the scaled picture in the columns of the part; valid until the next call.
  const Channel* row(int y);

 private:
  using Pixel [[gnu::vector_size(16)]] = float;  ///< four channels; colours times alpha

  /// Which pixels of a line make each pixel of the scaled line, and how much of each.
  struct Kernel {
    Kernel(int from, int to, int first, int count);
    int taps = 0;
    std::vector<int> first;
    std::vector<float> weights;
  };

  Pixel pixel(const Channel* channels) const;
  void scaleLine(int line);
  /// One row from the lines that are held; `Taps` of them, or as many as there are for 0.
  template <int Taps>
  void combine(const float* weights);
  static void store(Pixel sum, bool seeThrough, Channel* channels);

  QImage picture_;
  QRect part_;
  bool asItIs_ = false;
  bool seeThrough_ = false;
  Kernel across_;
  Kernel down_;
  std::vector<Pixel> source_;       ///< one line before scaling
  std::vector<Pixel> lines_;        ///< the last lines, scaled across; line n lies at n modulo the taps
  std::vector<const Pixel*> held_;  ///< those that make the next row, in their order
  int nextLine_ = 0;                ///< the lines before it have been scaled
  std::vector<Channel> row_;
};

extern template class ScaledRows<quint8>;
extern template class ScaledRows<quint16>;

}  // namespace sorvan::platform
