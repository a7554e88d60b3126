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
