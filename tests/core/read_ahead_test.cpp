// A large table is read by a thread of its own while another one is read.
#include <gtest/gtest.h>

#include "base/ids.h"
#include "core/record_context.h"
#include "platform/sqlite.h"
#include "support/temporary_folder.h"

namespace sorvan::core {
namespace {

constexpr int many = 6'000;

struct ReadAheadTest : testing::Test {
  ReadAheadTest() {
    for (int number = 0; number < many; ++number) {
      Asset asset;
      asset.id = newUuid();
      asset.localFilePath = QStringLiteral("Inbox/%1.png").arg(number);
      Generation made;
      made.id = newUuid();
      made.assetID = asset.id;
      made.prompt = QStringLiteral("boat %1").arg(number);
      generations.push_back(made.id);
      context->insert(std::move(asset));
      context->insert(std::move(made));
    }
    context->save();
    reopen();
  }
  void reopen() {
    context.reset();
    context = std::make_unique<RecordContext>(file);
  }

  test::TemporaryFolder folder;
  QString file = folder / QStringLiteral("library.store");
  std::unique_ptr<RecordContext> context = std::make_unique<RecordContext>(file);
  std::vector<QUuid> generations;
};

TEST_F(ReadAheadTest, EveryRowIsThereInItsOrderWithItsValues) {
  ASSERT_EQ(context->fetch<Asset>().size(), static_cast<std::size_t>(many));
  const auto read = context->fetch<Generation>();
  ASSERT_EQ(read.size(), static_cast<std::size_t>(many));
  for (int number = 0; number < many; ++number) {
    ASSERT_EQ(read[static_cast<std::size_t>(number)]->id, generations[static_cast<std::size_t>(number)]);
    ASSERT_EQ(read[static_cast<std::size_t>(number)]->prompt, QStringLiteral("boat %1").arg(number));
  }
}

TEST_F(ReadAheadTest, WhatIsAskedForEarlyIsWaitedFor) {
  context->fetch<Asset>();
  const auto last = context->find<Generation>(generations.back());
  ASSERT_NE(last, nullptr);
  context->edit(last).prompt = QStringLiteral("changed");
  EXPECT_EQ(context->fetch<Generation>().back()->prompt, QStringLiteral("changed")) << "what is unsaved is kept";
  context->save();
  reopen();
  context->fetch<Asset>();
  EXPECT_EQ(context->fetch<Generation>().back()->prompt, QStringLiteral("changed"));
}

TEST_F(ReadAheadTest, WhatAnotherConnectionWritesMeanwhileIsSeen) {
  context->fetch<Asset>();
  {
    platform::Database other(file, platform::DatabaseOpening::ReadWrite);
    other.execute(QStringLiteral("UPDATE Generation SET prompt = 'other'"));
  }
  for (const auto& generation : context->fetch<Generation>()) ASSERT_EQ(generation->prompt, QStringLiteral("other"));
}

TEST_F(ReadAheadTest, AContextMayGoWhileItsTableIsStillBeingRead) {
  for (int round = 0; round < 5; ++round) {
    context->fetch<Asset>();
    reopen();
  }
  EXPECT_EQ(context->fetch<Generation>().size(), static_cast<std::size_t>(many));
}

TEST_F(ReadAheadTest, WhereTheThreadFailsTheFetchTellsWhy) {
  {
    platform::Database other(file, platform::DatabaseOpening::ReadWrite);
    other.execute(QStringLiteral("ALTER TABLE Generation RENAME COLUMN prompt TO other"));
  }
  context->fetch<Asset>();
  EXPECT_THROW(context->fetch<Generation>(), SorvanError);
  EXPECT_EQ(context->fetch<Asset>().size(), static_cast<std::size_t>(many));
}

}  // namespace
}  // namespace sorvan::core
