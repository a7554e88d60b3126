// Scenes of land: mountains, dunes, a forest.
#include <QPainterPath>
#include <cmath>

#include "randomness.h"
#include "scene.h"

namespace sandbox {

namespace {

struct Ridge {
  quint64 seed;
  double base;  // the height of its middle
  double amplitude;
  double wavelength;
  int octaves;
  double drift;  // units a second that it passes by
};

double heightAt(const Ridge& ridge, double x, double seconds) {
  return ridge.base +
         ruggedNoiseAt(ridge.seed, (x + seconds * ridge.drift) / ridge.wavelength, ridge.octaves) * ridge.amplitude;
}

QPolygonF outlineOf(const Ridge& ridge, const Stage& stage) {
  constexpr double step = 5;
  QPolygonF outline;
  for (double x = -step; x <= stage.width + step; x += step) outline << QPointF(x, heightAt(ridge, x, stage.seconds));
  outline << QPointF(stage.width + step, stageHeight + 5) << QPointF(-step, stageHeight + 5);
  return outline;
}

void fillRidge(const Stage& stage, const Ridge& ridge, const QColor& top, const QColor& foot) {
  QLinearGradient fill(0, ridge.base - ridge.amplitude, 0, ridge.base + ridge.amplitude * 2);
  fill.setColorAt(0, top);
  fill.setColorAt(1, foot);
  stage.painter.setPen(Qt::NoPen);
  stage.painter.setBrush(fill);
  stage.painter.drawPolygon(outlineOf(ridge, stage));
}

void paintMist(const Stage& stage, double y, double opacity) {
  QLinearGradient mist(0, y - 90, 0, y + 110);
  mist.setColorAt(0, faded(stage.palette.skyLow, 0));
  mist.setColorAt(0.5, faded(stage.palette.skyLow, opacity));
  mist.setColorAt(1, faded(stage.palette.skyLow, 0));
  stage.painter.fillRect(QRectF(0, y - 90, stage.width, 200), mist);
}

QPolygonF conifer(QPointF foot, double height, double sway) {
  QPolygonF tree;
  const double half = height * 0.24;
  const QPointF tip = foot + QPointF(sway, -height);
  tree << tip;
  for (int tier = 1; tier <= 4; ++tier) {
    const double y = tip.y() + height * 0.23 * tier;
    tree << QPointF(foot.x() + half * 0.3 * tier, y) << QPointF(foot.x() + half * 0.16 * tier, y - height * 0.03);
  }
  for (int tier = 4; tier >= 1; --tier) {
    const double y = tip.y() + height * 0.23 * tier;
    tree << QPointF(foot.x() - half * 0.16 * tier, y - height * 0.03) << QPointF(foot.x() - half * 0.3 * tier, y);
  }
  return tree;
}

void paintTrees(const Stage& stage, int layer, double ground, double height, const QColor& color) {
  Randomness chance(mixed(stage.seed, quint64(0xf0 + layer)));
  stage.painter.setPen(Qt::NoPen);
  stage.painter.setBrush(color);
  const double drift = stage.seconds * (4 + layer * 5);
  for (double x = -height; x < stage.width + height + drift; x += height * chance.between(0.16, 0.4)) {
    const double tall = height * chance.between(0.6, 1.1);
    const double sway = std::sin(stage.seconds * 1.4 + x * 0.02) * height * 0.012;
    const double foot = ground + chance.between(-12, 14);
    stage.painter.drawPolygon(conifer({x - drift, foot}, tall, sway));
    stage.painter.drawRect(QRectF(x - drift - tall * 0.015, foot - tall * 0.1, tall * 0.03, tall * 0.3));
  }
  stage.painter.drawRect(QRectF(0, ground - 2, stage.width, stageHeight - ground + 4));
}

}  // namespace

void paintMountains(const Stage& stage) {
  constexpr int layers = 5;
  paintSky(stage, 640);
  paintFlock(stage);
  for (int layer = 0; layer < layers; ++layer) {
    const double depth = double(layer) / (layers - 1);
    const QColor color = blend(stage.palette.far, stage.palette.near, depth);
    fillRidge(
        stage,
        {mixed(stage.seed, quint64(layer)), 520 + depth * 330, 190 - depth * 95, 330 - depth * 90, 6, 2 + depth * 22},
        blend(color, stage.palette.light, 0.10 * (1 - depth)), blend(color, stage.palette.skyLow, 0.35 * (1 - depth)));
    if (layer < layers - 1) paintMist(stage, 690 + depth * 230, 0.22 * (1 - depth));
  }
}

void paintDunes(const Stage& stage) {
  constexpr int layers = 6;
  paintSky(stage, 560);
  fillRidge(stage, {mixed(stage.seed, 31), 540, 70, 260, 4, 1.5}, blend(stage.palette.far, stage.palette.skyLow, 0.4),
            stage.palette.skyLow);
  for (int layer = 0; layer < layers; ++layer) {
    const double depth = double(layer) / (layers - 1);
    const Ridge dune{
        mixed(stage.seed, quint64(layer)), 590 + depth * 290, 45 + depth * 95, 300 + depth * 330, 2, 3 + depth * 20};
    const QColor sand = blend(stage.palette.accent, stage.palette.light, 0.55 - depth * 0.35);
    fillRidge(stage, dune, blend(sand, stage.palette.light, layer % 2 == 0 ? 0.25 : 0.0),
              blend(sand, stage.palette.near, 0.55 + depth * 0.25));
    if (layer < 3) paintMist(stage, 640 + depth * 240, 0.16);
  }
}

void paintForest(const Stage& stage) {
  constexpr int layers = 4;
  paintSky(stage, 700);
  paintFlock(stage);
  fillRidge(stage, {mixed(stage.seed, 9), 560, 150, 380, 5, 2}, blend(stage.palette.far, stage.palette.skyLow, 0.35),
            stage.palette.skyLow);
  for (int layer = 0; layer < layers; ++layer) {
    const double depth = double(layer) / (layers - 1);
    const QColor color =
        blend(blend(stage.palette.far, stage.palette.skyLow, 0.3 * (1 - depth)), stage.palette.near, depth);
    paintTrees(stage, layer, 700 + depth * 230, 170 + depth * 330, color);
    if (layer < layers - 1) paintMist(stage, 720 + depth * 190, 0.30 * (1 - depth));
  }
}

}  // namespace sandbox
