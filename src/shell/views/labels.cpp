#include "shell/views/labels.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>

#include "shell/texts.h"
#include "shell/views/icons.h"
#include "shell/views/painting.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

Label::Label(const QString& text, Type type, ColorRole color, QWidget* parent)
    : QLabel(text, parent), type_(type), color_(color) {
  setFont(fontFor(type));
  setTextFormat(Qt::PlainText);
  recolour();
  connect(&Theme::instance(), &Theme::changed, this, &Label::recolour);
}

void Label::setColorRole(ColorRole color) {
  color_ = color;
  recolour();
}

void Label::setWeight(Weight weight) { setFont(fontFor(type_, weight)); }

void Label::recolour() {
  QPalette own = palette();
  own.setColor(QPalette::WindowText, colors().*color_);
  own.setColor(QPalette::Text, colors().*color_);
  own.setColor(QPalette::Highlight, colors().accentFill);
  own.setColor(QPalette::HighlightedText, colors().textOnAccent);
  setPalette(own);
}

Paragraph::Paragraph(const QString& text, Type type, ColorRole color, QWidget* parent)
    : Label({}, type, color, parent),
      linePercent_(100 * lineHeight(type) / std::max(1, QFontMetrics(fontFor(type)).lineSpacing())) {
  setWordWrap(true);
  setTextFormat(Qt::RichText);
  setAlignment(Qt::AlignTop | Qt::AlignLeft);
  setParagraph(text);
}

namespace {
// Rich text takes opaque grounds only.
QColor blended(const QColor& over, const QColor& ground) {
  const float share = over.alphaF();
  return QColor::fromRgbF(over.redF() * share + ground.redF() * (1 - share),
                          over.greenF() * share + ground.greenF() * (1 - share),
                          over.blueF() * share + ground.blueF() * (1 - share));
}
}  // namespace

namespace {

constexpr QChar kBreak(0x200B);  // a place where a line may end, without any width
constexpr int kLongWord = 24;    // characters; longer ones may be broken
constexpr int kPiece = 8;
constexpr int kNarrowest = 24;  // pixels

bool startsACharacter(QChar character) { return !character.isLowSurrogate() && !character.isMark(); }

void appendWord(QString& broken, QStringView word) {
  if (word.size() <= kLongWord) return void(broken += word);
  for (qsizetype at = 0; at < word.size(); ++at) {
    if (at > 0 && at % kPiece == 0 && startsACharacter(word[at])) broken += kBreak;
    broken += word[at];
  }
}

// The text as markup, with places to break it in words that may be wider than their room.
QString brokenMarkup(const QString& text) {
  QString broken;
  qsizetype start = 0;
  for (qsizetype at = 0; at <= text.size(); ++at) {
    if (at < text.size() && !text[at].isSpace()) continue;
    appendWord(broken, QStringView(text).mid(start, at - start));
    if (at < text.size()) broken += text[at];
    start = at + 1;
  }
  return broken.toHtmlEscaped();
}

}  // namespace

void Paragraph::setParagraph(const QString& text) { setParagraph(text, {}); }

QSize Paragraph::minimumSizeHint() const {
  const QSize hint = Label::minimumSizeHint();
  return {std::min(hint.width(), kNarrowest), hint.height()};
}

QString Paragraph::selectedWords() const {
  return selectedText().remove(kBreak).replace(QChar::LineSeparator, u'\n').replace(QChar::ParagraphSeparator, u'\n');
}

// What is copied is the text alone, without the places to break it.
void Paragraph::keyPressEvent(QKeyEvent* event) {
  if (!event->matches(QKeySequence::Copy) || !hasSelectedText()) return Label::keyPressEvent(event);
  QGuiApplication::clipboard()->setText(selectedWords());
}

void Paragraph::mouseReleaseEvent(QMouseEvent* event) {
  Label::mouseReleaseEvent(event);
  QClipboard& clipboard = *QGuiApplication::clipboard();
  if (hasSelectedText() && clipboard.supportsSelection()) clipboard.setText(selectedWords(), QClipboard::Selection);
}

void Paragraph::contextMenuEvent(QContextMenuEvent* event) {
  if (!(textInteractionFlags() & Qt::TextSelectableByMouse)) return Label::contextMenuEvent(event);
  auto* menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->setAccessibleName(shell::texts::copy);
  QAction* copy = menu->addAction(shell::texts::copy, QKeySequence(QKeySequence::Copy), this,
                                  [this] { QGuiApplication::clipboard()->setText(selectedWords()); });
  copy->setEnabled(hasSelectedText());
  menu->popup(event->globalPos());
}

