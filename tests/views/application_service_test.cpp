#include "shell/views/application_service.h"

#include <gtest/gtest.h>

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusReply>
#include <QSignalSpy>

#include "shell/application_id.h"
#include "support/run_task.h"
#include "views/private_bus.h"

namespace sorvan::views {
namespace {
using namespace Qt::Literals::StringLiterals;

class ApplicationServiceTest : public testing::Test {
 protected:
  // Calls as the desktop does, and waits for the answer.
  QDBusMessage call(const QString& method, const QVariantList& arguments) {
    QDBusMessage message = QDBusMessage::createMethodCall(shell::applicationID, shell::objectPathOf(shell::applicationID),
                                                          u"org.freedesktop.Application"_s, method);
    message.setArguments(arguments);
    QDBusPendingCall pending = desktop.asyncCall(message);
    test::runUntil([&] { return pending.isFinished(); });
    return pending.reply();
  }

  test::PrivateBus bus;
  QDBusConnection desktop = bus.connection(u"desktop"_s);
  ApplicationService service{bus.connection(u"studio"_s), shell::applicationID};
};

TEST_F(ApplicationServiceTest, TakesItsNameOnTheBus) {
  ASSERT_TRUE(service.offer());
  EXPECT_TRUE(desktop.interface()->isServiceRegistered(shell::applicationID));
}

TEST_F(ApplicationServiceTest, TellsOfAnActivation) {
  ASSERT_TRUE(service.offer());
  QSignalSpy activated(&service, &ApplicationService::activated);
  EXPECT_EQ(call(u"Activate"_s, {QVariantMap()}).type(), QDBusMessage::ReplyMessage);
  EXPECT_EQ(activated.count(), 1);
}

TEST_F(ApplicationServiceTest, HandsOnWhatIsToBeOpened) {
  ASSERT_TRUE(service.offer());
  QSignalSpy opened(&service, &ApplicationService::opened);
  const QStringList addresses{u"file:///home/ü/Coast"_s, u"sorvan://auth?code=1"_s};
  EXPECT_EQ(call(u"Open"_s, {addresses, QVariantMap()}).type(), QDBusMessage::ReplyMessage);
  ASSERT_EQ(opened.count(), 1);
  EXPECT_EQ(opened.front().front().toStringList(), addresses);
}

TEST_F(ApplicationServiceTest, HandsOnAnAction) {
  ASSERT_TRUE(service.offer());
  QSignalSpy action(&service, &ApplicationService::actionActivated);
  EXPECT_EQ(call(u"ActivateAction"_s, {u"history"_s, QVariantList(), QVariantMap()}).type(),
            QDBusMessage::ReplyMessage);
  ASSERT_EQ(action.count(), 1);
  EXPECT_EQ(action.front().front().toString(), u"history"_s);
}

TEST_F(ApplicationServiceTest, KeepsTheTokenThatLetsTheWindowComeForward) {
  ASSERT_TRUE(service.offer());
  call(u"Activate"_s, {QVariantMap{{u"activation-token"_s, u"token-7"_s}}});
  EXPECT_EQ(qgetenv("XDG_ACTIVATION_TOKEN"), "token-7");
  qunsetenv("XDG_ACTIVATION_TOKEN");
}

TEST_F(ApplicationServiceTest, OffersNothingBeyondTheInterface) {
  ASSERT_TRUE(service.offer());
  EXPECT_EQ(call(u"deleteLater"_s, {}).type(), QDBusMessage::ErrorMessage);
}

TEST_F(ApplicationServiceTest, LeavesTheNameToWhoeverHasIt) {
  ASSERT_TRUE(desktop.registerService(shell::applicationID));
  EXPECT_FALSE(service.offer());
  EXPECT_TRUE(desktop.interface()->isServiceRegistered(shell::applicationID));
}

TEST_F(ApplicationServiceTest, GivesTheNameBackWhenItGoes) {
  {
    ApplicationService passing(bus.connection(u"passing"_s), shell::applicationID);
    ASSERT_TRUE(passing.offer());
  }
  EXPECT_FALSE(desktop.interface()->isServiceRegistered(shell::applicationID));
  EXPECT_TRUE(service.offer());
}

TEST(ApplicationServiceWithoutABus, IsSimplyNotThere) {
  ApplicationService service(QDBusConnection(u"no such connection"_s), shell::applicationID);
  EXPECT_FALSE(service.offer());
}

}  // namespace
}  // namespace sorvan::views
