#include "shell/views/desktop_appearance.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <tuple>

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

const auto kService = u"org.freedesktop.portal.Desktop"_s;
const auto kPath = u"/org/freedesktop/portal/desktop"_s;
const auto kInterface = u"org.freedesktop.portal.Settings"_s;
const auto kAppearance = u"org.freedesktop.appearance"_s;
const auto kColorScheme = u"color-scheme"_s;
const auto kGnome = u"org.gnome.desktop.interface"_s;
const auto kAnimations = u"enable-animations"_s;
const auto kContrast = u"contrast"_s;
const auto kAccessibility = u"org.gnome.desktop.a11y.interface"_s;  // for portals that do not know the other yet
const auto kHighContrast = u"high-contrast"_s;
constexpr uint kSchemeLight = 2;   // the portal's numbers: 0 no preference, 1 dark, 2 light
constexpr uint kContrastHigh = 1;  // 0: no preference

// The portal wraps a value in one variant or, in older versions, in two.
QVariant unwrapped(QVariant value) {
  while (value.metaType() == QMetaType::fromType<QDBusVariant>()) value = value.value<QDBusVariant>().variant();
  return value;
}

}  // namespace

void DesktopAppearance::start() {
  if (!bus_.isConnected()) return;
  bus_.connect(kService, kPath, kInterface, u"SettingChanged"_s, this,
              SLOT(settingChanged(QDBusMessage)));
  ask(kAppearance, kColorScheme);
  ask(kAppearance, kContrast);
  ask(kAccessibility, kHighContrast);
  ask(kGnome, kAnimations);
}

void DesktopAppearance::ask(const QString& space, const QString& key) {
  QDBusMessage message = QDBusMessage::createMethodCall(kService, kPath, kInterface, u"Read"_s);
  message << space << key;
  auto* watcher = new QDBusPendingCallWatcher(bus_.asyncCall(message), this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, space, key](QDBusPendingCallWatcher* call) {
    call->deleteLater();
    const QDBusPendingReply<QDBusVariant> reply = *call;
    if (!reply.isError()) learn(space, key, reply.value().variant());
  });
}

void DesktopAppearance::settingChanged(const QDBusMessage& signal) {
  const QVariantList told = signal.arguments();
  if (told.size() == 3) learn(told[0].toString(), told[1].toString(), told[2]);
}

void DesktopAppearance::learn(const QString& space, const QString& key, const QVariant& value) {
  const QVariant plain = unwrapped(value);
  const auto now = [this] { return std::tuple(prefersLight_, reducedMotion_, moreContrast()); };
  const auto before = now();
  if (space == kAppearance && key == kColorScheme) prefersLight_ = plain.toUInt() == kSchemeLight;
  if (space == kAppearance && key == kContrast) portalContrast_ = plain.toUInt() == kContrastHigh;
  if (space == kAccessibility && key == kHighContrast) desktopContrast_ = plain.toBool();
  if (space == kGnome && key == kAnimations) reducedMotion_ = !plain.toBool();
  if (now() != before) Q_EMIT changed();
}

}  // namespace sorvan::views
