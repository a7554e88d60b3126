#include "shell/actions.h"

#include <gtest/gtest.h>

#include <QKeySequence>
#include <QSet>

namespace sorvan::shell {
namespace {

TEST(ActionTable, GivesNoKeyToTwoActions) {
  QSet<QString> keys;
  for (const ActionRow& row : actionTable()) {
    if (row.shortcut.isEmpty()) continue;
    EXPECT_FALSE(keys.contains(row.shortcut)) << row.title.toStdString();
    keys.insert(row.shortcut);
  }
}

TEST(ActionTable, ListsEachActionOnceWithATitle) {
  std::set<ActionId> ids;
  for (const ActionRow& row : actionTable()) {
    EXPECT_TRUE(ids.insert(row.id).second) << row.title.toStdString();
    EXPECT_FALSE(row.title.isEmpty());
  }
}

TEST(ActionTable, LetsPlainLettersAndDigitsWorkOnlyOverMedia) {
  for (const ActionRow& row : actionTable()) {
    if (row.shortcut.size() == 1) {
      EXPECT_EQ(row.scope, KeyScope::mediaView) << row.title.toStdString();
    }
  }
}

TEST(ActionTable, WritesKeysThatTheDesktopReads) {
  for (const ActionRow& row : actionTable()) {
    if (row.shortcut.isEmpty()) continue;
    const QKeySequence keys(row.shortcut, QKeySequence::PortableText);
    EXPECT_EQ(keys.count(), 1) << row.title.toStdString();
    EXPECT_NE(keys[0].key(), Qt::Key_unknown) << row.title.toStdString();
  }
}

TEST(ActionTable, NeverOffersCancelAsAKeyOrMenuRow) {
  for (const ActionRow& row : actionTable()) EXPECT_NE(row.id, ActionId::cancelJob);
}

TEST(ActionTable, GivesMarksAndTrashTheirKeys) {
  EXPECT_EQ(actionRow(ActionId::statusShortlist).shortcut, QStringLiteral("P"));
  EXPECT_EQ(actionRow(ActionId::statusRejected).shortcut, QStringLiteral("D"));
  EXPECT_EQ(actionRow(ActionId::moveToTrash).shortcut, QStringLiteral("Del"));
  for (const ActionId id : {ActionId::statusDraft, ActionId::statusApproved, ActionId::statusFinal,
                            ActionId::moveToTrash, ActionId::renameItem})
    EXPECT_EQ(actionRow(id).scope, KeyScope::mediaView);
}

TEST(ActionTable, KeepsTheFixedTitles) {
  EXPECT_EQ(actionRow(ActionId::aboutUndo).title, QStringLiteral("About Undo and Redo…"));
  EXPECT_EQ(actionRow(ActionId::openAnotherWorkspace).title, QStringLiteral("Open Another Workspace…"));
  EXPECT_EQ(actionRow(ActionId::newAudio).title, QStringLiteral("New Audio"));
  EXPECT_EQ(actionRow(ActionId::focusComposer).title, QStringLiteral("Focus Generation Input"));
  EXPECT_EQ(actionRow(ActionId::showGallery).title, QStringLiteral("Gallery"));
}

}  // namespace
}  // namespace sorvan::shell
