#include "core/record_context.h"

#include <gtest/gtest.h>

#include <random>

#include "base/ids.h"
#include "core/image_format.h"
#include "platform/sqlite.h"
#include "support/temporary_folder.h"

namespace sorvan::core {
namespace {

using platform::Database;
using platform::DatabaseOpening;

struct RecordContextTest : testing::Test {
  test::TemporaryFolder folder;
  QString file = folder / QStringLiteral("library.store");
  std::unique_ptr<RecordContext> context = std::make_unique<RecordContext>(file);

  void reopen() {
    context.reset();
    context = std::make_unique<RecordContext>(file);
  }
  QString valueInFile(const QString& sql) {
    Database database(file, DatabaseOpening::ReadWrite);
    return database.text(sql.toLatin1().constData());
  }
};

/// A value for each kind of field, none of them a default.
struct Filler {
  int counter = 0;
  void fill(QUuid& value) { value = newUuid(); }
  void fill(QString& value) { value = QStringLiteral("текст 🦊 %1").arg(++counter); }
  void fill(QByteArray& value) { value = QByteArray("\0\xff{", 3) + QByteArray::number(++counter); }
  void fill(Instant& value) { value = {800000000.1234567 + ++counter}; }
  void fill(double& value) { value = 0.1 + ++counter; }
  void fill(int& value) { value = ++counter; }
  void fill(std::int64_t& value) { value = std::numeric_limits<std::int64_t>::max() - ++counter; }
  void fill(bool& value) { value = true; }
  void fill(std::vector<QUuid>& value) { value = {newUuid(), newUuid()}; }
  template <class Value>
  void fill(std::optional<Value>& value) {
    fill(value.emplace());
  }
};

template <class R>
R filled() {
  R record;
  Filler filler;
  forEachField<R>([&](const char*, auto member) { filler.fill(record.*member); });
  return record;
}

template <class R>
struct EveryRecord : RecordContextTest {};
using RecordTypes = testing::Types<Project, Asset, Generation, AssetRelationship, ReferenceAsset, GenerationJob,
                                   ContactSheet, SavedReference, ClipSequence>;
TYPED_TEST_SUITE(EveryRecord, RecordTypes);

TYPED_TEST(EveryRecord, ReadsBackEveryFieldThatWasSaved) {
  const auto full = filled<TypeParam>();
  TypeParam bare;
  bare.id = newUuid();
  this->context->insert(full);
  this->context->insert(bare);
  this->context->save();
  this->reopen();
  const auto records = this->context->template fetch<TypeParam>();
  ASSERT_EQ(records.size(), 2u);
  EXPECT_TRUE(sameFields(*records[0], full));
  EXPECT_TRUE(sameFields(*records[1], bare));
}

TYPED_TEST(EveryRecord, EditIsWrittenAndRollbackPutsEveryValueBackInPlace) {
  TypeParam bare;
  bare.id = newUuid();
  const auto record = this->context->insert(bare);
  this->context->save();

  const auto other = filled<TypeParam>();
  const QUuid id = record->id;
  copyFields(other, this->context->edit(record));
  const_cast<TypeParam&>(*record).id = id;
  this->context->rollback();
  EXPECT_TRUE(sameFields(*record, bare));
  EXPECT_FALSE(this->context->hasChanges());

  TypeParam& changed = this->context->edit(record);
  copyFields(other, changed);
  changed.id = id;
  this->context->save();
  this->reopen();
  const auto records = this->context->template fetch<TypeParam>();
  ASSERT_EQ(records.size(), 1u);
  EXPECT_TRUE(sameFields(*records[0], *record));
}

TEST_F(RecordContextTest, FetchesInTheOrderOfInsertionWhateverTheDates) {
  std::vector<QUuid> inserted;
  for (int index = 0; index < 50; ++index) {
    Generation generation;
    generation.id = newUuid();
    generation.createdAt = {static_cast<double>(100 - index)};
    inserted.push_back(generation.id);
    context->insert(generation);
    context->save();
  }
  reopen();
  std::vector<QUuid> fetched;
  for (const auto& generation : context->fetch<Generation>()) fetched.push_back(generation->id);
  EXPECT_EQ(fetched, inserted);
}

TEST_F(RecordContextTest, FetchingAgainGivesTheSameObjects) {
  const auto project = context->insert(Project(QStringLiteral("A"), QStringLiteral("A-1"), Instant{1}));
  context->save();
  EXPECT_EQ(context->fetch<Project>().front(), project);
  EXPECT_EQ(context->fetch<Project>().front(), project);
  EXPECT_EQ(context->find<Project>(project->id), project);
}

TEST_F(RecordContextTest, FetchingKeepsUnsavedChangesAndUnsavedRecords) {
  const auto saved = context->insert(Project(QStringLiteral("A"), QStringLiteral("A-1"), Instant{1}));
  const auto leaving = context->insert(Project(QStringLiteral("B"), QStringLiteral("B-1"), Instant{2}));
  context->save();
  context->edit(saved).name = QStringLiteral("changed");
  context->remove(leaving);
  const auto fresh = context->insert(Project(QStringLiteral("C"), QStringLiteral("C-1"), Instant{3}));
  const auto fetched = context->fetch<Project>();
  ASSERT_EQ(fetched.size(), 2u);
  EXPECT_EQ(fetched[0]->name, QStringLiteral("changed"));
  EXPECT_EQ(fetched[1], fresh);
}

TEST_F(RecordContextTest, FetchingBringsObjectsUpToDateInPlaceAndForgetsRowsThatAreGone) {
  const auto kept = context->insert(Project(QStringLiteral("A"), QStringLiteral("A-1"), Instant{1}));
  const auto gone = context->insert(Project(QStringLiteral("B"), QStringLiteral("B-1"), Instant{2}));
  context->save();
  {
    Database other(file, DatabaseOpening::ReadWrite);
    other.execute(QStringLiteral("UPDATE Project SET name = 'elsewhere' WHERE name = 'A'"));
    other.execute(QStringLiteral("DELETE FROM Project WHERE name = 'B'"));
  }
  EXPECT_EQ(context->fetch<Project>().size(), 1u);
  EXPECT_EQ(kept->name, QStringLiteral("elsewhere"));
  EXPECT_TRUE(gone->isRemoved());
  EXPECT_EQ(context->find<Project>(gone->id), nullptr);
}

TEST_F(RecordContextTest, ASecondRecordOfOneIdFailsTheSaveAndReplacesNothing) {
  const auto first = context->insert(Project(QStringLiteral("first"), QStringLiteral("A-1"), Instant{1}));
  context->save();
  Project twin(QStringLiteral("second"), QStringLiteral("B-1"), Instant{2});
  twin.id = first->id;
  context->insert(twin);
  EXPECT_THROW(context->save(), SorvanError);
  context->rollback();
  reopen();
  const auto projects = context->fetch<Project>();
  ASSERT_EQ(projects.size(), 1u);
  EXPECT_EQ(projects[0]->name, QStringLiteral("first"));
}

TEST_F(RecordContextTest, AFailedSaveWritesNothingAndKeepsEveryChangePending) {
  const auto project = context->insert(Project(QStringLiteral("A"), QStringLiteral("A-1"), Instant{1}));
  context->save();
  context->edit(project).name = QStringLiteral("new name");
  Project twin;
  twin.id = project->id;
  const auto clash = context->insert(twin);
  EXPECT_THROW(context->save(), SorvanError);
  EXPECT_EQ(valueInFile(QStringLiteral("SELECT name FROM Project")), QStringLiteral("A"));
  EXPECT_EQ(project->name, QStringLiteral("new name"));

  context->remove(clash);
  context->save();
  EXPECT_EQ(valueInFile(QStringLiteral("SELECT name FROM Project")), QStringLiteral("new name"));
}

TEST_F(RecordContextTest, RollbackFlagsInsertedRecordsAndBringsRemovedOnesBack) {
  const auto old = context->insert(Project(QStringLiteral("old"), QStringLiteral("A-1"), Instant{1}));
  context->save();
  context->edit(old).name = QStringLiteral("edited first");
  context->remove(old);
  EXPECT_TRUE(old->isRemoved());
  const auto fresh = context->insert(Project(QStringLiteral("new"), QStringLiteral("B-1"), Instant{2}));
  context->rollback();
  EXPECT_FALSE(old->isRemoved());
  EXPECT_EQ(old->name, QStringLiteral("old"));
  EXPECT_EQ(context->find<Project>(old->id), old);
  EXPECT_TRUE(fresh->isRemoved());
  EXPECT_EQ(context->find<Project>(fresh->id), nullptr);
}

TEST_F(RecordContextTest, ARemovedRecordStaysReadable) {
  const auto project = context->insert(Project(QStringLiteral("A"), QStringLiteral("A-1"), Instant{1}));
  context->save();
  context->remove(project);
  context->save();
  EXPECT_TRUE(project->isRemoved());
  EXPECT_EQ(project->name, QStringLiteral("A"));
  reopen();
  EXPECT_TRUE(context->fetch<Project>().empty());
}

TEST_F(RecordContextTest, RemovingAndInsertingOneIdInOneSaveLeavesTheNewRecord) {
  const auto old = context->insert(Project(QStringLiteral("old"), QStringLiteral("A-1"), Instant{1}));
  context->save();
  context->remove(old);
  Project again(QStringLiteral("again"), QStringLiteral("B-1"), Instant{2});
  again.id = old->id;
  const auto fresh = context->insert(again);
  context->save();
  EXPECT_EQ(context->find<Project>(old->id), fresh);
  reopen();
  EXPECT_EQ(context->fetch<Project>().front()->name, QStringLiteral("again"));
}

TEST_F(RecordContextTest, ListsExactlyTheRecordsThatWereEdited) {
  const auto one = context->insert(Project(QStringLiteral("A"), QStringLiteral("A-1"), Instant{1}));
  context->insert(Project(QStringLiteral("B"), QStringLiteral("B-1"), Instant{2}));
  context->save();
  context->edit(one).archived = true;
  context->insert(Project(QStringLiteral("C"), QStringLiteral("C-1"), Instant{3}));
  EXPECT_EQ(context->edited<Project>(), std::vector<ProjectRef>{one});
  context->save();
  EXPECT_TRUE(context->edited<Project>().empty());
}

TEST_F(RecordContextTest, WritesIdsInUpperCaseAndMarksTheFormOfTheFile) {
  const auto project = context->insert(Project(QStringLiteral("A"), QStringLiteral("A-1"), Instant{1}));
  context->save();
  EXPECT_EQ(valueInFile(QStringLiteral("SELECT id FROM Project")), uuidText(project->id));
  EXPECT_EQ(valueInFile(QStringLiteral("PRAGMA user_version")), QStringLiteral("7"));
}

TEST_F(RecordContextTest, AnOlderTableGetsItsMissingColumnsAndOldRowsTheirDefaults) {
  context.reset();
  {
    Database database(file, DatabaseOpening::ReadWrite);
    database.execute(
        QStringLiteral("DROP TABLE Asset; CREATE TABLE Asset (id TEXT NOT NULL UNIQUE, mediaType TEXT "
                       "NOT NULL, localFilePath TEXT NOT NULL); INSERT INTO Asset VALUES "
                       "('0F8FAD5B-D9CB-469F-A165-70867728950E', 'video', 'Inbox/a.mp4'); "
                       "PRAGMA user_version = 1"));
  }
  reopen();
  const auto assets = context->fetch<Asset>();
  ASSERT_EQ(assets.size(), 1u);
  EXPECT_EQ(assets[0]->statusRaw, QStringLiteral("draft"));
  EXPECT_EQ(assets[0]->sourceTypeRaw, QString());
  EXPECT_EQ(assets[0]->checksum, std::nullopt);
  EXPECT_EQ(assets[0]->type(), MediaType::video);
}

TEST_F(RecordContextTest, ADatabaseOfANewerFormIsRefused) {
  context.reset();
  {
    Database database(file, DatabaseOpening::ReadWrite);
    database.setUserVersion(8);
  }
  EXPECT_THROW(RecordContext{file}, SorvanError);
  EXPECT_EQ(valueInFile(QStringLiteral("PRAGMA user_version")), QStringLiteral("8"));
}

TEST_F(RecordContextTest, TextsThatRepeatAndTextsThatDoNotAreBothReadExactly) {
  for (int index = 0; index < 5000; ++index) {
    Asset asset;
    asset.id = newUuid();
    asset.mediaType = index % 2 ? QStringLiteral("image") : QStringLiteral("video");
    asset.localFilePath = QStringLiteral("Inbox/generated/item-%1.png").arg(index);
    context->insert(asset);
  }
  context->save();
  reopen();
  const auto assets = context->fetch<Asset>();
  ASSERT_EQ(assets.size(), 5000u);
  for (int index = 0; index < 5000; ++index) {
    const auto& asset = assets[static_cast<std::size_t>(index)];
    ASSERT_EQ(asset->mediaType, index % 2 ? QStringLiteral("image") : QStringLiteral("video"));
    ASSERT_EQ(asset->localFilePath, QStringLiteral("Inbox/generated/item-%1.png").arg(index));
  }
}

// Whatever is inserted, edited, removed, saved and rolled back: a fetch gives what a fresh reader of the file sees,
// plus what is unsaved, in the order of insertion.
TEST_F(RecordContextTest, FetchesWhatAFreshReaderSeesAfterAnySequenceOfChanges) {
  const unsigned seed = std::random_device{}();
  SCOPED_TRACE(seed);
  std::mt19937 random(seed);
  int counter = 0;
  for (int round = 0; round < 120; ++round) {
    const auto present = context->fetch<Project>();
    for (int change = static_cast<int>(random() % 4); change > 0; --change) {
      const auto any = present.empty() ? nullptr : present[random() % present.size()];
      const unsigned kind = random() % 3;
      if (kind == 0 || !any || any->isRemoved())
        context->insert(Project(QStringLiteral("p%1").arg(++counter), QString(), Instant{1}));
      else if (kind == 1)
        context->edit(any).name += u'x';
      else
        context->remove(any);
    }
    if (random() % 4 == 0)
      context->rollback();
    else
      context->save();
    if (random() % 5 == 0) {
      Database other(file, DatabaseOpening::ReadWrite);
      other.execute(QStringLiteral("UPDATE Project SET notes = 'n%1' WHERE rowid % 3 = 0").arg(round));
    }
    QStringList expected;
    {
      RecordContext fresh(file);
      for (const auto& project : fresh.fetch<Project>()) expected += project->name + project->notes.value_or(QString());
    }
    QStringList fetched;
    for (const auto& project : context->fetch<Project>()) fetched += project->name + project->notes.value_or(QString());
    ASSERT_EQ(fetched, expected) << "round " << round;
  }
}

TEST(ImageFormat, IsFoundByItsSizeAndByItsRatio) {
  ASSERT_NE(ImageFormat::find(u"1536x864"), nullptr);
  EXPECT_EQ(ImageFormat::find(u"1536x864")->ratio, QLatin1StringView("16:9"));
  EXPECT_EQ(ImageFormat::find(u"1x1"), nullptr);
  EXPECT_EQ(ImageFormat::withRatio(u"4:5")->size, QLatin1StringView("1024x1280"));
  EXPECT_EQ(ImageFormat::all().size(), 8u);
  for (const ImageFormat& format : ImageFormat::all())
    EXPECT_EQ(QStringLiteral("%1x%2").arg(format.width).arg(format.height), QString(format.size));
}

}  // namespace
}  // namespace sorvan::core
