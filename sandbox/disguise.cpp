#include "disguise.h"

#include <QDir>
#include <QJsonDocument>

#include "hosts.h"
#include "maker.h"

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

HttpAnswer withMedia(HttpAnswer answer, const MadeFile& media) {
  answer.body = media.bytes;
  for (HttpHeader& header : answer.headers)
    if (header.name.compare("Content-Type", Qt::CaseInsensitive) == 0) header.value = contentTypeOf(media.extension);
  return answer;
}

bool isPicture(const HttpAnswer& answer) {
  return std::any_of(answer.headers.begin(), answer.headers.end(), [](const HttpHeader& header) {
    return header.name.compare("Content-Type", Qt::CaseInsensitive) == 0 && header.value.startsWith("image/");
  });
}

MadeFile ofAnotherKind(const HttpAnswer& answer) {
  const QJsonObject input{{QStringLiteral("prompt"), QStringLiteral("something else")},
                          {QStringLiteral("duration"), 0.5},
                          {QStringLiteral("resolution"), QStringLiteral("144p")},
                          {QStringLiteral("image_size"), QStringLiteral("64x64")}};
  const MediaShelf nothing{QDir::tempPath()};
  const WorkOrder order{{}, isPicture(answer) ? Product::Clip : Product::Picture, input, 1};
  return make(order, nothing).files.first();
}

MadeFile drawing() {
  MadeFile file;
  file.bytes = R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 8 8"><circle cx="4" cy="4" r="3"/></svg>)";
  file.extension = QStringLiteral("svg");
  return file;
}

HttpAnswer spoilt(HttpAnswer answer) {
  for (qsizetype i = answer.body.size() / 2; i < answer.body.size(); ++i) answer.body[i] = char(i * 37 % 251);
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
    case FaultKind::HalfPage:
      plain.body.truncate(plain.body.size() / 2);
      return plain;
    case FaultKind::OtherMedia:
      return withMedia(plain, ofAnotherKind(plain));
    case FaultKind::DamagedMedia:
      return spoilt(std::move(plain));
    case FaultKind::VectorMedia:
      return withMedia(std::move(plain), drawing());
    default:
      return plain;
  }
}

}  // namespace sandbox
