// Each invariant, broken on purpose: a check that cannot fail would prove nothing.
#include "torture/invariants.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <set>

#include "torture/old_library.h"

namespace sorvan::torture {
namespace {

using namespace Qt::StringLiterals;

const QString itemPath = u"Inbox/generated/a lighthouse.png"_s;

QString shaOf(const QByteArray& bytes) {
  return QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex());
}

// What a trial leaves when all went well: one order, its purchase and its item, in a workspace on disk.
class AfterATrial : public testing::Test {
 protected:
  AfterATrial() : evidence{} {
    evidence.grounds = Grounds::made(folder.filePath(u"trial"_s));
    evidence.secret = "the planted secret";
    QDir(workspace()).mkpath(u".sorvan"_s);
    QDir(workspace()).mkpath(u"Inbox/generated"_s);
    put(itemPath, "the bytes that were made");
    makeDatabase(workspace() + u"/.sorvan/library.store"_s);
    job = {{u"id"_s, u"JOB"_s}, {u"prompt"_s, u"a lighthouse"_s}, {u"items"_s, QJsonArray{u"ITEM"_s}},
           {u"status"_s, u"complete"_s}};
    item = {{u"id"_s, u"ITEM"_s}, {u"path"_s, itemPath}, {u"exists"_s, true}, {u"stars"_s, 3}};
    item[u"checksum"_s] = item[u"actualChecksum"_s] = shaOf("the bytes that were made");
    evidence.purchases = {{u"r-1"_s, u"a lighthouse"_s, false, {shaOf("the bytes that were made")}}};
    evidence.acknowledged = {{{u"did"_s, u"enqueue"_s}, {u"id"_s, u"JOB"_s}}};
    books({10, 6, 1, 3});
    operation(6, 3);
  }

  struct Books {
    int reserved;
    int charged;
    int returned;
    int open;
  };
  void books(const Books& told, bool balanced = true) {
    evidence.gateway.insert(u"books"_s, QJsonObject{{u"balanced"_s, balanced},
                                                    {u"reserved"_s, told.reserved},
                                                    {u"charged"_s, told.charged},
                                                    {u"returned"_s, told.returned},
                                                    {u"open"_s, told.open}});
  }
  void operation(int charged, int held) {
    evidence.gateway.insert(u"operations"_s,
                            QJsonArray{QJsonObject{{u"charged"_s, charged}, {u"held"_s, held}}});
  }

  QString workspace() const { return evidence.grounds.workspace(); }
  void put(const QString& below, const QByteArray& bytes) const {
    QDir().mkpath((workspace() + u'/' + below).section(u'/', 0, -2));
    QFile file(workspace() + u'/' + below);
    ASSERT_TRUE(file.open(QFile::WriteOnly));
    file.write(bytes);
  }
  static void makeDatabase(const QString& path) {
    sqlite3* database = nullptr;
    sqlite3_open(QFile::encodeName(path).constData(), &database);
    sqlite3_exec(database, "CREATE TABLE Asset (id TEXT); INSERT INTO Asset VALUES ('x')", nullptr, nullptr, nullptr);
    sqlite3_close(database);
  }
  void report() {
    evidence.report.insert(u"jobs"_s, QJsonArray{job});
    evidence.report.insert(u"items"_s, QJsonArray{item});
    if (evidence.secondReport.isEmpty()) evidence.secondReport = evidence.report;
  }
  // The names of the invariants that do not hold.
  std::set<std::string> broken() {
    report();
    evidence.after = filesBelow(workspace());
    if (evidence.second.isEmpty()) evidence.second = evidence.after;
    std::set<std::string> names;
    for (const Violation& violation : judge(evidence).violations) names.insert(violation.invariant.toStdString());
    return names;
  }
  using Names = std::set<std::string>;

