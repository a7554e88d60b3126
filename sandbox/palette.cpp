#include "palette.h"

#include <vector>

namespace sandbox {

namespace {

struct NamedPalette {
  Palette palette;
  std::vector<const char16_t*> words;
};

QColor hex(QRgb value) { return QColor::fromRgb(value); }

const std::vector<NamedPalette>& palettes() {
  static const std::vector<NamedPalette> all{
      {{hex(0x1b1f4a), hex(0x7b3f7d), hex(0xf6a06b), hex(0xffe3b0), hex(0x8a4f7d), hex(0x1d1433), hex(0xff7a59)},
       {u"dusk", u"sunset", u"evening", u"purple", u"twilight"}},
      {{hex(0x6aa6df), hex(0xbfdcf2), hex(0xffeccc), hex(0xfff7dd), hex(0x9bb7cf), hex(0x22443f), hex(0xf2a65a)},
       {u"morning", u"dawn", u"day", u"blue", u"summer"}},
      {{hex(0x050b24), hex(0x12275a), hex(0x33558f), hex(0xf4f1de), hex(0x2d4678), hex(0x060b1c), hex(0xffd166), true},
       {u"night", u"moon", u"midnight", u"star"}},
      {{hex(0x2c0f1f), hex(0x8c2b32), hex(0xff9e4f), hex(0xffe2a0), hex(0x7d2f3c), hex(0x1b0b16), hex(0xffc857)},
       {u"red", u"ember", u"fire", u"lava", u"autumn"}},
      {{hex(0x0f5257), hex(0x4ea699), hex(0xe9f5db), hex(0xfefae0), hex(0x6fb3a6), hex(0x0b3b3c), hex(0xf4a261)},
       {u"green", u"mint", u"spring", u"jungle", u"emerald"}},
      {{hex(0x5b5f97), hex(0xb8b8f3), hex(0xffc1cf), hex(0xfff3f0), hex(0x9a94d0), hex(0x2c2a55), hex(0xff6b6b)},
       {u"pink", u"pastel", u"lilac", u"dream", u"soft"}},
      {{hex(0xe39a36), hex(0xf6cf7f), hex(0xfdf0d0), hex(0xfffdf2), hex(0xd9a25f), hex(0x5a3418), hex(0x8c2f1b)},
       {u"gold", u"yellow", u"honey", u"warm"}},
      {{hex(0x03121f), hex(0x0b3c49), hex(0x1f7a6e), hex(0xe8fff5), hex(0x14505a), hex(0x041017), hex(0x7ae582), true},
       {u"aurora", u"winter", u"ice", u"snow", u"arctic"}}};
  return all;
}

}  // namespace

Palette paletteFor(const QString& words, quint64 pick) {
  for (const NamedPalette& named : palettes())
    for (const char16_t* word : named.words)
      if (words.contains(QString::fromUtf16(word), Qt::CaseInsensitive)) return named.palette;
  return palettes()[pick % palettes().size()].palette;
}

QColor blend(const QColor& a, const QColor& b, double share) {
  const auto mix = [share](int x, int y) { return qBound(0, int(x + (y - x) * share), 255); };
  return QColor(mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue()), mix(a.alpha(), b.alpha()));
}

QColor faded(QColor color, double opacity) {
  color.setAlphaF(float(qBound(0.0, opacity, 1.0)));
  return color;
}

}  // namespace sandbox
