// A disk that is full, or that may not be written, under the real program: nothing is lost, nothing is bought twice, and
// the job says why.
#include <gtest/gtest.h>

#include <cstdio>
#include <unistd.h>

#include <QDir>
#include <QFile>

#include "durability/driven.h"

namespace durability {
namespace {

const QJsonArray makePicture{enqueuePicture(), command(u"run"_qs)};
const QJsonArray retry{command(u"retry"_qs), command(u"run"_qs)};

// From its n-th step on the disk takes nothing more, until the next start.
class ADiskThatFillsAtStep : public testing::TestWithParam<int> {};

TEST_P(ADiskThatFillsAtStep, LosesNothingAndBuysNothingTwice) {
  Driven driven;
  driven.run({});
  const Ended full = driven.runFaulty(makePicture, u"failfrom "_qs + QString::number(GetParam()) + u" ENOSPC"_qs);
  EXPECT_FALSE(full.killed);
  const qsizetype purchases = driven.sandbox().ledger().size();
  EXPECT_LE(purchases, 1);
  Ended after = driven.run(retry);
  EXPECT_FALSE(after.killed);
  EXPECT_LE(driven.sandbox().mostPostsOfOneAttempt(), 1);
  if (after.jobs() == 0) {  // refused before it was a job: then nothing left the machine
    EXPECT_EQ(purchases, 0);
    return;
  }
  if (after.job()[u"unknown"_qs].toBool()) {
    EXPECT_EQ(driven.sandbox().ledger().size(), purchases);
    after = driven.run({command(u"submit-again"_qs), command(u"run"_qs)});
  } else {
    EXPECT_EQ(driven.sandbox().ledger().size(), 1);
  }
  EXPECT_EQ(after.items(), 1) << after.job()[u"error"_qs].toString().toStdString();
  EXPECT_EQ(after.item()[u"checksum"_qs], after.item()[u"actualChecksum"_qs]);
}

INSTANTIATE_TEST_SUITE_P(Disk, ADiskThatFillsAtStep, testing::Values(1, 4, 8, 12, 16, 20, 26, 32, 40, 50, 60, 75, 90),
                         [](const auto& info) { return "Number" + std::to_string(info.param); });

// The real thing: a small file system that is full, and a program without privileges.
TEST(ARealFullDisk, RefusesTheRequestAndTheLibraryStaysReadable) {
  if (!Driven::mountingIsAllowed()) {
    // ctest counts a test that prints this as skipped, not as passed.
    std::puts("[  SKIPPED ] this machine lets no program mount a file system");
    return;
  }
  Driven driven;
  const Ended full = driven.runOnFullDisk(makePicture);
  EXPECT_FALSE(full.killed);
  EXPECT_EQ(driven.sandbox().ledger().size(), 0);
  const QString said = full.report[u"refused"_qs].toString() + full.job()[u"error"_qs].toString();
  EXPECT_FALSE(said.isEmpty());
}

TEST(AReadOnlyFolder, IsRefusedWithASentenceAndStaysAsItWas) {
  Driven driven;
  const Ended refused = driven.runInReadOnlyFolder(makePicture);
  EXPECT_FALSE(refused.killed);
  EXPECT_FALSE(refused.report[u"refused"_qs].toString().isEmpty());
  EXPECT_EQ(driven.filesBelow(u"."_qs), QStringList());
  EXPECT_EQ(driven.sandbox().posts(), 0);
}

}  // namespace
}  // namespace durability
