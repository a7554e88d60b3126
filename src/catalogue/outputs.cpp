#include "catalogue/outputs.h"

#include <QFileInfo>
#include <QJsonArray>

#include <array>

#include "base/sorvan_error.h"
#include "catalogue/room.h"
#include "catalogue/service_hosts.h"
#include "catalogue/texts.h"
#include "core/plain_extension.h"

namespace sorvan::catalogue {

using namespace Qt::StringLiterals;

namespace {

/// More than any model returns; a result that lists more is not believed.
constexpr qsizetype mostOutputs = 64;

struct ContentType {
  const char16_t* type;
  const char16_t* ext;
};

constexpr std::array contentTypes{
    ContentType{u"image/png", u"png"},   ContentType{u"image/jpeg", u"jpg"},      ContentType{u"image/webp", u"webp"},
    ContentType{u"video/mp4", u"mp4"},   ContentType{u"video/quicktime", u"mov"}, ContentType{u"video/webm", u"webm"},
    ContentType{u"audio/mpeg", u"mp3"},  ContentType{u"audio/mp3", u"mp3"},       ContentType{u"audio/wav", u"wav"},
    ContentType{u"audio/x-wav", u"wav"}, ContentType{u"audio/mp4", u"m4a"},       ContentType{u"audio/aac", u"aac"},
    ContentType{u"audio/flac", u"flac"}};

constexpr std::array sendableTypes{
    ContentType{u"audio/mpeg", u"mp3"},      ContentType{u"audio/wav", u"wav"},   ContentType{u"audio/mp4", u"m4a"},
    ContentType{u"audio/aac", u"aac"},       ContentType{u"audio/aiff", u"aif"},  ContentType{u"audio/aiff", u"aiff"},
    ContentType{u"audio/flac", u"flac"},     ContentType{u"audio/x-caf", u"caf"}, ContentType{u"video/mp4", u"mp4"},
    ContentType{u"video/quicktime", u"mov"}, ContentType{u"video/mp4", u"m4v"},   ContentType{u"image/png", u"png"},
    ContentType{u"image/jpeg", u"jpg"}};

struct Found {
  std::vector<QJsonObject> entries;
  QString ext;
};

std::vector<QJsonObject> objectsOf(const QJsonValue& value) {
  std::vector<QJsonObject> objects;
  const QJsonArray array = value.toArray();
  if (array.size() > mostOutputs) return objects;
  for (const QJsonValue& each : array) {
    if (!each.isObject()) return {};
    objects.push_back(each.toObject());
  }
  return objects;
}

/// The first usual place that holds media.
std::optional<Found> foundIn(const QJsonObject& result) {
  if (auto images = objectsOf(result.value(u"images"_s)); !images.empty()) return Found{images, u"png"_s};
  const std::array<std::pair<QString, QString>, 4> places{
      {{u"image"_s, u"png"_s}, {u"video"_s, u"mp4"_s}, {u"audio"_s, u"mp3"_s}, {u"audio_file"_s, u"mp3"_s}}};
  for (const auto& [key, ext] : places) {
    if (result.value(key).isObject()) return Found{{result.value(key).toObject()}, ext};
  }
  if (auto sounds = objectsOf(result.value(u"audio"_s)); !sounds.empty()) return Found{sounds, u"mp3"_s};
  return std::nullopt;
}

QString extensionFor(const QJsonObject& entry, const QUrl& url, const QString& usual) {
  if (const auto known = extensionOfContentType(entry.value(u"content_type"_s).toString())) return *known;
  const QString fromPath = QFileInfo(url.path()).suffix().toLower();
  return isPlainExtension(fromPath) ? fromPath : usual;
}

OutputAddress addressOf(const QJsonObject& entry, const QString& usualExtension) {
  const QUrl url = httpsAddress(entry.value(u"url"_s).toString());
  if (url.isEmpty()) throw SorvanError(texts::invalidOutputAddress());
  OutputAddress address;
  address.url = url;
  address.ext = extensionFor(entry, url, usualExtension);
  const double bytes = entry.value(u"file_size"_s).toDouble();
  if (bytes >= 1 && bytes < 1e15) address.announcedBytes = static_cast<qint64>(bytes);
  return address;
}

/// The parts of a split sound, each under the name of its own field, in the order of the names.
std::vector<OutputAddress> namedParts(const QJsonObject& result) {
  std::vector<OutputAddress> parts;
  QStringList names = result.keys();
  names.sort();
  for (const QString& name : names) {
    const QJsonObject entry = result.value(name).toObject();
    if (httpsAddress(entry.value(u"url"_s).toString()).isEmpty()) continue;
    if (static_cast<qsizetype>(parts.size()) == mostOutputs) break;
    parts.push_back(addressOf(entry, u"mp3"_s));
    parts.back().label = name;
  }
  return parts;
}

}  // namespace

std::vector<OutputAddress> outputAddresses(const QJsonObject& result, NamedParts parts) {
  std::vector<OutputAddress> addresses;
  if (const auto found = foundIn(result)) {
    for (const QJsonObject& entry : found->entries) addresses.push_back(addressOf(entry, found->ext));
  } else if (parts == NamedParts::yes) {
    addresses = namedParts(result);
  }
  if (addresses.empty()) throw SorvanError(texts::noOutputs());
  return addresses;
}

std::optional<QString> extensionOfContentType(const QString& contentType) {
  const QString plain = contentType.section(u';', 0, 0).trimmed().toLower();
  for (const ContentType& known : contentTypes) {
    if (QStringView(known.type) == plain) return QString::fromUtf16(known.ext);
  }
  return std::nullopt;
}

std::optional<QString> contentTypeOfExtension(const QString& extension) {
  for (const ContentType& known : sendableTypes) {
    if (QStringView(known.ext) == extension) return QString::fromUtf16(known.type);
  }
  return std::nullopt;
}

}  // namespace sorvan::catalogue
