#include "shell/views/text_scale.h"

#include <gtest/gtest.h>

#include <QDBusVariant>
#include <QThread>

#include "views/private_bus.h"

namespace sorvan::views {
namespace {
using namespace Qt::Literals::StringLiterals;

// Plays the settings of the desktop's portal, in a thread of its own since whoever asks waits for the answer.
class FakeScale final : public QObject {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

 public:
  QVariant factor;

 public Q_SLOTS:
  QDBusVariant Read(const QString& space, const QString& key) {
    const bool known = space == u"org.gnome.desktop.interface"_s && key == u"text-scaling-factor"_s;
    return QDBusVariant(known ? factor : QVariant(9.0));
  }
};

struct TextScaleTest : testing::Test {
  TextScaleTest() {
    portal.moveToThread(&thread);
    thread.start();
  }
  ~TextScaleTest() override {
    thread.quit();
    thread.wait();
  }
  void offer() {
    QDBusConnection desktop = bus.connection(u"scale-desktop"_s);
    ASSERT_TRUE(desktop.registerObject(u"/org/freedesktop/portal/desktop"_s, &portal, QDBusConnection::ExportAllSlots));
    ASSERT_TRUE(desktop.registerService(u"org.freedesktop.portal.Desktop"_s));
  }
  double asked() { return desktopTextScale(bus.connection(u"scale-program"_s), 20'000); }

  test::PrivateBus bus;
  QThread thread;
  FakeScale portal;
};

TEST_F(TextScaleTest, TheDesktopsWishIsTaken) {
  portal.factor = 1.25;
  offer();
  EXPECT_DOUBLE_EQ(asked(), 1.25);
}

TEST_F(TextScaleTest, AWishBeyondWhatTheWindowCanDoIsBounded) {
  portal.factor = 3.0;
  offer();
  EXPECT_DOUBLE_EQ(asked(), 1.5);
  portal.factor = 0.5;
  EXPECT_DOUBLE_EQ(asked(), 0.9);
}

TEST_F(TextScaleTest, AnOlderPortalWrapsItsAnswerTwice) {
  portal.factor = QVariant::fromValue(QDBusVariant(1.1));
  offer();
  EXPECT_DOUBLE_EQ(asked(), 1.1);
}

TEST_F(TextScaleTest, WhatIsNoNumberChangesNothing) {
  portal.factor = u"large"_s;
  offer();
  EXPECT_DOUBLE_EQ(asked(), 1.0);
}

TEST_F(TextScaleTest, WithoutAPortalTextIsAsDesigned) { EXPECT_DOUBLE_EQ(asked(), 1.0); }

}  // namespace
}  // namespace sorvan::views

#include "text_scale_test.moc"
