// How a UUID is written everywhere: in files, folder names, JSON, addresses and idempotency keys.
#pragma once

#include <QString>
#include <QUuid>

namespace sorvan::base {

// Upper case, hyphens, no braces.
QString uuidText(const QUuid& id);
// Reads any case, with or without braces; a null id when the text is no UUID.
QUuid uuidFromText(const QString& text);
// A random UUID, never null.
QUuid newUuid();

}  // namespace sorvan::base
