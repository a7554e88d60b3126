#include "account/provider_settings.h"

#include <gtest/gtest.h>

#include "support/run_task.h"

namespace sorvan::account {
namespace {

using namespace Qt::StringLiterals;
using test::runTask;

class ProviderSettingsTest : public testing::Test {
 protected:
  void save(const QString& text) {
    settings.save(text);
    runTask(settings.whenIdle());
  }

  std::shared_ptr<MemoryKeyBackend> backend = std::make_shared<MemoryKeyBackend>();
  std::shared_ptr<KeyCache> cache = std::make_shared<KeyCache>(std::make_shared<KeychainStore>(backend));
  ProviderSettings settings{cache};
};

TEST_F(ProviderSettingsTest, StartsOnTheAccountTabWithoutAKey) {
  EXPECT_EQ(settings.tab(), u"account"_s);
  EXPECT_EQ(settings.provider(), ProviderID::fal);
  EXPECT_EQ(settings.statusLine(), u"No key saved"_s);
  EXPECT_TRUE(settings.message().isEmpty());
  EXPECT_EQ(ProviderSettings::explanation(),
            u"Optional. Bring your own key (BYOK) and fal.ai bills your account directly at its own prices, with no "
            u"Sorvan Credits involved."_s);
}

TEST_F(ProviderSettingsTest, FindsASavedKeyWithoutShowingIt) {
  backend->entries[u"fal.ai"_s] = u"abc"_s;
  settings.load();
  EXPECT_TRUE(settings.busy());
  runTask(settings.whenIdle());
  EXPECT_FALSE(settings.busy());
  EXPECT_TRUE(settings.saved());
  EXPECT_EQ(settings.statusLine(), u"fal.ai key saved in Keychain"_s);
  EXPECT_EQ(settings.fieldPrompt(), u"Enter a replacement fal.ai key"_s);
}

TEST_F(ProviderSettingsTest, SavesAndRemoves) {
  int changes = 0;
  QObject::connect(&settings, &ProviderSettings::changed, [&] { ++changes; });
  save(u" abc "_s);
  EXPECT_EQ(changes, 2);
  EXPECT_TRUE(settings.saved());
  EXPECT_EQ(settings.message(), u"Saved securely in Keychain."_s);
  EXPECT_EQ(cache->key(ProviderID::fal), u"abc"_s);
  save(u"  "_s);
  EXPECT_FALSE(settings.saved());
  EXPECT_EQ(settings.message(), u"Key removed."_s);
}

TEST_F(ProviderSettingsTest, TellsWhatTheStoreRefused) {
  backend->failingNumber = 7;
  save(u"abc"_s);
  EXPECT_FALSE(settings.saved());
  EXPECT_TRUE(settings.messageIsError());
  EXPECT_EQ(settings.message(), u"Keychain save failed (7)."_s);
  settings.load();
  runTask(settings.whenIdle());
  EXPECT_EQ(settings.message(), u"Keychain access failed (7)."_s);
}

TEST_F(ProviderSettingsTest, MayBeClosedWhileTheStoreAnswers) {
  auto closing = std::make_unique<ProviderSettings>(cache);
  closing->save(u"abc"_s);
  closing.reset();
  test::runUntil([&] { return backend->entries.contains(u"fal.ai"_s); });
  EXPECT_EQ(backend->entries.at(u"fal.ai"_s), u"abc"_s);
}

}  // namespace
}  // namespace sorvan::account
