// Painted scenes: what stands in the pictures and clips that the service makes.
#pragma once
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QString>

#include "palette.h"

namespace sandbox {

// The subject follows the words where they name one (sea, city, forest, desert, mountain, shapes), else words and seed
// pick it; the rest follows from words and seed. `seconds` is the moment in a clip. The same arguments always give the
// same pixels.
struct SceneWish {
  QString words;
  qint64 seed = 0;
  double seconds = 0;
};
QImage paintScene(const SceneWish& wish, QSize size);

// A stage that the parts of a scene are painted on: 1000 units high, `width` units wide.
struct Stage {
  QPainter& painter;
  double width;
  double seconds;
  Palette palette;
  quint64 seed;
};
constexpr double stageHeight = 1000;

// Smooth noise of one variable, about -1 to 1, the same for the same seed.
double noiseAt(quint64 seed, double x);
// Noise with finer and finer detail on top.
double ruggedNoiseAt(quint64 seed, double x, int octaves);

void paintSky(const Stage& stage, double horizon);
void paintFlock(const Stage& stage);
void paintVignette(const Stage& stage);

void paintMountains(const Stage& stage);
void paintDunes(const Stage& stage);
void paintForest(const Stage& stage);
void paintSea(const Stage& stage);
void paintCity(const Stage& stage);
void paintShapes(const Stage& stage);

}  // namespace sandbox
