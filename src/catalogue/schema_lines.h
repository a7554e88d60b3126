// What the studio makes of published documents, told in lines of JSON for people who look after the reader.
#pragma once

#include <QByteArrayList>
#include <QString>

namespace sorvan::catalogue {

/// One line for the document that a file holds, or for each row of a catalogue page: {"file","id","model"} for one that
/// is accepted, {"file","id","refused","missing"} for one that is not. Each ends with a line feed. Never throws.
QByteArrayList schemaLines(const QString& file, const QByteArray& bytes);

}  // namespace sorvan::catalogue
