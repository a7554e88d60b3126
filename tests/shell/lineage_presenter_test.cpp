#include "shell/lineage_presenter.h"

#include <gtest/gtest.h>

#include "desk.h"

namespace sorvan::shell {
namespace {

struct LineagePresenterTest : testing::Test {
  test::Desk desk;
  LineagePresenter lineage{desk.store, desk.state, desk.displays};

  core::AssetRef made(const QString& prompt) {
    desk.generate(prompt);
    desk.settle();
    desk.clock->advance(std::chrono::seconds(1));
    return desk.store.asset(desk.store.generationsOf(desk.newestJob()->id).front()->assetID);
  }
  void relate(const QUuid& parent, const QUuid& child, core::RelationshipType type) {
    const auto edge = desk.store.context().insert(core::AssetRelationship(parent, child, type));
    desk.store.save(core::LibraryTables::none);
    desk.store.registerRecords({{}, {}, {edge}, {}});
    test::runPosted();
  }
};

TEST_F(LineagePresenterTest, ALonelyItemIsItsOwnOriginalAndIsInspected) {
  const core::AssetRef item = made(QStringLiteral("a boat"));
  lineage.open(item->id);
  ASSERT_EQ(lineage.rows().size(), 1u);
  const LineageRowDisplay& row = lineage.rows().front();
  EXPECT_EQ(row.label, QStringLiteral("Original"));
  EXPECT_TRUE(row.openedFrom);
  EXPECT_TRUE(row.inspected);
  EXPECT_EQ(row.parentRow, -1);
  EXPECT_EQ(lineage.countText(), QStringLiteral("1 item"));
  EXPECT_EQ(desk.state.inspectedId(), item->id);
}

TEST_F(LineagePresenterTest, AFileFromOutsideSaysSoAlsoWhereItsModelIsKnown) {
  const core::AssetRef item = made(QStringLiteral("a boat"));
  lineage.open(item->id);
  const QString model = lineage.rows().front().detail;
  EXPECT_FALSE(model.isEmpty());
  desk.store.context().edit(item).sourceTypeRaw = rawValue(core::AssetSourceType::imported);
  desk.store.save(core::LibraryTables::none);
  lineage.open(item->id);
  EXPECT_EQ(lineage.rows().front().detail, QStringLiteral("Imported · ") + model);
  EXPECT_TRUE(lineage.rows().front().accessibleName.contains(QStringLiteral("Imported")));
}

TEST_F(LineagePresenterTest, ChildrenStandBelowTheirParentsWithTheirLines) {
  const core::AssetRef root = made(QStringLiteral("one"));
  const core::AssetRef first = made(QStringLiteral("two"));
  const core::AssetRef below = made(QStringLiteral("three"));
  const core::AssetRef second = made(QStringLiteral("four"));
  relate(root->id, first->id, core::RelationshipType::editedFrom);
  relate(first->id, below->id, core::RelationshipType::upscaledFrom);
  relate(root->id, second->id, core::RelationshipType::editedFrom);
  lineage.open(below->id);
  ASSERT_EQ(lineage.rows().size(), 4u);
  std::vector<std::pair<int, int>> shape;
  for (const LineageRowDisplay& row : lineage.rows()) shape.emplace_back(row.depth, row.parentRow);
  EXPECT_EQ(shape, (std::vector<std::pair<int, int>>{{0, -1}, {1, 0}, {2, 1}, {1, 0}}));
  EXPECT_EQ(lineage.rows()[1].label, QStringLiteral("Edited from"));
  EXPECT_TRUE(lineage.rows()[2].openedFrom);
  EXPECT_TRUE(lineage.rows()[2].accessibleName.contains(QStringLiteral("opened from, inspected")))
      << lineage.rows()[2].accessibleName.toStdString();
  EXPECT_TRUE(lineage.rows()[2].accessibleName.endsWith(QStringLiteral("level 3")));
}

TEST_F(LineagePresenterTest, InspectingMovesTheMarkAndTheInspector) {
  const core::AssetRef root = made(QStringLiteral("one"));
  const core::AssetRef child = made(QStringLiteral("two"));
  relate(root->id, child->id, core::RelationshipType::editedFrom);
  lineage.open(child->id);
  lineage.inspect(root->id);
  EXPECT_TRUE(lineage.rows()[0].inspected);
  EXPECT_FALSE(lineage.rows()[1].inspected);
  EXPECT_TRUE(lineage.rows()[1].openedFrom);
  EXPECT_EQ(desk.state.inspectedId(), root->id);
}

TEST_F(LineagePresenterTest, WhatWasDeletedForGoodKeepsItsPlaceAndCannotBeInspected) {
  const core::AssetRef root = made(QStringLiteral("one"));
  const core::AssetRef child = made(QStringLiteral("two"));
  const QUuid gone = base::newUuid();
  relate(root->id, gone, core::RelationshipType::editedFrom);
  relate(gone, child->id, core::RelationshipType::editedFrom);
  lineage.open(root->id);
  ASSERT_EQ(lineage.rows().size(), 3u);
  const LineageRowDisplay& row = lineage.rows()[1];
  EXPECT_TRUE(row.deleted);
  EXPECT_EQ(row.name, QStringLiteral("Deleted"));
  EXPECT_EQ(row.detail, QStringLiteral("This item was deleted for good. Its place is kept so the items made from it "
                                       "stay connected."));
  EXPECT_EQ(lineage.rows()[2].parentRow, 1);
  lineage.inspect(gone);
  EXPECT_EQ(desk.state.inspectedId(), root->id);
  EXPECT_FALSE(lineage.canOpen(gone));
}

TEST_F(LineagePresenterTest, WhatIsInTrashIsMarked) {
  const core::AssetRef item = made(QStringLiteral("one"));
  lineage.open(item->id);
  desk.store.context().edit(item).deletedAt = desk.clock->now();
  desk.store.save(core::LibraryTables::none);
  test::runPosted();
  EXPECT_TRUE(lineage.rows().front().trashed);
}

}  // namespace
}  // namespace sorvan::shell
