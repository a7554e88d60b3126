#include "sound_maker.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <stdexcept>

#include "media_reader.h"
#include "media_writer.h"
#include "wish.h"

namespace sandbox {

namespace {

MadeFile soundFile(const Sound& sound, const QByteArray& format, const QString& field) {
  MadeFile file;
  file.field = field;
  file.bytes = encodeSound(sound, format);
  file.extension = QString::fromLatin1(format);
  file.facts = {{QStringLiteral("duration"), sound.seconds()},
                {QStringLiteral("sample_rate"), sound.rate},
                {QStringLiteral("channels"), sound.channels}};
  return file;
}

const QString audio = QStringLiteral("audio");

QString voiceOf(const QJsonObject& input) {
  for (const char16_t* field : {u"voice", u"speaker", u"reference_id"})
    if (const QString voice = input.value(QString::fromUtf16(field)).toString(); !voice.isEmpty()) return voice;
  return input.value(QStringLiteral("voice_setting")).toObject().value(QStringLiteral("voice_id")).toString();
}

QByteArray inputMedia(const WorkOrder& order, const MediaShelf& shelf, const QString& field) {
  const QList<QUrl> addresses = addressesOf(order.input, {field, field + QLatin1Char('s')});
  if (addresses.isEmpty()) throw refusal(QStringLiteral("missing"), field, QStringLiteral("Field required"));
  const auto bytes = shelf.read(addresses.first());
  if (bytes) return *bytes;
  throw refusal(QStringLiteral("file_download_error"), field,
                QStringLiteral("Failed to download the file. Please check if the URL is accessible and try again."));
}

Sound inputSound(const WorkOrder& order, const MediaShelf& shelf) {
  const QString field = QStringLiteral("audio_url");
  try {
    const auto sound = readSound(inputMedia(order, shelf, field));
    if (sound && sound->frames() > 0) return *sound;
  } catch (const std::runtime_error&) {
  }
  throw refusal(QStringLiteral("unsupported_audio_format"), field, QStringLiteral("Unsupported audio format."));
}

// What of the sound lies below this frequency, gently (6 dB an octave).
Sound below(const Sound& sound, double hertz) {
  Sound low = sound;
  const auto share = float(1 - std::exp(-2 * M_PI * hertz / sound.rate));
  std::array<float, 2> held{};
  for (std::size_t i = 0; i < low.samples.size(); ++i) {
    float& memory = held[i % std::size_t(sound.channels)];
    memory += share * (sound.samples[i] - memory);
    low.samples[i] = memory;
  }
  return low;
}

Sound difference(const Sound& from, const Sound& taken) {
  Sound rest = from;
  for (std::size_t i = 0; i < rest.samples.size(); ++i) rest.samples[i] -= taken.samples[i];
  return rest;
}

struct Band {
  const char16_t* stem;
  double upTo;  // Hz; 0 for the rest
};
// The bands of one sound add up to it again.
constexpr std::array bands{Band{u"bass", 160},    Band{u"piano", 420},   Band{u"other", 950},
                           Band{u"vocals", 2800}, Band{u"guitar", 6000}, Band{u"drums", 0}};

Sound concatenated(std::initializer_list<Sound> parts) {
  Sound whole{44100, 2, {}};
  for (const Sound& part : parts) {
    const Sound stereo = asStereo(part);
    whole.samples.insert(whole.samples.end(), stereo.samples.begin(), stereo.samples.end());
  }
  return whole;
}

double lengthAt(const QJsonObject& input, const char16_t* field) {
  return qBound(0.0, input.value(QString::fromUtf16(field)).toDouble(), 190.0);
}

}  // namespace

namespace {

// As many sounds as the input asks for, each with a seed of its own.
Made severally(const WorkOrder& order, const std::function<Sound(qint64 seed)>& play) {
  const int count = soundCountOf(order.input);
  Made made;
  for (int i = 0; i < count; ++i) {
    const Sound sound = play(order.seed + i);
    made.files.append(soundFile(sound, soundFormatOf(order.input), audio));
    made.files.last().inArray = count > 1;
    made.beside = {{QStringLiteral("seed"), order.seed},
                   {QStringLiteral("duration_ms"), std::round(sound.seconds() * 1000)}};
  }
  return made;
}

}  // namespace

Made makeSound(const WorkOrder& order) {
  const SoundWish plain{wordsOf(order.input), order.seed, secondsOf(order.input, order.product), voiceOf(order.input)};
  if (plain.words.isEmpty())
    throw refusal(QStringLiteral("missing"), QStringLiteral("prompt"), QStringLiteral("Field required"));
  return severally(order, [&](qint64 seed) {
    SoundWish wish = plain;
    wish.seed = seed;
    if (order.product == Product::Speech) return speak(wish);
    return order.product == Product::Music ? playMusic(wish) : playEffect(wish);
  });
}

Made splitIntoStems(const WorkOrder& order, const MediaShelf& shelf) {
  Sound left = inputSound(order, shelf);
  const QJsonArray wanted = order.input.value(QStringLiteral("stems")).toArray();
  Made made;
  for (const Band& band : bands) {
    const Sound stem = band.upTo > 0 ? below(left, band.upTo) : left;
    if (band.upTo > 0) left = difference(left, stem);
    const QString name = QString::fromUtf16(band.stem);
    if (wanted.isEmpty() || wanted.contains(name)) made.files.append(soundFile(stem, soundFormatOf(order.input), name));
  }
  return made;
}

Made pullSoundOut(const WorkOrder& order, const MediaShelf& shelf) {
  const Sound sound = inputSound(order, shelf);
  const Sound target = difference(below(sound, 2500), below(sound, 250));
  const QByteArray format = soundFormatOf(order.input);
  return {{soundFile(target, format, QStringLiteral("target")),
           soundFile(difference(sound, target), format, QStringLiteral("residual"))},
          {}};
}

Made cleanSound(const WorkOrder& order, const MediaShelf& shelf) {
  Sound sound = below(inputSound(order, shelf), 5000);
  normalise(sound, 0.8F);
  return {{soundFile(sound, soundFormatOf(order.input), audio)}, {}};
}

Made lengthenSound(const WorkOrder& order, const MediaShelf& shelf) {
  const double before = lengthAt(order.input, u"extend_seconds_before");
  double after = lengthAt(order.input, u"extend_seconds_after") + lengthAt(order.input, u"append_duration");
  if (before + after <= 0) after = 5;
  const QString words = wordsOf(order.input);
  const Sound whole = concatenated({playMusic({words, order.seed, before, {}}), inputSound(order, shelf),
                                    playMusic({words, order.seed + 1, after, {}})});
  return {{soundFile(whole, soundFormatOf(order.input), audio)}, {{QStringLiteral("seed"), order.seed}}};
}

Made makeSoundForClip(const WorkOrder& order, const MediaShelf& shelf) {
  const QString field = QStringLiteral("video_url");
  const QByteArray clip = inputMedia(order, shelf, field);
  double seconds = 0;
  try {
    seconds = factsOfClip(clip).seconds;
  } catch (const std::runtime_error&) {
    throw refusal(QStringLiteral("unsupported_video_format"), field, QStringLiteral("Unsupported video format."));
  }
  const bool music = order.endpoint.contains(QStringLiteral("music"));
  return severally(order, [&](qint64 seed) {
    const SoundWish wish{wordsOf(order.input), seed, qBound(0.5, seconds, 190.0), {}};
    return music ? playMusic(wish) : playEffect(wish);
  });
}

}  // namespace sandbox
