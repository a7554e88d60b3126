// Two programs started together on one folder: one has it, and the other is refused and touches nothing.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QJsonDocument>

#include "durability/driven.h"
#include "platform/sqlite.h"
#include "support/run_task.h"

namespace durability {
namespace {

// The real library in a process of its own, which keeps the folder open until it is ended.
class Program {
 public:
  Program(const QString& workspace, const QString& service) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"SORVAN_SERVICE"_qs, service);
    process_.setProcessEnvironment(environment);
    process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    const QJsonArray commands{enqueuePicture(), command(u"run"_qs)};
    process_.start(QStringLiteral(SORVAN_DRIVER),
                   {workspace, QString::fromUtf8(QJsonDocument(commands).toJson(QJsonDocument::Compact))});
  }
  ~Program() {
    process_.kill();
    process_.waitForFinished(5000);
  }
  bool hasEnded() const { return process_.state() == QProcess::NotRunning; }
  QString refusal() {
    return QJsonDocument::fromJson(process_.readAllStandardOutput()).object()[u"refused"_qs].toString();
  }

 private:
  QProcess process_;
};

void makeOldLibrary(const QString& workspace) {
  QFile script(QStringLiteral(SORVAN_TEST_DATA "/schemas/schema-1.sql"));
  ASSERT_TRUE(script.open(QFile::ReadOnly));
  ASSERT_TRUE(QDir().mkpath(workspace + u"/.sorvan"_qs));
  sorvan::platform::Database database(workspace + u"/.sorvan/library.store"_qs,
                                      sorvan::platform::DatabaseOpening::ReadWrite);
  database.execute(QString::fromUtf8(script.readAll()));
}

class StartedTogether : public testing::TestWithParam<int> {};
INSTANTIATE_TEST_SUITE_P(Rounds, StartedTogether, testing::Range(0, 5));

TEST_P(StartedTogether, OneUpgradesAndHoldsTheFolderAndTheOtherIsRefused) {
  QTemporaryDir folder;
  sorvan::test::SandboxProcess sandbox;
  // Whoever gets the folder buys a picture that is never answered, and so stays.
  sandbox.addFault(u"submit"_qs, u"hold"_qs, {{u"at"_qs, u"after"_qs}});
  const QString workspace = folder.filePath(u"workspace"_qs);
  makeOldLibrary(workspace);

  Program first(workspace, sandbox.configurationPath());
  Program second(workspace, sandbox.configurationPath());
  sorvan::test::runUntil(
      [&] { return (first.hasEnded() || second.hasEnded()) && sandbox.postsTo(u"fal-ai/flux/schnell"_qs) > 0; });
  ASSERT_NE(first.hasEnded(), second.hasEnded()) << "one of them still has the folder";
  Program& refused = first.hasEnded() ? first : second;
  EXPECT_TRUE(refused.refusal().startsWith(u"This workspace is open in another Sorvan process."_qs));
  EXPECT_EQ(QDir(workspace + u"/.sorvan/backups"_qs).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size(), 1);
  EXPECT_EQ(sandbox.postsTo(u"fal-ai/flux/schnell"_qs), 1);
}

}  // namespace
}  // namespace durability
