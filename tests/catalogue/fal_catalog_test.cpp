#include "catalogue/fal_catalog.h"

#include <gtest/gtest.h>

#include <semaphore>
#include <thread>

#include "catalogue/audio_models.h"
#include "catalogue/catalog_facts.h"
#include "catalogue/fal_model_json.h"
#include "catalogue/listings.h"

namespace sorvan::catalogue {
namespace {

using namespace Qt::StringLiterals;

FalModel added(const QString& id) {
  FalModel model;
  model.id = id;
  model.name = u"Added "_s + id;
  model.output = MediaType::video;
  return model;
}

std::shared_ptr<Settings> settingsHolding(const QByteArray& text) {
  auto settings = std::make_shared<Settings>();
  settings->set(u"falModels.v2"_s, QString::fromUtf8(text));
  return settings;
}

TEST(FalCatalog, KeepsAddedModelsInTheSettings) {
  const auto settings = std::make_shared<Settings>();
  FalCatalog first(settings);
  first.add(added(u"acme/one"_s));
  first.add(added(u"acme/two"_s));
  FalModel changed = added(u"acme/one"_s);
  changed.name = u"Renamed"_s;
  first.add(changed);
  const FalCatalog second(settings);
  ASSERT_EQ(second.added().size(), 2u);
  EXPECT_EQ(second.added()[0].name, u"Renamed"_s);
  EXPECT_EQ(second.added()[1].id, u"acme/two"_s);
  EXPECT_EQ(second.model(u"acme/two"_s), added(u"acme/two"_s));
}

TEST(FalCatalog, TakesAnAddedModelOutAgain) {
  const auto settings = std::make_shared<Settings>();
  FalCatalog catalog(settings);
  catalog.add(added(u"acme/one"_s));
  catalog.remove(u"acme/one"_s);
  EXPECT_EQ(FalCatalog(settings).model(u"acme/one"_s), std::nullopt);
}

TEST(FalCatalog, PutsAModelBackWhereItStood) {
  const auto settings = std::make_shared<Settings>();
  FalCatalog catalog(settings);
  for (const QString& id : {u"acme/one"_s, u"acme/two"_s, u"acme/three"_s}) catalog.add(added(id));
  const auto before = catalog.added();
  const auto removed = catalog.remove(u"acme/two"_s);
  ASSERT_TRUE(removed);
  EXPECT_FALSE(catalog.addedIDs().contains(u"acme/two"_s));
  catalog.restore(*removed);
  EXPECT_EQ(catalog.added(), before);
  EXPECT_EQ(FalCatalog(settings).added(), before);
}

TEST(FalCatalog, KeepsAModelThatWasAddedAgainBeforeTheRestoring) {
  FalCatalog catalog(std::make_shared<Settings>());
  catalog.add(added(u"acme/one"_s));
  const auto removed = catalog.remove(u"acme/one"_s);
  FalModel newer = added(u"acme/one"_s);
  newer.name = u"Newer"_s;
  catalog.add(newer);
  catalog.restore(*removed);
  ASSERT_EQ(catalog.added().size(), 1u);
  EXPECT_EQ(catalog.added()[0].name, u"Newer"_s);
}

TEST(FalCatalog, HandsOutModelsThatNoLaterChangeTouches) {
  FalCatalog catalog(std::make_shared<Settings>());
  catalog.add(added(u"acme/one"_s));
  const auto found = catalog.find(u"acme/one"_s);
  FalModel newer = added(u"acme/one"_s);
  newer.name = u"Newer"_s;
  catalog.add(newer);
  catalog.remove(u"acme/one"_s);
  EXPECT_EQ(*found, added(u"acme/one"_s));
  EXPECT_FALSE(catalog.find(u"acme/one"_s));
  EXPECT_EQ(catalog.find(u"fal-ai/nano-banana-2"_s).get(), &nanoBanana2());
}

TEST(FalCatalog, TellsEveryThreadOfAChangeAtOnce) {
  FalCatalog catalog(std::make_shared<Settings>());
  FalCatalog other(std::make_shared<Settings>());
  FalModel model = nanoBanana2();
  model.id = QStringLiteral("acme/new");
  std::binary_semaphore changed{0};
  std::binary_semaphore looked{0};
  bool before = true;
  bool after = false;
  bool elsewhere = true;
  std::thread reader([&] {
    before = catalog.find(model.id) != nullptr;
    looked.release();
    changed.acquire();
    after = catalog.find(model.id) != nullptr;
    elsewhere = other.find(model.id) != nullptr;
  });
  looked.acquire();
  catalog.add(model);
  changed.release();
  reader.join();
  EXPECT_FALSE(before);
  EXPECT_TRUE(after);
  EXPECT_FALSE(elsewhere);
}

TEST(FalCatalog, TakesNothingOutThatWasNotAdded) {
  const auto settings = std::make_shared<Settings>();
  FalCatalog catalog(settings);
  EXPECT_FALSE(catalog.remove(u"fal-ai/flux/schnell"_s));
  EXPECT_FALSE(catalog.remove(u"nobody/knows"_s));
  EXPECT_FALSE(settings->contains(u"falModels.v2"_s));
}

TEST(FalCatalog, KnowsWhichIdsNeedNoAdding) {
  FalCatalog catalog(std::make_shared<Settings>());
  catalog.add(added(u"acme/one"_s));
  EXPECT_TRUE(catalog.addedIDs().contains(u"acme/one"_s));
  EXPECT_TRUE(catalog.addedIDs().contains(u"fal-ai/nano-banana-2"_s));
  EXPECT_FALSE(catalog.addedIDs().contains(u"fal-ai/nano-banana-pro"_s));
}

TEST(FalCatalog, LetsTheBuiltInRecordWinOverAStoredOne) {
  const FalModel old = added(u"fal-ai/nano-banana-2"_s);
  const FalCatalog catalog(settingsHolding(modelsToText({old, added(u"acme/one"_s)})));
  EXPECT_EQ(catalog.added().size(), 1u);
  EXPECT_EQ(catalog.model(old.id), nanoBanana2());
}

TEST(FalCatalog, IgnoresTheAddingOfABuiltInModel) {
  const auto settings = std::make_shared<Settings>();
  FalCatalog catalog(settings);
  catalog.add(added(u"fal-ai/flux/schnell"_s));
  EXPECT_TRUE(catalog.added().empty());
  EXPECT_FALSE(settings->contains(u"falModels.v2"_s));
}

TEST(FalCatalog, StartsEmptyOnACorruptListAndKeepsItsTextBeforeTheFirstWrite) {
  const auto settings = settingsHolding("{not json");
  FalCatalog catalog(settings);
  EXPECT_TRUE(catalog.added().empty());
  EXPECT_FALSE(settings->contains(u"falModels.v2.unreadable"_s));
  catalog.add(added(u"acme/one"_s));
  EXPECT_EQ(settings->get<QString>(u"falModels.v2.unreadable"_s), u"{not json"_s);
  EXPECT_EQ(FalCatalog(settings).added().size(), 1u);
  catalog.add(added(u"acme/two"_s));
  EXPECT_EQ(settings->get<QString>(u"falModels.v2.unreadable"_s), u"{not json"_s);
}

TEST(FalCatalog, OneBadElementCostsOnlyItselfAndIsKeptAside) {
  const QByteArray text = "[{\"id\":\"newer\",\"output\":\"hologram\"}," + modelsToText({added(u"acme/one"_s)}).mid(1);
  const auto settings = settingsHolding(text);
  FalCatalog catalog(settings);
  ASSERT_EQ(catalog.added().size(), 1u);
  catalog.add(added(u"acme/two"_s));
  EXPECT_EQ(settings->get<QString>(u"falModels.v2.unreadable"_s), QString::fromUtf8(text));
}

TEST(FalCatalog, NamesAnyModel) {
  FalCatalog catalog(std::make_shared<Settings>());
  catalog.add(added(u"acme/one"_s));
  EXPECT_EQ(catalog.displayName(u"acme/one"_s), u"Added acme/one"_s);
  EXPECT_EQ(catalog.displayName(u"fal-ai/flux/schnell"_s), u"FLUX.1 Schnell"_s);
  EXPECT_EQ(catalog.displayName(u"fal-ai/veo3.1"_s), u"Veo 3.1"_s);
  EXPECT_EQ(catalog.displayName(u"fal-ai/birefnet/v2"_s), u"Remove Background (BiRefNet)"_s);
  EXPECT_EQ(catalog.displayName(u"fal-ai/sam-3/image"_s), u"SAM 3"_s);
  EXPECT_EQ(catalog.displayName(u"fal-ai/topaz/upscale/image"_s), u"Topaz"_s);
  EXPECT_EQ(catalog.displayName(u"fal-ai/qwen-image-edit-2511-multiple-angles"_s), u"Qwen Multiple Angles"_s);
  EXPECT_EQ(catalog.displayName(u"fal-ai/some/thing"_s), u"some/thing"_s);
  EXPECT_EQ(catalog.displayName(u"acme/thing"_s), u"acme/thing"_s);
}

TEST(FalCatalog, ListsBuiltInModelsFirst) {
  FalCatalog catalog(std::make_shared<Settings>());
  catalog.add(added(u"acme/one"_s));
  const auto options = catalog.options();
  ASSERT_EQ(options.size(), builtInModels().size() + 1);
  EXPECT_EQ(options.front().id, u"fal-ai/nano-banana-2"_s);
  EXPECT_EQ(options[1].id, u"fal-ai/flux/schnell"_s);
  EXPECT_EQ(options[2].id, audioModels(AudioKind::voice).front().id);
  EXPECT_EQ(options.back().id, u"acme/one"_s);
}

TEST(FalCatalog, OffersPicturesAndClipsForComparison) {
  FalCatalog catalog(std::make_shared<Settings>());
  catalog.add(added(u"acme/one"_s));
  FalModel ofClips = added(u"acme/two"_s);
  ofClips.videoInput = true;
  catalog.add(ofClips);
  const auto offered = catalog.comparisonModels();
  ASSERT_EQ(offered.size(), 3u);
  EXPECT_EQ(offered[2].model.id, u"acme/one"_s);
  for (const auto& each : offered) EXPECT_EQ(each.provider, ProviderID::fal);
}

TEST(BuiltInModels, HaveIdsOfTheirOwn) {
  QSet<QString> ids;
  for (const FalModel& model : builtInModels()) ids.insert(model.id);
  EXPECT_EQ(static_cast<std::size_t>(ids.size()), builtInModels().size());
  EXPECT_EQ(builtInModels().size(), 2u + 12 + 8 + 5 + 3 + 4 + 5 + 1);
}

TEST(BuiltInModels, SurviveTheStoredForm) {
  const StoredModels read = modelsFromText(modelsToText(builtInModels()));
  EXPECT_TRUE(read.complete);
  EXPECT_EQ(read.models, builtInModels());
}

TEST(Listings, HaveTheirNumbersOfRows) {
  const auto& recommended = recommendedModels();
  EXPECT_EQ(recommended.size(), 4u);
  EXPECT_EQ(recommended.at(u"text-to-image"_s).size(), 13u);
  EXPECT_EQ(recommended.at(u"image-to-image"_s).size(), 12u);
  EXPECT_EQ(recommended.at(u"text-to-video"_s).size(), 11u);
  EXPECT_EQ(recommended.at(u"image-to-video"_s).size(), 11u);
  EXPECT_EQ(upscaleTools().front().name, u"SeedVR2"_s);
  EXPECT_EQ(upscaleTools().front().badge, u"Tool"_s);
  EXPECT_EQ(cutOutTools().front().id, u"fal-ai/birefnet/v2"_s);
}

TEST(CatalogFacts, TellTheGenerationRoomWhatAModelDoes) {
  const auto catalog = std::make_shared<FalCatalog>(std::make_shared<Settings>());
  const CatalogFacts facts(catalog);
  EXPECT_FALSE(facts.find(u"nobody/knows"_s).has_value());
  const auto flux = facts.find(u"fal-ai/flux/schnell"_s);
  ASSERT_TRUE(flux);
  EXPECT_EQ(flux->sizes.size(), 8);
  const auto extend = facts.find(u"mirelo-ai/sfx1.6/extend-audio"_s);
  ASSERT_TRUE(extend);
  EXPECT_TRUE(extend->extendsSound);
  EXPECT_TRUE(extend->audioInput);
  EXPECT_FALSE(extend->makesSoundOfClip);
  const auto music = facts.find(u"sonilo/v1.1/video-to-music"_s);
  ASSERT_TRUE(music);
  EXPECT_TRUE(music->makesSoundOfClip);
  EXPECT_TRUE(music->makesMusic);
  EXPECT_TRUE(music->videoInput);
  EXPECT_EQ(music->output, MediaType::audio);
}

}  // namespace
}  // namespace sorvan::catalogue
