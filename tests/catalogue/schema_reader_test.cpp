#include "catalogue/schema_reader.h"

#include <gtest/gtest.h>

#include "catalogue/made_schema.h"
#include "support/failure_of.h"
#include "support/text_printers.h"

namespace sorvan::catalogue {
namespace {

using namespace Qt::StringLiterals;
using test::failureOf;
using test::MadeSchema;

MadeSchema with(const QByteArray& properties, const QByteArray& required = "[]") {
  MadeSchema made;
  made.properties = properties;
  made.required = required;
  return made;
}

QString listField(const FalModel& model) {
  const auto* list = std::get_if<ListInput>(&model.imageInput);
  return list ? list->field : QString();
}

QString singleField(const FalModel& model) {
  const auto* single = std::get_if<SingleInput>(&model.imageInput);
  return single ? single->field : QString();
}

Setting settingOf(const FalModel& model, const QString& field) {
  const Setting* setting = model.setting(field);
  return setting ? *setting : Setting();
}

TEST(SchemaReader, CopiesTheListing) {
  const FalModel model = with(R"({"prompt":{"type":"string"}})", R"(["prompt"])").model();
  EXPECT_EQ(model.id, u"acme/paint"_s);
  EXPECT_EQ(model.name, u"Paint"_s);
  EXPECT_EQ(model.category, u"text-to-image"_s);
  EXPECT_EQ(model.summary, u"Acme · paints"_s);
  EXPECT_EQ(model.output, MediaType::image);
  EXPECT_TRUE(std::holds_alternative<NoSizing>(model.sizing));
  EXPECT_TRUE(std::holds_alternative<NoInput>(model.imageInput));
  EXPECT_FALSE(model.settings);
  EXPECT_FALSE(model.defaultsJSON);
}

TEST(SchemaReader, TellsWhetherThePromptIsNeeded) {
  EXPECT_EQ(with(R"({"prompt":{"type":"string"}})", R"(["prompt"])").model().promptRequired, true);
  EXPECT_EQ(with(R"({"prompt":{"type":"string"}})").model().promptRequired, false);
  EXPECT_EQ(with(R"({"prompt":{"anyOf":[{"type":"string"},{"type":"null"}]}})").model().hasPrompt, true);
  EXPECT_EQ(with(R"({"seed":{"type":"integer"}})").model().hasPrompt, false);
}

TEST(SchemaReader, RefusesAPromptThatIsNoText) {
  EXPECT_EQ(with(R"({"prompt":{"type":"array","items":{"type":"object"}}})", R"(["prompt"])").missing(),
            QStringList{u"prompt"_s});
}

TEST(SchemaReader, RefusesADocumentWithoutInput) {
  const QString sentence = u"The model provider has not published usable settings for Paint."_s;
  EXPECT_EQ(with("{}").refusal(), sentence);
  MadeSchema elsewhere = with(R"({"prompt":{"type":"string"}})");
  EXPECT_EQ(failureOf([&] { modelFromSchema({u"acme/other"_s, u"Paint"_s, {}, {}, {}}, elsewhere.text()); }), sentence);
  EXPECT_EQ(failureOf([&] { modelFromSchema(test::paintListing(), "{}"); }), sentence);
}

TEST(SchemaReader, RefusesReferencesThatLeadNowhereOrInACircle) {
  MadeSchema made = with(R"({"prompt":{"type":"string"}})");
  const QByteArray text = made.text();
  const QString noSettings = u"The model provider has not published usable settings for Paint."_s;
  QByteArray dangling = text;
  dangling.replace("#/components/schemas/PaintInput", "#/components/schemas/Gone");
  EXPECT_EQ(failureOf([&] { modelFromSchema(test::paintListing(), dangling); }), noSettings);
  QByteArray circle = text;
  circle.replace("\"PaintInput\":{",
                 "\"PaintInput\":{\"$ref\":\"#/components/schemas/Two\"},\"Two\":"
                 "{\"$ref\":\"#/components/schemas/PaintInput\"},\"Old\":{");
  EXPECT_EQ(failureOf([&] { modelFromSchema(test::paintListing(), circle); }), noSettings);
  QByteArray noOutput = text;
  noOutput.replace("#/components/schemas/PaintOutput", "#/components/schemas/Gone");
  EXPECT_EQ(failureOf([&] { modelFromSchema(test::paintListing(), noOutput); }),
            u"Paint does not return an image or a video."_s);
}

TEST(SchemaReader, TellsTheOutput) {
  MadeSchema made = with(R"({"prompt":{"type":"string"}})");
  made.output = "video";
  EXPECT_EQ(made.model().output, MediaType::video);
  made.output = "image";
  EXPECT_EQ(made.model().output, MediaType::image);
  made.output = "audio";
  EXPECT_EQ(made.refusal(), u"Paint does not return an image or a video."_s);
}

TEST(SchemaReader, NamesTheFieldsThatItCannotFillInTheirOrder) {
  const MadeSchema made =
      with(R"({"prompt":{"type":"string"},"mask_url":{"type":"string"},"video_url":{"type":"string"},
                                   "loras":{"type":"array","default":[]}})",
           R"(["video_url","prompt","mask_url","loras","gone","mask_url"])");
  EXPECT_EQ(made.refusal(), u"Paint needs inputs Sorvan cannot supply yet: video_url, mask_url, loras, gone."_s);
  EXPECT_EQ(made.missing(), (QStringList{u"video_url"_s, u"mask_url"_s, u"loras"_s, u"gone"_s}));
}

