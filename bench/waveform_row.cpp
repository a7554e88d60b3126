// The waveform of a long sound against the bare decoding of the same range by the usual command.
#include <random>

#include "bench/row.h"
#include "core/waveform.h"
#include "platform/sound_file.h"

namespace sorvan::bench {
namespace {

constexpr int rate = 48'000;
constexpr int pieceSeconds = 30;
constexpr int repeats = 20;

/// Half a minute of tones with noise in stereo, then the same packets over and over: encoding all would take too long.
void makeSound(const QDir& data) {
  const QString piece = data.filePath(QStringLiteral("piece.m4a"));
  std::mt19937 random(3);
  platform::SoundFileWriter writer(piece, rate, 2);
  std::vector<float> second(size_t(rate) * 2);
  for (int index = 0; index < pieceSeconds; ++index) {
    for (size_t sample = 0; sample < second.size(); ++sample)
      second[sample] =
          0.4F * std::sin(float(sample) * 0.02F * float(index % 7 + 1)) + 0.1F * (float(random() & 1023) / 1023 - 0.5F);
    writer.write(second);
  }
  writer.finish();
  if (!runCommand({QStringLiteral("ffmpeg"), QStringLiteral("-nostdin"), QStringLiteral("-stream_loop"),
                   QString::number(repeats - 1), QStringLiteral("-i"), piece, QStringLiteral("-c"),
                   QStringLiteral("copy"), data.filePath(QStringLiteral("sound.m4a"))}))
    throw std::runtime_error("the sound could not be made");
}

Contestants contestants(const QDir& data) {
  const QString sound = data.filePath(QStringLiteral("sound.m4a"));
  return {.ours = [=] { return timed([&] {
                          core::waveformPicture(sound, {700, 420});
                        }); },
          .peer =
              [=] {
                QStringList command{QStringLiteral("ffmpeg"), QStringLiteral("-nostdin"), QStringLiteral("-i"), sound};
                command << QStringLiteral("-t") << QString::number(int(core::waveformSeconds)) << QStringLiteral("-vn")
                        << QStringLiteral("-ac") << QStringLiteral("1") << QStringLiteral("-ar")
                        << QString::number(core::waveformRate) << QStringLiteral("-f") << QStringLiteral("s16le")
                        << QStringLiteral("-y") << QStringLiteral("/dev/null");
                return timedCommand(command);
              },
          .limit = {}};
}

const RegisterRow row{{.name = QStringLiteral("waveform-10min"), .make = makeSound, .measure = contestants}};

}  // namespace
}  // namespace sorvan::bench
