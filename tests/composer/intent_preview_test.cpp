#include "composer/intent_preview.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include "support/fake_clock.h"
#include "support/run_task.h"

namespace sorvan::composer {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

struct IntentPreviewTest : testing::Test {
  std::shared_ptr<sorvan::test::FakeClock> clock = std::make_shared<sorvan::test::FakeClock>();
  ComposerIntentPreview preview{clock};

  void pass(std::chrono::milliseconds time) {
    sorvan::test::runPosted();
    clock->advance(time);
    sorvan::test::runPosted();
  }
};

TEST_F(IntentPreviewTest, ReadsTheTextOnceTypingPauses) {
  preview.schedule(u"find ca"_s, ComposerMode::command);
  pass(179ms);
  EXPECT_TRUE(preview.isEmpty());
  preview.schedule(u"find cats"_s, ComposerMode::command);
  pass(179ms);
  EXPECT_TRUE(preview.isEmpty());
  pass(1ms);
  EXPECT_FALSE(preview.isEmpty());
  EXPECT_TRUE(preview.intent() == SorvanIntent(SearchAssets{u"cats"_s}));
}

TEST_F(IntentPreviewTest, IsSilentWhileOnlyThePromptGrows) {
  QSignalSpy changed(&preview, &ComposerIntentPreview::changed);
  preview.schedule(u"a fox"_s, ComposerMode::generation);
  pass(180ms);
  EXPECT_EQ(changed.count(), 1);
  preview.schedule(u"a fox in the snow"_s, ComposerMode::generation);
  pass(180ms);
  EXPECT_EQ(changed.count(), 1);
  preview.schedule(u"a fox in the snow for 7 seconds"_s, ComposerMode::generation);
  pass(180ms);
  EXPECT_EQ(changed.count(), 2);
  EXPECT_EQ(preview.mentionedSeconds(), 7);
}

TEST_F(IntentPreviewTest, AnEmptiedTextIsAnEmptyPrompt) {
  preview.schedule(u"compare"_s, ComposerMode::command);
  pass(180ms);
  preview.schedule(u" "_s, ComposerMode::command);
  pass(180ms);
  EXPECT_TRUE(preview.isEmpty());
  EXPECT_TRUE(preview.intent() == SorvanIntent(GenerationInstruction{}));
}

TEST_F(IntentPreviewTest, ReadsNothingAfterItsEnd) {
  auto shortLived = std::make_unique<ComposerIntentPreview>(clock);
  shortLived->schedule(u"a"_s, ComposerMode::generation);
  sorvan::test::runPosted();
  shortLived.reset();
  pass(1s);
  EXPECT_EQ(clock->sleepers(), 0);
}

}  // namespace
}  // namespace sorvan::composer