TEST(SchemaReader, IgnoresOptionalFieldsThatItDoesNotKnow) {
  EXPECT_NO_THROW(
      with(R"({"prompt":{"type":"string"},"mask_url":{"type":"string"},"audio_url":{"type":"string"}})").model());
}

TEST(SchemaReader, CountsOutputs) {
  EXPECT_EQ(with(R"({"num_images":{"type":"integer","minimum":1,"maximum":6}})").model().maxCount, 6);
  EXPECT_EQ(with(R"({"num_images":{"type":"integer"}})").model().maxCount, 4);
  EXPECT_EQ(with(R"({"num_images":{"anyOf":[{"type":"integer","maximum":3},{"type":"null"}]}})").model().maxCount, 3);
  EXPECT_EQ(with(R"({"prompt":{"type":"string"}})").model().maxCount, 1);
  EXPECT_EQ(with(R"({"num_images":{"type":"integer","maximum":-3}})").model().maxCount, 1);
  EXPECT_EQ(with(R"({"num_images":{"type":"integer","maximum":1e300}})").model().maxCount, 10000);
}

TEST(SchemaReader, NeverAsksForACountThatIsRefused) {
  EXPECT_EQ(with(R"({"num_images":{"type":"integer","enum":[1,2,4],"maximum":4}})").model().maxCount, 2);
  EXPECT_EQ(with(R"({"num_images":{"type":"integer","minimum":2,"maximum":4}})").model().maxCount, 1);
  EXPECT_EQ(with(R"({"num_images":{"type":"string","enum":["1","2"]}})").model().maxCount, 1);
  const FalModel fixed =
      with(R"({"num_images":{"const":1,"type":"integer","default":1}})", R"(["num_images"])").model();
  EXPECT_EQ(fixed.maxCount, 1);
  EXPECT_EQ(fixed.defaultsJSON, u"{\"num_images\":1}"_s);
}

