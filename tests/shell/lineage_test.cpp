#include "shell/lineage.h"

#include <gtest/gtest.h>

#include "core/library_fixture.h"

namespace sorvan::shell {
namespace {

using core::RelationshipType;

struct LineageTest : test::LibraryFixture {
  double age = 1'000'000;

  LineageTest() { open(); }
  // Each item is younger than those before it.
  core::AssetRef add(const QString& name) {
    const core::AssetRef asset = store.context().insert(newAsset(QStringLiteral("Inbox/generated/") + name, age--));
    store.save(core::LibraryTables::none);
    store.registerRecords({{asset}, {}, {}, {}});
    return asset;
  }
  void link(const QUuid& parent, const QUuid& child, RelationshipType type = RelationshipType::editedFrom) {
    const core::RelationshipRef edge = store.context().insert(core::AssetRelationship(parent, child, type));
    store.save(core::LibraryTables::none);
    store.registerRecords({{}, {}, {edge}, {}});
  }
  void giveRecipe(const core::AssetRef& asset, const core::GenerationRequest& request) {
    core::Generation made;
    made.id = base::newUuid();
    made.assetID = asset->id;
    made.jobID = base::newUuid();
    made.recipeData = base::encodeJson(request);
    const core::GenerationRef ref = store.context().insert(made);
    store.save(core::LibraryTables::none);
    store.registerRecords({{}, {ref}, {}, {}});
  }
  // “a:0 Original | b:1 Edited from”
  std::string tree(const core::AssetRef& opened) {
    QStringList rows;
    for (const LineageRow& row : lineageRows(store, *opened))
      rows << QStringLiteral("%1:%2 %3")
                  .arg(row.asset ? row.asset->filename() : QStringLiteral("?"))
                  .arg(row.depth)
                  .arg(row.label);
    return rows.join(QStringLiteral(" | ")).toStdString();
  }
};

TEST_F(LineageTest, AnItemWithoutRelationsIsOneRow) {
  const core::AssetRef alone = add(QStringLiteral("a"));
  EXPECT_EQ(tree(alone), "a:0 Original");
  EXPECT_TRUE(lineageRows(store, *alone).front().openedFrom);
}

TEST_F(LineageTest, TheWholeFamilyIsShownFromWhereverItIsOpened) {
  const core::AssetRef a = add(QStringLiteral("a"));
  const core::AssetRef b = add(QStringLiteral("b"));
  const core::AssetRef c = add(QStringLiteral("c"));
  const core::AssetRef d = add(QStringLiteral("d"));
  link(a->id, c->id, RelationshipType::imageToVideo);
  link(a->id, b->id);
  link(b->id, d->id, RelationshipType::upscaledFrom);
  const std::string expected = "a:0 Original | b:1 Edited from | d:2 Upscaled from | c:1 Image to video";
  for (const core::AssetRef& opened : {a, b, c, d}) EXPECT_EQ(tree(opened), expected);
  EXPECT_TRUE(lineageRows(store, *d)[2].openedFrom);
}

TEST_F(LineageTest, TheChildOfTwoParentsIsShownOnceUnderTheFirst) {
  const core::AssetRef a = add(QStringLiteral("a"));
  const core::AssetRef b = add(QStringLiteral("b"));
  const core::AssetRef c = add(QStringLiteral("c"));
  const core::AssetRef d = add(QStringLiteral("d"));
  link(a->id, b->id);
  link(a->id, c->id);
  link(c->id, d->id);
  link(b->id, d->id, RelationshipType::referenceFor);
  EXPECT_EQ(tree(d), "a:0 Original | b:1 Edited from | d:2 Reference for | c:1 Edited from");
}

TEST_F(LineageTest, FurtherRootsFollowByDateAndTellWhatWasImported) {
  const core::AssetRef a = add(QStringLiteral("a"));
  const core::AssetRef b = add(QStringLiteral("b"));
  const core::AssetRef c = add(QStringLiteral("c"));
  store.context().edit(b).sourceTypeRaw = rawValue(core::AssetSourceType::imported);
  store.save(core::LibraryTables::none);
  link(b->id, c->id);
  link(a->id, c->id);
  EXPECT_EQ(tree(c), "a:0 Original | c:1 Edited from | b:0 Imported");
}

TEST_F(LineageTest, AVariationTellsItsVarianceAndAShotItsSet) {
  const core::AssetRef a = add(QStringLiteral("a"));
  const core::AssetRef b = add(QStringLiteral("b"));
  const core::AssetRef c = add(QStringLiteral("c"));
  const core::AssetRef d = add(QStringLiteral("d"));
  core::GenerationRequest varied;
  varied.variance = QStringLiteral("Bold");
  giveRecipe(b, varied);
  core::GenerationRequest shot;
  shot.shot = QStringLiteral("close");
  giveRecipe(c, shot);
  for (const core::AssetRef& child : {b, c, d}) link(a->id, child->id, RelationshipType::variationOf);
  EXPECT_EQ(tree(a), "a:0 Original | b:1 Bold | c:1 Shot Set | d:1 Variation of");
}

TEST_F(LineageTest, AShotIsOfItsSetThoughItsPictureWasAReference) {
  const core::AssetRef a = add(QStringLiteral("a"));
  const core::AssetRef b = add(QStringLiteral("b"));
  const core::AssetRef c = add(QStringLiteral("c"));
  core::GenerationRequest shot;
  shot.shot = QStringLiteral("close");
  shot.variance = QStringLiteral("Bold");
  giveRecipe(b, shot);
  link(a->id, b->id, RelationshipType::referenceFor);
  link(a->id, c->id, RelationshipType::referenceFor);
  EXPECT_EQ(tree(a), "a:0 Original | b:1 Shot Set | c:1 Reference for");
}

TEST_F(LineageTest, ALostMiddleKeepsItsChildrenTogether) {
  const core::AssetRef a = add(QStringLiteral("a"));
  const core::AssetRef b = add(QStringLiteral("b"));
  const core::AssetRef c = add(QStringLiteral("c"));
  link(a->id, b->id);
  link(b->id, c->id);
  store.context().remove(b);
  store.save(core::LibraryTables::assets);
  EXPECT_EQ(tree(c), "a:0 Original | ?:1 Deleted | c:2 Edited from");
}

TEST_F(LineageTest, WhatIsInTrashKeepsItsRow) {
  const core::AssetRef a = add(QStringLiteral("a"));
  const core::AssetRef b = add(QStringLiteral("b"));
  link(a->id, b->id);
  store.context().edit(a).deletedAt = clock->now();
  store.save(core::LibraryTables::none);
  EXPECT_EQ(tree(b), "a:0 Original | b:1 Edited from");
  EXPECT_TRUE(lineageRows(store, *b)[0].asset->isTrashed());
}

TEST_F(LineageTest, ACycleBeginsWhereItWasOpenedAndEnds) {
  const core::AssetRef a = add(QStringLiteral("a"));
  const core::AssetRef b = add(QStringLiteral("b"));
  const core::AssetRef c = add(QStringLiteral("c"));
  link(a->id, b->id);
  link(b->id, c->id);
  link(c->id, a->id);
  EXPECT_EQ(tree(b), "b:0 Original | c:1 Edited from | a:2 Edited from");
  const core::AssetRef self = add(QStringLiteral("s"));
  link(self->id, self->id);
  EXPECT_EQ(tree(self), "s:0 Original");
}

TEST_F(LineageTest, ACycleBesideARootIsShownToo) {
  const core::AssetRef root = add(QStringLiteral("r"));
  const core::AssetRef a = add(QStringLiteral("a"));
  const core::AssetRef b = add(QStringLiteral("b"));
  const core::AssetRef leaf = add(QStringLiteral("l"));
  link(a->id, b->id);
  link(b->id, a->id);
  link(b->id, leaf->id);
  link(root->id, leaf->id);
  const std::vector<LineageRow> rows = lineageRows(store, *leaf);
  ASSERT_EQ(rows.size(), 4u);
  EXPECT_EQ(rows[0].asset, root);
}

TEST_F(LineageTest, AFamilyOfManyGenerationsNeedsNoStackOfItsDepth) {
  core::NewRecords records;
  std::vector<QUuid> ids;
  for (int generation = 0; generation < 20'000; ++generation) {
    records.assets.push_back(store.context().insert(newAsset(QStringLiteral("Inbox/x%1.png").arg(generation), age--)));
    ids.push_back(records.assets.back()->id);
    if (generation > 0)
      records.relationships.push_back(store.context().insert(
          core::AssetRelationship(ids[ids.size() - 2], ids.back(), RelationshipType::editedFrom)));
  }
  store.registerRecords(records);
  const std::vector<LineageRow> rows = lineageRows(store, *records.assets[10'000]);
  ASSERT_EQ(rows.size(), 20'000u);
  EXPECT_EQ(rows.back().depth, 19'999);
  store.rollBack();
}

}  // namespace
}  // namespace sorvan::shell
