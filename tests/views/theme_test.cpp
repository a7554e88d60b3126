#include "shell/views/theme.h"

#include <QDBusVariant>
#include <QPainter>
#include <QSignalSpy>

#include "shell/views/desktop_appearance.h"
#include "shell/views/icons.h"
#include "shell/views/painting.h"
#include "views/dressed.h"

namespace sorvan::views {
namespace {
using namespace Qt::Literals::StringLiterals;

const auto kAppearance = u"org.freedesktop.appearance"_s;
const auto kScheme = u"color-scheme"_s;

class ThemeTest : public Dressed {};

TEST_F(ThemeTest, ReadsColoursSizesAndTypeOfTheTokens) {
  EXPECT_EQ(Theme::instance().colorsOf(Look::dark).accentFill, QColor(0x35, 0xC2, 0xAE));
  EXPECT_EQ(Theme::instance().colorsOf(Look::light).accentFill, QColor(0x0B, 0x7D, 0x70));
  EXPECT_NEAR(Theme::instance().colorsOf(Look::dark).stateSelected.alphaF(), 0.17, 0.01);
  EXPECT_EQ(metrics().toolbar, 52);
  EXPECT_EQ(metrics().motionToastHold, 5000);
  EXPECT_EQ(Theme::instance().type(u"prompt"_s).line, 23);
  EXPECT_EQ(Theme::instance().colorsOf(Look::light).chart.size(), 8u);
}

TEST_F(ThemeTest, AChangeOfTheAppearanceChangesThePaletteAndIsTold) {
  QSignalSpy changed(&Theme::instance(), &Theme::changed);
  Theme::instance().setAppearance(Appearance::light);
  EXPECT_EQ(changed.count(), 1);
  EXPECT_EQ(QApplication::palette().color(QPalette::Window), Theme::instance().colorsOf(Look::light).surfaceChrome);
  Theme::instance().setAppearance(Appearance::light);
  EXPECT_EQ(changed.count(), 1);
}

TEST_F(ThemeTest, WithoutADesktopThatAnswersTheSystemsLookIsDark) {
  Theme::instance().setAppearance(Appearance::light);
  Theme::instance().setAppearance(Appearance::system);
  EXPECT_TRUE(Theme::instance().isDark());
}

TEST_F(ThemeTest, ADesktopThatPrefersLightIsFollowedAndOtherSettingsAreNot) {
  DesktopAppearance desktop;
  QSignalSpy changed(&desktop, &DesktopAppearance::changed);
  desktop.learn(kAppearance, u"accent-color"_s, 2u);
  EXPECT_FALSE(desktop.prefersLight());
  desktop.learn(kAppearance, kScheme, 2u);
  EXPECT_TRUE(desktop.prefersLight());
  desktop.learn(kAppearance, kScheme, 0u);
  EXPECT_FALSE(desktop.prefersLight());
  EXPECT_EQ(changed.count(), 2);
}

TEST_F(ThemeTest, AValueWrappedTwiceIsUnderstood) {
  DesktopAppearance desktop;
  const QVariant inner = QVariant::fromValue(QDBusVariant(2u));
  desktop.learn(kAppearance, kScheme, QVariant::fromValue(QDBusVariant(inner)));
  EXPECT_TRUE(desktop.prefersLight());
}

TEST_F(ThemeTest, ADesktopWithoutAnimationsStillsTheMotion) {
  DesktopAppearance desktop;
  desktop.learn(u"org.gnome.desktop.interface"_s, u"enable-animations"_s, false);
  EXPECT_TRUE(desktop.reducedMotion());
}

TEST_F(ThemeTest, ADesktopThatWantsMoreContrastGetsStrongerLinesAndNoThirdGrey) {
  auto* desktop = Theme::instance().findChild<DesktopAppearance*>();
  ASSERT_NE(desktop, nullptr);
  const Colors plain = colors();
  QSignalSpy changed(&Theme::instance(), &Theme::changed);
  desktop->learn(kAppearance, u"contrast"_s, 1u);
  EXPECT_EQ(changed.count(), 1);
  EXPECT_EQ(colors().controlBorder, plain.controlBorderStrong);
  EXPECT_EQ(colors().lineDefault, plain.controlBorderStrong);
  EXPECT_EQ(colors().textTertiary, plain.textSecondary);
  EXPECT_EQ(QApplication::palette().color(QPalette::PlaceholderText), plain.textSecondary);
  desktop->learn(kAppearance, u"contrast"_s, 0u);
  EXPECT_EQ(colors().textTertiary, plain.textTertiary);
  EXPECT_EQ(colors().controlBorder, plain.controlBorder);
}

TEST_F(ThemeTest, ADesktopWhosePortalKnowsNoContrastIsAskedForItsOwnSetting) {
  DesktopAppearance desktop;
  desktop.learn(u"org.gnome.desktop.a11y.interface"_s, u"high-contrast"_s, true);
  EXPECT_TRUE(desktop.moreContrast());
  desktop.learn(kAppearance, u"contrast"_s, 0u);
  EXPECT_TRUE(desktop.moreContrast());
  desktop.learn(u"org.gnome.desktop.a11y.interface"_s, u"high-contrast"_s, false);
  EXPECT_FALSE(desktop.moreContrast());
}

TEST_F(ThemeTest, SoftFillsAreLinedForADesktopThatWantsMoreContrast) {
  auto* desktop = Theme::instance().findChild<DesktopAppearance*>();
  ASSERT_NE(desktop, nullptr);
  const auto edge = [] {
    QImage image(20, 20, QImage::Format_ARGB32_Premultiplied);
    image.fill(colors().surfaceRaised);
    QPainter painter(&image);
    paintPanel(painter, image.rect(), 0, colors().warningSoft);
    painter.end();
    return image.pixelColor(10, 0);
  };
  const QColor plain = edge();
  desktop->learn(kAppearance, u"contrast"_s, 1u);
  EXPECT_NE(edge(), plain);
  EXPECT_EQ(edge(), colors().warningText);
  desktop->learn(kAppearance, u"contrast"_s, 0u);
  EXPECT_EQ(edge(), plain);
}

TEST_F(ThemeTest, AnIconTakesTheColourItIsAskedFor) {
  const QImage image = iconPixmap(u"heart"_s, 24, {QColor(200, 10, 20), IconFill::filled}, 2.0).toImage();
  EXPECT_EQ(image.width(), 48);
  const QColor middle = image.pixelColor(24, 24);
  EXPECT_EQ(middle.red(), 200);
  EXPECT_EQ(middle.green(), 10);
}

}  // namespace
}  // namespace sorvan::views
