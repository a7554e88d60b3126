// How the toolkit's own controls are drawn: fields, menus, scroll bars, ticks and tooltips in the program's look.
#pragma once

#include <QProxyStyle>

#include "shell/views/room.h"

namespace sorvan::views {

// Sits on Fusion and draws what the program uses itself. Colours come from the theme at each stroke, so that a change
// of the look needs a repaint and nothing else.
class SorvanStyle final : public QProxyStyle {
 public:
  SorvanStyle();

  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override;
  void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                          const QWidget* widget) const override;
  QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                       const QWidget* widget) const override;
  QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                         const QWidget* widget) const override;
  int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* answer) const override;
  QIcon standardIcon(StandardPixmap picture, const QStyleOption* option, const QWidget* widget) const override;
  void polish(QWidget* widget) override;
  using QProxyStyle::polish;
};

// A field with this property is drawn with the danger border.
inline constexpr const char* invalidProperty = "sorvanInvalid";
// A field with this property is drawn without ground and border: it stands on a surface of its own.
inline constexpr const char* bareProperty = "sorvanBare";

}  // namespace sorvan::views
