#include "shell/views/desktop_appearance.h"

#include <gtest/gtest.h>

#include <QDBusMessage>
#include <QDBusVariant>
#include <QSignalSpy>

#include "support/run_task.h"
#include "views/private_bus.h"

namespace sorvan::views {
namespace {
using namespace Qt::Literals::StringLiterals;

const auto kPortal = u"org.freedesktop.portal.Desktop"_s;
const auto kPortalPath = u"/org/freedesktop/portal/desktop"_s;

// Plays the settings of the desktop's portal.
class FakeSettings final : public QObject {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

 public:
  explicit FakeSettings(QDBusConnection connection) : bus(std::move(connection)) {
    bus.registerObject(kPortalPath, this, QDBusConnection::ExportAllSlots);
    EXPECT_TRUE(bus.registerService(kPortal));
  }
  void choose(uint value) { tell(u"color-scheme"_s, scheme = value); }
  void chooseContrast(uint value) { tell(u"contrast"_s, contrast = value); }

  QDBusConnection bus;
  uint scheme = 2;
  uint contrast = 0;

 public Q_SLOTS:
  QDBusVariant Read(const QString& space, const QString& key) {
    if (space == u"org.freedesktop.appearance"_s && key == u"color-scheme"_s) return QDBusVariant(scheme);
    if (space == u"org.freedesktop.appearance"_s && key == u"contrast"_s) return QDBusVariant(contrast);
    return QDBusVariant(key == u"enable-animations"_s);
  }

 private:
  void tell(const QString& key, uint value) {
    QDBusMessage signal =
        QDBusMessage::createSignal(kPortalPath, u"org.freedesktop.portal.Settings"_s, u"SettingChanged"_s);
    signal << u"org.freedesktop.appearance"_s << key << QVariant::fromValue(QDBusVariant(value));
    EXPECT_TRUE(bus.send(signal));
  }
};

struct DesktopAppearanceTest : testing::Test {
  test::PrivateBus bus;
  FakeSettings settings{bus.connection(u"appearance-desktop"_s)};
  DesktopAppearance desktop{bus.connection(u"appearance-program"_s)};
};

TEST_F(DesktopAppearanceTest, TheDesktopsLookIsReadAtTheStartAndFollowedWhileRunning) {
  QSignalSpy changed(&desktop, &DesktopAppearance::changed);
  desktop.start();
  test::runUntil([&] { return desktop.prefersLight(); });
  settings.choose(1);
  test::runUntil([&] { return !desktop.prefersLight(); });
  settings.choose(2);
  test::runUntil([&] { return desktop.prefersLight(); });
  EXPECT_EQ(changed.count(), 3);
}

TEST_F(DesktopAppearanceTest, AWishForMoreContrastIsReadAtTheStartAndFollowedWhileRunning) {
  settings.contrast = 1;
  desktop.start();
  test::runUntil([&] { return desktop.moreContrast(); });
  settings.chooseContrast(0);
  test::runUntil([&] { return !desktop.moreContrast(); });
}

}  // namespace
}  // namespace sorvan::views

#include "desktop_appearance_test.moc"
