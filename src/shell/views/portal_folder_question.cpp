#include "shell/views/portal_folder_question.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QGuiApplication>
#include <QUrl>
#include <QWidget>

#include "base/ids.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

const auto kService = u"org.freedesktop.portal.Desktop"_s;
const auto kPath = u"/org/freedesktop/portal/desktop"_s;
const auto kChooser = u"org.freedesktop.portal.FileChooser"_s;
const auto kRequest = u"org.freedesktop.portal.Request"_s;
const auto kResponse = u"Response"_s;

// Before it the portal ignores the wish for a folder and asks for a file.
constexpr uint kFirstVersionWithFolders = 3;
// A portal that has to be started first is given this long; then the toolkit's dialog is the faster one.
constexpr int kPatienceMilliseconds = 3000;

// The portal's numbers: 0 answered, 1 given up, 2 ended in another way, such as by closing the dialog's window.
constexpr uint kAnswered = 0;

// Where the answer to a question of this connection will stand.
QString requestPath(const QDBusConnection& bus, const QString& token) {
  QString sender = bus.baseService().mid(1);
  sender.replace(u'.', u'_');
  return u"/org/freedesktop/portal/desktop/request/%1/%2"_s.arg(sender, token);
}

template <class Finished>
void whenFinished(QObject* owner, const QDBusPendingCall& call, Finished finished) {
  auto* watcher = new QDBusPendingCallWatcher(call, owner);
  QObject::connect(watcher, &QDBusPendingCallWatcher::finished, owner, [finished](QDBusPendingCallWatcher* ended) {
    ended->deleteLater();
    finished(*ended);
  });
}

QStringList localPaths(const QVariant& addresses) {
  QStringList paths;
  for (const QString& address : addresses.toStringList())
    if (const QString path = QUrl(address).toLocalFile(); !path.isEmpty()) paths << path;
  return paths;
}

}  // namespace

PortalFolderQuestion::PortalFolderQuestion(QDBusConnection bus, FolderQuestion question, QObject* parent)
    : QObject(parent),
      bus_(std::move(bus)),
      question_(std::move(question)),
      token_(u"sorvan_"_s + base::newUuid().toString(QUuid::Id128)) {}

void PortalFolderQuestion::ask(const QString& parentWindow) {
  parentWindow_ = parentWindow;
  if (!bus_.isConnected()) return giveUp();
  askVersion();
}

void PortalFolderQuestion::askVersion() {
  QDBusMessage message =
      QDBusMessage::createMethodCall(kService, kPath, u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
  message << kChooser << u"version"_s;
  whenFinished(this, bus_.asyncCall(message, kPatienceMilliseconds), [this](const QDBusPendingCall& call) {
    const QDBusPendingReply<QDBusVariant> reply = call;
    if (reply.isError()) return giveUp();
    if (asksForFolder() && reply.value().variant().toUInt() < kFirstVersionWithFolders) return giveUp();
    open();
  });
}

QVariantMap PortalFolderQuestion::options() const {
  QVariantMap asked{{u"handle_token"_s, token_},
                    {u"accept_label"_s, question_.acceptLabel},
                    {u"modal"_s, true},
                    // Bytes of a path, with the zero at their end.
                    {u"current_folder"_s, QFile::encodeName(question_.startFolder) + '\0'}};
  if (!fileName_.isEmpty()) {
    asked.insert(u"current_name"_s, fileName_);
  } else {
    asked.insert(u"multiple"_s, pictures_);
    asked.insert(u"directory"_s, !pictures_);
  }
  return asked;
}

void PortalFolderQuestion::open() {
  // 1. The answer may come before the call returns.
  expectAnswerAt(requestPath(bus_, token_));
  // 2. A portal that ends answers nothing any more.
  auto* watcher = new QDBusServiceWatcher(kService, bus_, QDBusServiceWatcher::WatchForUnregistration, this);
  connect(watcher, &QDBusServiceWatcher::serviceUnregistered, this, [this] { finish({}); });
  // 3. The question.
  QDBusMessage message = QDBusMessage::createMethodCall(kService, kPath, kChooser,
                                                        fileName_.isEmpty() ? u"OpenFile"_s : u"SaveFile"_s);
  message << parentWindow_ << (question_.message.isEmpty() ? question_.acceptLabel : question_.message) << options();
  whenFinished(this, bus_.asyncCall(message), [this](const QDBusPendingCall& call) {
    const QDBusPendingReply<QDBusObjectPath> reply = call;
    if (reply.isError()) return giveUp();
    // 4. Old portals name the request themselves.
    expectAnswerAt(reply.value().path());
  });
}

void PortalFolderQuestion::expectAnswerAt(const QString& request) {
  if (request == request_) return;
  if (!request_.isEmpty())
    bus_.disconnect(kService, request_, kRequest, kResponse, this, SLOT(receive(uint, QVariantMap)));
  request_ = request;
  bus_.connect(kService, request_, kRequest, kResponse, this, SLOT(receive(uint, QVariantMap)));
}

void PortalFolderQuestion::receive(uint code, const QVariantMap& results) {
  finish(code == kAnswered ? localPaths(results.value(u"uris"_s)) : QStringList());
}

void PortalFolderQuestion::finish(const QStringList& paths) {
  if (!std::exchange(done_, true)) Q_EMIT answered(paths);
}

void PortalFolderQuestion::giveUp() {
  if (!std::exchange(done_, true)) Q_EMIT unavailable();
}

QString portalNameOf(const QWidget& window) {
  if (QGuiApplication::platformName() != u"xcb"_s) return {};
  return u"x11:"_s + QString::number(window.window()->winId(), 16);
}

}  // namespace sorvan::views