  QTemporaryDir folder;
  Evidence evidence;
  QJsonObject job;
  QJsonObject item;
};

TEST_F(AfterATrial, NothingIsBrokenWhenAllWentWell) { EXPECT_EQ(broken(), Names{}); }

TEST_F(AfterATrial, ASecondPurchaseOfAJobBreaksTheFirst) {
  evidence.purchases.push_back(evidence.purchases.front());
  EXPECT_EQ(broken(), Names{"I1"});
}

TEST_F(AfterATrial, APurchaseWithoutARowBreaksTheFirst) {
  evidence.purchases.push_back({u"r-2"_s, u"nobody's order"_s, false, {}});
  EXPECT_EQ(broken(), Names{"I1"});
}

TEST_F(AfterATrial, AnythingThatWasPromisedAndIsGoneBreaksTheSecond) {
  const QList<QJsonObject> promises{
      {{u"did"_s, u"enqueue"_s}, {u"id"_s, u"ANOTHER"_s}},
      {{u"did"_s, u"place"_s}, {u"id"_s, u"ITEM"_s}, {u"checksum"_s, u"of other bytes"_s}},
      {{u"did"_s, u"rate"_s}, {u"id"_s, u"ITEM"_s}, {u"stars"_s, 4}},
      {{u"did"_s, u"trash"_s}, {u"id"_s, u"ITEM"_s}, {u"trashed"_s, true}},
      {{u"did"_s, u"sheet"_s}, {u"id"_s, u"NONE"_s}},
      {{u"did"_s, u"sheet"_s}, {u"id"_s, u"SHEET"_s}, {u"trashed"_s, true}},
      {{u"did"_s, u"sheet"_s}, {u"id"_s, u"SHEET"_s}, {u"number"_s, 2}},
      {{u"did"_s, u"sheet"_s}, {u"id"_s, u"SHEET"_s}, {u"items"_s, QJsonArray{u"B"_s, u"A"_s}}},
      {{u"did"_s, u"project"_s}, {u"id"_s, u"NONE"_s}},
      {{u"did"_s, u"project"_s}, {u"id"_s, u"PROJECT"_s}, {u"number"_s, 2}},
      {{u"did"_s, u"project"_s}, {u"id"_s, u"PROJECT"_s}, {u"archived"_s, true}},
      {{u"did"_s, u"prompt"_s}, {u"text"_s, u"a kept prompt"_s}},
      {{u"did"_s, u"review"_s}, {u"id"_s, u"ITEM"_s}},
      {{u"did"_s, u"draft"_s}, {u"text"_s, u"2"_s}},
      {{u"did"_s, u"something nobody knows"_s}}};
  const QJsonObject sheet{
      {u"id"_s, u"SHEET"_s}, {u"title"_s, u"1"_s}, {u"items"_s, QJsonArray{u"A"_s, u"B"_s}}, {u"trashed"_s, false}};
  evidence.report.insert(u"contactSheets"_s, QJsonArray{sheet});
  const QJsonObject project{{u"id"_s, u"PROJECT"_s}, {u"name"_s, u"1"_s}, {u"archived"_s, false}, {u"folder"_s, true}};
  evidence.report.insert(u"projects"_s, QJsonArray{project});
  evidence.acknowledged = {{{u"did"_s, u"sheet"_s}, {u"id"_s, u"SHEET"_s}, {u"number"_s, 1}, {u"trashed"_s, false}},
                           {{u"did"_s, u"project"_s}, {u"id"_s, u"PROJECT"_s}, {u"number"_s, 1}}};
  EXPECT_EQ(broken(), Names{});
  for (const QJsonObject& promise : promises) {
    evidence.acknowledged = {promise};
    EXPECT_EQ(broken(), Names{"I2"}) << promise.value(u"did"_s).toString().toStdString();
  }
}

TEST_F(AfterATrial, AProjectWithoutItsFolderBreaksTheFourth) {
  const QJsonObject made{{u"id"_s, u"PROJECT"_s}, {u"name"_s, u"1"_s}, {u"folder"_s, false}};
  evidence.report.insert(u"projects"_s, QJsonArray{made});
  EXPECT_EQ(broken(), Names{"I4"});
}

TEST_F(AfterATrial, AProjectThatCameWithAnEarlierLibraryNeedsNoFolder) {
  const QJsonObject came{{u"id"_s, u"PROJECT"_s}, {u"name"_s, u"Harbour"_s}, {u"folder"_s, false}};
  evidence.report.insert(u"projects"_s, QJsonArray{came});
  EXPECT_EQ(broken(), Names{});
}

TEST_F(AfterATrial, WhatStaysUnsavedBreaksTheSecond) {
  evidence.leftUnsaved = true;
  EXPECT_EQ(broken(), Names{"I2"});
}

TEST_F(AfterATrial, AMissingResultBreaksTheThird) {
  job[u"items"_s] = QJsonArray{};
  EXPECT_EQ(broken(), Names{"I3"});
}

TEST_F(AfterATrial, OtherBytesThanTheServiceMadeBreakTheThird) {
  evidence.purchases.front().checksums = {shaOf("other bytes")};
  EXPECT_EQ(broken(), Names{"I3"});
}

TEST_F(AfterATrial, AMarkedResultThatDiffersOutsideItsMarksBreaksTheThird) {
  QImage original(40, 40, QImage::Format_RGB32);
  original.fill(Qt::white);
  ASSERT_TRUE(original.save(workspace() + u"/Inbox/original.png"_s));
  QImage result = original;
  result.setPixelColor(20, 20, Qt::red);
  ASSERT_TRUE(result.save(workspace() + u'/' + itemPath, "PNG"));
  QFile file(workspace() + u'/' + itemPath);
  ASSERT_TRUE(file.open(QFile::ReadOnly));
  item[u"checksum"_s] = item[u"actualChecksum"_s] = shaOf(file.readAll());
  const auto markAt = [this](double corner) {
    QJsonArray boxes;
    boxes.append(QJsonArray{corner, corner, 0.5, 0.5});
    job[u"marks"_s] = QJsonObject{{u"original"_s, u"Inbox/original.png"_s}, {u"boxes"_s, boxes}};
    evidence.secondReport = {};
  };
  markAt(0.25);
  EXPECT_EQ(broken(), Names{});
  markAt(0);  // whose last pixel is the one before
  EXPECT_EQ(broken(), Names{"I3"});
}

TEST_F(AfterATrial, ARecordThatNamesAMissingFileBreaksTheFourth) {
  item[u"exists"_s] = false;
  EXPECT_EQ(broken(), Names{"I4"});
}

TEST_F(AfterATrial, PaidBytesWithoutARecordBreakTheFourth) {
  put(u"Inbox/generated/a stray.png"_s, "bytes of nobody");
  EXPECT_EQ(broken(), Names{"I4"});
}

TEST_F(AfterATrial, ARetainedResultWithoutAChargeNoteBreaksTheFourth) {
  QJsonObject retained{{u"prompt"_s, u"a lighthouse"_s}, {u"priced"_s, true}, {u"noted"_s, true}};
  evidence.opened = {{u"spendingReads"_s, true}, {u"retained"_s, QJsonArray{retained}}};
  EXPECT_EQ(broken(), Names{});
  retained[u"noted"_s] = false;
  evidence.opened[u"retained"_s] = QJsonArray{retained};
  EXPECT_EQ(broken(), Names{"I4"});
}

TEST_F(AfterATrial, AChargeNoteThatOutlivesItsJobBreaksTheFourth) {
  job[u"noted"_s] = true;
  EXPECT_EQ(broken(), Names{"I4"});
}

TEST_F(AfterATrial, ADamagedDatabaseBreaksTheFifth) {
  put(u".sorvan/library.store"_s, "no database, and far too short to be one");
  EXPECT_EQ(broken(), Names{"I5"});
}

TEST_F(AfterATrial, ADamagedSidecarBreaksTheSixth) {
  put(u".sorvan/prompts.json"_s, "[ {");
  EXPECT_EQ(broken(), Names{"I6"});
}

TEST_F(AfterATrial, AnUnreadableSidecarThatWasOverwrittenBreaksTheSixth) {
  evidence.damagedSidecar = u".sorvan/charges.json"_s;
  evidence.before.insert(evidence.damagedSidecar, "what nobody could read");
  put(evidence.damagedSidecar, "[]");
  EXPECT_EQ(broken(), Names{"I6"});
}

TEST_F(AfterATrial, AFileOfTheLibraryThatIsGoneBreaksTheSeventh) {
  evidence.before.insert(u"Inbox/imported/of the user.png"_s, "some bytes");
  EXPECT_EQ(broken(), Names{"I7"});
}

TEST_F(AfterATrial, AFileOutsideTheWorkspaceBreaksTheSeventh) {
  QFile stray(evidence.grounds.outside() + u"/a stray"_s);
  ASSERT_TRUE(stray.open(QFile::WriteOnly));
  EXPECT_EQ(broken(), Names{"I7"});
}

TEST_F(AfterATrial, AnythingTemporaryThatRemainsBreaksTheEighth) {
  for (const QString& name : {u".1234.sorvan-temporary"_s, u"0.part"_s, u"library.store-journal"_s, u"copy-wal"_s}) {
    put(u".sorvan/"_s + name, "half");
    EXPECT_EQ(broken(), Names{"I8"}) << name.toStdString();
    QFile::remove(workspace() + u"/.sorvan/"_s + name);
    evidence.second.clear();
  }
}

TEST_F(AfterATrial, AStartThatChangesAFileBreaksTheNinth) {
  report();
  evidence.second = filesBelow(workspace());
  evidence.second.insert(itemPath, "changed");
  EXPECT_EQ(broken(), Names{"I9"});
}

TEST_F(AfterATrial, AStartThatChangesTheRecordsBreaksTheNinth) {
  report();
  item[u"stars"_s] = 5;
  EXPECT_EQ(broken(), Names{"I9"});
}

TEST_F(AfterATrial, TwoPostsOfOneAttemptBreakTheTenth) {
  evidence.mostPosts = 2;
  EXPECT_EQ(broken(), Names{"I10"});
}

TEST_F(AfterATrial, AKeyInAnyFileBreaksTheEleventh) {
  put(u".sorvan/note"_s, "with the planted secret in it");
  EXPECT_EQ(broken(), Names{"I11"});
}

TEST_F(AfterATrial, AKeyThatWasShownToAForeignHostBreaksTheEleventh) {
  evidence.secretShownElsewhere = true;
  EXPECT_EQ(broken(), Names{"I11"});
}

TEST_F(AfterATrial, BooksThatDoNotBalanceBreakTheTwelfth) {
  books({10, 6, 1, 3}, false);
  EXPECT_EQ(broken(), Names{"I12"});
}

TEST_F(AfterATrial, CreditsThatAreLostBetweenHoldAndChargeBreakTheTwelfth) {
  books({11, 6, 1, 3});
  EXPECT_EQ(broken(), Names{"I12"});
}

TEST_F(AfterATrial, AnOperationThatIsChargedOtherwiseThanTheBooksSayBreaksTheTwelfth) {
  operation(7, 3);
  EXPECT_EQ(broken(), Names{"I12"});
}

TEST_F(AfterATrial, CreditsThatAreHeldForNothingBreakTheTwelfth) {
  operation(6, 2);
  EXPECT_EQ(broken(), Names{"I12"});
}

TEST_F(AfterATrial, AJobThatDoesNotComeToRestBreaksTheThirteenth) {
  job[u"status"_s] = u"failed"_s;
  EXPECT_EQ(broken(), Names{"I13"});
}

TEST_F(AfterATrial, ARunThatDidNotEndBreaksTheThirteenth) {
  evidence.unended << u"the recovery did not end"_s;
  EXPECT_EQ(broken(), Names{"I13"});
}

TEST_F(AfterATrial, AJobWhoseSubmissionIsUnknownIsCountedAndBreaksNothing) {
  job[u"status"_s] = u"failed"_s;
  job[u"unknown"_s] = true;
  EXPECT_EQ(broken(), Names{});
  EXPECT_EQ(judge(evidence).unknownSubmissions, 1);
}

// ---- Old libraries

class AfterAnUpgrade : public AfterATrial {
 protected:
  AfterAnUpgrade() {
    evidence.oldVersion = 2;
    QImage(8, 8, QImage::Format_RGB32).save(folder.filePath(u"picture.png"_s));
    layOldLibrary(folder.filePath(u"old"_s), 2, folder.filePath(u"picture.png"_s));
    QDir(workspace()).mkpath(u".sorvan/backups/pre-v7-X"_s);
  }
  QString snapshot() const { return workspace() + u"/.sorvan/backups/pre-v7-X/library.store"_s; }
};

TEST_F(AfterAnUpgrade, AWholeSnapshotIsAllThatIsAskedFor) {
  ASSERT_TRUE(QFile::copy(folder.filePath(u"old/.sorvan/library.store"_s), snapshot()));
  EXPECT_EQ(broken(), Names{});
}

TEST_F(AfterAnUpgrade, AnotherDatabaseInItsPlaceBreaksTheSecond) {
  makeDatabase(snapshot());
  EXPECT_EQ(broken(), Names{"I2"});
}

TEST_F(AfterAnUpgrade, HalfOfASnapshotBreaksTheSecondAndTheEighth) {
  put(u".sorvan/backups/pre-v7-X/library.store.part"_s, "half");
  EXPECT_EQ(broken(), (Names{"I2", "I8"}));
}

}  // namespace
}  // namespace sorvan::torture
