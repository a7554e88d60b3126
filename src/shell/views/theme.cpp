#include "shell/views/theme.h"

#include <QApplication>
#include <QPalette>
#include <QRegularExpression>
#include <QWidget>

#include "shell/views/contrast.h"
#include "shell/views/desktop_appearance.h"
#include "shell/views/style.h"
#include "shell/views/typography.h"

// The resources stand in a static library: without this call the linker would leave them out.
static void loadViewResources() { Q_INIT_RESOURCE(views); }

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

QJsonValue valueAt(const QJsonObject& root, QLatin1StringView path) {
  QJsonValue value = root;
  const QString text(path);
  for (const QString& key : text.split(u'.')) value = value.toObject().value(key);
  return value;
}

// Tokens are written as #RRGGBB or rgba(r,g,b,a).
QColor colorFrom(const QString& text) {
  if (text.startsWith(u'#')) return QColor(text);
  static const QRegularExpression form(u"rgba\\((\\d+),(\\d+),(\\d+),([0-9.]+)\\)"_s);
  const QRegularExpressionMatch match = form.match(text);
  QColor color(match.captured(1).toInt(), match.captured(2).toInt(), match.captured(3).toInt());
  color.setAlphaF(match.captured(4).toFloat());
  return color;
}

QColor requiredColor(const QJsonObject& object, QLatin1StringView path) {
  const QString text = valueAt(object, path).toString();
  if (text.isEmpty()) qFatal("tokens.json has no colour %s", path.data());
  return colorFrom(text);
}

Shadow shadowFrom(const QJsonObject& object) {
  return {object.value(u"y"_s).toInt(), object.value(u"blur"_s).toInt(),
          colorFrom(object.value(u"color"_s).toString())};
}

Colors colorsFrom(const QJsonObject& object) {
  Colors result;
#define COLOR(field, path) result.field = requiredColor(object, QLatin1StringView(path));
#include "shell/views/color_tokens.inc"
#undef COLOR
  for (const QJsonValue& value : object.value(u"chart"_s).toArray()) result.chart.push_back(QColor(value.toString()));
  const QJsonObject shadows = object.value(u"shadow"_s).toObject();
  result.popoverShadow = shadowFrom(shadows.value(u"popover"_s).toObject());
  result.dockShadow = shadowFrom(shadows.value(u"dock"_s).toObject());
  result.dialogShadow = shadowFrom(shadows.value(u"dialog"_s).toObject());
  return result;
}

Metrics metricsFrom(const QJsonObject& tokens) {
  Metrics result;
#define METRIC(field, path) result.field = valueAt(tokens, QLatin1StringView(path)).toInt();
#include "shell/views/metric_tokens.inc"
#undef METRIC
  return result;
}

QStringList stringsFrom(const QJsonArray& array) {
  QStringList result;
  for (const QJsonValue& value : array) result.append(value.toString());
  return result;
}

// What a desktop asks for that wants more contrast: stronger lines and no third grey.
Colors strengthened(Colors colors) {
  colors.controlBorder = colors.controlBorderStrong;
  colors.lineDefault = colors.controlBorderStrong;
  colors.textTertiary = colors.textSecondary;
  return colors;
}

// The colours of the tokens, and whether those that are on are stronger ones.
struct Contrast {
  Colors dark;
  Colors light;
  bool more = false;
};
Contrast& contrast() {
  static auto* contrast = new Contrast;  // as long as the theme
  return *contrast;
}

void setText(QPalette& palette, QPalette::ColorRole role, const QColor& color, const QColor& disabled) {
  palette.setColor(role, color);
  palette.setColor(QPalette::Disabled, role, disabled);
}

