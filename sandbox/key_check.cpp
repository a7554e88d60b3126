#include "key_check.h"

#include <QUuid>

namespace sandbox {

ShownKey KeyCheck::shown(const HttpRequest& request) const {
  const QByteArray value = request.header("Authorization");
  if (value.isEmpty()) return ShownKey::None;
  return value == "Key " + key_.toUtf8() ? ShownKey::Good : ShownKey::Wrong;
}

HttpAnswer KeyCheck::wrongKey(const HttpRequest& request) const {
  const QByteArray value = request.header("Authorization");
  if (!value.startsWith("Key ") || value.count(':') != 1)
    return detailAnswer(401, QStringLiteral("Invalid Key Authorization header format. "
                                            "Expected '<key_id>:<key_secret>'."));
  return detailAnswer(401, QStringLiteral("No user found for Key ID and Secret"));
}

std::optional<HttpAnswer> KeyCheck::queueRefusal(const HttpRequest& request, const QString& application) const {
  switch (shown(request)) {
    case ShownKey::Good:
      return std::nullopt;
    case ShownKey::Wrong:
      return wrongKey(request);
    case ShownKey::None:
      break;
  }
  return detailAnswer(401, QStringLiteral("Cannot access application \"%1\". Authentication is required to access "
                                          "this application.")
                               .arg(application));
}

std::optional<HttpAnswer> KeyCheck::storageRefusal(const HttpRequest& request) const {
  switch (shown(request)) {
    case ShownKey::Good:
      return std::nullopt;
    case ShownKey::Wrong:
      return wrongKey(request);
    case ShownKey::None:
      break;
  }
  return detailAnswer(401, QStringLiteral("Authorization header is required"));
}

std::optional<HttpAnswer> KeyCheck::platformRefusal(const HttpRequest& request) const {
  if (shown(request) == ShownKey::Good) return std::nullopt;
  return jsonAnswer(401, {{QStringLiteral("error"),
                           QJsonObject{{QStringLiteral("type"), QStringLiteral("authorization_error")},
                                       {QStringLiteral("message"), QStringLiteral("Authentication required")}}}});
}

QString makeKey() {
  return QUuid::createUuid().toString(QUuid::WithoutBraces) + QLatin1Char(':') +
         QUuid::createUuid().toString(QUuid::Id128);
}

}  // namespace sandbox
