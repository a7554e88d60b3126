// The sounds that the sandbox makes, decoded by FFmpeg.
#include <gtest/gtest.h>

#include "sandbox/client.h"
#include "sandbox/media_probe.h"

namespace sorvan::test {
namespace {

const QString effects = QStringLiteral("fal-ai/elevenlabs/sound-effects/v2");
const QString music = QStringLiteral("fal-ai/stable-audio-25/text-to-audio");
const QString speech = QStringLiteral("fal-ai/minimax/speech-2.8-hd");
const QString demucs = QStringLiteral("fal-ai/demucs");

QByteArray audioOf(const Client& client, const WireAnswer& result, const QString& field = QStringLiteral("audio")) {
  EXPECT_EQ(result.status, 200) << result.body.toStdString();
  return client.download(result.json().value(field));
}

QString uploadedMusic(const Client& client) {
  const QByteArray bytes =
      audioOf(client, client.run(music, inputWith(QStringLiteral("drums"), 1, {{QStringLiteral("seconds_total"), 2}})));
  return client.upload(bytes, "audio/mpeg", QStringLiteral("sound.mp3"));
}

TEST(SandboxSounds, MusicEffectAndSpeechLastAsLongAsAskedAndAreNotSilent) {
  const SandboxProcess sandbox;
  const Client client(sandbox);
  struct Case {
    QString endpoint;
    QJsonObject input;
    double seconds;
  };
  const std::vector<Case> cases{
      {music, inputWith(QStringLiteral("calm"), 1, {{QStringLiteral("seconds_total"), 3}}), 3},
      {QStringLiteral("elevenlabs/music/v2.5"),
       inputWith(QStringLiteral("calm"), 1, {{QStringLiteral("music_length_ms"), 2500}}), 2.5},
      {effects, {{QStringLiteral("text"), QStringLiteral("a knock")}, {QStringLiteral("duration_seconds"), 1.5}}, 1.5},
      {effects, {{QStringLiteral("text"), QStringLiteral("rain")}, {QStringLiteral("duration_seconds"), 1}}, 1},
      {speech, inputWith(QStringLiteral("twenty-eight characters here"), 1), 2}};
  for (const Case& each : cases) {
    const auto sound = decodeSound(audioOf(client, client.run(each.endpoint, each.input)));
    ASSERT_TRUE(sound) << each.endpoint.toStdString();
    EXPECT_NEAR(sound->seconds, each.seconds, 0.1) << each.endpoint.toStdString();
    EXPECT_GT(sound->loudness, 0.02) << each.endpoint.toStdString();
  }
}

TEST(SandboxSounds, TwoSeedsDifferAndOneRepeatsByteForByte) {
  const SandboxProcess sandbox;
  const Client client(sandbox);
  QList<QByteArray> made;
  for (const int seed : {1, 2, 1})
    made.append(audioOf(
        client, client.run(music, inputWith(QStringLiteral("x"), seed, {{QStringLiteral("seconds_total"), 1}}))));
  EXPECT_EQ(made[0], made[2]);
  EXPECT_NE(made[0], made[1]);
}

TEST(SandboxSounds, Mp3AndWavAreWhatTheyClaim) {
  const SandboxProcess sandbox;
  const Client client(sandbox);
  const auto made = [&](const QString& format) {
    return client.run(music,
                      inputWith(QStringLiteral("x"), 1,
                                {{QStringLiteral("seconds_total"), 1}, {QStringLiteral("output_format"), format}}));
  };
  const WireAnswer mp3 = made(QStringLiteral("mp3_44100_128"));
  EXPECT_EQ(mp3.json()[QStringLiteral("audio")][QStringLiteral("content_type")].toString(),
            QStringLiteral("audio/mpeg"));
  EXPECT_TRUE(decodeSound(audioOf(client, mp3))->codec.startsWith(QStringLiteral("mp3")));
  const WireAnswer wav = made(QStringLiteral("wav"));
  EXPECT_EQ(wav.json()[QStringLiteral("audio")][QStringLiteral("content_type")].toString(),
            QStringLiteral("audio/wav"));
  const auto sound = decodeSound(audioOf(client, wav));
  EXPECT_EQ(sound->codec, QStringLiteral("pcm_s16le"));
  EXPECT_NEAR(sound->seconds, 1, 0.001);
}

TEST(SandboxSounds, TwoVoicesDiffer) {
  const SandboxProcess sandbox;
  const Client client(sandbox);
  QList<QByteArray> made;
  for (const char16_t* voice : {u"Rachel", u"Brian"})
    made.append(audioOf(client, client.run(QStringLiteral("elevenlabs/tts/eleven-v4"),
                                           {{QStringLiteral("text"), QStringLiteral("hello")},
                                            {QStringLiteral("voice"), QString::fromUtf16(voice)}})));
  EXPECT_NE(made[0], made[1]);
}

TEST(SandboxSounds, SeveralSamplesAreAListOfDifferentSounds) {
  const SandboxProcess sandbox;
  const Client client(sandbox);
  const WireAnswer result = client.run(QStringLiteral("mirelo-ai/sfx2.0/text-to-audio"),
                                       {{QStringLiteral("text_prompt"), QStringLiteral("rain")},
                                        {QStringLiteral("num_samples"), 2},
                                        {QStringLiteral("duration"), 1},
                                        {QStringLiteral("upload_audio_format"), QStringLiteral("mp3")}});
  const QJsonArray sounds = result.json().value(QStringLiteral("audio")).toArray();
  ASSERT_EQ(sounds.size(), 2);
  EXPECT_NE(client.download(sounds[0]), client.download(sounds[1]));
  EXPECT_NEAR(decodeSound(client.download(sounds[0]))->seconds, 1, 0.1);
}

TEST(SandboxSounds, ASplitGivesEveryStemAsAFieldOfItsOwn) {
  const SandboxProcess sandbox;
  const Client client(sandbox);
  const WireAnswer result = client.run(demucs, {{QStringLiteral("audio_url"), uploadedMusic(client)}});
  QSet<QByteArray> distinct;
  for (const char16_t* stem : {u"vocals", u"drums", u"bass", u"other", u"guitar", u"piano"}) {
    const QByteArray bytes = audioOf(client, result, QString::fromUtf16(stem));
    const auto sound = decodeSound(bytes);
    ASSERT_TRUE(sound) << QString::fromUtf16(stem).toStdString();
    EXPECT_NEAR(sound->seconds, 2, 0.1);
    EXPECT_GT(sound->loudness, 0.0005) << QString::fromUtf16(stem).toStdString();
    distinct.insert(bytes);
  }
  EXPECT_EQ(distinct.size(), 6);
}

TEST(SandboxSounds, ASplitGivesOnlyTheStemsThatWereAskedFor) {
  const SandboxProcess sandbox;
  const Client client(sandbox);
  const WireAnswer result =
      client.run(demucs, {{QStringLiteral("audio_url"), uploadedMusic(client)},
                          {QStringLiteral("stems"), QJsonArray{QStringLiteral("vocals"), QStringLiteral("bass")}}});
  EXPECT_EQ(result.json().keys(), (QStringList{QStringLiteral("bass"), QStringLiteral("vocals")}));
}

TEST(SandboxSounds, APulledOutSoundComesWithTheRest) {
  const SandboxProcess sandbox;
  const Client client(sandbox);
  const WireAnswer result =
      client.run(QStringLiteral("fal-ai/sam-audio/separate"),
                 inputWith(QStringLiteral("the drums"), 1, {{QStringLiteral("audio_url"), uploadedMusic(client)}}));
  EXPECT_NE(audioOf(client, result, QStringLiteral("target")), audioOf(client, result, QStringLiteral("residual")));
}

TEST(SandboxSounds, ALongerSoundIsLongerByWhatWasAsked) {
  const SandboxProcess sandbox;
  const Client client(sandbox);
  const WireAnswer result = client.run(
      QStringLiteral("fal-ai/stable-audio-3/medium/audio-outpainting"),
      inputWith(QStringLiteral("more"), 1,
                {{QStringLiteral("audio_url"), uploadedMusic(client)}, {QStringLiteral("extend_seconds_after"), 1.5}}));
  EXPECT_NEAR(decodeSound(audioOf(client, result))->seconds, 3.5, 0.15);
}

TEST(SandboxSounds, ASoundForAClipLastsAsLongAsTheClip) {
  const SandboxProcess sandbox;
  const Client client(sandbox);
  const WireAnswer clip = client.run(
      QStringLiteral("kiln/ember-v2/text-to-video"),
      inputWith(QStringLiteral("sea"), 1,
                {{QStringLiteral("duration"), 1.5}, {QStringLiteral("resolution"), QStringLiteral("240p")}}));
  const QString address =
      client.upload(audioOf(client, clip, QStringLiteral("video")), "video/mp4", QStringLiteral("clip.mp4"));
  const auto sound = decodeSound(audioOf(
      client, client.run(QStringLiteral("sonilo/v1.1/video-to-music"), {{QStringLiteral("video_url"), address}})));
  EXPECT_NEAR(sound->seconds, 1.5, 0.1);
  EXPECT_GT(sound->loudness, 0.02);
}

TEST(SandboxSounds, ACleanedSoundKeepsItsLength) {
  const SandboxProcess sandbox;
  const Client client(sandbox);
  const WireAnswer result =
      client.run(QStringLiteral("veed/clean-audio"), {{QStringLiteral("audio_url"), uploadedMusic(client)}});
  EXPECT_NEAR(decodeSound(audioOf(client, result))->seconds, 2, 0.1);
}

TEST(SandboxSounds, AnInputThatIsNoSoundIsRefusedInTheResult) {
  const SandboxProcess sandbox;
  const Client client(sandbox);
  const QString address = client.upload("not a sound at all", "audio/mpeg", QStringLiteral("sound.mp3"));
  const WireAnswer result = client.run(demucs, {{QStringLiteral("audio_url"), address}});
  EXPECT_EQ(result.status, 422);
  EXPECT_EQ(sandbox.postsTo(demucs), 1);
}

}  // namespace
}  // namespace sorvan::test
