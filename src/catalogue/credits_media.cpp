#include "catalogue/credits_media.h"

#include <QFileInfo>
#include <QSet>

#include "catalogue/texts.h"
#include "catalogue/video_length.h"
#include "generation/media_kind.h"

namespace sorvan::catalogue {

using namespace Qt::StringLiterals;

namespace {

constexpr double usualSeconds = 5;

const QSet<QString>& knownExtensions() {
  static const QSet<QString> known{u"png"_s,  u"jpg"_s,  u"jpeg"_s, u"webp"_s, u"gif"_s,  u"heic"_s, u"mp4"_s, u"mov"_s,
                                   u"m4v"_s,  u"webm"_s, u"mp3"_s,  u"wav"_s,  u"flac"_s, u"m4a"_s,  u"aac"_s, u"ogg"_s,
                                   u"aiff"_s, u"aif"_s,  u"tiff"_s, u"tif"_s};
  return known;
}

/// Of a container that may hold a clip, a sound's own name.
std::optional<QString> soundExtension(QByteArrayView start) {
  const auto found = extensionOfBytes(start);
  if (found && (*found == u"mp4"_s || *found == u"m4v"_s || *found == u"mov"_s)) return u"m4a"_s;
  static const QSet<QString> sounds{u"mp3"_s, u"wav"_s, u"flac"_s, u"m4a"_s, u"ogg"_s, u"aac"_s, u"aiff"_s};
  return found && sounds.contains(*found) ? found : std::nullopt;
}

void fillDefault(TextByKey& options, const FalModel& model, const QString& field) {
  const Setting* setting = model.setting(field);
  if (setting && !options.contains(field) && setting->defaultValue) options.insert(field, *setting->defaultValue);
}

}  // namespace

QString fileExtension(const QUrl& address, QByteArrayView start, MediaType made) {
  const QString ext = QFileInfo(address.path()).suffix().toLower();
  if (knownExtensions().contains(ext)) return ext;
  if (made == MediaType::audio) return soundExtension(start).value_or(u"mp3"_s);
  return made == MediaType::video ? u"mp4"_s : u"png"_s;
}

QString pricedLength(const GenerationRequest& request, const FalModel& model) {
  const QString given = request.options.value_or(TextByKey()).value(u"duration"_s);
  const Setting* setting = model.setting(u"duration"_s);
  if (!setting || video_length::isFixed(given)) return given;
  const QString usual = setting->defaultValue.value_or(QString());
  if (video_length::isFixed(usual)) return usual;
  return video_length::closest(usualSeconds, setting->values).value_or(given);
}

GenerationRequest withPricedOptions(const GenerationRequest& request, const FalModel& model, bool isPricedPerSecond) {
  TextByKey options = request.options.value_or(TextByKey());
  if (model.setting(u"duration"_s)) {
    const QString length = pricedLength(request, model);
    if (!length.isEmpty()) options.insert(u"duration"_s, length);
  }
  const bool isClip = model.output == MediaType::video;
  if (isPricedPerSecond && isClip && !video_length::isFixed(options.value(u"duration"_s)))
    throw SorvanError(texts::lengthNeeded());
  fillDefault(options, model, u"resolution"_s);
  fillDefault(options, model, u"quality"_s);
  GenerationRequest settled = request;
  if (!options.isEmpty()) settled.options = options;
  return settled;
}

}  // namespace sorvan::catalogue
