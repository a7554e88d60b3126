// Every kind of medium, from the request to the file.
#include <QImage>

#include "platform/clips.h"
#include "platform/pictures.h"
#include "platform/sounds.h"
#include "roundtrip/provider_bench.h"
#include "support/made_clips.h"

namespace sorvan::test {
namespace {

using namespace Qt::StringLiterals;

TEST_F(RoundTrip, MakesTwoPicturesOfTheAskedSize) {
  auto call = callFor(u"fal-ai/flux/schnell"_s, u"a lighthouse"_s);
  call.request.count = 2;
  call.request.size = u"1024x1280"_s;
  const auto outputs = generate(call);
  ASSERT_EQ(outputs.size(), 2u);
  for (const auto& output : outputs) {
    EXPECT_EQ(output.ext, u"png"_s);
    EXPECT_EQ(platform::probePicture(output.file)->size, QSize(1024, 1280));
  }
  EXPECT_EQ(outputs[0].seed, 7);
  EXPECT_EQ(sandbox.ledger().size(), 1);
  EXPECT_EQ(sandbox.mostPostsOfOneAttempt(), 1);
  EXPECT_FALSE(run->marked);
}

TEST_F(RoundTrip, EditsAnUploadedPicture) {
  const TemporaryFolder folder;
  QImage picture(300, 200, QImage::Format_RGB32);
  picture.fill(Qt::darkCyan);
  picture.save(folder / u"in.jpg"_s);
  const auto call = withReference(callFor(u"fal-ai/nano-banana-2/edit"_s, u"make it warmer"_s), folder / u"in.jpg"_s);
  const auto outputs = generate(call);
  ASSERT_EQ(outputs.size(), 1u);
  EXPECT_TRUE(platform::pictureIsWhole(outputs[0].file));
  EXPECT_EQ(run->messages.constFirst(), u"Uploading reference 1 of 1"_s);
}

TEST_F(RoundTrip, MakesAClipOfTheAskedLength) {
  auto call = callFor(u"fal-ai/veo3.1"_s, u"waves"_s);
  call.request.size = u"1536x864"_s;
  call.request.options = core::TextByKey{{u"duration"_s, u"4s"_s}};
  const auto outputs = generate(call);
  ASSERT_EQ(outputs.size(), 1u);
  EXPECT_EQ(outputs[0].ext, u"mp4"_s);
  const auto facts = platform::probeClip(outputs[0].file);
  EXPECT_TRUE(facts.hasPicture);
  EXPECT_NEAR(facts.duration.value_or(0), 4, 0.2);
}

TEST_F(RoundTrip, MakesASoundOfTheAskedLength) {
  auto call = callFor(u"fal-ai/elevenlabs/sound-effects/v2"_s, u"rain on a tin roof"_s);
  call.request.options = core::TextByKey{{u"duration_seconds"_s, u"3"_s}};
  const auto outputs = generate(call);
  ASSERT_EQ(outputs.size(), 1u);
  EXPECT_NEAR(platform::probeSound(outputs[0].file).duration.value_or(0), 3, 0.2);
}

TEST_F(RoundTrip, SplitsAnUploadedSoundIntoNamedParts) {
  const TemporaryFolder folder;
  makeM4a(folder / u"song.m4a"_s, 2);
  const auto call = withReference(callFor(u"fal-ai/demucs"_s, QString()), folder / u"song.m4a"_s);
  const auto outputs = generate(call);
  QStringList labels;
  for (const auto& output : outputs) {
    labels << output.label.value_or(u"unnamed"_s);
    EXPECT_TRUE(platform::probeSound(output.file).duration.has_value());
  }
  EXPECT_EQ(labels, (QStringList{u"bass"_s, u"drums"_s, u"guitar"_s, u"other"_s, u"piano"_s, u"vocals"_s}));
}

TEST_F(RoundTrip, MakesSoundForAnUploadedClip) {
  const TemporaryFolder folder;
  ClipRecipe recipe;
  recipe.frames = 30;
  makeClip(folder / u"clip.mp4"_s, recipe);
  const auto call = withReference(callFor(u"fal-ai/hunyuan-video-foley"_s, u"steps"_s), folder / u"clip.mp4"_s);
  const auto outputs = generate(call);
  ASSERT_FALSE(outputs.empty());
  EXPECT_TRUE(platform::probeSound(outputs[0].file).duration.has_value());
}

}  // namespace
}  // namespace sorvan::test
