#include "generation/in_place_work.h"

#include <gtest/gtest.h>

#include "generation/studio.h"

namespace sorvan::generation {
namespace {

using namespace test;
using Kind = InPlaceWork::Kind;

TEST(WorkInPlace, FollowsFromRelationshipModelAndRole) {
  Studio studio;
  const auto workOf = [&](const GenerationRequest& request) {
    return inPlaceWork(request, *studio.store, *studio.facts);
  };
  GenerationRequest request = promptRequest();
  EXPECT_EQ(workOf(request), InPlaceWork());
  request.relationship = RelationshipType::upscaledFrom;
  EXPECT_EQ(workOf(request).kind, Kind::upscale);
  request.relationship = RelationshipType::imageToVideo;
  EXPECT_EQ(workOf(request).kind, Kind::animate);

  GenerationRequest edit = promptRequest();
  edit.referenceIDs = {QUuid::createUuid()};
  edit.referenceBindings = {bindingOf(edit.referenceIDs[0], QStringLiteral("A"), QStringLiteral("Edit source"))};
  EXPECT_EQ(workOf(edit), (InPlaceWork{Kind::edit, false, false}));
  edit.markup = {markedBox(QString())};
  EXPECT_EQ(workOf(edit), (InPlaceWork{Kind::edit, true, false}));

  ModelFact fact;
  fact.cutsOut = true;
  studio.facts->facts.insert(request.model, fact);
  EXPECT_EQ(workOf(edit).kind, Kind::cutOut);
  fact = ModelFact();
  fact.makesSoundOfClip = fact.makesMusic = true;
  studio.facts->facts.insert(request.model, fact);
  EXPECT_EQ(workOf(promptRequest()), (InPlaceWork{Kind::clipSound, false, true}));
}

TEST(WorkInPlace, AClipThatStartsWithAFrameOfAnotherGoesOnFromIt) {
  Studio studio;
  const AssetRef frame = studio.addAsset(MediaType::image, QStringLiteral("frame.png"), pictureBytes());
  NewRecords records;
  records.relationships = {
      studio.store->context().insert(AssetRelationship(QUuid::createUuid(), frame->id, RelationshipType::frameOf))};
  studio.store->save(LibraryTables::none);
  studio.store->registerRecords(records);
  GenerationRequest request = promptRequest();
  request.relationship = RelationshipType::imageToVideo;
  request.referenceIDs = {frame->id};
  EXPECT_EQ(inPlaceWork(request, *studio.store, *studio.facts).kind, Kind::continueClip);
}

}  // namespace
}  // namespace sorvan::generation
