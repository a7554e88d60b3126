#include "tour/looks.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QImage>
#include <stdexcept>

namespace tour {
namespace {

const QString portal = u"org.freedesktop.portal.Desktop"_qs;

// What tells programs of the desktop's settings. It is there only while it says something: whoever asks it for more, as
// for a file, must not wait for an answer.
class DesktopSettings {
 public:
  explicit DesktopSettings(const Desktop& desktop)
      : bus_(QDBusConnection::connectToBus(desktop.environment().value(u"DBUS_SESSION_BUS_ADDRESS"_qs), u"settings"_qs)) {
    if (!bus_.registerService(portal)) throw std::runtime_error("the desktop's settings have no place on the bus");
  }
  ~DesktopSettings() {
    bus_.unregisterService(portal);
    QDBusConnection::disconnectFromBus(u"settings"_qs);
  }

  void prefer(bool light) {
    QDBusMessage told = QDBusMessage::createSignal(u"/org/freedesktop/portal/desktop"_qs,
                                                   u"org.freedesktop.portal.Settings"_qs, u"SettingChanged"_qs);
    told << u"org.freedesktop.appearance"_qs << u"color-scheme"_qs
         << QVariant::fromValue(QDBusVariant(light ? 2U : 1U));
    bus_.send(told);
  }

 private:
  QDBusConnection bus_;
};

// Of the screen as a whole, from 0 for black to 255 for white.
double lightness(const QImage& screen) {
  double sum = 0;
  int points = 0;
  for (int y = 0; y < screen.height(); y += 16)
    for (int x = 0; x < screen.width(); x += 16, ++points) sum += qGray(screen.pixel(x, y));
  return sum / points;
}

}  // namespace

int pictureInBothLooks(Tourist& person, const QString& name) {
  // A quick look leaves no more than the menu strip undimmed.
  constexpr double plainlyLighter = 4;
  const int colours = person.picture(name);
  const double before = lightness(person.screen());
  DesktopSettings settings(person.desktop());
  // A program that is only just learning who speaks for the desktop hears it the next time.
  const auto follows = [&](bool light) {
    return within(10, [&] {
      settings.prefer(light);
      return (lightness(person.screen()) > before + plainlyLighter) == light;
    });
  };
  if (!follows(true)) throw std::runtime_error("the program does not follow the desktop into the light");
  person.picture(name + u"-light"_qs);
  if (!follows(false)) throw std::runtime_error("the program does not follow the desktop back into the dark");
  return colours;
}

}  // namespace tour
