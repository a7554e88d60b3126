#include "catalogue/video_length.h"

#include <gtest/gtest.h>

namespace sorvan::catalogue::video_length {
namespace {

using namespace Qt::StringLiterals;

FalModel clipWith(const QStringList& values, std::optional<QString> start = std::nullopt) {
  FalModel model;
  model.id = u"acme/clip"_s;
  model.name = u"Clip"_s;
  model.output = MediaType::video;
  Setting length;
  length.field = u"duration"_s;
  length.values = values;
  length.defaultValue = std::move(start);
  model.settings = {length};
  return model;
}

TEST(VideoLength, IsFixedWhenItBeginsWithANumber) {
  EXPECT_TRUE(isFixed(u"5"_s));
  EXPECT_TRUE(isFixed(u"5s"_s));
  EXPECT_TRUE(isFixed(u"10.5"_s));
  EXPECT_FALSE(isFixed(u"auto"_s));
  EXPECT_FALSE(isFixed(QString()));
  EXPECT_FALSE(isFixed(u"1.2.3"_s));
}

TEST(VideoLength, KeepsAllValuesWhenNoneIsFixed) {
  EXPECT_EQ(fixed({u"auto"_s, u"5s"_s}), QStringList{u"5s"_s});
  EXPECT_EQ(fixed({u"auto"_s, u"long"_s}), (QStringList{u"auto"_s, u"long"_s}));
}

TEST(VideoLength, FindsTheNearestValueAndTheFirstOfEquals) {
  EXPECT_EQ(closest(5, {u"auto"_s, u"4s"_s, u"6s"_s}), u"4s"_s);
  EXPECT_EQ(closest(9, {u"4"_s, u"8"_s}), u"8"_s);
  EXPECT_EQ(closest(9, {u"auto"_s}), std::nullopt);
}

TEST(VideoLength, LabelsPlainNumbersWithSeconds) {
  EXPECT_EQ(label(u"5"_s), u"5 s"_s);
  EXPECT_EQ(label(u"5s"_s), u"5s"_s);
  EXPECT_EQ(label(u"auto"_s), u"auto"_s);
}

TEST(VideoLength, SharesWhatEveryChoiceHas) {
  const Choice first{{}, {}, {u"4"_s, u"6"_s, u"8"_s}, {}};
  const Choice second{{}, {}, {u"8"_s, u"4"_s}, {}};
  EXPECT_EQ(shared({first, second}), (QStringList{u"4"_s, u"8"_s}));
  EXPECT_TRUE(shared({}).isEmpty());
}

TEST(VideoLength, ReadsTheSecondsThatAPromptMentions) {
  EXPECT_EQ(mentioned(u"a 10-second clip"_s), 10);
  EXPECT_EQ(mentioned(u"make it 8 SECS long"_s), 8);
  EXPECT_EQ(mentioned(u"5s of rain"_s), 5);
  EXPECT_EQ(mentioned(u"0 seconds"_s), std::nullopt);
  EXPECT_EQ(mentioned(u"1234 seconds"_s), std::nullopt);
  EXPECT_EQ(mentioned(u"route 66"_s), std::nullopt);
}

TEST(VideoLength, PlansTheModelsOwnChoiceBeforeTheCommonOne) {
  GenerationRequest request;
  request.lengthByModel = TextByKey{{u"acme/clip"_s, u"6"_s}};
  request.options = TextByKey{{u"duration"_s, u"8"_s}};
  const FalModel model = clipWith({u"auto"_s, u"4"_s, u"6"_s, u"8"_s}, u"4"_s);
  EXPECT_EQ(plan(request, {model}, Lengths::fixedOnly).at(0).value, u"6"_s);
  request.lengthByModel = TextByKey{{u"acme/clip"_s, u"99"_s}};
  EXPECT_EQ(plan(request, {model}, Lengths::fixedOnly).at(0).value, u"8"_s);
  request.options = std::nullopt;
  EXPECT_EQ(plan(request, {model}, Lengths::fixedOnly).at(0).value, u"4"_s);
}

TEST(VideoLength, PlansFiveSecondsWhereNothingElseFits) {
  const GenerationRequest request;
  const FalModel model = clipWith({u"auto"_s, u"10"_s, u"6"_s}, u"auto"_s);
  EXPECT_EQ(plan(request, {model}, Lengths::fixedOnly).at(0).value, u"6"_s);
  EXPECT_EQ(plan(request, {model}, Lengths::fixedOnly).at(0).values, (QStringList{u"10"_s, u"6"_s}));
  EXPECT_EQ(plan(request, {model}, Lengths::all).at(0).value, u"auto"_s);
}

TEST(VideoLength, PlansOnlyClipsThatHaveALength) {
  const GenerationRequest request;
  FalModel picture = clipWith({u"5"_s});
  picture.output = MediaType::image;
  EXPECT_TRUE(plan(request, {picture, clipWith({})}, Lengths::all).empty());
}

}  // namespace
}  // namespace sorvan::catalogue::video_length
