#include "catalogue/media_wholeness.h"

#include <QFile>
#include <QtEndian>

#include "base/sorvan_error.h"
#include "platform/clips.h"
#include "platform/pictures.h"
#include "platform/sounds.h"

namespace sorvan::catalogue {

using namespace Qt::StringLiterals;

namespace {

constexpr int mostBoxes = 100000;
constexpr qint64 boxHeaderBytes = 8;

enum class Claim { picture, clip, sound, other };

Claim claimOf(const QString& ext) {
  static const QStringList pictures{u"png"_s,  u"jpg"_s, u"jpeg"_s, u"webp"_s, u"gif"_s, u"tif"_s,
                                    u"tiff"_s, u"bmp"_s, u"heic"_s, u"heif"_s, u"avif"_s};
  static const QStringList clips{u"mp4"_s, u"mov"_s, u"m4v"_s, u"webm"_s, u"mkv"_s, u"avi"_s};
  static const QStringList sounds{u"mp3"_s, u"wav"_s,  u"m4a"_s, u"aac"_s,  u"flac"_s, u"ogg"_s,
                                  u"oga"_s, u"opus"_s, u"aif"_s, u"aiff"_s, u"caf"_s};
  if (pictures.contains(ext)) return Claim::picture;
  if (clips.contains(ext)) return Claim::clip;
  return sounds.contains(ext) ? Claim::sound : Claim::other;
}

bool opensAsClip(const QString& file) {
  try {
    const ClipFacts facts = probeClip(file);
    return facts.hasPicture || facts.hasSound;
  } catch (const SorvanError&) {
    return false;
  }
}

bool opensAsSound(const QString& file) {
  try {
    probeSound(file);
    return true;
  } catch (const SorvanError&) {
    return false;
  }
}

Wholeness told(std::optional<bool> reachesTheEnd) {
  if (!reachesTheEnd) return Wholeness::unknown;
  return *reachesTheEnd ? Wholeness::whole : Wholeness::cut;
}

/// The length of the box at the file's position, or nothing when it cannot be one. Zero means to the end.
std::optional<qint64> boxLength(QIODevice& file) {
  const QByteArray header = file.read(boxHeaderBytes);
  if (header.size() < boxHeaderBytes) return std::nullopt;
  const auto length = static_cast<qint64>(qFromBigEndian<quint32>(header.constData()));
  if (length == 0 || length >= boxHeaderBytes) return length;
  if (length != 1) return std::nullopt;
  const QByteArray longLength = file.read(8);
  if (longLength.size() < 8) return std::nullopt;
  const quint64 wide = qFromBigEndian<quint64>(longLength.constData());
  if (wide < 16 || wide > (quint64{1} << 62)) return std::nullopt;
  return static_cast<qint64>(wide);
}

}  // namespace

std::optional<bool> boxesReachTheEnd(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? boxesReachTheEnd(file) : std::nullopt;
}

std::optional<bool> boxesReachTheEnd(QIODevice& file) {
  if (file.peek(boxHeaderBytes).mid(4) != "ftyp") return std::nullopt;
  const qint64 size = file.size();
  qint64 position = 0;
  for (int box = 0; box < mostBoxes && position < size; ++box) {
    if (!file.seek(position)) return false;
    const auto length = boxLength(file);
    if (!length) return false;
    if (*length == 0) return true;
    position += *length;
  }
  return position == size;
}

std::optional<bool> riffReachesTheEnd(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? riffReachesTheEnd(file) : std::nullopt;
}

std::optional<bool> riffReachesTheEnd(QIODevice& file) {
  const QByteArray header = file.read(boxHeaderBytes);
  if (header.size() < boxHeaderBytes || !header.startsWith("RIFF")) return std::nullopt;
  const auto length = static_cast<qint64>(qFromLittleEndian<quint32>(header.constData() + 4));
  // A writer that streams cannot go back to note the length.
  if (length == 0 || length >= 0x7FFFFFFF) return std::nullopt;
  return file.size() >= length + boxHeaderBytes;
}

Wholeness wholenessOf(const QString& file, const QString& ext) {
  if (QFile(file).size() == 0) return Wholeness::cut;
  switch (claimOf(ext)) {
    case Claim::picture:
      return pictureIsWhole(file) ? Wholeness::whole : Wholeness::cut;
    case Claim::clip:
      return opensAsClip(file) ? told(boxesReachTheEnd(file)) : Wholeness::cut;
    case Claim::sound: {
      if (!opensAsSound(file)) return Wholeness::cut;
      const auto boxes = boxesReachTheEnd(file);
      return told(boxes ? boxes : riffReachesTheEnd(file));
    }
    case Claim::other:
      break;
  }
  return Wholeness::unknown;
}

}  // namespace sorvan::catalogue
