#include "catalogue/request_body.h"

#include <gtest/gtest.h>

#include <QJsonArray>

#include "base/sorvan_error.h"
#include "catalogue/audio_models.h"
#include "catalogue/fal_catalog.h"

namespace sorvan::catalogue {
namespace {

using namespace Qt::StringLiterals;

FalModel plainModel() {
  FalModel model;
  model.id = u"acme/model"_s;
  model.name = u"Acme"_s;
  return model;
}

BodyParts prompted(const QString& prompt = u"a cat"_s) {
  BodyParts parts;
  parts.prompt = prompt;
  parts.size = u"1024x1024"_s;
  return parts;
}

QString refusal(const FalModel& model, const BodyParts& parts) {
  try {
    requestBody(model, parts);
  } catch (const SorvanError& error) {
    return error.message();
  }
  return u"accepted"_s;
}

const FalModel& sound(AudioKind kind, const QString& id) {
  for (const FalModel& model : audioModels(kind)) {
    if (model.id == id) return model;
  }
  throw std::runtime_error("no such model");
}

TEST(RequestBody, OfTheAllRoundImageModel) {
  BodyParts parts = prompted();
  parts.size = u"1536x864"_s;
  parts.count = 2;
  parts.seed = 7;
  parts.options = {{u"resolution"_s, u"2K"_s}};
  EXPECT_EQ(requestBody(nanoBanana2(), parts), (QJsonObject{{u"prompt"_s, u"a cat"_s},
                                                            {u"resolution"_s, u"2K"_s},
                                                            {u"num_images"_s, 2},
                                                            {u"aspect_ratio"_s, u"16:9"_s},
                                                            {u"seed"_s, 7},
                                                            {u"output_format"_s, u"png"_s}}));
}

TEST(RequestBody, AsksForDimensionsAsNumbers) {
  FalModel model = plainModel();
  model.sizing = SizeByDimensions{u"image_size"_s};
  BodyParts parts = prompted();
  parts.size = u"1536x1024"_s;
  EXPECT_EQ(requestBody(model, parts).value(u"image_size"_s),
            QJsonValue((QJsonObject{{u"width"_s, 1536}, {u"height"_s, 1024}})));
  for (const auto& size : {u"1024"_s, u"1x2x3"_s, u"axb"_s, QString()}) {
    parts.size = size;
    EXPECT_EQ(refusal(model, parts), u"Unsupported image size."_s);
  }
}

TEST(RequestBody, ChoosesTheRatioOrLetsTheModelChoose) {
  FalModel model = plainModel();
  model.sizing = SizeByAspect{u"aspect_ratio"_s, {u"1:1"_s, u"auto"_s}};
  BodyParts parts = prompted();
  EXPECT_EQ(requestBody(model, parts).value(u"aspect_ratio"_s).toString(), u"1:1"_s);
  parts.size = u"1536x864"_s;
  EXPECT_EQ(requestBody(model, parts).value(u"aspect_ratio"_s).toString(), u"auto"_s);
  model.sizing = SizeByAspect{u"aspect_ratio"_s, {u"1:1"_s, u"9:16"_s}};
  EXPECT_EQ(refusal(model, parts), u"Acme supports these ratios: 1:1, 9:16."_s);
}

TEST(RequestBody, KeepsTheShapeOfAClipsFirstPicture) {
  FalModel model = plainModel();
  model.output = MediaType::video;
  model.sizing = SizeByAspect{u"aspect_ratio"_s, {u"1:1"_s, u"adaptive"_s}};
  model.imageInput = SingleInput{u"image_url"_s, true};
  BodyParts parts = prompted();
  parts.inputs = QStringList{u"https://a.example/x"_s};
  EXPECT_EQ(requestBody(model, parts).value(u"aspect_ratio"_s).toString(), u"adaptive"_s);
  parts.keepImageShape = false;
  EXPECT_EQ(requestBody(model, parts).value(u"aspect_ratio"_s).toString(), u"1:1"_s);
}

TEST(RequestBody, SendsNoSizeThatTheModelDoesNotName) {
  FalModel model = plainModel();
  model.sizing = SizeByName{u"image_size"_s, {u"1536x864"_s}};
  EXPECT_FALSE(requestBody(model, prompted()).contains(u"image_size"_s));
  model.sizing = SizeByName{u"image_size"_s, {u"1536x864"_s, u"auto"_s}};
  EXPECT_EQ(requestBody(model, prompted()).value(u"image_size"_s).toString(), u"auto"_s);
  model.sizing = SizeByName{u"image_size"_s, {u"1024x1024"_s}};
  EXPECT_EQ(requestBody(model, prompted()).value(u"image_size"_s).toString(), u"1024x1024"_s);
}

TEST(RequestBody, LeavesOutAnEmptyPromptOnlyWhereItIsOptional) {
  FalModel model = plainModel();
  EXPECT_EQ(requestBody(model, prompted(QString())).value(u"prompt"_s), QJsonValue(QString(u""_s)));
  model.promptRequired = false;
  EXPECT_FALSE(requestBody(model, prompted(QString())).contains(u"prompt"_s));
  model.hasPrompt = false;
  EXPECT_FALSE(requestBody(model, prompted()).contains(u"prompt"_s));
}

TEST(RequestBody, PutsThePromptUnderItsOwnField) {
  const QJsonObject body =
      requestBody(sound(AudioKind::effect, u"mirelo-ai/sfx2.0/text-to-audio"_s), prompted(u"rain"_s));
  EXPECT_EQ(body.value(u"text_prompt"_s).toString(), u"rain"_s);
  EXPECT_FALSE(body.contains(u"prompt"_s));
  EXPECT_EQ(body.value(u"num_samples"_s).toInt(), 1);
}

TEST(RequestBody, ConvertsSettingsToTheirKinds) {
  FalModel model = plainModel();
  Setting number;
  number.field = u"length"_s;
  number.kind = Setting::Kind::number;
  number.values = {u"2.5"_s, u"many"_s};
  number.accepts = ClosedRange<qint64>{1, 10};
  Setting toggle;
  toggle.field = u"loop"_s;
  toggle.kind = Setting::Kind::toggle;
  Setting nested;
  nested.field = u"voice.id"_s;
  nested.values = {u"Ann"_s};
  model.settings = {number, toggle, nested};
  model.defaultsJSON = u"{\"voice\":{\"speed\":1,\"id\":\"Bob\"}}"_s;
  BodyParts parts = prompted();
  parts.options = {{u"length"_s, u"7"_s}, {u"loop"_s, u"true"_s}, {u"voice.id"_s, u"Ann"_s}};
  QJsonObject body = requestBody(model, parts);
  EXPECT_EQ(body.value(u"length"_s), QJsonValue(7));
  EXPECT_EQ(body.value(u"loop"_s), QJsonValue(true));
  EXPECT_EQ(body.value(u"voice"_s), QJsonValue((QJsonObject{{u"speed"_s, 1}, {u"id"_s, u"Ann"_s}})));
  parts.options = {{u"length"_s, u"2.5"_s}, {u"loop"_s, u"false"_s}, {u"voice.id"_s, u"Eve"_s}};
  body = requestBody(model, parts);
  EXPECT_EQ(body.value(u"length"_s), QJsonValue(2.5));
  EXPECT_EQ(body.value(u"loop"_s), QJsonValue(false));
  EXPECT_EQ(body.value(u"voice"_s).toObject().value(u"id"_s).toString(), u"Bob"_s);
  parts.options = {{u"length"_s, u"many"_s}, {u"loop"_s, u"yes"_s}};
  body = requestBody(model, parts);
  EXPECT_EQ(body.value(u"length"_s), QJsonValue(u"many"_s));
  EXPECT_FALSE(body.contains(u"loop"_s));
  parts.options = {{u"length"_s, u"11"_s}};
  EXPECT_FALSE(requestBody(model, parts).contains(u"length"_s));
}

TEST(RequestBody, TellsASingersVoiceInThePromptWhenThereAreNoLyrics) {
  const FalModel& song = sound(AudioKind::music, u"mureka/api/generate/song"_s);
  BodyParts parts = prompted(u"slow folk"_s);
  parts.options = {{u"gender"_s, u"female"_s}, {u"lyrics"_s, u"  "_s}};
  QJsonObject body = requestBody(song, parts);
  EXPECT_FALSE(body.contains(u"gender"_s));
  EXPECT_EQ(body.value(u"prompt"_s).toString(), u"slow folk, female vocals"_s);
  parts.prompt = u"slow folk, Female voice"_s;
  EXPECT_EQ(requestBody(song, parts).value(u"prompt"_s).toString(), u"slow folk, Female voice"_s);
  parts.options = {{u"gender"_s, u"female"_s}, {u"lyrics"_s, u" la la "_s}};
  body = requestBody(song, parts);
  EXPECT_EQ(body.value(u"gender"_s).toString(), u"female"_s);
  EXPECT_EQ(body.value(u"lyrics"_s).toString(), u"la la"_s);
  EXPECT_EQ(body.value(u"prompt"_s).toString(), u"slow folk, Female voice"_s);
  parts.options = {{u"gender"_s, u"robot"_s}};
  EXPECT_EQ(requestBody(song, parts).value(u"prompt"_s).toString(), u"slow folk, Female voice"_s);
}

TEST(RequestBody, StaysJustBelowWholeMinutesOfMusic) {
  const FalModel& music = sound(AudioKind::music, u"elevenlabs/music/v2.5"_s);
  BodyParts parts = prompted();
  parts.options = {{u"music_length_ms"_s, u"120000"_s}};
  EXPECT_EQ(requestBody(music, parts).value(u"music_length_ms"_s).toInt(), 119000);
  parts.options = {{u"music_length_ms"_s, u"90000"_s}};
  EXPECT_EQ(requestBody(music, parts).value(u"music_length_ms"_s).toInt(), 90000);
}

TEST(RequestBody, NeedsTheTextsThatAreRequired) {
  const FalModel& music = sound(AudioKind::music, u"minimax/music-3"_s);
  EXPECT_EQ(refusal(music, prompted()), u"MiniMax Music 3 needs lyrics."_s);
}

TEST(RequestBody, CutsATextAtItsLimitBetweenCharacters) {
  FalModel model = plainModel();
  TextInput text;
  text.field = u"extra"_s;
  text.label = u"Extra"_s;
  text.limit = 3;
  model.texts = {text};
  BodyParts parts = prompted();
  parts.options = {{u"extra"_s, u"  a👩‍👩‍👧bc  "_s}};
  EXPECT_EQ(requestBody(model, parts).value(u"extra"_s).toString(), u"a👩‍👩‍👧b"_s);
}

TEST(RequestBody, SendsAScriptAsInputs) {
  const FalModel& dialogue = sound(AudioKind::voice, u"fal-ai/elevenlabs/text-to-dialogue/eleven-v3"_s);
  const QJsonObject body = requestBody(dialogue, prompted(u"Aria: Hi."_s));
  EXPECT_FALSE(body.contains(u"prompt"_s));
  EXPECT_EQ(body.value(u"inputs"_s).toArray().size(), 1);
}

TEST(RequestBody, SendsCameraAnglesAsNumbers) {
  FalModel model = plainModel();
  model.camera = true;
  BodyParts parts = prompted();
  parts.options = {{u"horizontal_angle"_s, u"45"_s}, {u"vertical_angle"_s, u"up"_s}, {u"zoom"_s, u"8.5"_s}};
  const QJsonObject body = requestBody(model, parts);
  EXPECT_EQ(body.value(u"horizontal_angle"_s), QJsonValue(45));
  EXPECT_FALSE(body.contains(u"vertical_angle"_s));
  EXPECT_EQ(body.value(u"zoom"_s), QJsonValue(8.5));
  model.camera = std::nullopt;
  EXPECT_FALSE(requestBody(model, parts).contains(u"zoom"_s));
}

TEST(RequestBody, SendsNoCountToAModelOfOneOutput) {
  FalModel model = plainModel();
  BodyParts parts = prompted();
  EXPECT_FALSE(requestBody(model, parts).contains(u"num_images"_s));
  parts.count = 2;
  EXPECT_EQ(refusal(model, parts), u"Acme returns at most 1 output per request."_s);
  model.maxCount = 4;
  parts.count = 5;
  EXPECT_EQ(refusal(model, parts), u"Acme returns at most 4 outputs per request."_s);
  parts.count = 1;
  EXPECT_EQ(requestBody(model, parts).value(u"num_images"_s), QJsonValue(1));
}

TEST(RequestBody, SendsAnEndFrameOnlyWhereThereIsAFieldForIt) {
  FalModel model = plainModel();
  BodyParts parts = prompted();
  parts.endImage = u"https://a.example/end"_s;
  EXPECT_EQ(refusal(model, parts), u"Acme does not accept an end frame."_s);
  model.endImageField = u"end_image_url"_s;
  EXPECT_EQ(requestBody(model, parts).value(u"end_image_url"_s).toString(), u"https://a.example/end"_s);
}

TEST(RequestBody, HoldsThePicturesAsTheModelTakesThem) {
  FalModel model = plainModel();
  BodyParts one = prompted();
  one.inputs = QStringList{u"https://a.example/1"_s};
  BodyParts two = one;
  two.inputs << u"https://a.example/2"_s;
  EXPECT_EQ(refusal(model, one), u"Acme does not accept reference images."_s);
  model.imageInput = SingleInput{u"image_url"_s, true};
  EXPECT_EQ(requestBody(model, one).value(u"image_url"_s).toString(), u"https://a.example/1"_s);
  EXPECT_EQ(refusal(model, two), u"Acme accepts one input image."_s);
  EXPECT_EQ(refusal(model, prompted()), u"Acme needs an input image."_s);
  model.imageInput = ListInput{u"image_urls"_s, true};
  EXPECT_EQ(requestBody(model, two).value(u"image_urls"_s).toArray().size(), 2);
  EXPECT_EQ(refusal(model, prompted()), u"Acme needs at least one input image."_s);
  model.imageInput = ListInput{u"image_urls"_s, false};
  EXPECT_FALSE(requestBody(model, prompted()).contains(u"image_urls"_s));
}

TEST(RequestBody, KeepsEveryDigitOfASeed) {
  BodyParts parts = prompted();
  parts.seed = std::numeric_limits<qint64>::max();
  EXPECT_EQ(requestBody(nanoBanana2(), parts).value(u"seed"_s).toInteger(), std::numeric_limits<qint64>::max());
}

TEST(RequestBody, HoldsAPromptOfAHundredThousandCharacters) {
  const QString prompt = QString(99998, u'x') + u"🦊"_s;
  EXPECT_EQ(requestBody(nanoBanana2(), prompted(prompt)).value(u"prompt"_s).toString(), prompt);
}

TEST(RequestBody, SendsANamedSizeOfTheAskedShape) {
  FalModel model = plainModel();
  model.sizing = SizeByName{u"image_size"_s, {u"landscape_4_3"_s, u"square_hd"_s, u"1280x720"_s, u"auto"_s}};
  const auto sent = [&](const QString& size) {
    BodyParts parts = prompted();
    parts.size = size;
    return requestBody(model, parts).value(u"image_size"_s).toString();
  };
  EXPECT_EQ(sent(u"1024x1024"_s), u"square_hd"_s);
  EXPECT_EQ(sent(u"1408x1056"_s), u"landscape_4_3"_s);
  EXPECT_EQ(sent(u"1536x864"_s), u"1280x720"_s);
  EXPECT_EQ(sent(u"864x1536"_s), u"auto"_s);
}

TEST(RequestBody, LeavesRatiosThatTheComposerDoesNotKnowToTheService) {
  FalModel model = plainModel();
  model.sizing = SizeByAspect{u"aspect_ratio"_s, {u"wide"_s, u"tall"_s}};
  EXPECT_FALSE(requestBody(model, prompted()).contains(u"aspect_ratio"_s));
  EXPECT_FALSE(model.option().ratios);
}

TEST(RequestBody, NeedsTheEndFrameThatTheModelNeeds) {
  FalModel model = plainModel();
  model.endImageField = u"last_frame_url"_s;
  model.endImageRequired = true;
  EXPECT_EQ(refusal(model, prompted()), u"Acme needs an end frame."_s);
  BodyParts parts = prompted();
  parts.endImage = u"https://v3.fal.media/z.png"_s;
  EXPECT_EQ(requestBody(model, parts).value(u"last_frame_url"_s), QJsonValue(u"https://v3.fal.media/z.png"_s));
}

TEST(RequestBody, NeedsAsManyPicturesAsTheModel) {
  FalModel model = plainModel();
  model.imageInput = ListInput{u"image_urls"_s, true};
  model.minInputs = 2;
  BodyParts parts = prompted();
  parts.inputs = QStringList{u"a"_s};
  EXPECT_EQ(refusal(model, parts), u"Acme needs at least 2 input images."_s);
  parts.inputs << u"b"_s;
  EXPECT_EQ(refusal(model, parts), u"accepted"_s);
}

TEST(RequestBody, StartsEmptyOnDefaultsThatDoNotParse) {
  FalModel model = plainModel();
  model.defaultsJSON = u"[1,"_s;
  EXPECT_EQ(requestBody(model, prompted()), (QJsonObject{{u"prompt"_s, u"a cat"_s}}));
}

}  // namespace
}  // namespace sorvan::catalogue
