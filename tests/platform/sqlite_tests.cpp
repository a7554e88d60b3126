#include "platform/sqlite.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include "support/failure_of.h"
#include "support/temporary_folder.h"
#include "support/text_printers.h"

namespace sorvan::test {
using namespace sorvan::base;
using namespace sorvan::platform;

namespace {
struct Sqlite : testing::Test {
  TemporaryFolder folder;
  QString path = folder / QStringLiteral("library.store");

  std::unique_ptr<Database> withTable() {
    auto database = std::make_unique<Database>(path, DatabaseOpening::ReadWrite);
    database->execute(QStringLiteral("CREATE TABLE item (id TEXT PRIMARY KEY, rating INTEGER, size REAL, data BLOB)"));
    return database;
  }
};
}  // namespace

TEST_F(Sqlite, OpensInWalModeWithFullSynchronisation) {
  Database database(path, DatabaseOpening::ReadWrite);
  EXPECT_EQ(database.text("PRAGMA journal_mode"), QStringLiteral("wal"));
  EXPECT_EQ(database.number("PRAGMA synchronous"), 2);
}

TEST_F(Sqlite, RefusesADatabaseWhoseJournalCannotBeMadeSafe) {
  // A database in memory has no write-ahead log.
  EXPECT_EQ(failureOf([] { Database(QStringLiteral(":memory:"), DatabaseOpening::ReadWrite); }),
            QStringLiteral(":memory: could not be opened: its journal could not be made safe"));
}

TEST_F(Sqlite, BindsAndReadsEachKindOfValue) {
  const auto database = withTable();
  Statement& insert = database->statement("INSERT INTO item VALUES (?1, ?2, ?3, ?4)");
  const QByteArray bytes("\0\1\xff", 3);
  insert.bind(1, QStringLiteral("“é” 👩‍👩‍👧"))
      .bind(2, qint64(1) << 60)
      .bind(3, 0.1)
      .bind(4, bytes)
      .run();
  database->statement("INSERT INTO item VALUES (?1, ?2, ?3, ?4)").bind(1, QString()).run();
  Statement& query = database->statement("SELECT * FROM item ORDER BY rating DESC");
  ASSERT_TRUE(query.step());
  EXPECT_EQ(query.row().text(0), QStringLiteral("“é” 👩‍👩‍👧"));
  EXPECT_EQ(query.row().integer(1), qint64(1) << 60);
  EXPECT_EQ(query.row().real(2), 0.1);
  EXPECT_EQ(query.row().blob(3), bytes);
  ASSERT_TRUE(query.step());
  // A null text is the empty text, and bindings of the run before are gone.
  EXPECT_EQ(query.row().optionalText(0), QString());
  EXPECT_EQ(query.row().optionalInteger(1), std::nullopt);
  EXPECT_EQ(query.row().optionalReal(2), std::nullopt);
  EXPECT_TRUE(query.row().isNull(3));
  EXPECT_FALSE(query.step());
}

TEST_F(Sqlite, AStatementIsPreparedOnce) {
  const auto database = withTable();
  EXPECT_EQ(&database->statement("SELECT id FROM item"), &database->statement("SELECT id FROM item"));
}

TEST_F(Sqlite, TellsHowManyRowsChanged) {
  const auto database = withTable();
  for (int row = 0; row < 3; ++row)
    database->statement("INSERT INTO item(id) VALUES (?1)").bind(1, QString::number(row)).run();
  EXPECT_EQ(database->statement("UPDATE item SET rating = 5 WHERE id > ?1").bind(1, QStringLiteral("0")).run(), 2);
}

TEST_F(Sqlite, ATransactionWithoutCommitLeavesNothing) {
  const auto database = withTable();
  {
    Transaction transaction(*database);
    database->execute(QStringLiteral("INSERT INTO item(id) VALUES ('a')"));
  }
  EXPECT_EQ(database->number("SELECT count(*) FROM item"), 0);
  {
    Transaction transaction(*database);
    database->execute(QStringLiteral("INSERT INTO item(id) VALUES ('a')"));
    transaction.commit();
  }
  EXPECT_EQ(database->number("SELECT count(*) FROM item"), 1);
}

TEST_F(Sqlite, AFullDiskIsToldAndKeepsTheOldRows) {
  const auto database = withTable();
  database->execute(QStringLiteral("INSERT INTO item(id) VALUES ('kept')"));
  database->execute(QStringLiteral("PRAGMA max_page_count=4"));
  const QString message = failureOf([&] {
    Transaction transaction(*database);
    database->statement("INSERT INTO item(id, data) VALUES ('new', ?1)").bind(1, QByteArray(100000, 'x')).run();
    transaction.commit();
  });
  EXPECT_EQ(message, QStringLiteral("library.store could not be saved: database or disk is full"));
  EXPECT_EQ(database->text("SELECT group_concat(id) FROM item"), QStringLiteral("kept"));
  // The connection is usable again.
  EXPECT_NO_THROW(Transaction(*database).commit());
}

TEST_F(Sqlite, AFailedStatementTellsItsCodeAndCanBeUsedAgain) {
  const auto database = withTable();
  Statement& insert = database->statement("INSERT INTO item(id) VALUES ('a')");
  insert.run();
  try {
    insert.run();
    FAIL() << "nothing was thrown";
  } catch (const DatabaseError& failure) {
    EXPECT_EQ(failure.code(), SQLITE_CONSTRAINT_PRIMARYKEY);
  }
  database->execute(QStringLiteral("DELETE FROM item"));
  EXPECT_EQ(insert.run(), 1);
}

TEST_F(Sqlite, AVisitorMayThrowAndTheStatementIsFreeAgain) {
  const auto database = withTable();
  database->execute(QStringLiteral("INSERT INTO item(id) VALUES ('a'), ('b')"));
  Statement& query = database->statement("SELECT id FROM item");
  EXPECT_THROW(query.forEach([](const Row&) { throw SorvanError(QStringLiteral("x")); }), SorvanError);
  QStringList found;
  query.forEach([&](const Row& row) { found.append(row.text(0)); });
  EXPECT_EQ(found, (QStringList{QStringLiteral("a"), QStringLiteral("b")}));
  EXPECT_NO_THROW(database->execute(QStringLiteral("DROP TABLE item")));
}

TEST_F(Sqlite, KeepsTheUserVersion) {
  {
    Database database(path, DatabaseOpening::ReadWrite);
    EXPECT_EQ(database.userVersion(), 0);
    database.setUserVersion(7);
  }
  EXPECT_EQ(Database(path, DatabaseOpening::ReadOnly).userVersion(), 7);
}

TEST_F(Sqlite, ListsTablesAndColumns) {
  const auto database = withTable();
  EXPECT_EQ(database->tables(), QStringList{QStringLiteral("item")});
  EXPECT_EQ(database->columns(QStringLiteral("item")), (QStringList{QStringLiteral("id"), QStringLiteral("rating"),
                                                                    QStringLiteral("size"), QStringLiteral("data")}));
  EXPECT_TRUE(database->hasTable(QStringLiteral("item")));
  EXPECT_FALSE(database->hasTable(QStringLiteral("item'--")));
}

TEST_F(Sqlite, AReadOnlyOpeningWritesNothing) {
  withTable();
  Database database(path, DatabaseOpening::ReadOnly);
  EXPECT_THROW(database.execute(QStringLiteral("DELETE FROM item")), DatabaseError);
  EXPECT_THROW(Database(folder / QStringLiteral("absent"), DatabaseOpening::ReadOnly), DatabaseError);
  EXPECT_FALSE(QFileInfo::exists(folder / QStringLiteral("absent")));
}

TEST_F(Sqlite, AFileThatIsNoDatabaseIsToldAndUntouched) {
  folder.write(QStringLiteral("library.store"), QByteArray("this is no database at all, only text").repeated(50));
  const QByteArray before = folder.read(QStringLiteral("library.store"));
  EXPECT_THROW(Database(path, DatabaseOpening::ReadWrite), DatabaseError);
  EXPECT_EQ(folder.read(QStringLiteral("library.store")), before);
}

TEST_F(Sqlite, DamageIsFoundByTheIntegrityCheck) {
  {
    const auto database = withTable();
    database->execute(QStringLiteral("CREATE INDEX byRating ON item(rating)"));
    for (int row = 0; row < 400; ++row)
      database->statement("INSERT INTO item(id, rating) VALUES (?1, ?2)")
          .bind(1, QString::number(row))
          .bind(2, row)
          .run();
    EXPECT_EQ(database->integrityProblems(), QStringList());
    EXPECT_EQ(database->quickProblems(), QStringList());
  }
  QByteArray bytes = folder.read(QStringLiteral("library.store"));
  ASSERT_GT(bytes.size(), 5 * 4096);
  bytes.replace(3 * 4096 + 200, 2000, QByteArray(2000, '\x5a'));
  folder.write(QStringLiteral("library.store"), bytes);
  Database damaged(path, DatabaseOpening::ReadOnly);
  EXPECT_FALSE(damaged.integrityProblems().isEmpty());
}

TEST_F(Sqlite, BacksUpWhileItIsOpenAndNeverOverAFile) {
  const auto database = withTable();
  database->execute(QStringLiteral("INSERT INTO item(id) VALUES ('a')"));
  const QString copy = folder / QStringLiteral("backup.store");
  database->backUpTo(copy);
  EXPECT_EQ(Database(copy, DatabaseOpening::ReadWrite).text("SELECT id FROM item"), QStringLiteral("a"));
  EXPECT_EQ(failureOf([&] { database->backUpTo(copy); }),
            QStringLiteral("backup.store could not be written: File exists"));
  EXPECT_THROW(database->backUpTo(folder / QStringLiteral("no/such/folder")), SorvanError);
}

}  // namespace sorvan::test
