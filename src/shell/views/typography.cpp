#include "shell/views/typography.h"

#include "shell/views/theme.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

QString nameOf(Type role) {
  static const std::array<QString, 9> names = {u"micro"_s, u"caption"_s, u"small"_s,   u"body"_s, u"prompt"_s,
                                               u"title"_s, u"large"_s,   u"display"_s, u"mono"_s};
  return names.at(static_cast<size_t>(role));
}

// Large text stands a little closer, as the design draws it.
double letterSpacing(Type role) {
  if (role == Type::display) return -0.5;
  return role == Type::large ? -0.2 : 0.0;
}

}  // namespace

QFont fontFor(Type role) { return fontFor(role, static_cast<Weight>(Theme::instance().type(nameOf(role)).weight)); }

QFont fontFor(Type role, Weight weight) {
  const Theme& theme = Theme::instance();
  QFont font;
  font.setFamilies(role == Type::mono ? theme.monoFamilies() : theme.uiFamilies());
  font.setPixelSize(theme.type(nameOf(role)).size);
  font.setWeight(static_cast<QFont::Weight>(weight));
  font.setStyleHint(role == Type::mono ? QFont::Monospace : QFont::SansSerif);
  if (letterSpacing(role) != 0.0) font.setLetterSpacing(QFont::AbsoluteSpacing, letterSpacing(role));
  return font;
}

int lineHeight(Type role) { return Theme::instance().type(nameOf(role)).line; }

}  // namespace sorvan::views
