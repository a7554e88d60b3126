#include "shell/views/style.h"

#include <QBitmap>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>
#include <QPainterPath>
#include <QScrollBar>
#include <QStyleOption>

#include "shell/views/icons.h"
#include "shell/views/painting.h"
#include "shell/views/style_controls.h"
#include "shell/views/style_menus.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

bool has(const QStyleOption* option, QStyle::StateFlag flag) { return option->state.testFlag(flag); }

// Buttons of the toolkit's own dialogs; the program's own paint themselves.
void paintDialogButton(QPainter& painter, const QStyleOption* option) {
  const Colors& c = colors();
  const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
  const bool primary = button && button->features.testFlag(QStyleOptionButton::DefaultButton);
  const bool hover = has(option, QStyle::State_MouseOver);
  const QColor plain =
      has(option, QStyle::State_Sunken) ? c.controlFillPressed : (hover ? c.controlFillHover : c.controlFill);
  paintPanel(painter, option->rect, metrics().radiusControl, plain, primary ? c.accentRing : c.controlBorder);
}

// What the toolkit's dialogs show, in this program's drawings; empty for what it has none of.
QString iconNameOf(QStyle::StandardPixmap picture) {
  switch (picture) {
    case QStyle::SP_DirIcon:
    case QStyle::SP_DirOpenIcon:
    case QStyle::SP_DirClosedIcon:
    case QStyle::SP_DirHomeIcon:
    case QStyle::SP_DirLinkIcon:
      return u"folder"_s;
    case QStyle::SP_ComputerIcon:
    case QStyle::SP_DesktopIcon:
    case QStyle::SP_DriveHDIcon:
      return u"hard-drive"_s;
    case QStyle::SP_FileDialogBack:
    case QStyle::SP_ArrowBack:
      return u"chevron-left"_s;
    case QStyle::SP_ArrowForward:
      return u"chevron-right"_s;
    case QStyle::SP_FileDialogToParent:
      return u"folder-output"_s;
    case QStyle::SP_FileDialogNewFolder:
      return u"plus"_s;
    case QStyle::SP_FileDialogListView:
      return u"layout-grid"_s;
    case QStyle::SP_FileDialogDetailedView:
      return u"list-filter"_s;
    default:
      return {};
  }
}

void paintTipPanel(QPainter& painter, const QRect& area) { painter.fillRect(area, colors().surfaceTooltip); }

// The corners of a tooltip, cut without asking the desktop for a compositor.
int roundTip(const QStyleOption* option, QStyleHintReturn* answer) {
  auto* mask = qstyleoption_cast<QStyleHintReturnMask*>(answer);
  if (!mask || !option) return 0;
  QBitmap shape(option->rect.size());
  shape.clear();
  QPainter painter(&shape);
  painter.setPen(Qt::color1);
  painter.setBrush(Qt::color1);
  painter.drawRoundedRect(QRect(QPoint(), option->rect.size()).adjusted(0, 0, -1, -1), metrics().radiusControl,
                          metrics().radiusControl);
  painter.end();
  mask->region = QRegion(shape);
  return 1;
}

void paintScrollBar(QPainter& painter, const QStyleOptionSlider* option, const QRect& thumb) {
  if (option->maximum <= option->minimum) return;
  const bool wide =
      has(option, QStyle::State_MouseOver) || option->activeSubControls.testFlag(QStyle::SC_ScrollBarSlider);
  const int inset = wide ? 1 : 2;
  const QRect bar =
      option->orientation == Qt::Vertical ? thumb.adjusted(inset, 1, -inset, -1) : thumb.adjusted(1, inset, -1, -inset);
  paintPanel(painter, bar, 4, wide ? colors().controlBorderStrong : colors().controlTrack);
}

// The thumb's travel is the whole bar: there are no arrow buttons.
QRect scrollThumb(const QStyleOptionSlider* option) {
  const bool vertical = option->orientation == Qt::Vertical;
  const int length = vertical ? option->rect.height() : option->rect.width();
  const qint64 range = static_cast<qint64>(option->maximum) - option->minimum + option->pageStep;
  int size = range > 0 ? static_cast<int>(static_cast<qint64>(length) * option->pageStep / range) : length;
  size = std::clamp(size, std::min(32, length), length);
  const int at = QStyle::sliderPositionFromValue(option->minimum, option->maximum, option->sliderPosition,
                                                 length - size, option->upsideDown);
  return vertical ? QRect(option->rect.left(), option->rect.top() + at, option->rect.width(), size)
                  : QRect(option->rect.left() + at, option->rect.top(), size, option->rect.height());
}

}  // namespace

SorvanStyle::SorvanStyle() : QProxyStyle(u"Fusion"_s) {}

void SorvanStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                const QWidget* widget) const {
  switch (element) {
    case PE_FrameFocusRect:
      return;  // the ring is drawn by `FocusRing`, outside the control
    case PE_PanelLineEdit:
    case PE_FrameLineEdit:
      return paintField(*painter, *option, widget);
    case PE_PanelButtonCommand:
      return paintDialogButton(*painter, option);
    case PE_IndicatorCheckBox:
      return paintTick(*painter, *option);
    case PE_IndicatorRadioButton:
      return paintRadio(*painter, *option);
    case PE_PanelTipLabel:
      return paintTipPanel(*painter, option->rect);
    case PE_PanelMenu:
    case PE_FrameMenu:
      return paintMenuPanel(*painter, option->rect);
    case PE_PanelMenuBar:
    case PE_FrameStatusBarItem:
      return;
    default:
      break;
  }
  QProxyStyle::drawPrimitive(element, option, painter, widget);
}

void SorvanStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const {
  const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
  if (element == CE_MenuItem && item) return paintMenuItem(*painter, *item, widget);
  if (element == CE_MenuBarItem && item) return paintMenuBarItem(*painter, *item);
  if (element == CE_MenuBarEmptyArea || element == CE_MenuEmptyArea) return;
  if (element == CE_Splitter) return;
  QProxyStyle::drawControl(element, option, painter, widget);
}

void SorvanStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                                     const QWidget* widget) const {
  const auto* slider = qstyleoption_cast<const QStyleOptionSlider*>(option);
  if (control == CC_ScrollBar && slider) return paintScrollBar(*painter, slider, scrollThumb(slider));
  if (control == CC_Slider && slider) return paintSlider(*painter, *slider);
  QProxyStyle::drawComplexControl(control, option, painter, widget);
}

QRect SorvanStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                                  const QWidget* widget) const {
  const auto* slider = qstyleoption_cast<const QStyleOptionSlider*>(option);
  if (control == CC_Slider && slider && part == SC_SliderHandle) return sliderKnob(*slider);
  if (control == CC_ScrollBar && slider) {
    if (part == SC_ScrollBarGroove) return option->rect;
    if (part == SC_ScrollBarSlider) return scrollThumb(slider);
    if (part == SC_ScrollBarAddLine || part == SC_ScrollBarSubLine) return {};
  }
  return QProxyStyle::subControlRect(control, option, part, widget);
}

QSize SorvanStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                    const QWidget* widget) const {
  const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
  if (type == CT_MenuItem && item) return menuItemSize(*item);
  if (type == CT_MenuBarItem && item) return menuBarItemSize(*item);
  if (type == CT_PushButton) {
    const QSize hint = QProxyStyle::sizeFromContents(type, option, size, widget);
    return QSize(hint.width() + 12, metrics().controlRegular);
  }
  if (type == CT_LineEdit) return QSize(size.width(), metrics().field);
  return QProxyStyle::sizeFromContents(type, option, size, widget);
}

int SorvanStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
  switch (metric) {
    case PM_ScrollBarExtent:
      return metrics().scrollbar;
    case PM_ScrollBarSliderMin:
      return 32;
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
    case PM_ExclusiveIndicatorWidth:
    case PM_ExclusiveIndicatorHeight:
      return metrics().iconRegular;
    case PM_MenuPanelWidth:
      return 1;
    case PM_MenuHMargin:
      return 0;
    case PM_MenuVMargin:
      return 4;
    case PM_MenuBarPanelWidth:
      return 0;
    case PM_MenuBarItemSpacing:
      return 2;
    case PM_MenuBarHMargin:
    case PM_MenuBarVMargin:
      return 0;
    case PM_SliderLength:
      return metrics().sliderKnob;
    case PM_SliderThickness:
      return 18;
    case PM_SplitterWidth:
      return 1;
    case PM_ToolTipLabelFrameWidth:
      return 7;
    case PM_CheckBoxLabelSpacing:
    case PM_RadioButtonLabelSpacing:
      return 8;
    case PM_DefaultFrameWidth:
      return qobject_cast<const QLineEdit*>(widget) ? 2 : 1;
    case PM_TextCursorWidth:
      return 2;
    default:
      return QProxyStyle::pixelMetric(metric, option, widget);
  }
}

int SorvanStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                           QStyleHintReturn* answer) const {
  switch (hint) {
    case SH_ToolTip_WakeUpDelay:
      return 500;
    case SH_ToolTip_Mask:
      return roundTip(option, answer);
    case SH_ScrollBar_LeftClickAbsolutePosition:
      return 0;
    case SH_Slider_AbsoluteSetButtons:
      return Qt::LeftButton;
    case SH_Menu_SubMenuPopupDelay:
      return 120;
    case SH_Menu_Scrollable:
      return 1;
    case SH_MenuBar_AltKeyNavigation:
      return 1;
    case SH_DialogButtonBox_ButtonsHaveIcons:
    case SH_UnderlineShortcut:
      return 0;
    case SH_ScrollView_FrameOnlyAroundContents:
      return 0;
    default:
      return QProxyStyle::styleHint(hint, option, widget, answer);
  }
}

QIcon SorvanStyle::standardIcon(StandardPixmap picture, const QStyleOption* option, const QWidget* widget) const {
  const QString name = iconNameOf(picture);
  if (name.isEmpty()) return QProxyStyle::standardIcon(picture, option, widget);
  QIcon icon;
  for (const double ratio : {1.0, 2.0}) {
    icon.addPixmap(iconPixmap(name, metrics().iconRegular, {colors().textSecondary}, ratio));
    icon.addPixmap(iconPixmap(name, metrics().iconRegular, {colors().textDisabled}, ratio), QIcon::Disabled);
  }
  return icon;
}

void SorvanStyle::polish(QWidget* widget) {
  QProxyStyle::polish(widget);
  if (qobject_cast<QScrollBar*>(widget) || qobject_cast<QLineEdit*>(widget)) widget->setAttribute(Qt::WA_Hover);
  if (qobject_cast<QMenu*>(widget)) roundMenuCorners(*widget);
}

}  // namespace sorvan::views
