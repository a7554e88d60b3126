// Prints, one JSON line for each file, what the studio makes of it: the same measuring, look for transparency and
// checksum as at import. Ends with 0, or with 1 when any file failed.
#include <QCoreApplication>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

#include <cstdio>
#include <exception>
#include <utility>
#include <vector>

#include "base/checksum.h"
#include "base/sorvan_error.h"
#include "core/media_inspection.h"
#include "platform/pictures.h"

namespace {

using namespace sorvan;

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
  const core::MediaMetadata metadata = core::inspectMedia(path);
  const bool seeThrough = metadata.type == core::MediaType::image && platform::hasTransparency(path);
  return {{"file", path},
          {"type", core::rawValue(metadata.type)},
          {"width", metadata.width},
          {"height", metadata.height},
          {"duration", metadata.duration ? QJsonValue(*metadata.duration) : QJsonValue()},
          {"fileSize", qint64(metadata.fileSize)},
          {"mimeType", metadata.mimeType},
          {"seeThrough", seeThrough},
          {"checksum", base::sha256OfFile(path, {})}};
}

void print(const Fields& fields) {
  const QByteArray line = jsonLine(fields);
  std::fwrite(line.constData(), 1, size_t(line.size()), stdout);
}

bool printInspected(const QString& path) {
  try {
    print(inspected(path));
    return true;
  } catch (const std::exception& error) {
    print({{"file", path}, {"error", base::describe(error)}});
    return false;
  }
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  if (argc < 2) {
    std::fputs("usage: inspect FILE...\n", stderr);
    return 2;
  }
  bool allRead = true;
  for (int index = 1; index < argc; ++index) allRead = printInspected(QFile::decodeName(argv[index])) && allRead;
  return allRead ? 0 : 1;
}
