#include "account/key_storage.h"

#include <gtest/gtest.h>

#include "support/run_task.h"

namespace sorvan::account {
namespace {

using namespace Qt::StringLiterals;
using test::runTask;

/// A store whose reads wait until the test lets them answer.
class SlowBackend final : public KeyBackend {
 public:
  Task<std::optional<QString>> read(QString account, std::stop_token stop) override {
    ++reads;
    const Completion opened = gate;
    co_await opened;
    co_return co_await inner.read(account, stop);
  }
  Task<> write(QString account, QString secret, std::stop_token stop) override {
    return inner.write(account, secret, stop);
  }
  Task<> remove(QString account, std::stop_token stop) override { return inner.remove(account, stop); }

  Completion gate;
  int reads = 0;
  MemoryKeyBackend inner;
};

QString failure(const std::function<void()>& work) {
  try {
    work();
  } catch (const SorvanError& error) {
    return error.message();
  }
  return u"no failure"_s;
}

class KeyStorage : public testing::Test {
 protected:
  std::shared_ptr<MemoryKeyBackend> backend = std::make_shared<MemoryKeyBackend>();
  std::shared_ptr<KeychainStore> store = std::make_shared<KeychainStore>(backend);
  KeyCache cache{store};
};

TEST_F(KeyStorage, SavesTrimmedUnderTheProvidersName) {
  runTask(store->save(u"  abc\n"_s, ProviderID::fal, {}));
  EXPECT_EQ(backend->entries, (std::map<QString, QString>{{u"fal.ai"_s, u"abc"_s}}));
  EXPECT_EQ(runTask(store->read(ProviderID::fal, {})), u"abc"_s);
  runTask(store->save(u"a\nb"_s, ProviderID::credits, {}));
  EXPECT_EQ(backend->entries.at(u"Sorvan Credits"_s), u"a\nb"_s);
}

TEST_F(KeyStorage, AnswersTheSameKeyAtEveryRead) {
  backend->entries[u"fal.ai"_s] = u"abc"_s;
  for (int time = 0; time < 3; ++time) EXPECT_EQ(runTask(store->read(ProviderID::fal, {})), u"abc"_s);
}

TEST_F(KeyStorage, ReplacesAnEntryAtTheSecondSave) {
  runTask(store->save(u"abc"_s, ProviderID::fal, {}));
  runTask(store->save(u"abd"_s, ProviderID::fal, {}));
  EXPECT_EQ(backend->entries, (std::map<QString, QString>{{u"fal.ai"_s, u"abd"_s}}));
}

TEST_F(KeyStorage, RemovesTheEntryForABlankTextAlsoWhenThereIsNone) {
  runTask(store->save(u"abc"_s, ProviderID::openAI, {}));
  runTask(store->save(u" \n "_s, ProviderID::openAI, {}));
  EXPECT_TRUE(backend->entries.empty());
  EXPECT_NO_THROW(runTask(store->save(QString(), ProviderID::openAI, {})));
  EXPECT_EQ(runTask(store->read(ProviderID::openAI, {})), std::nullopt);
}

TEST_F(KeyStorage, TellsTheStoresOwnNumber) {
  backend->failingNumber = 7;
  EXPECT_EQ(failure([&] { runTask(store->read(ProviderID::fal, {})); }), u"Keychain access failed (7)."_s);
  EXPECT_EQ(failure([&] { runTask(store->save(u"x"_s, ProviderID::fal, {})); }), u"Keychain save failed (7)."_s);
  EXPECT_EQ(failure([&] { runTask(store->save(QString(), ProviderID::fal, {})); }), u"Keychain removal failed (7)."_s);
}

TEST_F(KeyStorage, AnswersFromTheCopyOnceItWasRead) {
  EXPECT_FALSE(cache.isAnswered(ProviderID::fal));
  EXPECT_TRUE(failure([&] { cache.key(ProviderID::fal); }).contains(u"still being read"_s));
  backend->entries[u"fal.ai"_s] = u"abc"_s;
  runTask(cache.ready(ProviderID::fal, {}));
  EXPECT_EQ(cache.key(ProviderID::fal), u"abc"_s);
  backend->entries.clear();
  runTask(cache.ready(ProviderID::fal, {}));
  EXPECT_EQ(cache.key(ProviderID::fal), u"abc"_s);
  runTask(cache.refresh(ProviderID::fal, {}));
  EXPECT_EQ(cache.key(ProviderID::fal), std::nullopt);
}

TEST_F(KeyStorage, ThrowsTheFailureOfTheLastReadAndTriesAgainWhenAsked) {
  backend->failingNumber = 7;
  runTask(cache.ready(ProviderID::fal, {}));
  EXPECT_EQ(failure([&] { cache.key(ProviderID::fal); }), u"Keychain access failed (7)."_s);
  backend->failingNumber = std::nullopt;
  backend->entries[u"fal.ai"_s] = u"abc"_s;
  runTask(cache.ready(ProviderID::fal, {}));
  EXPECT_EQ(cache.key(ProviderID::fal), u"abc"_s);
}

TEST_F(KeyStorage, KeepsTheCopyWhenASaveFails) {
  runTask(cache.save(u"abc"_s, ProviderID::fal, {}));
  EXPECT_EQ(cache.key(ProviderID::fal), u"abc"_s);
  backend->failingNumber = 3;
  EXPECT_EQ(failure([&] { runTask(cache.save(u"abd"_s, ProviderID::fal, {})); }), u"Keychain save failed (3)."_s);
  EXPECT_EQ(cache.key(ProviderID::fal), u"abc"_s);
}

TEST(KeyCache, SharesOneReadAmongAllWhoWait) {
  const auto backend = std::make_shared<SlowBackend>();
  backend->inner.entries[u"fal.ai"_s] = u"abc"_s;
  KeyCache cache(std::make_shared<KeychainStore>(backend));
  const auto first = cache.ready(ProviderID::fal, {});
  const auto second = cache.ready(ProviderID::fal, {});
  test::runPosted();
  EXPECT_FALSE(first.isReady() || second.isReady());
  backend->gate.finish();
  test::runUntil([&] { return first.isReady() && second.isReady(); });
  EXPECT_EQ(backend->reads, 1);
  EXPECT_EQ(cache.key(ProviderID::fal), u"abc"_s);
}

TEST(KeyCache, AnswersWithTheNewKeyAfterASaveDuringARead) {
  const auto backend = std::make_shared<SlowBackend>();
  backend->inner.entries[u"fal.ai"_s] = u"old"_s;
  KeyCache cache(std::make_shared<KeychainStore>(backend));
  const auto reading = cache.refresh(ProviderID::fal, {});
  const auto saving = cache.save(u"new"_s, ProviderID::fal, {});
  test::runPosted();
  backend->gate.finish();
  test::runUntil([&] { return reading.isReady() && saving.isReady(); });
  EXPECT_EQ(backend->reads, 2);
  EXPECT_EQ(backend->inner.entries.at(u"fal.ai"_s), u"new"_s);
  EXPECT_EQ(cache.key(ProviderID::fal), u"new"_s);
}

}  // namespace
}  // namespace sorvan::account
