// Scenes of water and of things made: a sea, a city, plain shapes.
#include <QPainterPath>
#include <cmath>

#include "randomness.h"
#include "scene.h"

namespace sandbox {

namespace {

constexpr double horizon = 560;

void paintIsland(const Stage& stage, double x, double width, double height, const QColor& color) {
  QPolygonF island;
  const quint64 seed = mixed(stage.seed, quint64(width));
  for (double at = 0; at <= 1.0001; at += 0.02) {
    const double dome = std::sin(at * M_PI);
    island << QPointF(x + at * width, horizon - dome * height * (0.75 + 0.25 * ruggedNoiseAt(seed, at * 9, 4)));
  }
  stage.painter.setPen(Qt::NoPen);
  stage.painter.setBrush(color);
  stage.painter.drawPolygon(island);
}

void paintWaves(const Stage& stage) {
  Randomness chance(stage.seed ^ 0x5ea);
  stage.painter.setBrush(Qt::NoBrush);
  for (int i = 0; i < 150; ++i) {
    const double near = std::pow(chance.unit(), 1.6);
    const double y = horizon + 6 + near * (stageHeight - horizon);
    const double sway = std::sin(stage.seconds * 1.7 + chance.between(0, 6.3)) * (6 + near * 26);
    const double x = chance.unit() * stage.width + sway;
    const double length = (14 + near * 90) * chance.between(0.5, 1.2);
    const double glint = 0.10 + 0.22 * std::abs(std::sin(stage.seconds * 1.1 + i));
    stage.painter.setPen(QPen(faded(stage.palette.light, glint), 1.2 + near * 3, Qt::SolidLine, Qt::RoundCap));
    stage.painter.drawLine(QPointF(x, y), QPointF(x + length, y));
  }
}

void paintBoat(const Stage& stage) {
  Randomness chance(stage.seed ^ 0xb0a7);
  const double size = chance.between(60, 120);
  const double x = stage.width * chance.between(0.15, 0.75) + stage.seconds * 28;
  const double y = horizon + 120 + std::sin(stage.seconds * 1.8) * 6;
  QPainterPath hull(QPointF(x - size * 0.6, y));
  hull.lineTo(x + size * 0.7, y);
  hull.quadTo(x + size * 0.5, y + size * 0.28, x + size * 0.3, y + size * 0.28);
  hull.lineTo(x - size * 0.4, y + size * 0.28);
  hull.closeSubpath();
  stage.painter.setPen(Qt::NoPen);
  stage.painter.setBrush(stage.palette.near);
  stage.painter.drawPath(hull);
  stage.painter.setBrush(blend(stage.palette.light, stage.palette.accent, 0.25));
  stage.painter.drawPolygon(QPolygonF{{x, y - size * 1.25}, {x + size * 0.6, y - size * 0.1}, {x, y - size * 0.1}});
  stage.painter.setBrush(stage.palette.accent);
  stage.painter.drawPolygon(QPolygonF{
      {x - size * 0.06, y - size * 1.05}, {x - size * 0.5, y - size * 0.1}, {x - size * 0.06, y - size * 0.1}});
}

struct Tower {
  QRectF walls;
  quint64 seed;
};

void paintWindows(const Stage& stage, const Tower& tower, double lit) {
  constexpr double pitch = 17;
  for (double y = tower.walls.top() + 14; y < stageHeight - 20; y += pitch * 1.3) {
    for (double x = tower.walls.left() + 9; x + 9 < tower.walls.right(); x += pitch) {
      const quint64 window = mixed(tower.seed, quint64((x - tower.walls.left()) * 7 + y * 1013));
      const double blink = double((window + quint64(stage.seconds * 1.5 + double(window % 7))) % 97) / 97;
      if (blink > lit) continue;
      stage.painter.setBrush(faded(blend(stage.palette.accent, stage.palette.light, double(window % 5) / 5), 0.85));
      stage.painter.drawRect(QRectF(x, y, 8, 11));
    }
  }
}

void paintTowers(const Stage& stage, int layer, double depth) {
  Randomness chance(mixed(stage.seed, quint64(0xc1 + layer)));
  const QColor color = blend(blend(stage.palette.far, stage.palette.skyLow, 0.25), stage.palette.near, depth);
  const double drift = stage.seconds * (3 + depth * 18);
  stage.painter.setPen(Qt::NoPen);
  for (double x = -150; x < stage.width + 150 + drift;) {
    const double width = chance.between(60, 130) * (0.7 + depth * 0.5);
    const double top = 620 - chance.between(40, 340) * (1 - depth * 0.35) + depth * 190;
    const Tower tower{QRectF(x - drift, top, width, stageHeight - top + 5), chance.next()};
    stage.painter.setBrush(color);
    stage.painter.drawRect(tower.walls);
    if (tower.seed % 3 == 0) stage.painter.drawRect(QRectF(tower.walls.center().x() - 2, top - 60, 4, 62));
    if (layer > 0) paintWindows(stage, tower, 0.2 + depth * 0.28);
    x += width + chance.between(-6, 14);
  }
}

void paintTile(const Stage& stage, const QRectF& tile, quint64 pick) {
  const QColor colors[] = {stage.palette.skyTop, stage.palette.skyMiddle, stage.palette.skyLow,
                           stage.palette.accent, stage.palette.near,      stage.palette.light};
  const QColor back = colors[pick % 6];
  const QColor front = colors[(pick % 6 + 1 + (pick >> 8) % 5) % 6];
  QPainter& painter = stage.painter;
  painter.save();
  painter.fillRect(tile.adjusted(-0.5, -0.5, 0.5, 0.5), back);
  painter.setClipRect(tile);
  painter.translate(tile.center());
  painter.rotate(double((pick >> 16) % 4) * 90 + stage.seconds * (12 + double((pick >> 24) % 30)));
  painter.setPen(Qt::NoPen);
  painter.setBrush(front);
  const double side = tile.width();
  switch ((pick >> 32) % 5) {
    case 0:
      painter.drawEllipse(QPointF(0, 0), side * 0.36, side * 0.36);
      break;
    case 1:
      painter.drawEllipse(QPointF(-side / 2, -side / 2), side, side);
      break;
    case 2:
      for (int i = -3; i <= 3; ++i) painter.drawRect(QRectF(-side, i * side * 0.22, side * 2, side * 0.11));
      break;
    case 3:
      painter.drawPolygon(QPolygonF{{-side / 2, side / 2}, {side / 2, side / 2}, {0, -side / 2}});
      break;
    default:
      painter.drawEllipse(QPointF(0, 0), side * 0.44, side * 0.44);
      painter.setBrush(back);
      painter.drawEllipse(QPointF(0, 0), side * 0.24, side * 0.24);
  }
  painter.restore();
}

}  // namespace

void paintSea(const Stage& stage) {
  paintSky(stage, horizon);
  paintFlock(stage);
  Randomness chance(stage.seed ^ 0x151e);
  const QColor distant = blend(stage.palette.far, stage.palette.skyLow, 0.3);
  paintIsland(stage, stage.width * chance.between(-0.1, 0.3), stage.width * chance.between(0.3, 0.5),
              chance.between(60, 150), distant);
  paintIsland(stage, stage.width * chance.between(0.45, 0.8), stage.width * chance.between(0.2, 0.45),
              chance.between(40, 110), blend(distant, stage.palette.near, 0.35));
  QLinearGradient water(0, horizon, 0, stageHeight);
  water.setColorAt(0, blend(stage.palette.skyLow, stage.palette.far, 0.35));
  water.setColorAt(0.4, blend(stage.palette.skyMiddle, stage.palette.near, 0.35));
  water.setColorAt(1, blend(stage.palette.skyTop, stage.palette.near, 0.7));
  stage.painter.fillRect(QRectF(0, horizon, stage.width, stageHeight - horizon), water);
  paintWaves(stage);
  paintBoat(stage);
}

void paintCity(const Stage& stage) {
  paintSky(stage, 680);
  for (int layer = 0; layer < 4; ++layer) paintTowers(stage, layer, layer / 3.0);
}

void paintShapes(const Stage& stage) {
  const int rows = 3 + int(stage.seed % 3);
  const double side = stageHeight / rows;
  for (int row = 0; row < rows; ++row)
    for (int column = 0; column * side < stage.width; ++column)
      paintTile(stage, QRectF(column * side, row * side, side, side), mixed(stage.seed, quint64(row * 64 + column)));
}

}  // namespace sandbox
