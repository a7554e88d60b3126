#include <gtest/gtest.h>

#include "core/composer_sidecar.h"
#include "failing_layer.h"
#include "library_fixture.h"
#include "support/run_task.h"

namespace sorvan::core {
namespace {

using test::runTask;
using test::text;

// The draft on its way to the disk without anybody waiting.
struct ComposerPoolTest : test::LibraryFixture {
  ComposerPoolTest() { open(); }
  static ComposerDraft draft(const QString& words) {
    ComposerDraft value;
    value.text = words;
    value.request = encodeRequest(GenerationRequest());
    return value;
  }
};

TEST_F(ComposerPoolTest, ADraftIsOnDiskOnceNothingIsOnItsWay) {
  store.keepComposerSoon(draft(QStringLiteral("a fox")));
  EXPECT_TRUE(store.composer().isWriting());
  EXPECT_FALSE(store.hasUnsavedMetadata()) << "being written is not a failure to save";
  runTask(store.composer().whenWritten());
  EXPECT_FALSE(store.composer().isWriting());
  EXPECT_EQ(store.keptComposer(), draft(QStringLiteral("a fox")));
}

TEST_F(ComposerPoolTest, OfManyDraftsTheNewestIsTheLastOnDisk) {
  for (int number = 0; number < 50; ++number) store.keepComposerSoon(draft(QString::number(number)));
  runTask(store.composer().whenWritten());
  EXPECT_EQ(store.keptComposer(), draft(QStringLiteral("49")));
}

TEST_F(ComposerPoolTest, AFlushWaitsForWhatIsBeingWrittenAndIsTheLast) {
  for (int round = 0; round < 20; ++round) {
    store.keepComposerSoon(draft(QStringLiteral("early %1").arg(round)));
    store.keepComposerSoon(draft(QStringLiteral("later %1").arg(round)));
    store.keepComposer(draft(QStringLiteral("flushed %1").arg(round)));
    EXPECT_EQ(store.keptComposer(), draft(QStringLiteral("flushed %1").arg(round)));
    runTask(store.composer().whenWritten());
    EXPECT_EQ(store.keptComposer(), draft(QStringLiteral("flushed %1").arg(round)));
  }
}

TEST_F(ComposerPoolTest, NothingIsWrittenIntoAWorkspaceThatWasLeft) {
  store.keepComposer(draft(QStringLiteral("kept")));
  store.keepComposerSoon(draft(QStringLiteral("early")));
  store.keepComposerSoon(draft(QStringLiteral("late")));
  store.composer().open(std::nullopt);
  const QByteArray left = sidecar(QStringLiteral("composer.json"));
  runTask(store.composer().whenWritten());
  EXPECT_EQ(sidecar(QStringLiteral("composer.json")), left);
}

TEST_F(ComposerPoolTest, AWriteThatFailsLeavesTheDraftPendingAndSaysWhy) {
  store.keepComposer(draft(QStringLiteral("a fox")));
  {
    test::FailingLayer full(1);
    const FileLayerOverride override(full);
    store.keepComposerSoon(draft(QStringLiteral("a hare")));
    runTask(store.composer().whenWritten());
  }
  EXPECT_TRUE(store.hasUnsavedMetadata());
  ASSERT_TRUE(store.error());
  EXPECT_TRUE(store.error()->startsWith(QStringLiteral("Your unfinished prompt and its settings couldn’t be saved.")));
  store.retryMetadataSave();
  EXPECT_FALSE(store.hasUnsavedMetadata());
  EXPECT_EQ(store.keptComposer(), draft(QStringLiteral("a hare")));
}

TEST_F(ComposerPoolTest, WordsWhoseRequestDoesNotDecodeArePutAsideBeforeTheFirstWrite) {
  ComposerDraft lost = draft(QStringLiteral("words that matter"));
  lost.request = "no request";
  store.keepComposer(lost);
  const QByteArray bytes = sidecar(QStringLiteral("composer.json"));
  store.keepComposerSoon(draft(QStringLiteral("a fox")));
  runTask(store.composer().whenWritten());
  EXPECT_EQ(sidecar(QStringLiteral("composer.json.unreadable")), bytes);
  EXPECT_EQ(store.keptComposer(), draft(QStringLiteral("a fox")));
}

}  // namespace
}  // namespace sorvan::core
