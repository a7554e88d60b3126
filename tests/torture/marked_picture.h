// A picture of which only marked areas were to change, compared with the one it was made from.
#pragma once

#include <QJsonArray>
#include <QString>

namespace sorvan::torture {

// What is wrong with `file`, a result that was to be kept to these boxes ([x, y, width, height] as fractions) of
// `original`; empty when nothing is: it has the original's size, every pixel outside is the original's, and inside
// something changed.
QString faultOfMarkedPicture(const QString& file, const QString& original, const QJsonArray& boxes);

}  // namespace sorvan::torture