TEST(SchemaReader, KnowsAnImageSizeInEveryForm) {
  const QByteArray reference = R"({"$ref":"#/components/schemas/ImageSize"})";
  const QByteArray presets = R"({"type":"string","enum":["square","auto"]})";
  for (const QByteArray& form :
       {reference, "{\"allOf\":[" + reference + "],\"default\":\"square\"}",
        "{\"anyOf\":[" + presets + "," + reference + "]}",
        "{\"oneOf\":[" + reference + "," + presets + ",{\"type\":\"null\"}]}",
        QByteArray(R"({"type":"object","properties":{"width":{"type":"integer"},"height":{"type":"integer"}}})"),
        QByteArray(R"({"$ref":"#/components/schemas/ImageSize","title":"Size","default":{"width":1}})")}) {
    const FalModel model = with("{\"image_size\":" + form + "}").model();
    const auto* size = std::get_if<SizeByDimensions>(&model.sizing);
    ASSERT_TRUE(size) << form.toStdString();
    EXPECT_EQ(size->field, u"image_size"_s);
  }
}

TEST(SchemaReader, TakesSizesFromAList) {
  const FalModel model = with(R"({"image_size":{"type":"string","enum":["1024x1024","square_hd"]},
                                  "aspect_ratio":{"type":"string","enum":["1:1"]}})")
                             .model();
  EXPECT_EQ(model.sizing, Sizing(SizeByName{u"image_size"_s, {u"1024x1024"_s, u"square_hd"_s}}));
}

TEST(SchemaReader, TakesTheRatioWhereTheSizeSaysNothing) {
  const Sizing expected = SizeByAspect{u"aspect_ratio"_s, {u"1:1"_s, u"16:9"_s}};
  EXPECT_EQ(with(R"({"aspect_ratio":{"enum":["1:1","16:9"]}})").model().sizing, expected);
  EXPECT_EQ(with(R"({"image_size":{"type":"string"},"aspect_ratio":{"anyOf":[{"type":"null"},
                     {"$ref":"#/components/schemas/R"}]}})")
                .model()
                .sizing,
            Sizing(NoSizing{}))
      << "a variant that leads nowhere says nothing";
  MadeSchema named = with(R"({"aspect_ratio":{"anyOf":[{"type":"null"},{"$ref":"#/components/schemas/R"}]}})");
  named.schemas = R"("R":{"type":"string","enum":[null,"1:1","16:9"]})";
  EXPECT_EQ(named.model().sizing, expected);
  EXPECT_EQ(with(R"({"aspect_ratio":{"const":"16:9","type":"string"}})").model().sizing,
            Sizing(SizeByAspect{u"aspect_ratio"_s, {u"16:9"_s}}));
}

TEST(SchemaReader, OffersTheComposersRatiosWhereAnyTextIsTaken) {
  const FalModel model = with(R"({"aspect_ratio":{"anyOf":[{"type":"string"},{"type":"null"}]}})").model();
  EXPECT_EQ(model.sizing,
            Sizing(SizeByAspect{u"aspect_ratio"_s,
                                {u"1:1"_s, u"3:2"_s, u"2:3"_s, u"4:3"_s, u"3:4"_s, u"16:9"_s, u"9:16"_s, u"4:5"_s}}));
  EXPECT_EQ(with(R"({"aspect_ratio":{"type":"number"}})").model().sizing, Sizing(NoSizing{}));
}

TEST(SchemaReader, SendsPngOnlyWhereItIsListed) {
  EXPECT_TRUE(with(R"({"output_format":{"enum":["jpeg","png"]}})").model().pngOutput);
  EXPECT_TRUE(with(R"({"output_format":{"const":"png"}})").model().pngOutput);
  EXPECT_FALSE(with(R"({"output_format":{"enum":["jpeg","webp"]}})").model().pngOutput);
  EXPECT_FALSE(with(R"({"output_format":{"type":"string"}})").model().pngOutput);
}

TEST(SchemaReader, GivesARequiredSeedToEachRequest) {
  const FalModel needed = with(R"({"seed":{"type":"integer"}})", R"(["seed"])").model();
  EXPECT_TRUE(needed.hasSeed);
  EXPECT_EQ(needed.seedRequired, true);
  const FalModel free = with(R"({"seed":{"anyOf":[{"type":"integer"},{"type":"null"}]}})").model();
  EXPECT_TRUE(free.hasSeed);
  EXPECT_FALSE(free.seedRequired);
}

TEST(SchemaReader, ChoosesTheFieldOfPicturesInTheFixedOrder) {
  const QByteArray list = R"({"type":"array","items":{"type":"string"}})";
  const QByteArray one = R"({"type":"string"})";
  EXPECT_EQ(
      listField(with("{\"image_url\":" + one + ",\"a_image_urls\":" + list + ",\"image_urls\":" + list + "}").model()),
      u"image_urls"_s);
  EXPECT_EQ(listField(with("{\"image_url\":" + one + ",\"reference_image_urls\":" + list + "}").model()),
            u"reference_image_urls"_s);
  EXPECT_EQ(singleField(with("{\"input_image_url\":" + one + ",\"start_image_url\":" + one + "}").model()),
            u"start_image_url"_s);
  EXPECT_EQ(singleField(with("{\"style_image_url\":" + one + "}", R"(["style_image_url"])").model()),
            u"style_image_url"_s);
  EXPECT_EQ(singleField(with("{\"style_image_url\":" + one + "}").model()), QString());
  EXPECT_EQ(singleField(with("{\"Image_URL\":" + one + "}").model()), QString());
}

