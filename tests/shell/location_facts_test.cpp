#include "shell/location_facts.h"

#include <gtest/gtest.h>

#include "core/projects.h"
#include "desk.h"

namespace sorvan::shell {
namespace {

struct LocationFactsTest : testing::Test {
  test::Desk desk;

  QUuid make(const QString& prompt, double usd) {
    core::GenerationCost cost;
    cost.perImageUSD = usd;
    desk.provider->cost = cost;
    desk.generate(prompt);
    desk.settle();
    return desk.store.generationsOf(desk.newestJob()->id).front()->assetID;
  }
  core::Asset& edited(QUuid item) { return desk.store.context().edit(desk.store.asset(item)); }
  void save() {
    desk.store.context().save();
    desk.store.registerRecords({});
    test::runPosted();
  }
  QString value(const QString& title, const QString& label) {
    for (const InspectorSection& section : desk.inspector.display().sections)
      for (const InspectorRow& row : section.rows)
        if (section.title == title && row.label == label) return row.value;
    return {};
  }
};

TEST_F(LocationFactsTest, CountWhatALocationHoldsByKind) {
  const QUuid picture = make(QStringLiteral("one"), 0.04);
  const QUuid clip = make(QStringLiteral("two"), 0.04);
  const QUuid trashed = make(QStringLiteral("three"), 0.04);
  edited(picture).favorite = true;
  edited(picture).fileSize = 1000;
  edited(clip).mediaType = rawValue(core::MediaType::video);
  edited(clip).fileSize = 2000;
  edited(clip).createdAt = desk.store.now() + 60.0;
  edited(trashed).deletedAt = desk.store.now();
  save();
  const LocationFacts all = factsOf(desk.store, allMediaLocation);
  EXPECT_EQ(all.pictures, 1);
  EXPECT_EQ(all.clips, 1);
  EXPECT_EQ(all.sounds, 0);
  EXPECT_EQ(all.favorites, 1);
  EXPECT_EQ(all.bytes, 3000);
  EXPECT_EQ(*all.newest, desk.store.asset(clip)->createdAt);
  EXPECT_EQ(*all.oldest, desk.store.asset(picture)->createdAt);
  EXPECT_EQ(factsOf(desk.store, favoritesLocation).items(), 1);
  EXPECT_EQ(factsOf(desk.store, trashLocation).items(), 1);
  EXPECT_EQ(factsOf(desk.store, inboxLocation).items(), 2);
}

TEST_F(LocationFactsTest, TheInspectorTellsThemAndTheSpendingOfTheMonthWhileNothingIsSelected) {
  make(QStringLiteral("one"), 0.25);
  make(QStringLiteral("two"), 0.5);
  desk.state.setLocation(inboxLocation);
  desk.state.select({});
  const InspectorDisplay shown = desk.inspector.display();
  EXPECT_EQ(shown.subject, InspectorSubject::nothing);
  EXPECT_EQ(shown.title, QStringLiteral("Inbox"));
  EXPECT_EQ(shown.facts, QStringLiteral("2 items"));
  EXPECT_EQ(value(QStringLiteral("Contents"), QStringLiteral("Images")), QStringLiteral("2"));
  EXPECT_EQ(value(QStringLiteral("This month"), QStringLiteral("Spent")), desk.displays.spend().text(0.75));
}

TEST_F(LocationFactsTest, FollowTheLibrary) {
  desk.state.select({});
  EXPECT_EQ(value(QStringLiteral("Contents"), QStringLiteral("Images")), QString());
  EXPECT_EQ(value(QStringLiteral("This month"), QStringLiteral("Spent")), QStringLiteral("Nothing"));
  make(QStringLiteral("one"), 0.04);
  desk.state.select({});
  EXPECT_EQ(value(QStringLiteral("Contents"), QStringLiteral("Images")), QStringLiteral("1"));
}

}  // namespace
}  // namespace sorvan::shell
