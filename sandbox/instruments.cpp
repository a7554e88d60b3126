// The synthesis behind speech, music and effects.
#include <cmath>

#include "randomness.h"
#include "sound_maker.h"

namespace sandbox {

namespace {

constexpr double turn = 2 * M_PI;

Sound silence(double seconds) {
  Sound sound;
  sound.samples.assign(std::size_t(std::llround(seconds * sound.rate)), 0.0F);
  return sound;
}

struct Note {
  double start;  // seconds
  double seconds;
  double frequency;
  double loudness;
  double attack;  // seconds until it is full
  double decay;   // the smaller, the sooner it fades
};

// A tone with its first overtones, added to the sound.
void play(Sound& sound, const Note& note) {
  const auto begin = std::size_t(note.start * sound.rate);
  const auto count = std::size_t(note.seconds * sound.rate);
  for (std::size_t i = 0; i < count && begin + i < sound.samples.size(); ++i) {
    const double t = double(i) / sound.rate;
    const double envelope =
        std::min(1.0, t / note.attack) * std::exp(-t / note.decay) * std::min(1.0, (note.seconds - t) / 0.02);
    const double phase = turn * note.frequency * t;
    const double wave = std::sin(phase) + 0.4 * std::sin(2 * phase) + 0.2 * std::sin(3 * phase);
    sound.samples[begin + i] += float(note.loudness * envelope * wave);
  }
}

struct Burst {
  double start;
  double seconds;
  double loudness;
  double brightness;  // 0 to 1: how much of the high tones stays
};

// Noise that swells at once and fades, added to the sound.
void rustle(Sound& sound, const Burst& burst, Randomness& chance) {
  const auto begin = std::size_t(burst.start * sound.rate);
  const auto count = std::size_t(burst.seconds * sound.rate);
  double smooth = 0;
  for (std::size_t i = 0; i < count && begin + i < sound.samples.size(); ++i) {
    const double progress = double(i) / double(count);
    smooth += burst.brightness * (chance.between(-1, 1) - smooth);
    sound.samples[begin + i] += float(burst.loudness * smooth * std::exp(-5 * progress) * std::min(1.0, progress * 60));
  }
}

double pitch(int semitonesAboveA) { return 220 * std::pow(2.0, semitonesAboveA / 12.0); }

quint64 seedOf(const SoundWish& wish) { return mixed(hashOf(wish.words), quint64(wish.seed)); }

// One syllable: the harmonics of a voice, louder around two formants.
struct Syllable {
  double start, seconds;
  double voice;        // Hz
  double formants[2];  // Hz
};

void say(Sound& sound, const Syllable& syllable) {
  constexpr int harmonics = 18;
  double weights[harmonics];
  for (int h = 0; h < harmonics; ++h) {
    const double frequency = syllable.voice * (h + 1);
    weights[h] = 0.03 / (h + 1);
    for (const double formant : syllable.formants)
      weights[h] += std::exp(-std::pow((frequency - formant) / 170, 2)) * 0.2;
  }
  const auto begin = std::size_t(syllable.start * sound.rate);
  const auto count = std::size_t(syllable.seconds * sound.rate);
  for (std::size_t i = 0; i < count && begin + i < sound.samples.size(); ++i) {
    const double t = double(i) / sound.rate;
    const double envelope = std::sin(M_PI * t / syllable.seconds);
    const double phase = turn * syllable.voice * (1 - 0.06 * t / syllable.seconds) * t;
    double wave = 0;
    for (int h = 0; h < harmonics; ++h) wave += weights[h] * std::sin(phase * (h + 1));
    sound.samples[begin + i] += float(envelope * wave);
  }
}

bool soundsOn(const QString& words) {
  for (const char16_t* word :
       {u"rain", u"wind", u"sea", u"wave", u"river", u"ambien", u"hum", u"crowd", u"forest", u"traffic"})
    if (words.contains(QString::fromUtf16(word), Qt::CaseInsensitive)) return true;
  return false;
}

void layAmbience(Sound& sound, Randomness& chance) {
  const double brightness = chance.between(0.02, 0.2);
  const double swell = chance.between(0.15, 0.6);
  double smooth = 0;
  for (std::size_t i = 0; i < sound.samples.size(); ++i) {
    const double t = double(i) / sound.rate;
    smooth += brightness * (chance.between(-1, 1) - smooth);
    sound.samples[i] += float(smooth * (0.6 + 0.4 * std::sin(turn * swell * t)));
  }
}

void layEvents(Sound& sound, double seconds, Randomness& chance) {
  const double base = chance.between(90, 500);
  for (double at = 0.02; at < seconds; at += chance.between(0.25, 0.9)) {
    rustle(sound, {at, chance.between(0.12, 0.5), 0.8, chance.between(0.1, 0.8)}, chance);
    play(sound, {at, chance.between(0.1, 0.4), base * chance.between(0.7, 1.6), 0.5, 0.004, 0.12});
  }
}

}  // namespace

Sound speak(const SoundWish& wish) {
  Sound sound = silence(wish.seconds);
  Randomness chance(seedOf(wish));
  const double voice = 95 + double(hashOf(wish.voice) % 130);
  for (double at = 0.03; at < wish.seconds - 0.08;) {
    const int syllables = 1 + chance.below(4);
    for (int i = 0; i < syllables && at < wish.seconds - 0.08; ++i) {
      const double length = std::min(chance.between(0.11, 0.21), wish.seconds - at);
      const double tone = voice * chance.between(0.92, 1.12);
      say(sound, {at, length, tone, {chance.between(280, 800), chance.between(900, 2300)}});
      if (chance.below(3) == 0) rustle(sound, {at, 0.05, 0.25, 0.9}, chance);
      at += length * 0.93;
    }
    at += chance.between(0.04, 0.13);
  }
  normalise(sound, 0.7F);
  return sound;
}

Sound playMusic(const SoundWish& wish) {
  static constexpr int minorScale[] = {0, 2, 3, 5, 7, 8, 10};
  static constexpr int roots[] = {0, 5, 3, 4, 0, 2};  // steps of the scale
  Sound sound = silence(wish.seconds);
  Randomness chance(seedOf(wish));
  const int key = chance.below(12) - 7;
  const double beat = 60 / chance.between(84, 132);
  const auto tone = [&](int step) { return pitch(key + minorScale[step % 7] + 12 * (step / 7)); };
  int chordIndex = chance.below(6);
  for (double bar = 0; bar < wish.seconds; bar += beat * 4) {
    const int root = roots[chordIndex++ % 6];
    for (const int third : {0, 2, 4}) play(sound, {bar, beat * 4, tone(root + third), 0.10, 0.15, 6});
    play(sound, {bar, beat * 2, tone(root) / 2, 0.28, 0.01, 0.8});
    play(sound, {bar + beat * 2, beat * 2, tone(root) / 2, 0.24, 0.01, 0.8});
    for (int eighth = 0; eighth < 8; ++eighth) {
      const double at = bar + eighth * beat / 2;
      if (chance.below(5) < 3) play(sound, {at, beat, tone(7 + root + chance.below(5)), 0.16, 0.006, 0.28});
      rustle(sound, {at, 0.05, eighth % 2 == 0 ? 0.10 : 0.18, 0.95}, chance);
      if (eighth % 4 == 0) play(sound, {at, 0.22, 52, 0.5, 0.003, 0.09});
    }
  }
  normalise(sound, 0.75F);
  return sound;
}

Sound playEffect(const SoundWish& wish) {
  Sound sound = silence(wish.seconds);
  Randomness chance(seedOf(wish));
  if (soundsOn(wish.words)) {
    layAmbience(sound, chance);
  } else {
    layEvents(sound, wish.seconds, chance);
  }
  normalise(sound, 0.75F);
  return sound;
}

}  // namespace sandbox
