#include "views/text_contrast.h"

#include <QAction>
#include <QImage>
#include <QMenu>
#include <QMenuBar>
#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainterPath>
#include <QPainter>
#include <QWidget>

#include <algorithm>
#include <cmath>

namespace sorvan::test {

namespace {

constexpr double leastContrast = 4.5;
// Round corners and the seam of a gradient touch a few pixels of a text's box.
constexpr double ignoredShare = 0.05;

double linear(double channel) {
  return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& color) {
  return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

QColor over(const QColor& top, double opacity, const QColor& ground) {
  const double share = top.alphaF() * opacity;
  const auto mixed = [share](double above, double below) { return above * share + below * (1 - share); };
  return QColor::fromRgbF(static_cast<float>(mixed(top.redF(), ground.redF())),
                          static_cast<float>(mixed(top.greenF(), ground.greenF())),
                          static_cast<float>(mixed(top.blueF(), ground.blueF())));
}

// Paints everything but text into a picture, and looks at the picture where a text would go.
class WatchingEngine final : public QPaintEngine {
 public:
  explicit WatchingEngine(QImage& picture) : QPaintEngine(AllFeatures), picture_(picture) {}

  bool begin(QPaintDevice*) override { return painter_.begin(&picture_); }
  bool end() override { return painter_.end(); }
  Type type() const override { return User; }

  void updateState(const QPaintEngineState& state) override {
    const DirtyFlags changed = state.state();
    if (changed & DirtyTransform) painter_.setTransform(state.transform());
    if (changed & DirtyPen) painter_.setPen(state.pen());
    if (changed & DirtyBrush) painter_.setBrush(state.brush());
    if (changed & DirtyBrushOrigin) painter_.setBrushOrigin(state.brushOrigin());
    if (changed & DirtyFont) painter_.setFont(state.font());
    if (changed & DirtyHints) painter_.setRenderHints(state.renderHints());
    if (changed & DirtyCompositionMode) painter_.setCompositionMode(state.compositionMode());
    if (changed & DirtyOpacity) painter_.setOpacity(state.opacity());
    if (changed & DirtyClipRegion) painter_.setClipRegion(state.clipRegion(), state.clipOperation());
    if (changed & DirtyClipPath) painter_.setClipPath(state.clipPath(), state.clipOperation());
    if (changed & DirtyClipEnabled) painter_.setClipping(state.isClipEnabled());
  }

  void drawPath(const QPainterPath& path) override {
    clipped([&] { painter_.drawPath(path); });
  }
  void drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) override {
    clipped([&] {
      if (mode == PolylineMode)
        painter_.drawPolyline(points, count);
      else
        painter_.drawPolygon(points, count, mode == WindingMode ? Qt::WindingFill : Qt::OddEvenFill);
    });
  }
  void drawRects(const QRectF* rects, int count) override {
    clipped([&] { painter_.drawRects(rects, count); });
  }
  void drawPixmap(const QRectF& target, const QPixmap& pixmap, const QRectF& source) override {
    clipped([&] { painter_.drawPixmap(target, pixmap, source); });
  }
  void drawTiledPixmap(const QRectF& target, const QPixmap& pixmap, const QPointF& offset) override {
    clipped([&] { painter_.drawTiledPixmap(target, pixmap, offset); });
  }
  void drawImage(const QRectF& target, const QImage& image, const QRectF& source,
                 Qt::ImageConversionFlags flags) override {
    clipped([&] { painter_.drawImage(target, image, source, flags); });
  }

  void drawTextItem(const QPointF& at, const QTextItem& item) override {
    if (item.text().trimmed().isEmpty()) return;
    const QRectF letters(at.x(), at.y() - item.ascent() * 0.75, item.width(), item.ascent() * 0.75);
    QRect place = painter_.transform().mapRect(letters).toAlignedRect() & picture_.rect();
    if (!systemClip().isEmpty()) place &= systemClip().boundingRect();
    if (painter_.hasClipping()) place &= painter_.transform().mapRect(painter_.clipBoundingRect()).toAlignedRect();
    if (place.width() < 2 || place.height() < 2) return;
    const QColor color = painter_.pen().color();
    texts.push_back({item.text(), color, place, contrastAt(place, color)});
  }

  std::vector<PaintedText> texts;

 private:
  template <class Draw>
  void clipped(Draw draw) {
    const QRegion widget = systemClip();
    if (widget.isEmpty()) return draw();
    painter_.save();
    const QTransform transform = painter_.transform();
    painter_.resetTransform();
    painter_.setClipRegion(widget, painter_.hasClipping() ? Qt::IntersectClip : Qt::ReplaceClip);
    painter_.setTransform(transform);
    draw();
    painter_.restore();
  }

  double contrastAt(const QRect& place, const QColor& color) const {
    std::vector<double> all;
    all.reserve(static_cast<size_t>(place.width()) * static_cast<size_t>(place.height()));
    QRgb known = 0;
    double contrast = 0;
    for (int y = place.top(); y <= place.bottom(); ++y) {
      for (int x = place.left(); x <= place.right(); ++x) {
        const QRgb pixel = picture_.pixel(x, y);
        if (all.empty() || pixel != known) {
          known = pixel;
          contrast = contrastOf(over(color, painter_.opacity(), QColor(pixel)), QColor(pixel));
        }
        all.push_back(contrast);
      }
    }
    const auto worst = all.begin() + static_cast<std::ptrdiff_t>(static_cast<double>(all.size()) * ignoredShare);
    std::nth_element(all.begin(), worst, all.end());
    return *worst;
  }

  QImage& picture_;
  QPainter painter_;
};

class WatchingDevice final : public QPaintDevice {
 public:
  explicit WatchingDevice(QSize size) : picture_(size, QImage::Format_ARGB32_Premultiplied), engine_(picture_) {
    picture_.fill(Qt::black);
  }
  QPaintEngine* paintEngine() const override { return &engine_; }
  const std::vector<PaintedText>& texts() const { return engine_.texts; }

