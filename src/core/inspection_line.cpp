#include "core/inspection_line.h"

#include <QJsonArray>
#include <QJsonDocument>

#include "base/checksum.h"
#include "base/sorvan_error.h"
#include "core/media_inspection.h"
#include "platform/pictures.h"

namespace sorvan::core {
namespace {

using Fields = std::vector<std::pair<const char*, QJsonValue>>;

/// A value as JSON text; the array is only there because a document holds no bare value.
QByteArray jsonText(const QJsonValue& value) {
  const QByteArray array = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
  return array.mid(1, array.size() - 2);
}

/// An object whose keys stand in the order given, which QJsonObject would not keep.
QByteArray jsonLine(const Fields& fields) {
  QByteArray line;
  for (const auto& [key, value] : fields)
    line += (line.isEmpty() ? "{\"" : ",\"") + QByteArray(key) + "\":" + jsonText(value);
  return line + "}\n";
}

Fields inspected(const QString& path) {
  const MediaMetadata metadata = inspectMedia(path);
  const bool seeThrough = metadata.type == MediaType::image && hasTransparency(path);
  return {{"file", path},
          {"type", rawValue(metadata.type)},
          {"width", metadata.width},
          {"height", metadata.height},
          {"duration", metadata.duration ? QJsonValue(*metadata.duration) : QJsonValue()},
          {"fileSize", qint64(metadata.fileSize)},
          {"mimeType", metadata.mimeType},
          {"seeThrough", seeThrough},
          {"checksum", sha256OfFile(path, {})}};
}

}  // namespace

InspectionLine inspectionLine(const QString& path) {
  try {
    return {jsonLine(inspected(path)), false};
  } catch (const std::exception& error) {
    return {jsonLine({{"file", path}, {"error", describe(error)}}), true};
  }
}

}  // namespace sorvan::core
