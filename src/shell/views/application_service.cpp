#include "shell/views/application_service.h"

#include "shell/application_id.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

// Without the token of the click that led here a Wayland compositor keeps the window behind. Qt reads it from the
// environment when the window asks to be activated, and removes it.
void takeActivationToken(const QVariantMap& platform) {
  const QString token = platform.value(u"activation-token"_s).toString();
  if (!token.isEmpty()) qputenv("XDG_ACTIVATION_TOKEN", token.toUtf8());
}

}  // namespace

ApplicationService::ApplicationService(QDBusConnection bus, QString name, QObject* parent)
    : QObject(parent), bus_(std::move(bus)), name_(std::move(name)) {}

ApplicationService::~ApplicationService() {
  if (!offered_) return;
  bus_.unregisterService(name_);
  bus_.unregisterObject(shell::objectPathOf(name_));
}

bool ApplicationService::offer() {
  // Whoever takes the name is called at once, so the object stands first.
  if (!bus_.isConnected()) return false;
  const QString path = shell::objectPathOf(name_);
  if (!bus_.registerObject(path, this, QDBusConnection::ExportScriptableSlots)) return false;
  offered_ = bus_.registerService(name_);
  if (!offered_) bus_.unregisterObject(path);
  return offered_;
}

void ApplicationService::Activate(const QVariantMap& platform) {
  takeActivationToken(platform);
  Q_EMIT activated();
}

void ApplicationService::Open(const QStringList& addresses, const QVariantMap& platform) {
  takeActivationToken(platform);
  Q_EMIT opened(addresses);
}

void ApplicationService::ActivateAction(const QString& name, const QVariantList& parameters,
                                        const QVariantMap& platform) {
  Q_UNUSED(parameters);
  takeActivationToken(platform);
  Q_EMIT actionActivated(name);
}

}  // namespace sorvan::views
