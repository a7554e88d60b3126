#include "storage_service.h"

#include <QFileInfo>
#include <QJsonDocument>
#include <QUuid>

#include "hosts.h"

namespace sandbox {

namespace {

const QString signatureKey = QStringLiteral("signature");

QString token() { return QUuid::createUuid().toString(QUuid::Id128); }

}  // namespace

HttpAnswer StorageService::start(const HttpRequest& request) {
  if (const auto refusal = keys_.storageRefusal(request)) return *refusal;
  const QJsonObject wish = QJsonDocument::fromJson(request.body).object();
  const QString name = wish.value(QStringLiteral("file_name")).toString();
  if (name.isEmpty() || wish.value(QStringLiteral("content_type")).toString().isEmpty())
    return detailAnswer(422, QStringLiteral("file_name and content_type are required"));
  const QString path =
      QStringLiteral("/files/b/%1/%2.%3").arg(token().left(8), token().left(21), QFileInfo(name).suffix());
  const QString signature = token();
  signatures_.insert(path, signature);
  const QString address = QStringLiteral("https://%1%2").arg(hosts::uploads, path);
  return jsonAnswer(200,
                    {{QStringLiteral("upload_url"), QStringLiteral("%1?%2=%3").arg(address, signatureKey, signature)},
                     {QStringLiteral("file_url"), address}});
}

HttpAnswer StorageService::put(const HttpRequest& request) {
  if (!request.header("Authorization").isEmpty())
    return detailAnswer(400, QStringLiteral("A signed address takes no Authorization."));
  const QString signature = request.query.queryItemValue(signatureKey);
  if (signature.isEmpty() || signatures_.value(request.path) != signature)
    return detailAnswer(403, QStringLiteral("The signature does not match."));
  shelf_.put(request.path, request.body);
  return jsonAnswer(200, {});
}

HttpAnswer StorageService::download(const HttpRequest& request) const {
  const auto media = shelf_.get(request.path);
  if (!media) return detailAnswer(404, QStringLiteral("Not Found"));
  return textAnswer(200, media->contentType, media->bytes);
}

}  // namespace sandbox
