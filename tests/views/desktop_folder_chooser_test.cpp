#include "shell/views/desktop_folder_chooser.h"

#include <QDBusAbstractAdaptor>
#include <QDBusContext>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCall>
#include <QFileDialog>
#include <QMainWindow>

#include "support/run_task.h"
#include "views/dressed.h"
#include "views/private_bus.h"

namespace sorvan::views {
namespace {
using namespace Qt::Literals::StringLiterals;

const auto kDesktop = u"org.freedesktop.portal.Desktop"_s;

struct Asked {
  QString parentWindow;
  QString title;
  QVariantMap options;
  QString sender;
};

// Plays the desktop's portal: notes what it is asked and answers when the test says so.
class FakePortal final : public QObject, protected QDBusContext {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.FileChooser")
  Q_PROPERTY(uint version MEMBER version)

 public:
  explicit FakePortal(QDBusConnection connection) : bus(std::move(connection)) {
    bus.registerObject(u"/org/freedesktop/portal/desktop"_s, this,
                       QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllProperties);
    EXPECT_TRUE(bus.registerService(kDesktop));
  }

  QDBusConnection bus;
  uint version = 4;
  bool refuses = false;
  bool saves = false;  // was asked for a file to write
  QString ownRequestPath;  // instead of the one that follows from the token
  std::vector<Asked> asked;

  void answer(uint code, const QStringList& addresses = {}) {
    QDBusMessage signal = QDBusMessage::createSignal(requestPath(), u"org.freedesktop.portal.Request"_s, u"Response"_s);
    QVariantMap results;
    if (!addresses.isEmpty()) results.insert(u"uris"_s, addresses);
    signal << code << results;
    EXPECT_TRUE(bus.send(signal));
  }

 public Q_SLOTS:
  QDBusObjectPath OpenFile(const QString& parentWindow, const QString& title, const QVariantMap& options) {
    asked.push_back({parentWindow, title, options, message().service()});
    if (refuses) sendErrorReply(QDBusError::Failed, u"no chooser here"_s);
    return QDBusObjectPath(requestPath());
  }
  QDBusObjectPath SaveFile(const QString& parentWindow, const QString& title, const QVariantMap& options) {
    asked.push_back({parentWindow, title, options, message().service()});
    saves = true;
    return QDBusObjectPath(requestPath());
  }

 private:
  QString requestPath() const {
    if (!ownRequestPath.isEmpty()) return ownRequestPath;
    QString sender = asked.back().sender.mid(1);
    sender.replace(u'.', u'_');
    return u"/org/freedesktop/portal/desktop/request/%1/%2"_s.arg(sender,
                                                                  asked.back().options[u"handle_token"_s].toString());
  }
};

const FolderQuestion kQuestion{u"Open Workspace"_s, u"Choose a folder for your media and its Sorvan library."_s,
                               u"/home/ü/Pictures"_s};

class DesktopFolderChooserTest : public Dressed {
 protected:
  test::PrivateBus bus;
  QMainWindow window;
  std::optional<DesktopFolderChooser> chooser{std::in_place, &window, bus.connection(u"studio"_s)};
  std::optional<FakePortal> portal;
  int answers = 0;
  std::optional<QString> folder;

