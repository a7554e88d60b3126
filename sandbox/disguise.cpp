#include "disguise.h"

#include <QJsonDocument>

#include "hosts.h"

namespace sandbox {

namespace {

const QString status = QStringLiteral("status");

HttpAnswer withJson(HttpAnswer answer, const std::function<void(QJsonObject&)>& change) {
  QJsonObject object = QJsonDocument::fromJson(answer.body).object();
  change(object);
  answer.body = compactJson(object);
  return answer;
}

HttpAnswer withoutHandle(HttpAnswer answer) {
  return withJson(std::move(answer), [](QJsonObject& object) {
    for (const char16_t* key :
         {u"request_id", u"status_url", u"response_url", u"cancel_url", u"upload_url", u"file_url"})
      object.remove(QString::fromUtf16(key));
  });
}

HttpAnswer withState(HttpAnswer answer, const QString& state, int httpStatus) {
  answer.status = httpStatus;
  return withJson(std::move(answer), [&](QJsonObject& object) { object.insert(status, state); });
}

HttpAnswer withJobError(HttpAnswer answer) {
  return withJson(withState(std::move(answer), QStringLiteral("COMPLETED"), 200), [](QJsonObject& object) {
    object.insert(QStringLiteral("error"), QStringLiteral("Request timed out"));
    object.insert(QStringLiteral("error_type"), QStringLiteral("request_timeout"));
  });
}

HttpAnswer leadingElsewhere(HttpAnswer answer) {
  for (const QString& host : hosts::all())
    answer.body.replace("https://" + host.toLatin1() + '/', "https://" + hosts::elsewhere.toLatin1() + '/');
  return answer;
}

}  // namespace

HttpAnswer disguise(const Fault& fault, HttpAnswer plain) {
  switch (fault.kind) {
    case FaultKind::Answer:
      return fault.answer;
    case FaultKind::NoHandle:
      return withoutHandle(std::move(plain));
    case FaultKind::Elsewhere:
      return leadingElsewhere(std::move(plain));
    case FaultKind::Backwards:
      return withState(std::move(plain), QStringLiteral("IN_QUEUE"), 202);
    case FaultKind::UnknownState:
      return withState(std::move(plain), QStringLiteral("PONDERING"), 202);
    case FaultKind::JobError:
      return withJobError(std::move(plain));
    case FaultKind::WrongMedia:
      plain.body = "This is not the media that the answer claims.\n";
      return plain;
    default:
      return plain;
  }
}

}  // namespace sandbox
