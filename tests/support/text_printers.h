// How Qt's types are told in a failed test.
#pragma once

#include <ostream>

#include <QByteArray>
#include <QJsonValue>
#include <QString>
#include <QUrl>
#include <QUuid>

QT_BEGIN_NAMESPACE
inline void PrintTo(const QString& text, std::ostream* out) { *out << '"' << text.toStdString() << '"'; }
inline void PrintTo(const QByteArray& bytes, std::ostream* out) {
  *out << '"' << bytes.left(400).toStdString() << '"';
  if (bytes.size() > 400) *out << "… (" << bytes.size() << " bytes)";
}
inline void PrintTo(const QUrl& url, std::ostream* out) { *out << url.toString().toStdString(); }
inline void PrintTo(const QUuid& id, std::ostream* out) { *out << id.toString().toStdString(); }
QT_END_NAMESPACE
