#include "shell/views/text_scale.h"

#include <QDBusMessage>
#include <QDBusVariant>
#include <algorithm>

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr double kSmallest = 0.9;
constexpr double kLargest = 1.5;

// The portal wraps a value in one variant or, in older versions, in two.
double factorIn(QVariant value) {
  while (value.metaType() == QMetaType::fromType<QDBusVariant>()) value = value.value<QDBusVariant>().variant();
  bool isNumber = false;
  const double factor = value.toDouble(&isNumber);
  return isNumber && factor > 0 ? std::clamp(factor, kSmallest, kLargest) : 1.0;
}

}  // namespace

double desktopTextScale(const QDBusConnection& bus, int patienceMilliseconds) {
  if (!bus.isConnected()) return 1.0;
  QDBusMessage question = QDBusMessage::createMethodCall(
      u"org.freedesktop.portal.Desktop"_s, u"/org/freedesktop/portal/desktop"_s, u"org.freedesktop.portal.Settings"_s,
      u"Read"_s);
  question << u"org.gnome.desktop.interface"_s << u"text-scaling-factor"_s;
  const QDBusMessage answer = bus.call(question, QDBus::Block, patienceMilliseconds);
  if (answer.type() != QDBusMessage::ReplyMessage || answer.arguments().isEmpty()) return 1.0;
  return factorIn(answer.arguments().constFirst());
}

}  // namespace sorvan::views
