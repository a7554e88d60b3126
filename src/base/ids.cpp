#include "base/ids.h"

namespace sorvan::base {

QString uuidText(const QUuid& id) { return id.toString(QUuid::WithoutBraces).toUpper(); }

QUuid uuidFromText(const QString& text) {
  // QUuid also accepts some trailing rubbish; only the two whole forms are UUIDs here.
  if (text.size() != 36 && text.size() != 38) return {};
  return QUuid::fromString(text);
}

QUuid newUuid() { return QUuid::createUuid(); }

}  // namespace sorvan::base
