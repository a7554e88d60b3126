#include "shell/actions.h"

#include <gtest/gtest.h>

#include <QKeySequence>
#include <QHash>
#include <QSet>

namespace sorvan::shell {
namespace {

// A key of the player may mean something else where no player is.
TEST(ActionTable, GivesNoKeyToTwoActionsThatWorkAtOnce) {
  QHash<QString, EnabledWhen> keys;
  const auto ofPlayer = [](EnabledWhen when) { return when == EnabledWhen::playerOpen || when == EnabledWhen::clipOpen; };
  const auto elsewhere = [](EnabledWhen when) {
    return when == EnabledWhen::galleryItemSelected || when == EnabledWhen::pictureSelected;
  };
  for (const ActionRow& row : actionTable()) {
    if (row.shortcut.isEmpty()) continue;
    const auto other = keys.constFind(row.shortcut);
    if (other != keys.cend()) {
      EXPECT_TRUE((ofPlayer(*other) && elsewhere(row.enabledWhen)) || (elsewhere(*other) && ofPlayer(row.enabledWhen)))
          << row.title.toStdString();
    }
    keys.insert(row.shortcut, row.enabledWhen);
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
