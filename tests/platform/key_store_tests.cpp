#include "platform/key_store.h"

#include <gtest/gtest.h>

#include <QProcess>
#include <QProcessEnvironment>

#include "support/run_task.h"
#include "support/temporary_folder.h"
#include "support/text_printers.h"

namespace sorvan::test {
using namespace sorvan::base;
using namespace sorvan::platform;

// The real key store is spoken to in a child process with a bus, a home and a ring of its own, so that nobody's keys
// are touched. The child is this program with one test; this variable tells it apart.
static const char* const childVariable = "SORVAN_KEY_STORE_CHILD";

static bool inChild() { return qEnvironmentVariableIsSet(childVariable); }

struct Child {
  int exitCode = -1;
  QByteArray output;
};

static Child runChild(const QStringList& command, const std::function<void(QProcessEnvironment&)>& change) {
  const TemporaryFolder home;
  QFile::setPermissions(home.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(QString::fromLatin1(childVariable), QStringLiteral("1"));
  for (const char* name : {"HOME", "XDG_RUNTIME_DIR", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_CONFIG_HOME"})
    environment.insert(QString::fromLatin1(name), home.path());
  environment.remove(QStringLiteral("DISPLAY"));
  change(environment);
  QProcess process;
  process.setProcessEnvironment(environment);
  process.setProcessChannelMode(QProcess::MergedChannels);
  process.start(command.first(), command.mid(1));
  process.waitForFinished(30000);
  return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1, process.readAll()};
}

static QStringList thisTest() {
  const auto* info = testing::UnitTest::GetInstance()->current_test_info();
  return {QCoreApplication::applicationFilePath(),
          QStringLiteral("--gtest_filter=%1.%2")
              .arg(QString::fromLatin1(info->test_suite_name()), QString::fromLatin1(info->name()))};
}

TEST(SecretService, KeepsReplacesAndRemovesKeys) {
  if (!inChild()) {
    const QString script = QStringLiteral(
        "printf 'test\\n' | gnome-keyring-daemon --unlock --components=secrets >/dev/null 2>&1; exec \"$0\" \"$@\"");
    const QStringList bus{QStringLiteral("dbus-run-session"), QStringLiteral("--"), QStringLiteral("sh"),
                          QStringLiteral("-c"), script};
    const Child child = runChild(bus + thisTest(), [](QProcessEnvironment&) {});
    ASSERT_EQ(child.exitCode, 0) << child.output.toStdString();
    return;
  }
  const auto keys = secretServiceKeyBackend(std::chrono::seconds(10));
  const QString account = QStringLiteral("fal.ai");
  EXPECT_EQ(runTask(keys->read(account, {})), std::nullopt);
  runTask(keys->write(account, QStringLiteral("first"), {}));
  runTask(keys->write(account, QStringLiteral("zweiter “Schlüssel”"), {}));
  EXPECT_EQ(runTask(keys->read(account, {})), QStringLiteral("zweiter “Schlüssel”"));
  EXPECT_EQ(runTask(keys->read(QStringLiteral("Sorvan Credits"), {})), std::nullopt);
  runTask(keys->remove(account, {}));
  EXPECT_EQ(runTask(keys->read(account, {})), std::nullopt);
  EXPECT_NO_THROW(runTask(keys->remove(account, {})));
}

TEST(SecretService, NoKeyStoreIsAFailureWithANumberAndNeverAnAbsentKey) {
  if (!inChild()) {
    const Child child = runChild(thisTest(), [](QProcessEnvironment& environment) {
      environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QStringLiteral("unix:path=/nonexistent/bus"));
    });
    ASSERT_EQ(child.exitCode, 0) << child.output.toStdString();
    return;
  }
  const auto keys = secretServiceKeyBackend(std::chrono::seconds(10));
  for (const auto& attempt : std::vector<std::function<void()>>{
           [&] { runTask(keys->read(QStringLiteral("fal.ai"), {})); },
           [&] { runTask(keys->write(QStringLiteral("fal.ai"), QStringLiteral("x"), {})); },
           [&] { runTask(keys->remove(QStringLiteral("fal.ai"), {})); }}) {
    try {
      attempt();
      ADD_FAILURE() << "nothing was thrown";
    } catch (const KeyStoreError& failure) {
      EXPECT_GT(failure.number(), 1);
      EXPECT_FALSE(failure.message().isEmpty());
    }
  }
}

TEST(SecretService, AStopBeforehandAsksNobody) {
  const auto keys = secretServiceKeyBackend();
  std::stop_source stop;
  stop.request_stop();
  EXPECT_THROW(runTask(keys->read(QStringLiteral("fal.ai"), stop.get_token())), Cancelled);
}

TEST(MemoryKeys, AreKeptReplacedAndRemoved) {
  MemoryKeyBackend keys;
  EXPECT_EQ(runTask(keys.read(QStringLiteral("a"), {})), std::nullopt);
  runTask(keys.write(QStringLiteral("a"), QStringLiteral("1"), {}));
  runTask(keys.write(QStringLiteral("a"), QStringLiteral("2"), {}));
  EXPECT_EQ(runTask(keys.read(QStringLiteral("a"), {})), QStringLiteral("2"));
  runTask(keys.remove(QStringLiteral("a"), {}));
  EXPECT_EQ(runTask(keys.read(QStringLiteral("a"), {})), std::nullopt);
}

TEST(MemoryKeys, FailWithThePlantedNumber) {
  MemoryKeyBackend keys;
  keys.failingNumber = 7;
  try {
    runTask(keys.read(QStringLiteral("a"), {}));
    FAIL() << "nothing was thrown";
  } catch (const KeyStoreError& failure) {
    EXPECT_EQ(failure.number(), 7);
  }
}

}  // namespace sorvan::test
