// What a file is by its first bytes, and the extension that its stored file gets. A line of text may stand before the
// bytes: the extension that was announced.
#include <QBuffer>

#include "fuzz/reading.h"
#include "generation/media_kind.h"
#include "platform/picture_header.h"

namespace sorvan::fuzz {

using namespace Qt::StringLiterals;

static bool isPicture(const QString& ext) {
  static const QStringList pictures{u"png"_s, u"jpg"_s, u"webp"_s, u"gif"_s, u"tif"_s, u"avif"_s, u"heic"_s};
  return pictures.contains(ext);
}

static bool isKnown(const QString& ext) {
  static const QStringList others{u"mp4"_s,  u"mov"_s,  u"m4v"_s, u"webm"_s, u"mp3"_s, u"wav"_s,
                                  u"aiff"_s, u"flac"_s, u"ogg"_s, u"m4a"_s,  u"aac"_s};
  return isPicture(ext) || others.contains(ext);
}

static std::optional<QString> found(QByteArray bytes) {
  const auto ext = generation::extensionOfBytes(bytes);
  require(!ext || isKnown(*ext), "an extension found is one of those known");
  require(ext == generation::extensionOfBytes(
                     QByteArrayView(bytes).first(std::min<qsizetype>(bytes.size(), generation::mediaKindBytes))),
          "the first bytes are enough");
  QBuffer file(&bytes);
  file.open(QIODevice::ReadOnly);
  if (platform::announcedKind(file))
    require(!ext || isPicture(*ext), "what opens as a picture is not stored as a clip");
  return ext;
}

}  // namespace sorvan::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace sorvan;
  const QByteArray bytes = fuzz::Input(data, size).rest();
  fuzz::found(bytes);
  const qsizetype end = bytes.indexOf('\n');
  if (end < 0) return 0;
  const QString announced = QString::fromUtf8(bytes.first(end));
  const auto ext = fuzz::found(bytes.sliced(end + 1));
  const QString fitting = generation::fittingExtension(announced, ext);
  fuzz::require(fitting == fitting.toLower(), "an extension is in lower case");
  fuzz::require(generation::fittingExtension(fitting, ext) == fitting, "an extension that fits goes on fitting");
  return 0;
}