void Paragraph::setParagraph(const QString& text, const std::vector<std::pair<int, int>>& names) {
  plain_ = text;
  setAccessibleName(text);
  if (text.isEmpty()) return setText({});
  QString body;
  int done = 0;
  for (const auto& [start, length] : names) {
    body += brokenMarkup(text.mid(done, start - done));
    body += u"<span style=\"color:%1;background-color:%2\">%3</span>"_s.arg(
        colors().accentMention.name(), blended(colors().accentMentionFill, colors().surfaceChrome).name(), brokenMarkup(text.mid(start, length)));
    done = start + length;
  }
  body += brokenMarkup(text.mid(done));
  body.replace(u'\n', u"<br>"_s);
  setText(u"<p style=\"margin:0;line-height:%1%\">%2</p>"_s.arg(QString::number(linePercent_), body));
}

void Paragraph::setLineDistance(int pixels) {
  linePercent_ = 100 * pixels / std::max(1, QFontMetrics(font()).lineSpacing());
  if (!plain_.isEmpty()) setParagraph(plain_);
}

void Paragraph::setSelectable(bool selectable) {
  setTextInteractionFlags(selectable ? Qt::TextSelectableByMouse : Qt::NoTextInteraction);
}

ElidedLabel::ElidedLabel(Type type, ColorRole color, Qt::TextElideMode elide, QWidget* parent)
    : QWidget(parent), font_(fontFor(type)), color_(color), elide_(elide), line_(lineHeight(type)) {
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void ElidedLabel::setText(const QString& text) {
  if (text_ == text) return;
  text_ = text;
  setAccessibleName(text);
  setToolTip({});
  updateGeometry();
  update();
}

void ElidedLabel::setWeight(Weight weight) {
  font_.setWeight(static_cast<QFont::Weight>(weight));
  updateGeometry();
}

QSize ElidedLabel::sizeHint() const { return {textWidth(text_, font_) + 1, line_}; }
QSize ElidedLabel::minimumSizeHint() const { return {std::min(24, sizeHint().width()), line_}; }

void ElidedLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  paintText(painter, rect(), {text_, font_, colors().*color_, Qt::AlignLeft | Qt::AlignVCenter, elide_});
  const bool shortened = textWidth(text_, font_) > width();
  if (shortened != !toolTip().isEmpty()) setToolTip(shortened ? text_ : QString());
}

ToneColors toneColors(BadgeTone tone) {
  const Colors& c = colors();
  switch (tone) {
    case BadgeTone::accent:
      return {c.accentText, c.accentSoft};
    case BadgeTone::success:
      return {c.successText, c.successSoft};
    case BadgeTone::warning:
      return {c.warningText, c.warningSoft};
    case BadgeTone::danger:
      return {c.dangerText, c.dangerSoft};
    case BadgeTone::info:
      return {c.infoText, c.infoSoft};
    case BadgeTone::neutral:
      break;
  }
  return {c.textSecondary, c.statePressed};
}

int badgeWidth(const QString& text) { return textWidth(text, fontFor(Type::caption, Weight::semibold)) + 12; }

void paintBadge(QPainter& painter, const QRect& area, const QString& text, BadgeTone tone) {
  const ToneColors ink = toneColors(tone);
  paintPanel(painter, area, metrics().radiusSmall, ink.soft);
  paintText(painter, area, {text, fontFor(Type::caption, Weight::semibold), ink.text, Qt::AlignCenter});
}

Badge::Badge(const QString& text, BadgeTone tone, QWidget* parent) : QWidget(parent), text_(text), tone_(tone) {
  setAccessibleName(text);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize Badge::sizeHint() const { return {badgeWidth(text_), 18}; }

void Badge::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  paintBadge(painter, rect(), text_, tone_);
}

IconView::IconView(const QString& iconName, int size, ColorRole color, QWidget* parent)
    : QWidget(parent), iconName_(iconName), size_(size), color_(color) {
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void IconView::setIcon(const QString& iconName, ColorRole color) {
  iconName_ = iconName;
  color_ = color;
  update();
}

void IconView::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  paintIcon(painter, iconName_, rect(), size_, {colors().*color_});
}

Hairline::Hairline(ColorRole color, Qt::Orientation orientation, QWidget* parent) : QWidget(parent), color_(color) {
  if (orientation == Qt::Horizontal)
    setFixedHeight(1);
  else
    setFixedWidth(1);
}

void Hairline::paintEvent(QPaintEvent*) { QPainter(this).fillRect(rect(), colors().*color_); }

Surface::Surface(ColorRole color, QWidget* parent) : QWidget(parent), color_(color) {}

void Surface::paintEvent(QPaintEvent*) { QPainter(this).fillRect(rect(), colors().*color_); }

}  // namespace sorvan::views
