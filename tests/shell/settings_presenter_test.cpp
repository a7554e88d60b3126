#include "shell/settings_presenter.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include "account/key_storage.h"
#include "account/provider_settings.h"
#include "base/settings.h"
#include "platform/key_store.h"
#include "support/run_task.h"
#include "support/temporary_folder.h"

namespace sorvan::shell {
namespace {

struct SettingsTest : testing::Test {
  std::shared_ptr<MemoryKeyBackend> backend = std::make_shared<MemoryKeyBackend>();
  std::shared_ptr<KeyCache> keys = std::make_shared<KeyCache>(std::make_shared<KeychainStore>(backend));
  account::ProviderSettings provider{keys};
  base::Settings settings;
  SettingsPresenter presenter{provider, settings};
  void settle() { test::runTask(provider.whenIdle()); }
};

TEST_F(SettingsTest, SavesAKeyAndNeverShowsIt) {
  provider.load();
  settle();
  EXPECT_EQ(presenter.keyPage().status, QStringLiteral("No key saved"));
  presenter.saveKey(QStringLiteral("  abc\n"));
  settle();
  const KeyPageDisplay page = presenter.keyPage();
  EXPECT_EQ(backend->entries[QStringLiteral("fal.ai")], QStringLiteral("abc"));
  EXPECT_TRUE(page.saved);
  EXPECT_EQ(page.status, QStringLiteral("fal.ai key saved in Keychain"));
  EXPECT_EQ(page.prompt, QStringLiteral("Enter a replacement fal.ai key"));
  EXPECT_EQ(page.message, QStringLiteral("Saved securely in Keychain."));
  for (const QString& text : {page.status, page.prompt, page.message, page.explanation})
    EXPECT_FALSE(text.contains(QStringLiteral("abc")));
}

TEST_F(SettingsTest, RemovesTheKey) {
  presenter.saveKey(QStringLiteral("abc"));
  settle();
  presenter.removeKey();
  settle();
  EXPECT_TRUE(backend->entries.empty());
  EXPECT_EQ(presenter.keyPage().message, QStringLiteral("Key removed."));
  EXPECT_FALSE(presenter.keyPage().saved);
}

TEST_F(SettingsTest, TellsTheStoresOwnNumberWhenItFails) {
  backend->failingNumber = 7;
  presenter.saveKey(QStringLiteral("abc"));
  settle();
  EXPECT_EQ(presenter.keyPage().message, QStringLiteral("Keychain save failed (7)."));
  EXPECT_TRUE(presenter.keyPage().messageIsError);
}

TEST_F(SettingsTest, FollowsTheDesktopUntilALookIsChosen) {
  EXPECT_EQ(presenter.appearance(), Appearance::system);
  QSignalSpy changed(&presenter, &SettingsPresenter::appearanceChanged);
  presenter.setAppearance(Appearance::dark);
  presenter.setAppearance(Appearance::dark);
  EXPECT_EQ(changed.count(), 1);
  EXPECT_EQ(settings.get(QStringLiteral("appearance"), QString()), QStringLiteral("dark"));
  EXPECT_EQ(SettingsPresenter(provider, settings).appearance(), Appearance::dark);
}

TEST_F(SettingsTest, AnUnknownLookFollowsTheDesktop) {
  settings.set(QStringLiteral("appearance"), QStringLiteral("sepia"));
  EXPECT_EQ(presenter.appearance(), Appearance::system);
}

}  // namespace
}  // namespace sorvan::shell