 protected:
  int metric(PaintDeviceMetric metric) const override {
    switch (metric) {
      case PdmWidth:
        return picture_.width();
      case PdmHeight:
        return picture_.height();
      case PdmDpiX:
      case PdmDpiY:
      case PdmPhysicalDpiX:
      case PdmPhysicalDpiY:
        return 96;
      case PdmWidthMM:
        return picture_.widthMM();
      case PdmHeightMM:
        return picture_.heightMM();
      case PdmDepth:
        return picture_.depth();
      case PdmDevicePixelRatio:
        return 1;
      case PdmDevicePixelRatioScaled:
        return static_cast<int>(devicePixelRatioFScale());
      default:
        return QPaintDevice::metric(metric);
    }
  }

 private:
  QImage picture_;
  mutable WatchingEngine engine_;
};

QRegion disabledParts(const QWidget& widget) {
  QRegion parts;
  const auto add = [&](const QWidget* part, const QRect& area) { parts += area.translated(part->mapTo(&widget, QPoint())); };
  for (const QWidget* part : widget.findChildren<QWidget*>())
    if (part->isVisible() && !part->isEnabled()) add(part, part->rect());
  for (QMenuBar* bar : widget.findChildren<QMenuBar*>())
    for (QAction* title : bar->actions())
      if (bar->isVisible() && !title->isEnabled()) add(bar, bar->actionGeometry(title));
  QList<QMenu*> menus = widget.findChildren<QMenu*>();
  if (auto* self = qobject_cast<const QMenu*>(&widget)) menus.append(const_cast<QMenu*>(self));
  for (QMenu* menu : menus) {
    if (!menu->isVisible() || !(menu == &widget || widget.isAncestorOf(menu)) || menu->window() != widget.window())
      continue;
    for (const QAction* action : menu->actions())
      if (!action->isEnabled()) add(menu, menu->actionGeometry(const_cast<QAction*>(action)));
  }
  return parts;
}

}  // namespace

double contrastOf(const QColor& text, const QColor& ground) {
  const double first = luminance(text);
  const double second = luminance(ground);
  return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

std::vector<PaintedText> paintedTexts(QWidget& widget) {
  WatchingDevice device(widget.size());
  widget.render(&device);
  const QRegion disabled = disabledParts(widget);
  std::vector<PaintedText> texts = device.texts();
  std::erase_if(texts, [&](const PaintedText& text) { return disabled.contains(text.place.center()); });
  return texts;
}

QString faintTexts(QWidget& widget) {
  QString faint;
  for (const PaintedText& text : paintedTexts(widget)) {
    if (text.contrast >= leastContrast) continue;
    faint += QStringLiteral("“%1” %2 at %3,%4: %5:1\n")
                 .arg(text.text, text.color.name(QColor::HexArgb))
                 .arg(text.place.x())
                 .arg(text.place.y())
                 .arg(text.contrast, 0, 'f', 2);
  }
  return faint;
}

}  // namespace sorvan::test
