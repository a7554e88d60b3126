#include "base/ids.h"

namespace sorvan::base {

QString uuidText(const QUuid& id) {
  // In place: it is written for every row of a save, and toUpper asks tables about each character.
  QString text = id.toString(QUuid::WithoutBraces);
  constexpr char16_t toUpperCase = u'a' - u'A';
  for (QChar& character : text)
    if (character >= u'a') character = QChar(char16_t(character.unicode() - toUpperCase));
  return text;
}

QUuid uuidFromText(const QString& text) {
  // QUuid also accepts some trailing rubbish; only the two whole forms are UUIDs here.
  if (text.size() != 36 && text.size() != 38) return {};
  return QUuid::fromString(text);
}

QUuid newUuid() { return QUuid::createUuid(); }

}  // namespace sorvan::base
