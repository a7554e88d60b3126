#include "shell/workspace_state.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

namespace sorvan::shell {
namespace {

TEST(WorkspaceState, TitlesEveryModeAsTheWindowShowsIt) {
  EXPECT_EQ(WorkspaceMode{ModeKind::gallery}.title(), QStringLiteral("Gallery"));
  EXPECT_EQ(WorkspaceMode{ModeKind::activity}.title(), QStringLiteral("History"));
  EXPECT_EQ(WorkspaceMode{ModeKind::generation}.title(), QStringLiteral("Generation"));
  EXPECT_EQ(WorkspaceMode{ModeKind::asset}.title(), QStringLiteral("Asset Detail"));
  EXPECT_EQ(WorkspaceMode{ModeKind::savedReferences}.title(), QStringLiteral("Global References"));
  EXPECT_EQ(WorkspaceMode{ModeKind::costs}.title(), QStringLiteral("Cost Report"));
}

TEST(WorkspaceState, BackFromAGenerationReturnsToWhereItWasOpened) {
  WorkspaceState state;
  state.setMode({ModeKind::activity});
  state.openGeneration(QUuid::createUuid(), 0);
  state.openGeneration(QUuid::createUuid(), 1);
  EXPECT_TRUE(state.canGoBack());
  state.goBack();
  EXPECT_EQ(state.mode().kind, ModeKind::activity);
}

TEST(WorkspaceState, ALocationOpensItsGalleryWithNothingSelected) {
  WorkspaceState state;
  state.select({QUuid::createUuid()});
  state.setMode({ModeKind::activity});
  state.setLocation(inboxLocation);
  EXPECT_EQ(state.mode().kind, ModeKind::gallery);
  EXPECT_TRUE(state.selection().isEmpty());
  EXPECT_TRUE(state.inspectedId().isNull());
}

TEST(WorkspaceState, BackWalksTheWayThatWasComeAndSelectsWhatWasSelected) {
  WorkspaceState state;
  const QUuid first = QUuid::createUuid(), second = QUuid::createUuid(), parent = QUuid::createUuid();
  state.select({first, second});
  state.openAsset(first, {first, second});
  state.openLineage(first);
  EXPECT_EQ(state.lineageReturnMode(), (WorkspaceMode{ModeKind::asset, first}));
  state.openAsset(parent, {parent});
  EXPECT_EQ(state.assetReturnMode().kind, ModeKind::lineage);
  state.goBack();
  EXPECT_EQ(state.mode(), (WorkspaceMode{ModeKind::lineage, first}));
  EXPECT_EQ(state.assetReturnMode().kind, ModeKind::gallery);
  state.goBack();
  EXPECT_EQ(state.mode(), (WorkspaceMode{ModeKind::asset, first}));
  EXPECT_EQ(state.assetSequence(), (std::vector<QUuid>{first, second}));
  state.goBack();
  EXPECT_EQ(state.mode().kind, ModeKind::gallery);
  EXPECT_EQ(state.selection(), (QSet<QUuid>{first, second}));
  EXPECT_FALSE(state.canGoBack());
}

TEST(WorkspaceState, SteppingWalksTheOrderAndStaysAtItsEnds) {
  WorkspaceState state;
  const QUuid first = QUuid::createUuid(), second = QUuid::createUuid();
  state.openAsset(first, {first, second}, Autoplay::yes);
  EXPECT_EQ(state.takeAutoplay(), first);
  EXPECT_TRUE(state.takeAutoplay().isNull());
  state.stepAsset(-1);
  EXPECT_EQ(state.mode().subject, first);
  state.stepAsset(+1);
  EXPECT_EQ(state.mode().subject, second);
  EXPECT_EQ(state.inspectedId(), second);
  EXPECT_TRUE(state.assetBeside(+1).isNull());
  state.goBack();
  EXPECT_EQ(state.mode().kind, ModeKind::gallery);
}

TEST(WorkspaceState, ALocationRemembersTheSheetThatWasOpenInIt) {
  WorkspaceState state;
  const ContactSheetSource sheet = StoredSheet{QUuid::createUuid()};
  state.setLocation(inboxLocation);
  state.openContactSheet(sheet);
  EXPECT_EQ(state.mode().sheet, sheet);
  EXPECT_EQ(state.activeContactLocation(), inboxLocation);
  const QUuid item = QUuid::createUuid();
  state.openAsset(item, {item});
  EXPECT_TRUE(state.viewingContactAsset());
  state.setLocation(allMediaLocation);
  EXPECT_EQ(state.contactSheetAt(inboxLocation), sheet);
  EXPECT_EQ(state.contactSheetAt(allMediaLocation), std::nullopt);
}

TEST(WorkspaceState, EditsOfASheetAreDroppedWhenAnotherOneOpens) {
  WorkspaceState state;
  const QUuid item = QUuid::createUuid();
  state.openContactSheet(PassingSelection{{item}});
  state.setContactEdits({item}, {QUuid::createUuid()});
  state.openContactSheet(PassingSelection{{item}});
  EXPECT_TRUE(state.excludedContactIDs().contains(item));
  state.openContactSheet(PassingSelection{{}});
  EXPECT_TRUE(state.excludedContactIDs().isEmpty());
  EXPECT_TRUE(state.extraContactIDs().empty());
}

TEST(WorkspaceState, AViewThatTheWindowDoesNotHaveChangesNothing) {
  WorkspaceState state;
  state.setAvailable({ModeKind::gallery, ModeKind::activity});
  state.openLineage(QUuid::createUuid());
  state.setMode({ModeKind::costs});
  state.openContactSheet(PassingSelection{});
  EXPECT_EQ(state.mode().kind, ModeKind::gallery);
  EXPECT_TRUE(state.selection().isEmpty());
  EXPECT_EQ(state.activeContactSource(), std::nullopt);
}

TEST(WorkspaceState, AWayBackOfManyStepsIsKeptWithinBounds) {
  WorkspaceState state;
  const QUuid item = QUuid::createUuid();
  for (int step = 0; step < 100; ++step) {
    state.openAsset(item, {item});
    state.openLineage(item);
  }
  int steps = 0;
  while (state.canGoBack()) {
    state.goBack();
    ++steps;
  }
  EXPECT_LE(steps, 52);
  EXPECT_EQ(state.mode().kind, ModeKind::gallery);
}

TEST(WorkspaceState, OneSelectedCellIsInspectedAndSeveralAreNot) {
  WorkspaceState state;
  const QUuid first = QUuid::createUuid();
  state.select({first});
  EXPECT_EQ(state.inspectedId(), first);
  state.select({first, QUuid::createUuid()});
  EXPECT_TRUE(state.inspectedId().isNull());
}

TEST(WorkspaceState, TellsOfAChangeOnceAndOfNoChangeNever) {
  WorkspaceState state;
  QSignalSpy spy(&state, &WorkspaceState::layoutChanged);
  state.setRowHeight(200);
  state.setRowHeight(200);
  state.setSidebarVisible(false);
  state.setSidebarVisible(false);
  EXPECT_EQ(spy.count(), 2);
}

TEST(WorkspaceState, KeepsRowsBetweenTheSmallestAndTheLargest) {
  WorkspaceState state;
  state.setRowHeight(10);
  EXPECT_EQ(state.rowHeight(), 96);
  state.setRowHeight(1000);
  EXPECT_EQ(state.rowHeight(), 360);
}

}  // namespace
}  // namespace sorvan::shell
