// Every model that the studio recommends, works with or sounds with: read from the document that the service simulator
// publishes for it, and its bodies held against that document by the simulator itself.
#include <QJsonDocument>

#include "catalogue/audio_models.h"
#include "catalogue/catalogue_client.h"
#include "catalogue/listings.h"
#include "catalogue/request_body.h"
#include "catalogue/schema_reader.h"
#include "core/image_format.h"
#include "roundtrip/provider_bench.h"
#include "support/run_task.h"

namespace sorvan::test {
namespace {

using namespace Qt::StringLiterals;
using catalogue::BodyParts;
using catalogue::FalListing;
using catalogue::FalModel;

const QString picture = u"https://v3.fal.media/files/b/0/picture.png"_s;

std::vector<FalListing> recommendedAndTools() {
  std::vector<FalListing> rows;
  for (const auto& [category, some] : catalogue::recommendedModels()) rows.insert(rows.end(), some.begin(), some.end());
  for (const auto* tools : {&catalogue::cutOutTools(), &catalogue::upscaleTools(), &catalogue::shotAngleTools()})
    rows.insert(rows.end(), tools->begin(), tools->end());
  return rows;
}

std::vector<FalModel> soundModels() {
  std::vector<FalModel> models;
  for (const auto kind : {catalogue::AudioKind::voice, catalogue::AudioKind::music, catalogue::AudioKind::effect})
    models.insert(models.end(), catalogue::audioModels(kind).begin(), catalogue::audioModels(kind).end());
  for (const auto* some : {&catalogue::soundTools(), &catalogue::extendModels(), &catalogue::clipEffectModels(),
                           &catalogue::clipMusicModels()})
    models.insert(models.end(), some->begin(), some->end());
  return models;
}

bool needsInput(const FalModel& model) { return model.option().requiresReference; }

QString promptOf(const FalModel& model) {
  return model.dialogue.value_or(false) ? u"Rachel: The sea is calm."_s : u"a calm sea at dusk"_s;
}

BodyParts smallest(const FalModel& model) {
  BodyParts parts;
  parts.size = u"1024x1024"_s;
  if (!model.editableSizes().isEmpty()) parts.size = model.editableSizes().constFirst();
  if (model.option().needsPrompt) parts.prompt = promptOf(model);
  if (needsInput(model)) parts.inputs = QStringList(model.minInputs.value_or(1), picture);
  if (model.endImageRequired.value_or(false)) parts.endImage = picture;
  if (model.seedRequired.value_or(false)) parts.seed = 5;
  for (const auto& text : model.texts.value_or(std::vector<catalogue::TextInput>()))
    if (text.required) parts.options.insert(text.field, u"la la la"_s);
  return parts;
}

BodyParts fullest(const FalModel& model, bool last) {
  BodyParts parts = smallest(model);
  parts.prompt = promptOf(model);
  parts.count = model.maxCount;
  parts.seed = 5;
  if (last && !model.editableSizes().isEmpty()) parts.size = model.editableSizes().constLast();
  if (model.option().supportsReferences) parts.inputs = QStringList(model.option().maxReferences, picture);
  if (model.endImageField) parts.endImage = picture;
  for (const auto& setting : model.allSettings()) {
    const QString toggled = last ? u"true"_s : u"false"_s;
    parts.options.insert(setting.field, setting.values.isEmpty() ? toggled
                                        : last                   ? setting.values.constLast()
                                                                 : setting.values.constFirst());
  }
  for (const auto& text : model.texts.value_or(std::vector<catalogue::TextInput>()))
    parts.options.insert(text.field, u"la la la"_s);
  return parts;
}

class PublishedCatalogue : public RoundTrip {
 protected:
  // Nothing is made: what is refused shows in the ledger, where it cost nothing.
  PublishedCatalogue() { sandbox.setManualPace(true); }

  void expectAccepted(const FalModel& model, const BodyParts& parts) {
    const QJsonObject body = requestBody(model, parts);
    platform::HttpRequest request;
    request.url = QUrl(u"https://queue.fal.run/"_s + model.id);
    request.verb = "POST";
    request.headers = {{"Authorization", "Key " + sandbox.key().toUtf8()}, {"Content-Type", "application/json"}};
    request.body = QJsonDocument(body).toJson(QJsonDocument::Compact);
    EXPECT_EQ(runTask(transport->send(request, {})).status, 200) << model.id.toStdString();
    EXPECT_GT(sandbox.ledger().last()[u"amount"_s].toDouble(), 0)
        << model.id.toStdString() << " refuses " << request.body.toStdString();
  }
  void expectBodiesAccepted(const FalModel& model) {
    expectAccepted(model, smallest(model));
    expectAccepted(model, fullest(model, false));
    expectAccepted(model, fullest(model, true));
  }
};

TEST_F(PublishedCatalogue, EveryRecommendedModelAndToolIsAcceptedAndItsBodiesToo) {
  const catalogue::CatalogClient client(transport);
  for (const FalListing& row : recommendedAndTools()) {
    try {
      expectBodiesAccepted(runTask(client.load(row, {})));
    } catch (const base::SorvanError& refusal) {
      ADD_FAILURE() << row.id.toStdString() << ": " << refusal.message().toStdString();
    }
  }
}

TEST_F(PublishedCatalogue, EveryModelOfSoundSendsWhatItsDocumentTakes) {
  EXPECT_GT(soundModels().size(), 30U);
  for (const FalModel& model : soundModels()) expectBodiesAccepted(model);
}

TEST_F(PublishedCatalogue, TheBuiltInPictureModelsSendWhatTheirDocumentsTake) {
  for (const FalModel& model : catalogue::builtInModels())
    if (model.output == core::MediaType::image) expectBodiesAccepted(model);
}

TEST_F(PublishedCatalogue, PagesOfEveryCategoryAreReadToTheirEnd) {
  const catalogue::CatalogClient client(transport);
  for (const auto& [category, rows] : catalogue::recommendedModels()) {
    catalogue::CatalogQuestion question{category, {}, 20, {}};
    QStringList ids;
    do {
      const auto page = runTask(client.search(question, {}));
      for (const auto& row : page.rows) ids << row.listing.id;
      question.page = page.next;
    } while (question.page && ids.size() < 1000);
    for (const FalListing& row : rows) EXPECT_TRUE(ids.contains(row.id)) << row.id.toStdString();
  }
}

TEST_F(PublishedCatalogue, ModelsThatCannotWorkAreRefusedWithAReason) {
  const catalogue::CatalogClient client(transport);
  for (const auto& id :
       {u"fal-ai/brushwork/inpainting"_s, u"fal-ai/restyle/video-to-video"_s, u"fal-ai/speakingface/image-to-video"_s,
        u"fal-ai/brushwork/trainer"_s, u"fal-ai/meshwork/image-to-3d"_s, u"openrouter/router"_s,
        u"openrouter/router/openai/v1/chat/completions"_s, u"fal-ai/roundabout/text-to-image"_s,
        u"fal-ai/silent/text-to-image"_s, u"fal-ai/storyline/text-to-video"_s, u"fal-ai/presets/text-to-image"_s,
        u"fal-ai/unsaid/text-to-image"_s, u"fal-ai/puppeteer/image-to-video"_s}) {
    const FalListing row{id, u"It"_s, u"text-to-image"_s, {}, {}};
    EXPECT_THROW(runTask(client.load(row, {})), catalogue::SchemaRefusal) << id.toStdString();
  }
}

}  // namespace
}  // namespace sorvan::test
