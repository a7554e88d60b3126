#include "shell/views/desktop_news.h"

#include <gtest/gtest.h>

#include <QDBusMessage>
#include <QSignalSpy>

#include "support/run_task.h"
#include "views/private_bus.h"

namespace sorvan::views {
namespace {
using namespace Qt::Literals::StringLiterals;

const auto kNotifications = u"org.freedesktop.Notifications"_s;
const auto kNotificationsPath = u"/org/freedesktop/Notifications"_s;

struct Card {
  uint replaces;
  QString title;
  QString text;
  QStringList actions;
  QVariantMap hints;
};

// Plays the desktop's notification service.
class FakeService final : public QObject {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

 public:
  explicit FakeService(QDBusConnection connection) : bus(std::move(connection)) {
    bus.registerObject(kNotificationsPath, this, QDBusConnection::ExportAllSlots);
    EXPECT_TRUE(bus.registerService(kNotifications));
  }
  void emitSignal(const QString& name, const QVariantList& arguments) {
    QDBusMessage signal = QDBusMessage::createSignal(kNotificationsPath, kNotifications, name);
    signal.setArguments(arguments);
    EXPECT_TRUE(bus.send(signal));
  }

  QDBusConnection bus;
  QStringList capabilities{u"actions"_s, u"body"_s};
  std::vector<Card> cards;
  std::vector<uint> closed;

 public Q_SLOTS:
  QStringList GetCapabilities() { return capabilities; }
  uint Notify(const QString&, uint replaces, const QString&, const QString& title, const QString& text,
              const QStringList& actions, const QVariantMap& hints, int) {
    cards.push_back({replaces, title, text, actions, hints});
    return 7;
  }
  void CloseNotification(uint id) { closed.push_back(id); }
};

struct DesktopNewsTest : testing::Test {
  test::PrivateBus bus;
  FakeService service{bus.connection(u"news-service"_s)};
  DesktopNewsStand stand{bus.connection(u"news-program"_s)};
  const DesktopNews one{u"Saved 1 image locally"_s, u"a <b>boat</b> & more"_s, u"Show"_s};

  void awaitCards(std::size_t count) {
    test::runUntil([&] { return service.cards.size() == count; });
    test::runPosted();
  }
};

TEST_F(DesktopNewsTest, ACardIsShownWithAnActionUnderTheProgramsOwnName) {
  stand.show(one);
  awaitCards(1);
  EXPECT_EQ(service.cards[0].title, one.title);
  EXPECT_EQ(service.cards[0].text, one.text);
  EXPECT_EQ(service.cards[0].actions, (QStringList{u"default"_s, u"Show"_s, u"show"_s, u"Show"_s}));
  EXPECT_EQ(service.cards[0].hints.value(u"desktop-entry"_s).toString(), u"studio.sorvan.Studio"_s);
}

TEST_F(DesktopNewsTest, AServiceThatReadsMarkupGetsThePromptAsPlainWords) {
  service.capabilities << u"body-markup"_s;
  stand.show(one);
  awaitCards(1);
  EXPECT_EQ(service.cards[0].text, u"a &lt;b&gt;boat&lt;/b&gt; &amp; more"_s);
}

TEST_F(DesktopNewsTest, ThePressOnTheCardActivatesWithTheDesktopsLeave) {
  QSignalSpy activated(&stand, &NewsStand::activated);
  stand.show(one);
  awaitCards(1);
  // The answer with the card's id comes after the call itself.
  service.emitSignal(u"ActionInvoked"_s, {8u, u"default"_s});
  service.emitSignal(u"ActivationToken"_s, {7u, u"token-9"_s});
  service.emitSignal(u"ActionInvoked"_s, {7u, u"default"_s});
  test::runUntil([&] { return activated.count() > 0; });
  ASSERT_EQ(activated.count(), 1);
  EXPECT_EQ(activated[0][0].toString(), u"token-9"_s);
}

TEST_F(DesktopNewsTest, ANewCardTakesThePlaceOfTheLast) {
  stand.show(one);
  stand.show(one);
  test::runUntil([&] { return !service.cards.empty(); });
  stand.show({u"All generations have ended"_s, {}, u"Show"_s});
  test::runUntil([&] { return service.cards.back().title == u"All generations have ended"_s; });
  EXPECT_EQ(service.cards.back().replaces, 7u);
}

TEST_F(DesktopNewsTest, AWithdrawnCardIsClosedEvenWhenItsNumberComesLater) {
  stand.show(one);
  stand.withdraw();
  stand.show(one);
  awaitCards(1);
  stand.withdraw();
  test::runUntil([&] { return !service.closed.empty(); });
  EXPECT_EQ(service.closed, std::vector<uint>{7u});
}

TEST_F(DesktopNewsTest, WithoutAServiceNothingHappens) {
  service.bus.unregisterService(kNotifications);
  QSignalSpy activated(&stand, &NewsStand::activated);
  stand.show(one);
  stand.withdraw();
  test::runPosted();
  EXPECT_EQ(activated.count(), 0);
}

}  // namespace
}  // namespace sorvan::views

#include "desktop_news_test.moc"
