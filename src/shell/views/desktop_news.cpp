#include "shell/views/desktop_news.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include "shell/application_id.h"
#include "shell/texts.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

const auto kService = u"org.freedesktop.Notifications"_s;
const auto kPath = u"/org/freedesktop/Notifications"_s;
const auto kDefaultAction = u"default"_s;  // a press on the card itself
const auto kShowAction = u"show"_s;
constexpr int kOwnTime = -1;  // the desktop decides how long a card stays

QDBusMessage call(const QString& method) {
  QDBusMessage message = QDBusMessage::createMethodCall(kService, kPath, kService, method);
  return message;
}

}  // namespace

DesktopNewsStand::DesktopNewsStand(QDBusConnection bus, QObject* parent) : NewsStand(parent), bus_(std::move(bus)) {
  if (!bus_.isConnected()) return;
  const auto follow = [this](const char* signal, const char* slot) {
    bus_.connect(kService, kPath, kService, QString::fromLatin1(signal), this, slot);
  };
  follow("ActionInvoked", SLOT(actionInvoked(uint, QString)));
  follow("ActivationToken", SLOT(activationToken(uint, QString)));
  follow("NotificationClosed", SLOT(notificationClosed(uint, uint)));
}

void DesktopNewsStand::show(const DesktopNews& news) {
  if (!bus_.isConnected()) return;
  news_ = news;
  wanted_ = true;
  if (known_) return send();
  askCapabilities();
}

// Some services read the text as markup, others show it as it is.
void DesktopNewsStand::askCapabilities() {
  auto* watcher = new QDBusPendingCallWatcher(bus_.asyncCall(call(u"GetCapabilities"_s)), this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* ended) {
    ended->deleteLater();
    const QDBusPendingReply<QStringList> reply = *ended;
    if (!reply.isError()) markup_ = reply.value().contains(u"body-markup"_s);
    known_ = !reply.isError();
    if (known_ && wanted_) send();
  });
}

void DesktopNewsStand::send() {
  if (sending_) {
    again_ = true;
    return;
  }
  sending_ = true;
  QDBusMessage message = call(u"Notify"_s);
  message << shell::texts::applicationName << shown_ << applicationID << news_.title
          << (markup_ ? news_.text.toHtmlEscaped() : news_.text)
          << QStringList{kDefaultAction, news_.actionTitle, kShowAction, news_.actionTitle}
          << QVariantMap{{u"desktop-entry"_s, applicationID}, {u"category"_s, u"transfer.complete"_s}} << kOwnTime;
  auto* watcher = new QDBusPendingCallWatcher(bus_.asyncCall(message), this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* ended) {
    ended->deleteLater();
    sending_ = false;
    const QDBusPendingReply<uint> reply = *ended;
    shown_ = reply.isError() ? 0 : reply.value();
    if (!wanted_) return withdraw();
    if (std::exchange(again_, false)) send();
  });
}

void DesktopNewsStand::withdraw() {
  wanted_ = again_ = false;
  if (shown_ == 0) return;
  QDBusMessage message = call(u"CloseNotification"_s);
  message << std::exchange(shown_, 0);
  bus_.asyncCall(message);
}

void DesktopNewsStand::actionInvoked(uint id, const QString& action) {
  if (id != shown_ || id == 0 || (action != kDefaultAction && action != kShowAction)) return;
  wanted_ = false;
  Q_EMIT activated(std::exchange(token_, {}));
}

// It comes before the action that it belongs to.
void DesktopNewsStand::activationToken(uint id, const QString& token) {
  if (id == shown_) token_ = token;
}

void DesktopNewsStand::notificationClosed(uint id, uint) {
  if (id == shown_) shown_ = 0;
}

}  // namespace sorvan::views
