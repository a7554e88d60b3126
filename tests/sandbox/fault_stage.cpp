#include "sandbox/fault_stage.h"

#include <QJsonDocument>

namespace sorvan::test {

const QString painter = QStringLiteral("fal-ai/flux/schnell");

namespace {

const QUrl uploadStart(QStringLiteral("https://rest.fal.ai/storage/upload/initiate?storage_type=fal-cdn-v3"));
const QByteArray uploadWish = R"({"content_type":"image/png","file_name":"reference.png"})";

}  // namespace

QJsonObject tinyPicture(int seed) {
  return inputWith(
      QStringLiteral("a sea"), seed,
      {{QStringLiteral("image_size"), QJsonObject{{QStringLiteral("width"), 64}, {QStringLiteral("height"), 48}}},
       {QStringLiteral("output_format"), QStringLiteral("png")}});
}

FaultStage::FaultStage() : client(sandbox) {
  handle_ = client.submit(painter, tinyPicture(99)).json();
  while (client.getJson(handle_, u"status_url").json().value(QStringLiteral("status")) != QStringLiteral("COMPLETED")) {
  }
  const QJsonObject result = client.getJson(handle_, u"response_url").json();
  picture_ =
      QUrl(result.value(QStringLiteral("images")).toArray().first().toObject().value(QStringLiteral("url")).toString());
}

QStringList FaultStage::calls() {
  return {QStringLiteral("submit"),       QStringLiteral("status"), QStringLiteral("result"),
          QStringLiteral("upload-start"), QStringLiteral("upload"), QStringLiteral("download")};
}

bool FaultStage::isPost(const QString& call) {
  return call == QStringLiteral("submit") || call == QStringLiteral("upload-start");
}

FaultStage::Request FaultStage::request(const QString& call) {
  const auto address = [&](const char16_t* field) { return QUrl(handle_.value(QString::fromUtf16(field)).toString()); };
  if (call == QStringLiteral("submit"))
    return {"POST", queueUrl(painter), QJsonDocument(tinyPicture()).toJson(QJsonDocument::Compact)};
  if (call == QStringLiteral("status")) return {"GET", address(u"status_url"), {}};
  if (call == QStringLiteral("result")) return {"GET", address(u"response_url"), {}};
  if (call == QStringLiteral("cancel")) return {"PUT", address(u"cancel_url"), {}};
  if (call == QStringLiteral("upload-start")) return {"POST", uploadStart, uploadWish};
  if (call == QStringLiteral("upload")) {
    const QJsonObject place = client.send("POST", uploadStart, uploadWish).json();
    return {"PUT", QUrl(place.value(QStringLiteral("upload_url")).toString()), "the bytes of a picture",
            Client::Key::None};
  }
  return {"GET", picture_, {}, Client::Key::None};
}

FaultStage::Books FaultStage::books() const {
  const QJsonObject state = sandbox.state();
  return {state.value(QStringLiteral("purchases")).toInt(),
          state.value(QStringLiteral("posts")).toObject().value(QStringLiteral("total")).toInt()};
}

bool FaultStage::uploadStands(const Request& upload) const {
  return client.get(upload.url.adjusted(QUrl::RemoveQuery), Client::Key::None).status == 200;
}

Met FaultStage::counted(const QString& call, const std::function<WireAnswer(const Request&)>& makeIt) {
  const Request made = request(call);
  const Books before = books();
  Met met;
  met.answer = makeIt(made);
  const Books after = books();
  met.purchases = after.purchases - before.purchases;
  met.posts = after.posts - before.posts;
  met.carriedOut = call == QStringLiteral("submit")   ? met.purchases == 1
                   : call == QStringLiteral("upload") ? uploadStands(made)
                                                      : false;
  return met;
}

Met FaultStage::meet(const QString& call, const QString& fault, const QJsonObject& more, Client::ReadUntil until) {
  return counted(call, [&](const Request& made) {
    sandbox.addFault(call, fault, more);
    return client.send(made.method, made.url, made.body, made.key, until);
  });
}

Met FaultStage::make(const QString& call) {
  return counted(call, [&](const Request& made) { return client.send(made.method, made.url, made.body, made.key); });
}

}  // namespace sorvan::test
