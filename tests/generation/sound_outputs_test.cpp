#include "generation/sound_outputs.h"

#include <gtest/gtest.h>

#include "generation/registration_words.h"

namespace sorvan::generation {
namespace {

GenerationRequest withOptions(const TextByKey& options) {
  GenerationRequest request;
  request.options = options;
  return request;
}

TEST(SoundParts, AreNamedByTheirLabel) {
  const QString tool = QStringLiteral("Split");
  EXPECT_EQ(partName(std::nullopt, QStringLiteral("x"), tool), tool);
  EXPECT_EQ(partName(QStringLiteral("target"), QStringLiteral("a  big dog barking loudly"), tool),
            QStringLiteral("a big dog barking"));
  EXPECT_EQ(partName(QStringLiteral("residual"), QString(), tool), QStringLiteral("Everything Else"));
  EXPECT_EQ(partName(QStringLiteral("other"), QString(), tool), QStringLiteral("Other Parts"));
  EXPECT_EQ(partName(QStringLiteral("lead vocals"), QString(), tool), QStringLiteral("Lead Vocals"));
}

TEST(SoundParts, SilentOnesAreLeftOutUnlessAllAre) {
  EXPECT_EQ(judgeSilence({-12.0, -60.5, std::nullopt}).leftOut, (std::vector<bool>{false, true, false}));
  EXPECT_FALSE(judgeSilence({-12.0, -60.5}).throughout);
  EXPECT_EQ(judgeSilence({-12.0, -60.0}).leftOut, (std::vector<bool>{false, false}));
  EXPECT_EQ(judgeSilence({-180.0, -61.0}), (SilenceVerdict{{false, false}, true}));
  EXPECT_EQ(judgeSilence({-180.0}), (SilenceVerdict{{false}, true}));
  EXPECT_EQ(judgeSilence({}), SilenceVerdict{});
}

TEST(SoundLevels, AreInDecibels) {
  EXPECT_NEAR(decibelsOfPeak(0), -180, 0.01);
  EXPECT_NEAR(decibelsOfPeak(0.5), -6.02, 0.01);
}

TEST(Extensions, TakeTheFirstStepThatIsSet) {
  const QString after = QStringLiteral("extend_seconds_after");
  const QString before = QStringLiteral("extend_seconds_before");
  const QString appended = QStringLiteral("append_duration");
  EXPECT_EQ(extensionStep(withOptions({{after, QStringLiteral("5")}, {before, QStringLiteral("3")}})),
            (ExtensionStep{5, false}));
  EXPECT_EQ(extensionStep(withOptions({{after, QStringLiteral("0")}, {before, QStringLiteral("3.5")}})),
            (ExtensionStep{3.5, true}));
  EXPECT_EQ(extensionStep(withOptions({{appended, QStringLiteral("7")}})), (ExtensionStep{7, false}));
  EXPECT_FALSE(extensionStep(withOptions({{appended, QStringLiteral("long")}})));
  EXPECT_FALSE(extensionStep(GenerationRequest()));
}

TEST(Names, AreJoinedInWords) {
  EXPECT_EQ(joinedInWords({}), QString());
  EXPECT_EQ(joinedInWords({QStringLiteral("A")}), QStringLiteral("A"));
  EXPECT_EQ(joinedInWords({QStringLiteral("A"), QStringLiteral("B")}), QStringLiteral("A and B"));
  EXPECT_EQ(joinedInWords({QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("C")}),
            QStringLiteral("A, B, and C"));
}

TEST(OutputNames, TakeSixWordsOfThePromptAndTheModel) {
  StemFacts facts;
  facts.modelLabel = QStringLiteral("Flux");
  facts.prompt = QStringLiteral(" one two\u00a0three\nfour five six seven");
  EXPECT_EQ(outputStem(facts), QStringLiteral("one two three four five six-Flux"));
}

TEST(OutputNames, WithoutAPromptTakeTheReferenceAndThenNothing) {
  StemFacts facts;
  facts.modelLabel = QStringLiteral("Upscaler");
  facts.firstReferenceFile = QStringLiteral("cat photo.png");
  EXPECT_EQ(outputStem(facts), QStringLiteral("cat photo-Upscaler"));
  facts.firstReferenceFile.reset();
  EXPECT_EQ(outputStem(facts), QStringLiteral("-Upscaler"));
}

TEST(OutputNames, OfSoundToolsNameTheSourceAndThePart) {
  StemFacts facts;
  facts.modelLabel = QStringLiteral("Split into Parts");
  facts.prompt = QStringLiteral("anything");
  facts.firstReferenceFile = QStringLiteral("song.final.mp3");
  facts.modelTakesSound = true;
  facts.outputLabel = QStringLiteral("drums");
  EXPECT_EQ(outputStem(facts), QStringLiteral("song.final-Drums"));
  facts.extendsSound = true;
  EXPECT_EQ(outputStem(facts), QStringLiteral("song.final-Extended"));
}

TEST(SavedDetails, CountAndNameTheKind) {
  EXPECT_EQ(savedDetail({1, MediaType::image, {}, false}), QStringLiteral("Saved 1 image locally"));
  EXPECT_EQ(savedDetail({2, MediaType::video, {}, false}), QStringLiteral("Saved 2 videos locally"));
  EXPECT_EQ(savedDetail({3, MediaType::audio, {QStringLiteral("Drums"), QStringLiteral("Bass")}, false}),
            QStringLiteral("Saved 3 sounds locally; left out Drums, Bass"));
  EXPECT_EQ(savedDetail({1, MediaType::audio, {}, true}), QStringLiteral("Saved 1 sound locally, silent throughout"));
}

TEST(LeftOutNotices, SayOneOrMoreParts) {
  EXPECT_EQ(leftOutNotice(QStringLiteral("Split"), QStringLiteral("song.mp3"), {QStringLiteral("Drums")}),
            QStringLiteral("Split: “song.mp3” has no drums, so that part was left out."));
  EXPECT_EQ(leftOutNotice(QStringLiteral("Split"), QStringLiteral("song.mp3"),
                          {QStringLiteral("Drums"), QStringLiteral("Bass")}),
            QStringLiteral("Split: “song.mp3” has no drums and bass, so those parts were left out."));
}

}  // namespace
}  // namespace sorvan::generation
