#include "catalogue/request_for_model.h"

#include <gtest/gtest.h>

namespace sorvan::catalogue {
namespace {

using namespace Qt::StringLiterals;

class RequestForModel : public testing::Test {
 protected:
  RequestForModel() {
    FalModel clip;
    clip.id = u"acme/clip"_s;
    clip.name = u"Clip"_s;
    clip.output = MediaType::video;
    clip.camera = true;
    Setting length;
    length.field = u"duration"_s;
    length.values = {u"4"_s, u"8"_s};
    length.defaultValue = u"4"_s;
    Setting sound;
    sound.field = u"generate_audio"_s;
    sound.kind = Setting::Kind::toggle;
    clip.settings = {length, sound};
    TextInput text;
    text.field = u"negative_prompt"_s;
    clip.texts = {text};
    catalog.add(clip);
    FalModel edit;
    edit.id = u"acme/edit"_s;
    edit.category = u"image-to-image"_s;
    catalog.add(edit);
  }

  ComparisonModel target(const QString& id) const { return {ProviderID::fal, catalog.model(id)->option()}; }
  QString feature(const GenerationRequest& request, int models = 2) const {
    return featureOf(catalog, request, models);
  }

  FalCatalog catalog{std::make_shared<Settings>()};
};

TEST_F(RequestForModel, KeepsOnlyTheOptionsOfThatModel) {
  GenerationRequest request;
  request.model = u"acme/other"_s;
  request.quality = u"high"_s;
  request.seed = 5;
  request.options =
      TextByKey{{u"resolution"_s, u"2K"_s},       {u"generate_audio"_s, u"true"_s}, {u"duration"_s, u"99"_s},
                {u"negative_prompt"_s, u"fog"_s}, {u"horizontal_angle"_s, u"45"_s}, {u"zoom"_s, u"near"_s}};
  const GenerationRequest copy = requestForModel(catalog, request, target(u"acme/clip"_s));
  EXPECT_EQ(copy.model, u"acme/clip"_s);
  EXPECT_EQ(copy.quality, u"default"_s);
  EXPECT_EQ(copy.seed, 5);
  EXPECT_EQ(copy.options, (TextByKey{{u"generate_audio"_s, u"true"_s},
                                     {u"duration"_s, u"4"_s},
                                     {u"negative_prompt"_s, u"fog"_s},
                                     {u"horizontal_angle"_s, u"45"_s}}));
}

TEST_F(RequestForModel, TakesTheLengthChosenForThatModel) {
  GenerationRequest request;
  request.options = TextByKey{{u"duration"_s, u"4"_s}};
  request.lengthByModel = TextByKey{{u"acme/clip"_s, u"8"_s}, {u"acme/other"_s, u"4"_s}};
  const GenerationRequest copy = requestForModel(catalog, request, target(u"acme/clip"_s));
  EXPECT_EQ(copy.options, (TextByKey{{u"duration"_s, u"8"_s}}));
  EXPECT_EQ(copy.lengthByModel, std::nullopt);
}

TEST_F(RequestForModel, LeavesNoEmptyOptions) {
  GenerationRequest request;
  request.options = TextByKey{{u"duration"_s, u"4"_s}};
  EXPECT_EQ(requestForModel(catalog, request, target(u"fal-ai/flux/schnell"_s)).options, std::nullopt);
}

TEST_F(RequestForModel, NamesWhatTheRequestIsFor) {
  GenerationRequest request;
  request.model = u"fal-ai/flux/schnell"_s;
  EXPECT_EQ(feature(request), u"text-to-image"_s);
  request.referenceIDs = {QUuid::createUuid()};
  EXPECT_EQ(feature(request), u"image-with-references"_s);
  request.relationship = RelationshipType::variationOf;
  EXPECT_EQ(feature(request), u"variation"_s);
  request.relationship = RelationshipType::upscaledFrom;
  EXPECT_EQ(feature(request), u"upscale"_s);
  request.relationship = RelationshipType::referenceFor;
  ReferenceBinding binding;
  binding.role = u"Edit source"_s;
  request.referenceBindings = std::vector<ReferenceBinding>{binding};
  EXPECT_EQ(feature(request), u"image-to-image"_s);
  request.comparisonID = QUuid::createUuid();
  EXPECT_EQ(feature(request), u"compare"_s);
  EXPECT_EQ(feature(request, 1), u"image-to-image"_s);
  request.shot = u"Front"_s;
  EXPECT_EQ(feature(request), u"shot-set"_s);
  request.storyShot = QUuid::createUuid();
  EXPECT_EQ(feature(request), u"storyboard"_s);
}

TEST_F(RequestForModel, NamesTheToolsAndTheSounds) {
  const std::vector<std::pair<QString, QString>> expected{{u"fal-ai/birefnet/v2"_s, u"cut-out"_s},
                                                          {u"fal-ai/clarity-upscaler"_s, u"upscale"_s},
                                                          {u"sonilo/v1.1/video-to-music"_s, u"clip-music"_s},
                                                          {u"fal-ai/mmaudio-v2"_s, u"clip-sound"_s},
                                                          {u"mirelo-ai/sfx1.6/extend-audio"_s, u"sound-extend"_s},
                                                          {u"fal-ai/sam-audio/separate"_s, u"sound-pull-out"_s},
                                                          {u"fal-ai/demucs"_s, u"sound-split"_s},
                                                          {u"veed/clean-audio"_s, u"sound-clean"_s},
                                                          {u"fal-ai/dia-tts"_s, u"voice"_s},
                                                          {u"minimax/music-3"_s, u"music"_s},
                                                          {u"fal-ai/mmaudio-v2/text-to-audio"_s, u"sound-effect"_s},
                                                          {u"acme/clip"_s, u"text-to-video"_s},
                                                          {u"acme/edit"_s, u"image-to-image"_s},
                                                          {u"nobody/knows"_s, u"text-to-image"_s}};
  for (const auto& [model, word] : expected) {
    GenerationRequest request;
    request.model = model;
    EXPECT_EQ(feature(request), word) << model.toStdString();
  }
  GenerationRequest fromPicture;
  fromPicture.model = u"acme/clip"_s;
  fromPicture.referenceIDs = {QUuid::createUuid()};
  EXPECT_EQ(feature(fromPicture), u"image-to-video"_s);
}

}  // namespace
}  // namespace sorvan::catalogue
