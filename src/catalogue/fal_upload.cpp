#include "catalogue/fal_upload.h"

#include "base/task.h"
#include "catalogue/reference_media.h"
#include "catalogue/service_hosts.h"
#include "catalogue/texts.h"

namespace sorvan::catalogue {

using namespace Qt::StringLiterals;

namespace {

PreparedMedia mediaFor(const ReferenceUpload& upload, const std::stop_token& stop) {
  if (referenceKind(upload.file) != ReferenceKind::picture) return preparedReference(upload.file, stop);
  if (upload.pictureLimit) return compactPicture(upload.file, *upload.pictureLimit);
  return {pngOf(upload.file), u"image/png"_s, u"png"_s};
}

struct StorageAddresses {
  QUrl upload;
  QString file;
};

StorageAddresses storageAddresses(const QByteArray& answer) {
  const QJsonObject object = jsonObject(answer);
  const QUrl upload = httpsAddress(object.value(u"upload_url"_s).toString());
  const QString file = object.value(u"file_url"_s).toString();
  if (upload.isEmpty() || httpsAddress(file).isEmpty()) throw SorvanError(texts::uploadRefused());
  return {upload, file};
}

/// The bytes go without the key: the address itself is the permission.
HttpRequest putRequest(const QUrl& address, PreparedMedia media) {
  HttpRequest request;
  request.url = address;
  request.verb = "PUT";
  request.headers = {{"Content-Type", media.contentType.toUtf8()}};
  request.body = std::move(media.bytes);
  return request;
}

}  // namespace

Task<QString> uploadReference(std::shared_ptr<HttpTransport> transport, ReferenceUpload upload, std::stop_token stop) {
  const auto prepare = [upload, stop] { return mediaFor(upload, stop); };
  PreparedMedia media = co_await onPool(prepare, stop);
  const QJsonObject announced{{u"file_name"_s, u"reference."_s + media.ext}, {u"content_type"_s, media.contentType}};
  HttpRequest announcement = keyedJsonRequest("POST", uploadAddress(), upload.key, announced);
  const HttpReply answer = co_await sendChecked(transport, std::move(announcement), stop);
  const StorageAddresses addresses = storageAddresses(answer.body);
  HttpRequest put = putRequest(addresses.upload, std::move(media));
  co_await sendChecked(transport, std::move(put), stop);
  co_return addresses.file;
}

}  // namespace sorvan::catalogue