TEST(SchemaReader, TellsWhetherThePictureIsNeeded) {
  const QByteArray list = R"({"image_urls":{"anyOf":[{"type":"array","items":{"type":"string"}},{"type":"null"}]}})";
  EXPECT_EQ(with(list, R"(["image_urls"])").model().imageInput, ImageInput(ListInput{u"image_urls"_s, true}));
  EXPECT_EQ(with(list).model().imageInput, ImageInput(ListInput{u"image_urls"_s, false}));
}

TEST(SchemaReader, DecidesBetweenFieldsByTheDisplayOrderThenTheDocuments) {
  const QByteArray list = R"({"type":"array","items":{"type":"string"}})";
  MadeSchema made = with("{\"z_image_urls\":" + list + ",\"a_image_urls\":" + list + "}");
  EXPECT_EQ(listField(made.model()), u"z_image_urls"_s);
  made.order = R"(["a_image_urls"])";
  EXPECT_EQ(listField(made.model()), u"a_image_urls"_s);
}

TEST(SchemaReader, DoesNotTakeOtherMediaForPictures) {
  for (const QByteArray& mark :
       {R"("_fal_ui_field":"video")", R"("ui":{"field":"audio"})", R"("_fal_ui_field":"archive")"}) {
    EXPECT_EQ(with("{\"image_url\":{\"type\":\"string\"," + mark + "}}", R"(["image_url"])").missing(),
              QStringList{u"image_url"_s});
    EXPECT_EQ(
        listField(with("{\"image_urls\":{\"type\":\"array\",\"items\":{\"type\":\"string\"," + mark + "}}}").model()),
        QString());
  }
  EXPECT_EQ(with(R"({"image_urls":{"type":"array","items":{"type":"object"}}})", R"(["image_urls"])").missing(),
            QStringList{u"image_urls"_s});
}

TEST(SchemaReader, KeepsTheLimitsOfPictures) {
  const FalModel model = with(R"({"image_urls":{"type":"array","minItems":2,"maxItems":3,
        "items":{"type":"string","x-fal":{"max_file_size":5000000}}},
      "end_image_url":{"anyOf":[{"type":"string","max_file_size":4000000},{"type":"null"}]}})")
                             .model();
  EXPECT_EQ(model.inputByteLimit, 4000000);
  EXPECT_EQ(model.minInputs, 2);
  EXPECT_EQ(model.maxInputs, 3);
  EXPECT_EQ(model.option().maxReferences, 3);
}

TEST(SchemaReader, FindsTheEndFrame) {
  const FalModel model =
      with(R"({"image_url":{"type":"string"},"last_frame_url":{"type":"string"},"tail_image_url":{"type":"string"}})",
           R"(["image_url"])")
          .model();
  EXPECT_EQ(model.endImageField, u"tail_image_url"_s);
  EXPECT_FALSE(model.endImageRequired);
  const FalModel needed = with(R"({"first_frame_url":{"type":"string"},"last_frame_url":{"type":"string"}})",
                               R"(["first_frame_url","last_frame_url"])")
                              .model();
  EXPECT_EQ(needed.endImageField, u"last_frame_url"_s);
  EXPECT_EQ(needed.endImageRequired, true);
}

TEST(SchemaReader, ReadsTheCameraWhenAllThreeAnglesAreThere) {
  EXPECT_EQ(
      with(R"({"horizontal_angle":{"type":"number"},"vertical_angle":{"type":"number"},"zoom":{"type":"number"}})")
          .model()
          .camera,
      true);
  EXPECT_FALSE(with(R"({"horizontal_angle":{"type":"number"},"zoom":{"type":"number"}})").model().camera);
}

