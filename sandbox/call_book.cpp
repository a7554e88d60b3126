#include "call_book.h"

#include <QCryptographicHash>
#include <QJsonDocument>
#include <stdexcept>

namespace sandbox {

namespace {

const QString endpointKey = QStringLiteral("endpoint");
const QString attemptKey = QStringLiteral("attempt");

QString attemptOf(const HttpRequest& request, bool bodyRead) {
  const QByteArray key = request.header("Idempotency-Key");
  if (!key.isEmpty()) return QString::fromUtf8(key);
  if (!bodyRead) return QStringLiteral("unread");
  return QString::fromLatin1(QCryptographicHash::hash(request.body, QCryptographicHash::Sha256).toHex());
}

QString shown(ShownKey key) {
  switch (key) {
    case ShownKey::None:
      return QStringLiteral("none");
    case ShownKey::Good:
      return QStringLiteral("good");
    case ShownKey::Wrong:
      return QStringLiteral("wrong");
  }
  return {};
}

}  // namespace

CallBook::CallBook(const QString& postsPath) : file_(postsPath) {
  if (!file_.open(QIODevice::ReadWrite | QIODevice::Append | QIODevice::Unbuffered))
    throw std::runtime_error("The book of POSTs cannot be opened: " + file_.errorString().toStdString());
  file_.seek(0);
  for (const QByteArray& line : file_.readAll().split('\n')) {
    const QJsonObject post = QJsonDocument::fromJson(line).object();
    if (!post.isEmpty()) countPost(post.value(endpointKey).toString(), post.value(attemptKey).toString());
  }
}

int CallBook::arrived(const Call& call, const HttpRequest& head, ShownKey key) {
  ++counts_[call.kind];
  calls_.append(QJsonObject{{QStringLiteral("number"), calls_.size() + 1},
                            {QStringLiteral("call"), nameOf(call.kind)},
                            {QStringLiteral("method"), QString::fromLatin1(head.method)},
                            {QStringLiteral("host"), head.host},
                            {QStringLiteral("path"), head.path},
                            {endpointKey, call.endpoint},
                            {QStringLiteral("key"), shown(key)}});
  return int(calls_.size());
}

void CallBook::answered(int number, const QString& what) {
  QJsonObject call = calls_.at(number - 1).toObject();
  call.insert(QStringLiteral("answer"), what);
  calls_.replace(number - 1, call);
}

void CallBook::posted(const Call& call, const HttpRequest& request, bool bodyRead) {
  const QString endpoint = call.kind == CallKind::Submit ? call.endpoint : nameOf(call.kind);
  const QString attempt = attemptOf(request, bodyRead);
  countPost(endpoint, attempt);
  file_.write(compactJson({{endpointKey, endpoint}, {attemptKey, attempt}}) + '\n');
}

void CallBook::countPost(const QString& endpoint, const QString& attempt) { ++posts_[endpoint][attempt]; }

QJsonObject CallBook::posts() const {
  QJsonObject endpoints;
  int total = 0;
  for (auto endpoint = posts_.begin(); endpoint != posts_.end(); ++endpoint) {
    QJsonObject attempts;
    int ofEndpoint = 0;
    for (auto attempt = endpoint->begin(); attempt != endpoint->end(); ++attempt) {
      attempts.insert(attempt.key(), attempt.value());
      ofEndpoint += attempt.value();
    }
    endpoints.insert(endpoint.key(),
                     QJsonObject{{QStringLiteral("total"), ofEndpoint}, {QStringLiteral("attempts"), attempts}});
    total += ofEndpoint;
  }
  return {{QStringLiteral("total"), total}, {QStringLiteral("endpoints"), endpoints}};
}

}  // namespace sandbox
