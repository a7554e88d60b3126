// Headers of pictures and clips that are read without a decoder.
#include <QBuffer>

#include "catalogue/media_wholeness.h"
#include "fuzz/reading.h"
#include "platform/picture_header.h"

namespace sorvan::fuzz {

static void checkFacts(const platform::ChunkFacts& facts) {
  require(facts.orientation >= 1 && facts.orientation <= 8, "a picture is turned in one of eight ways");
}

static void checkBoxes(const QByteArray& bytes, QBuffer& file) {
  const auto whole = catalogue::boxesReachTheEnd(file);
  require(whole.has_value() == (bytes.size() >= 8 && bytes.sliced(4).startsWith("ftyp")),
          "boxes are told of what begins as they do");
  file.seek(0);
  const auto riff = catalogue::riffReachesTheEnd(file);
  require(!riff || bytes.startsWith("RIFF"), "a RIFF file begins as one");
  if (riff && !whole) {
    QByteArray cut = bytes.first(bytes.size() - 1);
    QBuffer shorter(&cut);
    shorter.open(QIODevice::ReadOnly);
    require(*riff || !catalogue::riffReachesTheEnd(shorter).value_or(false), "a cut file does not become whole");
  }
}

}  // namespace sorvan::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace sorvan;
  QByteArray bytes = fuzz::Input(data, size).rest();
  QBuffer file(&bytes);
  file.open(QIODevice::ReadOnly);
  const auto kind = platform::announcedKind(file);
  fuzz::require(file.pos() == 0, "looking at a file's start leaves it there");
  fuzz::require(!kind || bytes.size() >= 3, "two bytes are no picture");
  fuzz::checkFacts(platform::pngChunkFacts(file));
  file.seek(0);
  fuzz::checkFacts(platform::webpChunkFacts(file));
  file.seek(0);
  const int orientation = platform::exifOrientation(bytes);
  fuzz::require(orientation >= 1 && orientation <= 8, "a picture is turned in one of eight ways");
  fuzz::checkBoxes(bytes, file);
  return 0;
}
