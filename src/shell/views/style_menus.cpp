#include "shell/views/style_menus.h"

#include <QAction>
#include <QBitmap>
#include <QEvent>
#include <QMenu>
#include <QWidget>

#include "shell/views/focus_ring.h"
#include "shell/views/icons.h"
#include "shell/views/painting.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kMenuRadius = 8;
constexpr int kRowInset = 4;
constexpr int kTextInset = 14;
constexpr int kTickWidth = 20;
constexpr int kKeyGap = 28;
constexpr int kSeparatorHeight = 9;

// A mask of one bit has no soft edge; the border line painted along it hides the steps.
class RoundedCorners final : public QObject {
 public:
  using QObject::QObject;
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Resize || event->type() == QEvent::Show) cut(*static_cast<QWidget*>(watched));
    return false;
  }

 private:
  static void cut(QWidget& widget) {
    QBitmap shape(widget.size());
    shape.clear();
    QPainter painter(&shape);
    painter.setBrush(Qt::color1);
    painter.setPen(Qt::color1);
    painter.drawRoundedRect(widget.rect().adjusted(0, 0, -1, -1), kMenuRadius, kMenuRadius);
    painter.end();
    widget.setMask(shape);
  }
};

struct ItemTexts {
  QString title;
  QString keys;
};

// The mark of a mnemonic is not painted; a doubled one stands for itself.
QString withoutMnemonic(QString text) {
  text.replace(u"&&"_s, QString(QChar(1)));
  text.remove(u'&');
  return text.replace(QChar(1), u'&');
}

ItemTexts textsOf(const QStyleOptionMenuItem& item) {
  const qsizetype tab = item.text.indexOf(u'\t');
  if (tab < 0) return {withoutMnemonic(item.text), {}};
  return {withoutMnemonic(item.text.left(tab)), shownKeys(item.text.mid(tab + 1))};
}

// A row that removes something says so by its colour too.
bool removes(const QStyleOptionMenuItem& item, const QWidget* menu) {
  const auto* rows = qobject_cast<const QMenu*>(menu);
  const QAction* row = rows ? rows->actionAt(item.rect.center()) : nullptr;
  return row && row->property("tone").toString() == u"danger"_s;
}

QColor titleColor(const QStyleOptionMenuItem& item, const QWidget* menu) {
  if (!item.state.testFlag(QStyle::State_Enabled)) return colors().textDisabled;
  return removes(item, menu) ? colors().dangerText : colors().textPrimary;
}

}  // namespace

QString shownKeys(const QString& shortcut) {
  QString keys = shortcut;
  const bool plus = keys.endsWith(u'+');  // the key itself
  if (plus) keys.chop(1);
  keys.replace(u'+', u' ');
  if (plus) keys.append(u'+');
  if (keys == u"Del"_s || keys.endsWith(u" Del"_s)) keys.replace(keys.size() - 3, 3, u"Delete"_s);
  return keys;
}

void roundMenuCorners(QWidget& menu) { menu.installEventFilter(new RoundedCorners(&menu)); }

void paintMenuPanel(QPainter& painter, const QRect& area) {
  painter.fillRect(area, colors().surfaceOverlay);
  paintPanel(painter, area, kMenuRadius, colors().surfaceOverlay,
             Theme::instance().isDark() ? colors().controlBorder : colors().lineDefault);
}

void paintMenuItem(QPainter& painter, const QStyleOptionMenuItem& item, const QWidget* menu) {
  const Colors& c = colors();
  if (item.menuItemType == QStyleOptionMenuItem::Separator) {
    const int y = item.rect.center().y();
    painter.fillRect(QRect(item.rect.left(), y, item.rect.width(), 1), c.lineDefault);
    return;
  }
  const bool enabled = item.state.testFlag(QStyle::State_Enabled);
  const bool current = item.state.testFlag(QStyle::State_Selected) && enabled;
  if (current)
    paintPanel(painter, QRectF(item.rect).adjusted(kRowInset, 0, -kRowInset, 0), 5,
               removes(item, menu) ? c.dangerSoft : c.stateSelected);
  QRect inner = item.rect.adjusted(kTextInset, 0, -kTextInset, 0);
  if (item.menuHasCheckableItems) {
    if (item.checked)
      paintIcon(painter, u"check"_s, QRect(inner.left(), inner.top(), 14, inner.height()), 14, {titleColor(item, menu)});
    inner.setLeft(inner.left() + kTickWidth);
  }
  const ItemTexts texts = textsOf(item);
  paintText(painter, inner, {texts.title, fontFor(Type::body), titleColor(item, menu)});
  const QColor dim = current ? c.textTertiaryOnSelected : (enabled ? c.textTertiary : c.textDisabled);
  paintText(painter, inner, {texts.keys, fontFor(Type::small), dim, Qt::AlignRight | Qt::AlignVCenter});
  if (item.menuItemType == QStyleOptionMenuItem::SubMenu)
    paintIcon(painter, u"chevron-right"_s, QRect(inner.right() - 12, inner.top(), 14, inner.height()), 14, {dim});
}

void paintMenuBarItem(QPainter& painter, const QStyleOptionMenuItem& item) {
  const Colors& c = colors();
  const bool enabled = item.state.testFlag(QStyle::State_Enabled);
  const bool open = item.state.testFlag(QStyle::State_Sunken) || item.state.testFlag(QStyle::State_Selected);
  if (open && enabled) paintPanel(painter, QRectF(item.rect).adjusted(0, 5, 0, -5), 5, c.stateHover);
  if (open && enabled && FocusRing::keyboardInUse())
    paintRing(painter, item.rect.adjusted(1, 4, -1, -4), metrics().radiusControl, metrics().borderFocus, c.accentRing);
  const QColor color = !enabled ? c.textDisabled : (open ? c.textPrimary : c.textSecondary);
  paintText(painter, item.rect,
            {withoutMnemonic(item.text), fontFor(Type::body), color, Qt::AlignCenter, Qt::ElideNone});
}

QSize menuItemSize(const QStyleOptionMenuItem& item) {
  if (item.menuItemType == QStyleOptionMenuItem::Separator) return QSize(10, kSeparatorHeight);
  const ItemTexts texts = textsOf(item);
  int width = 2 * kTextInset + textWidth(texts.title, fontFor(Type::body));
  if (!texts.keys.isEmpty()) width += kKeyGap + textWidth(texts.keys, fontFor(Type::small));
  if (item.menuHasCheckableItems) width += kTickWidth;
  if (item.menuItemType == QStyleOptionMenuItem::SubMenu) width += kKeyGap;
  return QSize(std::max(width, metrics().popoverMenuMin), metrics().menuRow);
}

QSize menuBarItemSize(const QStyleOptionMenuItem& item) {
  return QSize(textWidth(withoutMnemonic(item.text), fontFor(Type::body)) + 18, metrics().menuStrip - 1);
}

}  // namespace sorvan::views
