#include "queue_service.h"

#include <QDateTime>
#include <QJsonDocument>

#include "catalogue.h"
#include "hosts.h"
#include "result_shape.h"
#include "validation.h"
#include "wish.h"

namespace sandbox {

namespace {

const QString cancelledError = QStringLiteral("Request was cancelled");
const QString cancelledType = QStringLiteral("client_cancelled");

// The handle's addresses hold only owner and application; the rest of the endpoint's id is dropped.
QJsonObject handleOf(const Job& job) {
  const QString address =
      QStringLiteral("https://%1/%2/requests/%3").arg(hosts::queue, applicationOf(job.endpoint), job.id);
  return {{QStringLiteral("request_id"), job.id},
          {QStringLiteral("response_url"), address},
          {QStringLiteral("status_url"), address + QStringLiteral("/status")},
          {QStringLiteral("cancel_url"), address + QStringLiteral("/cancel")},
          {QStringLiteral("status"), nameOf(job.state())}};
}

QJsonObject logLine(const QString& message) {
  return {{QStringLiteral("message"), message},
          {QStringLiteral("timestamp"), QDateTime::currentDateTimeUtc().toString(Qt::ISODateWithMs)},
          {QStringLiteral("level"), QStringLiteral("INFO")},
          {QStringLiteral("source"), QStringLiteral("USER")}};
}

QJsonValue logsOf(const Job& job, const HttpRequest& request) {
  const QString wanted = request.query.queryItemValue(QStringLiteral("logs"));
  if (wanted != QStringLiteral("1") && wanted != QStringLiteral("true")) return QJsonValue::Null;
  QJsonArray lines{logLine(QStringLiteral("Loading model weights..."))};
  if (job.made) lines.append(logLine(QStringLiteral("Done.")));
  return lines;
}

bool isRefused(const Job& job) {
  const json::object* document = publishedDocument(job.endpoint);
  return document && !problemsOf(*document, job.body).isEmpty();
}

double chargeOf(const Job& job, Product product) {
  const json::object* document = publishedDocument(job.endpoint);
  const QJsonObject plain = QJsonDocument::fromJson(job.body).object();
  const QJsonObject input = document ? withDefaults(*document, plain) : plain;
  const Price price = priceOf(job.endpoint).value_or(Price());
  return price.amount * unitsOf(input, product, price.unit);
}

HttpAnswer unknownRequest() { return jsonAnswer(404, {{QStringLiteral("status"), QStringLiteral("NOT_FOUND")}}); }

}  // namespace

HttpAnswer QueueService::answer(const Call& call, const HttpRequest& request) {
  if (const auto refusal = keys_.queueRefusal(request, applicationOf(call.endpoint))) return *refusal;
  if (call.kind == CallKind::Submit) return submit(call, request);
  const Job* job = jobs_.find(call.requestId);
  if (!job || !job->endpoint.startsWith(applicationOf(call.endpoint))) return unknownRequest();
  if (call.kind == CallKind::Status) return status(*job, request);
  if (call.kind == CallKind::Cancel) return cancel(*job);
  return result(*job);
}

HttpAnswer QueueService::submit(const Call& call, const HttpRequest& request) {
  // 1. Only endpoints that exist; the input is not judged here.
  const auto product = productOf(call.endpoint);
  if (!product)
    return detailAnswer(404, QStringLiteral("Application '%1' not found").arg(applicationOf(call.endpoint)));

  // 2. The job, then the charge, each on the disk. Nothing is charged for an input that its document forbids.
  const Job& job = jobs_.add(call.endpoint, request.body);
  ledger_.add({job.id, QString::fromUtf8(request.header("Idempotency-Key")), job.endpoint,
               isRefused(job) ? 0 : chargeOf(job, *product), request.body});

  // 3. The handle.
  QJsonObject handle = handleOf(job);
  handle.insert(QStringLiteral("logs"), QJsonValue::Null);
  handle.insert(QStringLiteral("metrics"), QJsonObject());
  handle.insert(QStringLiteral("queue_position"), jobs_.positionOf(job));
  return jsonAnswer(200, handle);
}

HttpAnswer QueueService::status(const Job& job, const HttpRequest& request) const {
  QJsonObject body = handleOf(job);
  QJsonObject metrics;
  const JobState state = job.state();
  body.insert(QStringLiteral("logs"), state == JobState::Queued ? QJsonValue::Null : logsOf(job, request));
  if (state == JobState::Queued) body.insert(QStringLiteral("queue_position"), jobs_.positionOf(job));
  if (state == JobState::Completed) metrics.insert(QStringLiteral("inference_time"), job.inferenceSeconds);
  body.insert(QStringLiteral("metrics"), metrics);
  if (job.cancelled) {
    body.insert(QStringLiteral("error"), cancelledError);
    body.insert(QStringLiteral("error_type"), cancelledType);
  }
  return jsonAnswer(state == JobState::Completed ? 200 : 202, body);
}

HttpAnswer QueueService::result(const Job& job) const {
  if (job.state() != JobState::Completed) return detailAnswer(400, QStringLiteral("Request is still in progress"));
  if (job.cancelled)
    return jsonAnswer(499, {{QStringLiteral("detail"), cancelledError}, {QStringLiteral("error_type"), cancelledType}});
  HttpAnswer answer = textAnswer(job.resultStatus, "application/json", job.resultBody);
  answer.headers.append({"x-fal-request-id", job.id.toLatin1()});
  answer.headers.append({"x-fal-billable-units", QByteArray::number(job.billableUnits)});
  return answer;
}

HttpAnswer QueueService::cancel(const Job& job) {
  const auto reply = [](int status, const QString& word) {
    return jsonAnswer(status, {{QStringLiteral("status"), word}});
  };
  const JobState state = job.state();
  if (state == JobState::Completed) return reply(400, QStringLiteral("ALREADY_COMPLETED"));
  jobs_.cancel(job.id);
  return state == JobState::Queued ? reply(200, QStringLiteral("OK"))
                                   : reply(202, QStringLiteral("CANCELLATION_REQUESTED"));
}

}  // namespace sandbox
