#include "scene.h"

#include <cmath>
#include <utility>
#include <vector>

#include "randomness.h"

namespace sandbox {

namespace {

using Paint = void (*)(const Stage&);

struct Subject {
  Paint paint;
  std::vector<const char16_t*> words;
};

const std::vector<Subject>& subjects() {
  static const std::vector<Subject> all{
      {paintMountains, {u"mountain", u"alps", u"peak", u"valley", u"hill"}},
      {paintSea, {u"sea", u"ocean", u"lake", u"beach", u"water", u"boat", u"harbour", u"harbor", u"island", u"wave"}},
      {paintCity, {u"city", u"street", u"skyline", u"town", u"tower", u"neon", u"building"}},
      {paintForest, {u"forest", u"tree", u"wood", u"fox", u"deer", u"pine"}},
      {paintDunes, {u"desert", u"dune", u"sand", u"mars", u"planet"}},
      {paintShapes, {u"abstract", u"shape", u"logo", u"poster", u"pattern", u"geometric", u"icon"}}};
  return all;
}

Paint subjectFor(const QString& words, quint64 pick) {
  for (const Subject& subject : subjects())
    for (const char16_t* word : subject.words)
      if (words.contains(QString::fromUtf16(word), Qt::CaseInsensitive)) return subject.paint;
  return subjects()[pick % subjects().size()].paint;
}

double valueAt(quint64 seed, qint64 x) { return double(mixed(seed, quint64(x)) >> 11) * 0x1.0p-52 - 1; }

void paintStars(const Stage& stage, double horizon) {
  Randomness chance(stage.seed ^ 0x57a5);
  stage.painter.setPen(Qt::NoPen);
  for (int i = 0; i < 140; ++i) {
    const QPointF at(chance.unit() * stage.width, chance.unit() * horizon);
    const double size = chance.between(0.8, 2.6);
    const double twinkle = 0.55 + 0.45 * std::sin(stage.seconds * chance.between(1, 4) + chance.between(0, 6));
    stage.painter.setBrush(faded(stage.palette.light, twinkle));
    stage.painter.drawEllipse(at, size, size);
  }
}

void paintLight(const Stage& stage, double horizon) {
  Randomness chance(stage.seed ^ 0x11947);
  const QPointF at(stage.width * chance.between(0.2, 0.8), horizon * chance.between(0.3, 0.78) - stage.seconds * 6);
  const double radius = chance.between(42, 78);
  QRadialGradient glow(at, radius * 7);
  glow.setColorAt(0, faded(stage.palette.light, 0.75));
  glow.setColorAt(0.25, faded(stage.palette.light, 0.28));
  glow.setColorAt(1, faded(stage.palette.light, 0));
  stage.painter.setPen(Qt::NoPen);
  stage.painter.setBrush(glow);
  stage.painter.drawEllipse(at, radius * 7, radius * 7);
  stage.painter.setBrush(stage.palette.light);
  stage.painter.drawEllipse(at, radius, radius);
}

void paintClouds(const Stage& stage, double horizon) {
  Randomness chance(stage.seed ^ 0xc10d5);
  stage.painter.setPen(Qt::NoPen);
  for (int i = 0; i < 5; ++i) {
    const double y = horizon * chance.between(0.12, 0.85);
    const double speed = chance.between(12, 34);
    const double x = std::fmod(chance.unit() * (stage.width + 600) + stage.seconds * speed, stage.width + 600) - 300;
    stage.painter.setBrush(
        faded(blend(stage.palette.skyLow, stage.palette.light, 0.5), stage.palette.night ? 0.05 : 0.16));
    for (int puff = 0; puff < 6; ++puff)
      stage.painter.drawEllipse(QPointF(x + chance.between(-170, 170), y + chance.between(-9, 9)),
                                chance.between(70, 170), chance.between(7, 20));
  }
}

}  // namespace

double noiseAt(quint64 seed, double x) {
  const double floor = std::floor(x);
  const double within = x - floor;
  const double smooth = within * within * (3 - 2 * within);
  const double left = valueAt(seed, qint64(floor));
  return left + (valueAt(seed, qint64(floor) + 1) - left) * smooth;
}

double ruggedNoiseAt(quint64 seed, double x, int octaves) {
  double sum = 0;
  double weight = 0.55;
  for (int octave = 0; octave < octaves; ++octave) {
    sum += noiseAt(mixed(seed, quint64(octave)), x) * weight;
    x *= 2.03;
    weight *= 0.5;
  }
  return sum;
}

void paintSky(const Stage& stage, double horizon) {
  QLinearGradient sky(0, 0, 0, horizon);
  sky.setColorAt(0, stage.palette.skyTop);
  sky.setColorAt(0.6, stage.palette.skyMiddle);
  sky.setColorAt(1, stage.palette.skyLow);
  stage.painter.fillRect(QRectF(0, 0, stage.width, stageHeight), sky);
  if (stage.palette.night) paintStars(stage, horizon);
  paintLight(stage, horizon);
  paintClouds(stage, horizon);
}

void paintFlock(const Stage& stage) {
  if (stage.palette.night) return;
  Randomness chance(stage.seed ^ 0xb12d);
  stage.painter.setBrush(Qt::NoBrush);
  const double startX = chance.between(0.1, 0.6) * stage.width;
  const double startY = chance.between(130, 330);
  for (int i = 0; i < 7; ++i) {
    const double wing = chance.between(9, 17);
    const double beat = std::sin(stage.seconds * 9 + i) * wing * 0.35;
    const QPointF at(startX + chance.between(-110, 110) + stage.seconds * 45, startY + chance.between(-45, 45));
    stage.painter.setPen(QPen(faded(stage.palette.near, 0.7), 2.4, Qt::SolidLine, Qt::RoundCap));
    QPainterPath bird(at - QPointF(wing, wing * 0.4 + beat));
    bird.quadTo(at - QPointF(wing * 0.4, wing * 0.6), at);
    bird.quadTo(at + QPointF(wing * 0.4, -wing * 0.6), at + QPointF(wing, -wing * 0.4 - beat));
    stage.painter.drawPath(bird);
  }
}

void paintVignette(const Stage& stage) {
  const QPointF middle(stage.width / 2, stageHeight / 2);
  QRadialGradient shade(middle, std::hypot(middle.x(), middle.y()));
  shade.setColorAt(0.55, QColor(0, 0, 0, 0));
  shade.setColorAt(1, QColor(0, 0, 0, 95));
  stage.painter.fillRect(QRectF(0, 0, stage.width, stageHeight), shade);
}

QImage paintScene(const SceneWish& wish, QSize size) {
  QImage image(size, QImage::Format_RGB32);
  image.fill(Qt::black);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  const double scale = size.height() / stageHeight;
  painter.scale(scale, scale);
  const quint64 seed = mixed(hashOf(wish.words), quint64(wish.seed));
  const Stage stage{painter, size.width() / scale, wish.seconds, paletteFor(wish.words, mixed(seed, 1)), seed};
  subjectFor(wish.words, mixed(seed, 2))(stage);
  paintVignette(stage);
  return image;
}

}  // namespace sandbox