TEST(SchemaReader, FillsRequiredFieldsThatABodyMayOmit) {
  const FalModel model = with(R"({"duration":{"type":"integer","minimum":4,"maximum":12},
      "resolution":{"enum":["480p","720p"],"default":"720p"},"quality":{"enum":["low","high"],"default":"best"},
      "generate_audio":{"type":"boolean","default":false},"output_format":{"enum":["jpeg"]},
      "image_size":{"enum":["square"]}})",
                              R"(["duration","resolution","quality","generate_audio","output_format","image_size"])")
                             .model();
  EXPECT_EQ(model.defaultsJSON,
            u"{\"duration\":4,\"generate_audio\":false,\"image_size\":\"square\","
            u"\"output_format\":\"jpeg\",\"quality\":\"low\",\"resolution\":\"720p\"}"_s);
}

TEST(SchemaReader, NamesARequiredFieldThatHasNothingToFillItWith) {
  EXPECT_EQ(with(R"({"duration":{"type":"string"},"generate_audio":{"type":"boolean"},"audio":{"type":"string"}})",
                 R"(["generate_audio","duration","audio"])")
                .missing(),
            (QStringList{u"generate_audio"_s, u"duration"_s, u"audio"_s}));
}

TEST(SchemaReader, NeedsASecondRequiredPictureNamed) {
  EXPECT_EQ(with(R"({"image_url":{"type":"string"},"style_image_url":{"type":"string"}})",
                 R"(["image_url","style_image_url"])")
                .missing(),
            QStringList{u"style_image_url"_s});
}

TEST(SchemaReader, MergesPartsAndLetsWhatStandsBesideAReferenceWin) {
  MadeSchema made = with(R"({"resolution":{"$ref":"#/components/schemas/R","default":"2K"}})");
  made.schemas = R"("R":{"type":"string","enum":["1K","2K"],"default":"1K"},"Base":{"type":"object",
      "properties":{"prompt":{"type":"string"}},"required":["prompt"]})";
  EXPECT_EQ(settingOf(made.model(), u"resolution"_s).defaultValue, u"2K"_s);
  QByteArray merged = made.text();
  merged.replace("{\"schema\":{\"$ref\":\"#/components/schemas/PaintInput\"}}",
                 "{\"schema\":{\"allOf\":[{\"$ref\":\"#/components/schemas/PaintInput\"},"
                 "{\"$ref\":\"#/components/schemas/Base\"}],\"properties\":{\"seed\":{\"type\":\"integer\"}}}}");
  const FalModel model = modelFromSchema(test::paintListing(), merged);
  EXPECT_TRUE(model.hasPrompt);
  EXPECT_EQ(model.promptRequired, true);
  EXPECT_TRUE(model.hasSeed);
  EXPECT_TRUE(model.setting(u"resolution"_s));
}

TEST(SchemaReader, LeavesOutAFieldWhoseReferenceLeadsNowhere) {
  EXPECT_EQ(with(R"({"prompt":{"type":"string"},"image_url":{"$ref":"#/components/schemas/Gone"}})", R"(["image_url"])")
                .missing(),
            QStringList{u"image_url"_s});
}

TEST(SchemaReader, FollowsAtMostThirtyTwoReferences) {
  const auto chain = [](int links) {
    MadeSchema made =
        with(R"({"seed":{"type":"integer"},"prompt":{"$ref":"#/components/schemas/L0"}})", R"(["prompt"])");
    for (int link = 0; link + 1 < links; ++link) {
      made.schemas +=
          QStringLiteral("\"L%1\":{\"$ref\":\"#/components/schemas/L%2\"},").arg(link).arg(link + 1).toUtf8();
    }
    made.schemas += QStringLiteral("\"L%1\":{\"type\":\"string\"}").arg(links - 1).toUtf8();
    return made;
  };
  EXPECT_TRUE(chain(32).model().hasPrompt);
  EXPECT_EQ(chain(33).missing(), QStringList{u"prompt"_s});
}

TEST(SchemaIdentity, IsWhatTheDocumentSaysOrItsOnePostPath) {
  const QByteArray text = with(R"({"prompt":{"type":"string"}})").text();
  EXPECT_EQ(schemaIdentity(text).id, u"acme/paint"_s);
  QByteArray said = text;
  said.replace("\"openapi\":\"3.0.4\"", R"("info":{"x-fal-metadata":{"endpointId":"a/b","category":"llm"}})");
  EXPECT_EQ(schemaIdentity(said).id, u"a/b"_s);
  EXPECT_EQ(schemaIdentity(said).category, u"llm"_s);
}

}  // namespace
}  // namespace sorvan::catalogue
