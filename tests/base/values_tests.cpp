#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <thread>

#include "base/checksum.h"
#include "base/ids.h"
#include "base/instant.h"
#include "base/sorvan_error.h"
#include "support/temporary_folder.h"
#include "support/text_printers.h"

namespace sorvan::test {
using namespace sorvan::base;

TEST(Ids, AreWrittenInUpperCaseWithoutBraces) {
  const QUuid id = QUuid::fromString(QStringLiteral("{0a1b2c3d-0000-4000-8000-0123456789ab}"));
  EXPECT_EQ(uuidText(id), QStringLiteral("0A1B2C3D-0000-4000-8000-0123456789AB"));
  EXPECT_EQ(uuidFromText(uuidText(id)), id);
  EXPECT_EQ(uuidFromText(uuidText(id).toLower()), id);
}

TEST(Ids, RubbishIsNoUuid) {
  EXPECT_TRUE(uuidFromText(QString()).isNull());
  EXPECT_TRUE(uuidFromText(QStringLiteral("0a1b2c3d-0000-4000-8000-0123456789ab-and-more")).isNull());
  EXPECT_TRUE(uuidFromText(QStringLiteral("../../../../../../../../etc/passwd..")).isNull());
  EXPECT_NE(newUuid(), newUuid());
}

TEST(Instant, CountsSecondsFrom2001) {
  EXPECT_EQ(isoText(Instant{0}), QStringLiteral("2001-01-01T00:00:00Z"));
  EXPECT_EQ(isoText(Instant{86399.9}), QStringLiteral("2001-01-01T23:59:59Z"));
  EXPECT_EQ(isoText(Instant{-1}), QStringLiteral("2000-12-31T23:59:59Z"));
  EXPECT_EQ(Instant{800000000}.toDateTime().toSecsSinceEpoch(), 1778307200);
  EXPECT_EQ(Instant::fromDateTime(Instant{123.5}.toDateTime()), Instant{123.5});
}

TEST(Instant, SurvivesNumbersThatAreNoDates) {
  EXPECT_NO_THROW(Instant{1e300}.toDateTime());
  EXPECT_NO_THROW(isoText(Instant{std::nan("")}));
}

TEST(Instant, ReadsIsoTexts) {
  EXPECT_EQ(instantFromIso(QStringLiteral("2001-01-01T00:00:10Z")), Instant{10});
  EXPECT_EQ(instantFromIso(QStringLiteral("2001-01-01T00:00:10.250Z")), Instant{10.25});
  EXPECT_EQ(instantFromIso(QStringLiteral("2001-01-01T00:00:10")), Instant{10});
  EXPECT_EQ(instantFromIso(QStringLiteral("2001-01-02")), Instant{86400});
  EXPECT_EQ(instantFromIso(QStringLiteral("soon")), std::nullopt);
}

TEST(SorvanError, TellsItsMessageUnchanged) {
  const SorvanError failure(QStringLiteral("The clip “a” couldn’t be read…"));
  EXPECT_EQ(describe(failure), QStringLiteral("The clip “a” couldn’t be read…"));
  EXPECT_STREQ(failure.what(), "The clip “a” couldn’t be read…");
}

TEST(SorvanError, EveryFailureHasASentence) {
  EXPECT_EQ(describe(SorvanError(QString())), QStringLiteral("Something went wrong."));
  EXPECT_EQ(describe(std::exception_ptr()), QStringLiteral("Something went wrong."));
  EXPECT_EQ(describe(std::make_exception_ptr(7)), QStringLiteral("Something went wrong."));
  EXPECT_EQ(describe(std::runtime_error("pipe broke")), QStringLiteral("pipe broke"));
  EXPECT_EQ(describe(std::runtime_error("")), QStringLiteral("Something went wrong."));
  EXPECT_FALSE(describe(std::bad_alloc()).isEmpty());
  const std::filesystem::filesystem_error files("rename", "/tmp/a.png",
                                                std::error_code(ENOSPC, std::generic_category()));
  EXPECT_EQ(describe(files), QStringLiteral("a.png could not be used: No space left on device"));
}

TEST(SorvanError, FilesAreToldWithVerbAndReason) {
  const FileError failure(QStringLiteral("a.json"), QStringLiteral("read"), EACCES);
  EXPECT_EQ(failure.message(), QStringLiteral("a.json could not be read: Permission denied"));
  EXPECT_FALSE(failure.isAbsent());
  EXPECT_TRUE(FileError(QStringLiteral("a"), QStringLiteral("read"), ENOENT).isAbsent());
}

TEST(SorvanError, CancellationIsToldApart) {
  EXPECT_TRUE(isCancelled(std::make_exception_ptr(Cancelled())));
  EXPECT_FALSE(isCancelled(std::make_exception_ptr(SorvanError(QStringLiteral("x")))));
  EXPECT_FALSE(isCancelled(nullptr));
}

TEST(Checksum, IsSha256InLowerCase) {
  const QString abc = QStringLiteral("ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
  EXPECT_EQ(sha256Hex("abc"), abc);
  const TemporaryFolder folder;
  EXPECT_EQ(sha256OfFile(folder.write(QStringLiteral("a"), "abc"), {}), abc);
  EXPECT_EQ(sha256OfFile(folder.write(QStringLiteral("e"), ""), {}), sha256Hex(""));
  const QByteArray large(3'000'001, 'x');
  EXPECT_EQ(sha256OfFile(folder.write(QStringLiteral("l"), large), {}), sha256Hex(large));
}

TEST(Checksum, FailsOnAnAbsentFileAndStopsWhenCancelled) {
  const TemporaryFolder folder;
  EXPECT_THROW(sha256OfFile(folder / QStringLiteral("nothing"), {}), FileError);
  std::stop_source stop;
  stop.request_stop();
  EXPECT_THROW(sha256OfFile(folder.write(QStringLiteral("a"), "abc"), stop.get_token()), Cancelled);
}

}  // namespace sorvan::test
