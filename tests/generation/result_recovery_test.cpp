#include "generation/result_recovery.h"

#include <QDir>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "base/ids.h"
#include "generation/scripted_provider.h"
#include "support/temporary_folder.h"

namespace sorvan::generation {
namespace {

using namespace test;

class Recovery : public testing::Test {
 protected:
  sorvan::test::TemporaryFolder folder;
  WorkspaceFiles files{folder.path()};
  QUuid job = newUuid();

  QString name(const QString& file) const { return QStringLiteral(".sorvan/recovery/") + uuidText(job) + u'/' + file; }
  void write(const QString& file, const QByteArray& bytes) const { folder.write(name(file), bytes); }
  QByteArray read(const QString& file) const { return folder.read(name(file)); }
  QString failureOfLoad() const {
    try {
      ResultRecovery::load(files, job);
    } catch (const SorvanError& error) {
      return error.message();
    }
    return QStringLiteral("loaded");
  }
};

const QString invalid = QStringLiteral("Invalid recovery manifest.");

TEST_F(Recovery, KeepsOutputsWithAllThatIsKnownOfThem) {
  GeneratedOutput first = Script::pictureOutput("one", QStringLiteral("png"));
  first.seed = (std::int64_t{1} << 62) + 3;
  GenerationCost cost;
  cost.perImageUSD = 0.1;
  first.cost = cost;
  GeneratedOutput second = Script::pictureOutput("two", QStringLiteral("wav"));
  second.label = QStringLiteral("vocals");
  ResultRecovery::save({first, second}, files, job);
  const auto loaded = ResultRecovery::load(files, job);
  ASSERT_TRUE(loaded && loaded->size() == 2);
  EXPECT_EQ(read(QStringLiteral("0.media")), QByteArray("one"));
  EXPECT_EQ(loaded->at(0).file, files.recoveryFolder(job) + QStringLiteral("/0.media"));
  EXPECT_EQ(loaded->at(0).seed, first.seed);
  EXPECT_EQ(loaded->at(0).cost, cost);
  EXPECT_EQ(loaded->at(1).label, QStringLiteral("vocals"));
  EXPECT_EQ(loaded->at(1).ext, QStringLiteral("wav"));
}

TEST_F(Recovery, StandsUnderTheUpperCaseIdOfTheJob) {
  ResultRecovery::save({Script::pictureOutput("one")}, files, job);
  EXPECT_TRUE(folder.files().contains(QStringLiteral(".sorvan/recovery/") +
                                      job.toString(QUuid::WithoutBraces).toUpper() + QStringLiteral("/results.json")));
}

TEST_F(Recovery, WithoutAManifestIsNothing) {
  write(QStringLiteral("0.media"), "one");
  EXPECT_FALSE(ResultRecovery::load(files, job));
  EXPECT_FALSE(ResultRecovery::exists(files, job));
}

TEST_F(Recovery, AnEmptyListIsAnEmptyResult) {
  ResultRecovery::save({}, files, job);
  const auto loaded = ResultRecovery::load(files, job);
  ASSERT_TRUE(loaded);
  EXPECT_TRUE(loaded->empty());
}

TEST_F(Recovery, TakesOverStreamedFiles) {
  GeneratedOutput output;
  output.file = ResultRecovery::partFile(files, job, 0);
  output.ext = QStringLiteral("mp4");
  write(QStringLiteral("0.part"), "clip");
  ResultRecovery::save({output}, files, job);
  EXPECT_EQ(read(QStringLiteral("0.media")), QByteArray("clip"));
  EXPECT_FALSE(folder.files().contains(name(QStringLiteral("0.part"))));
}

TEST_F(Recovery, AGoodManifestIsKeptAsThePreviousOne) {
  ResultRecovery::save({Script::pictureOutput("one")}, files, job);
  const QByteArray before = read(QStringLiteral("results.json"));
  ResultRecovery::save({Script::pictureOutput("one"), Script::pictureOutput("two")}, files, job);
  EXPECT_EQ(read(QStringLiteral("results.json.previous")), before);
}

TEST_F(Recovery, ADamagedManifestLeavesThePreviousOneAlone) {
  ResultRecovery::save({Script::pictureOutput("one")}, files, job);
  write(QStringLiteral("results.json.previous"), "[]");
  write(QStringLiteral("results.json"), "garbage");
  ResultRecovery::save({Script::pictureOutput("two")}, files, job);
  EXPECT_EQ(read(QStringLiteral("results.json.previous")), QByteArray("[]"));
}

TEST_F(Recovery, ADamagedManifestIsReplacedByThePreviousOneInReading) {
  ResultRecovery::save({Script::pictureOutput("one")}, files, job);
  write(QStringLiteral("results.json.previous"), read(QStringLiteral("results.json")));
  write(QStringLiteral("results.json"), "garbage");
  const auto loaded = ResultRecovery::load(files, job);
  ASSERT_TRUE(loaded);
  EXPECT_EQ(loaded->size(), 1U);
  EXPECT_EQ(read(QStringLiteral("results.json")), QByteArray("garbage"));
}

TEST_F(Recovery, DamagedThroughoutIsRefused) {
  for (const QByteArray& manifest :
       {QByteArray("garbage"), QByteArray("{}"), QByteArray(), QByteArray("[{\"file\":\"0.media\"}]"),
        QByteArray("[{\"file\":\"0.media\",\"ext\":\"png\"}]")}) {
    write(QStringLiteral("results.json"), manifest);
    EXPECT_EQ(failureOfLoad(), invalid) << manifest.toStdString();
  }
}

TEST_F(Recovery, AForeignPathIsRefusedEvenWithAGoodPreviousManifest) {
  ResultRecovery::save({Script::pictureOutput("one")}, files, job);
  write(QStringLiteral("results.json.previous"), read(QStringLiteral("results.json")));
  for (const QByteArray& file :
       {QByteArray("../x"), QByteArray(".hidden"), QByteArray("/etc/passwd"), QByteArray("a/b"), QByteArray()}) {
    write(QStringLiteral("results.json"), "[{\"file\":\"" + file + "\",\"ext\":\"png\"}]");
    EXPECT_THROW(ResultRecovery::load(files, job), ForeignRecoveryPath) << file.toStdString();
    EXPECT_EQ(failureOfLoad(), invalid);
  }
}

TEST_F(Recovery, ALinkIsNotFollowed) {
  folder.write(QStringLiteral("secret"), "secret");
  ResultRecovery::save({Script::pictureOutput("one")}, files, job);
  QFile::remove(files.recoveryFolder(job) + QStringLiteral("/0.media"));
  ASSERT_TRUE(QFile::link(folder / QStringLiteral("secret"), files.recoveryFolder(job) + QStringLiteral("/0.media")));
  EXPECT_EQ(failureOfLoad(), invalid);
}

TEST_F(Recovery, WhatCannotBeLookedAtIsNotTakenForAbsent) {
  folder.write(QStringLiteral(".sorvan/recovery/") + uuidText(job), "a file where the folder should be");
  EXPECT_TRUE(ResultRecovery::exists(files, job));
  EXPECT_TRUE(ResultRecovery::hasSubmissionMarker(files, job));
  EXPECT_EQ(failureOfLoad(), invalid);
}

/// Manifests near to real ones, with anything in them.
rc::Gen<std::string> manifests() {
  const auto pieces = rc::gen::elementOf(std::vector<std::string>{"[",
                                                                  "]",
                                                                  "{",
                                                                  "}",
                                                                  ",",
                                                                  ":",
                                                                  "\"file\"",
                                                                  "\"ext\"",
                                                                  "\"0.media\"",
                                                                  "\"../x\"",
                                                                  "\"\\u0000\"",
                                                                  "\"/etc/passwd\"",
                                                                  "[{\"file\":\"",
                                                                  "\",\"ext\":\"png\"}]",
                                                                  "..",
                                                                  "/",
                                                                  "0.media",
                                                                  "null",
                                                                  "1e999",
                                                                  "\xff",
                                                                  "\"seed\":9223372036854775808"});
  return rc::gen::map(rc::gen::container<std::vector<std::string>>(pieces), [](const std::vector<std::string>& chosen) {
    std::string text;
    for (const std::string& piece : chosen) text += piece;
    return text;
  });
}

TEST_F(Recovery, NoManifestEverLeadsOutOfItsFolder) {
  ResultRecovery::save({Script::pictureOutput("one")}, files, job);
  EXPECT_TRUE(rc::check([this] {
    write(QStringLiteral("results.json"), QByteArray::fromStdString(*manifests()));
    QFile::remove(files.recoveryFolder(job) + QStringLiteral("/results.json.previous"));
    try {
      for (const GeneratedOutput& output : ResultRecovery::load(files, job).value_or(std::vector<GeneratedOutput>()))
        RC_ASSERT(QFileInfo(output.file).canonicalPath() == QFileInfo(files.recoveryFolder(job)).canonicalFilePath());
    } catch (const SorvanError& error) {
      RC_ASSERT(error.message() == invalid);
    }
  }));
}

TEST_F(Recovery, GoesWithTheWholeFolder) {
  ResultRecovery::save({Script::pictureOutput("one")}, files, job);
  ResultRecovery::remove(files, job);
  EXPECT_FALSE(QDir(files.recoveryFolder(job)).exists());
  ResultRecovery::remove(files, job);
}

TEST_F(Recovery, TheMarkerComesAndGoes) {
  EXPECT_FALSE(ResultRecovery::hasSubmissionMarker(files, job));
  ResultRecovery::removeSubmissionMarker(files, job);
  ResultRecovery::writeSubmissionMarker(files, job);
  EXPECT_TRUE(ResultRecovery::hasSubmissionMarker(files, job));
  ResultRecovery::writeSubmissionMarker(files, job);
  ResultRecovery::removeSubmissionMarker(files, job);
  EXPECT_FALSE(ResultRecovery::hasSubmissionMarker(files, job));
}

}  // namespace
}  // namespace sorvan::generation