  void ask(const FolderQuestion& question = kQuestion) {
    chooser->chooseFolder(question, [this](const std::optional<QString>& chosen) {
      ++answers;
      folder = chosen;
    });
  }
  void startPortal() { portal.emplace(bus.connection(u"desktop"_s)); }
  void askPortal() {
    if (!portal) startPortal();
    ask();
    test::runUntil([this] { return !portal->asked.empty(); });
    // The answer to the call has arrived as well once a later call's has.
    settle();
  }
  void untilAnswered() {
    test::runUntil([this] { return answers > 0; });
  }
  QFileDialog* dialog() const { return window.findChild<QFileDialog*>(); }
  void untilDialog() {
    test::runUntil([this] { return dialog() != nullptr; });
  }
  // Messages of one connection arrive in order, so the answer to a call comes after all that was sent before it.
  void settle() {
    QDBusConnection studio(u"studio"_s);
    QDBusMessage ping = QDBusMessage::createMethodCall(kDesktop, u"/"_s, u"org.freedesktop.DBus.Peer"_s, u"Ping"_s);
    const QDBusPendingCall call = studio.asyncCall(ping);
    test::runUntil([&] { return call.isFinished(); });
    test::runPosted();
  }
};

TEST_F(DesktopFolderChooserTest, AsksTheDesktopForOneFolderInTheGivenWords) {
  askPortal();
  const Asked& asked = portal->asked.front();
  EXPECT_EQ(asked.title, kQuestion.message);
  EXPECT_EQ(asked.options[u"accept_label"_s].toString(), kQuestion.acceptLabel);
  EXPECT_TRUE(asked.options[u"directory"_s].toBool());
  EXPECT_FALSE(asked.options[u"multiple"_s].toBool());
  EXPECT_TRUE(asked.options[u"modal"_s].toBool());
  EXPECT_EQ(asked.options[u"current_folder"_s].toByteArray(), QByteArray("/home/ü/Pictures").append('\0'));
  EXPECT_EQ(asked.parentWindow, QString()) << "this platform has no names for windows";
  EXPECT_EQ(dialog(), nullptr);
  EXPECT_EQ(answers, 0);

  portal->answer(0, {u"file:///home/u/My%20Pictures/f%C3%BCr"_s});
  untilAnswered();
  EXPECT_EQ(folder, u"/home/u/My Pictures/für"_s);
}

TEST_F(DesktopFolderChooserTest, AsksTheDesktopForAFileToWriteUnderAName) {
  startPortal();
  portal->version = 1;
  chooser->chooseFileToWrite(kQuestion, u"Coast-costs.csv"_s, [this](const std::optional<QString>& chosen) {
    ++answers;
    folder = chosen;
  });
  test::runUntil([this] { return !portal->asked.empty(); });
  settle();
  EXPECT_TRUE(portal->saves);
  EXPECT_EQ(portal->asked.front().options[u"current_name"_s].toString(), u"Coast-costs.csv"_s);
  portal->answer(0, {u"file:///home/u/costs.csv"_s});
  untilAnswered();
  EXPECT_EQ(folder, u"/home/u/costs.csv"_s);
}

TEST_F(DesktopFolderChooserTest, TheToolkitsDialogOffersTheNameOfAFileToWrite) {
  chooser->chooseFileToWrite(kQuestion, u"Coast-costs.csv"_s, [this](const std::optional<QString>&) { ++answers; });
  untilDialog();
  EXPECT_EQ(dialog()->acceptMode(), QFileDialog::AcceptSave);
  ASSERT_FALSE(dialog()->selectedFiles().isEmpty());
  EXPECT_TRUE(dialog()->selectedFiles().front().endsWith(u"Coast-costs.csv"_s));
  dialog()->reject();
  untilAnswered();
}

TEST_F(DesktopFolderChooserTest, GivingUpOrClosingTheDesktopsDialogIsAnsweredWithNothing) {
  for (const uint code : {1u, 2u}) {
    SCOPED_TRACE(code);
    answers = 0;
    if (portal) portal->asked.clear();
    askPortal();
    portal->answer(code, {u"file:///home/u/Pictures"_s});
    untilAnswered();
    EXPECT_EQ(folder, std::nullopt);
    EXPECT_EQ(dialog(), nullptr);
  }
}

TEST_F(DesktopFolderChooserTest, AFolderThatIsNotOnThisMachineIsNoAnswer) {
  askPortal();
  portal->answer(0, {u"mtp://phone/DCIM"_s});
  untilAnswered();
  EXPECT_EQ(folder, std::nullopt);
}

TEST_F(DesktopFolderChooserTest, APortalThatNamesItsRequestsItselfIsHeard) {
  startPortal();
  portal->ownRequestPath = u"/org/freedesktop/portal/desktop/request/number7"_s;
  askPortal();
  portal->answer(0, {u"file:///home/u/Pictures"_s});
  untilAnswered();
  EXPECT_EQ(folder, u"/home/u/Pictures"_s);
}

TEST_F(DesktopFolderChooserTest, APortalThatEndsWhileItAsksIsNoAnswerAndTheNextQuestionIsAsked) {
  askPortal();
  ASSERT_TRUE(portal->bus.unregisterService(kDesktop));
  untilAnswered();
  EXPECT_EQ(folder, std::nullopt);
  ASSERT_TRUE(portal->bus.registerService(kDesktop));
  portal->asked.clear();
  askPortal();
  EXPECT_EQ(portal->asked.size(), 1u);
}

TEST_F(DesktopFolderChooserTest, ASecondQuestionWhileTheFirstIsOpenIsAnsweredWithNothing) {
  askPortal();
  ask();
  EXPECT_EQ(answers, 1);
  EXPECT_EQ(folder, std::nullopt);
  portal->answer(0, {u"file:///home/u/Pictures"_s});
  test::runUntil([this] { return answers == 2; });
  EXPECT_EQ(folder, u"/home/u/Pictures"_s);
  EXPECT_EQ(portal->asked.size(), 1u);
}

TEST_F(DesktopFolderChooserTest, ADesktopWithoutAPortalGetsTheToolkitsDialog) {
  ask();
  untilDialog();
  EXPECT_EQ(dialog()->windowTitle(), kQuestion.message);
  EXPECT_EQ(dialog()->labelText(QFileDialog::Accept), kQuestion.acceptLabel);
  EXPECT_EQ(dialog()->fileMode(), QFileDialog::Directory);
  dialog()->reject();
  untilAnswered();
  EXPECT_EQ(folder, std::nullopt);
}

TEST_F(DesktopFolderChooserTest, AProgramWithoutABusGetsTheToolkitsDialogAtOnce) {
  chooser.emplace(&window, QDBusConnection(u"no such connection"_s));
  const test::TemporaryFolder chosen;
  ask({kQuestion.acceptLabel, kQuestion.message, chosen.path()});
  ASSERT_NE(dialog(), nullptr);
  static_cast<QDialog*>(dialog())->done(QDialog::Accepted);
  untilAnswered();
  EXPECT_EQ(folder, chosen.path());
}

TEST_F(DesktopFolderChooserTest, AnOldPortalThatWouldAskForAFileIsNotAsked) {
  startPortal();
  portal->version = 2;
  ask();
  untilDialog();
  EXPECT_TRUE(portal->asked.empty());
}

TEST_F(DesktopFolderChooserTest, APortalThatCannotAskLeavesItToTheToolkit) {
  startPortal();
  portal->refuses = true;
  ask();
  untilDialog();
  EXPECT_EQ(portal->asked.size(), 1u);
  EXPECT_EQ(answers, 0);
}

TEST_F(DesktopFolderChooserTest, AnAnswerAfterTheWindowHasGoneReachesNobody) {
  askPortal();
  chooser.reset();
  portal->answer(0, {u"file:///home/u/Pictures"_s});
  settle();
  EXPECT_EQ(answers, 0);
}

}  // namespace
}  // namespace sorvan::views

#include "desktop_folder_chooser_test.moc"