QPalette paletteFrom(const Colors& c) {
  QPalette palette;
  palette.setColor(QPalette::Window, c.surfaceChrome);
  palette.setColor(QPalette::Base, c.surfaceInset);
  palette.setColor(QPalette::AlternateBase, c.surfaceRaised);
  palette.setColor(QPalette::Button, c.controlFill);
  palette.setColor(QPalette::ToolTipBase, c.surfaceTooltip);
  palette.setColor(QPalette::ToolTipText, c.textTooltip);
  palette.setColor(QPalette::Highlight, c.accentFill);
  palette.setColor(QPalette::HighlightedText, c.textOnAccent);
  palette.setColor(QPalette::Link, c.accentText);
  palette.setColor(QPalette::PlaceholderText, c.textTertiary);
  palette.setColor(QPalette::Mid, c.lineDefault);
  palette.setColor(QPalette::Dark, c.lineSubtle);
  palette.setColor(QPalette::Shadow, c.lineSubtle);
  setText(palette, QPalette::WindowText, c.textPrimary, c.textDisabled);
  setText(palette, QPalette::Text, c.textPrimary, c.textDisabled);
  setText(palette, QPalette::ButtonText, c.textPrimary, c.textDisabled);
  return palette;
}

}  // namespace

Theme& Theme::instance() {
  static Theme* theme =
      new Theme;  // lives as long as the process: widgets may ask for colours while they are torn down
  return *theme;
}

Theme::Theme() {
  loadViewResources();
  QFile file(u":/sorvan/tokens.json"_s);
  if (!file.open(QIODevice::ReadOnly)) qFatal("the resource tokens.json is missing");
  read(QJsonDocument::fromJson(file.readAll()).object());
}

void Theme::read(const QJsonObject& tokens) {
  const QJsonObject color = tokens.value(u"color"_s).toObject();
  dark_ = colorsFrom(color.value(u"dark"_s).toObject());
  light_ = colorsFrom(color.value(u"light"_s).toObject());
  contrast() = {dark_, light_};
  metrics_ = metricsFrom(tokens);
  const QJsonObject font = tokens.value(u"font"_s).toObject();
  uiFamilies_ = stringsFrom(font.value(u"family"_s).toObject().value(u"ui"_s).toArray());
  monoFamilies_ = stringsFrom(font.value(u"family"_s).toObject().value(u"mono"_s).toArray());
  const QJsonObject scale = font.value(u"scale"_s).toObject();
  for (const QString& role : scale.keys()) {
    const QJsonObject token = scale.value(role).toObject();
    types_.insert(role,
                  {token.value(u"size"_s).toInt(), token.value(u"line"_s).toInt(), token.value(u"weight"_s).toInt()});
  }
}

void Theme::dress(QApplication& application) {
  dressed_ = true;
  application.setStyle(new SorvanStyle);
  application.setFont(fontFor(Type::body));
  desktop_ = new DesktopAppearance(this);
  connect(desktop_, &DesktopAppearance::changed, this, &Theme::resolve);
  desktop_->start();
  resolve();
  applyPalette();
}

void Theme::setAppearance(Appearance appearance) {
  appearance_ = appearance;
  resolve();
}

bool moreContrast() { return contrast().more; }

bool Theme::reducedMotion() const { return desktop_ && desktop_->reducedMotion(); }

void Theme::resolve() {
  Look wanted = appearance_ == Appearance::light ? Look::light : Look::dark;
  if (appearance_ == Appearance::system && desktop_) wanted = desktop_->prefersLight() ? Look::light : Look::dark;
  const bool more = desktop_ && desktop_->moreContrast();
  if (wanted == look_ && more == contrast().more) return;
  look_ = wanted;
  contrast().more = more;
  dark_ = more ? strengthened(contrast().dark) : contrast().dark;
  light_ = more ? strengthened(contrast().light) : contrast().light;
  applyPalette();
  Q_EMIT changed();
}

void Theme::applyPalette() {
  if (!dressed_) return;
  QApplication::setPalette(paletteFrom(colors()));
  for (QWidget* widget : QApplication::allWidgets()) widget->update();
}

}  // namespace sorvan::views
