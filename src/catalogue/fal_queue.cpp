#include "catalogue/fal_queue.h"

#include <QJsonDocument>
#include <QRegularExpression>

#include "base/planted_bug.h"
#include "catalogue/service_hosts.h"
#include "catalogue/texts.h"

namespace sorvan::catalogue {

using namespace Qt::StringLiterals;

namespace {

constexpr int mostFailuresInARow = 5;

/// An address of the answer where it may receive the key, else the one that the service's rule gives. A fragment is
/// never sent, and one that is no strict text would not be kept as it is.
QUrl usableAddress(const QJsonObject& answer, const QString& field, const QUrl& built) {
  const QUrl given = httpsAddress(answer.value(field).toString()).adjusted(QUrl::RemoveFragment);
  return mayReceiveKey(given) ? given : built;
}

/// A service's id goes into addresses as it is, so it must be plain.
bool isPlainID(const QString& id) {
  static const QRegularExpression plain(u"\\A[A-Za-z0-9_-]{1,128}\\z"_s);
  return plain.match(id).hasMatch();
}

bool isTransient(const HttpError& error) {
  return error.problem() != HttpProblem::Insecure && error.problem() != HttpProblem::TooLarge;
}

bool isTransient(const ProviderRefusal& refusal) {
  const int status = refusal.status();
  return status == 408 || status == 429 || (status >= 502 && status <= 504);
}

QJsonObject bodyOf(const HttpReply& reply) { return QJsonDocument::fromJson(reply.body).object(); }

bool namesAnErrorType(const HttpReply& reply) {
  return !reply.header("x-fal-error-type").isEmpty() || bodyOf(reply).value(u"error_type"_s).isString();
}

bool isBilledNothing(const HttpReply& reply) {
  const QByteArray units = reply.header("x-fal-billable-units");
  bool reads = false;
  const double billed = units.toDouble(&reads);
  return reply.status >= 500 || reply.status == 499 || namesAnErrorType(reply) || (reads && billed == 0);
}

/// The number of billed units, when the service tells one.
QString billedUnitsOf(const HttpReply& reply) {
  const QByteArray units = reply.header("x-fal-billable-units").trimmed();
  bool reads = false;
  const double number = units.toDouble(&reads);
  return reads && std::isfinite(number) && number >= 0 ? QString::fromLatin1(units) : QString();
}

/// The queue answers so for a job that is not finished after all.
bool saysStillRunning(const HttpReply& reply) {
  const QString detail = bodyOf(reply).value(u"detail"_s).toString();
  return reply.status == 400 && detail.contains(u"still in progress"_s, Qt::CaseInsensitive);
}

/// Whether a refusal to give the result is the job's own end, and not the network's or the key's.
bool endsTheJob(const HttpReply& reply) {
  if (reply.status >= 500) return namesAnErrorType(reply) || bodyOf(reply).value(u"detail"_s).isArray();
  switch (reply.status) {
    case 401:
    case 403:
    case 404:
    case 408:
    case 429:
      return false;
    default:
      return reply.status >= 400 && !saysStillRunning(reply);
  }
}

RemoteJobFailed failureOf(const ProviderRefusal& refusal) {
  const bool free = isBilledNothing(refusal.reply());
  return RemoteJobFailed(refusal.message(),
                         free ? RemoteJobFailed::Billing::nothing : RemoteJobFailed::Billing::perhaps);
}

JobState stateNamed(const QString& name) {
  if (name == u"COMPLETED"_s) return JobState::completed;
  if (name == u"IN_QUEUE"_s) return JobState::queued;
  if (name == u"IN_PROGRESS"_s) return JobState::running;
  throw SorvanError(texts::unexpectedState(name));
}

/// The error of a status is the service's own word that the job failed.
void throwIfFailed(const QJsonObject& status) {
  const QString error = status.value(u"error"_s).toString();
  if (error.isEmpty()) return;
  const bool free = status.value(u"error_type"_s).isString();
  throw RemoteJobFailed(error, free ? RemoteJobFailed::Billing::nothing : RemoteJobFailed::Billing::perhaps);
}

/// What a POST that ended without acceptance is told as.
std::exception_ptr refusalOf(const PostOutcome& outcome, const QUrl& asked) {
  if (outcome.reply) return std::make_exception_ptr(ProviderRefusal(*outcome.reply, asked));
  return std::make_exception_ptr(HttpError(HttpProblem::CannotConnect, outcome.problem));
}

QString unknownMessage(const PostOutcome& outcome, const QUrl& asked) {
  return outcome.reply ? refusalMessage(*outcome.reply, asked) : outcome.problem;
}

}  // namespace

RemoteHandle handleFrom(const QByteArray& answer, const QString& endpoint) {
  const QJsonObject object = jsonObject(answer);
  const QString id = object.value(u"request_id"_s).toString();
  if (!isPlainID(id)) throw SorvanError(texts::missingJobInformation());
  RemoteHandle handle;
  handle.requestID = id;
  handle.statusURL = usableAddress(object, u"status_url"_s, statusAddress(endpoint, id));
  handle.resultURL = usableAddress(object, u"response_url"_s, resultAddress(endpoint, id));
  handle.cancelURL = usableAddress(object, u"cancel_url"_s, cancelAddress(endpoint, id));
  return handle;
}

JobState jobStateFrom(const QByteArray& answer) {
  const QJsonObject status = jsonObject(answer);
  throwIfFailed(status);
  return stateNamed(status.value(u"status"_s).toString(u"UNKNOWN"_s));
}

Task<RemoteHandle> submitOnce(std::shared_ptr<HttpTransport> transport, Submission submission,
                              std::shared_ptr<ProviderRun> run) {
  const QUrl address = submitAddress(submission.endpoint);
  HttpRequest request = keyedJsonRequest("POST", address, submission.key, submission.body);

  // 1. A marker on the disk says that a POST is about to leave.
  co_await run->aboutToSubmit();

  // 2. The POST. When it was stopped before anything left, the marker goes again.
  PostOutcome outcome;
  std::exception_ptr stopped;
  try {
    outcome = co_await transport->postOnce(std::move(request), run->submissionStop());
  } catch (const Cancelled&) {
    stopped = std::current_exception();
    outcome.fate = PostFate::NotSent;
  }

  if (outcome.fate == PostFate::Unknown && planted("blind-resend"))
    outcome = co_await transport->postOnce(keyedJsonRequest("POST", address, submission.key, submission.body), {});

  // 3. What certainly was not accepted may be sent again.
  if (outcome.fate == PostFate::NotSent) {
    co_await run->notSubmitted();
    std::rethrow_exception(stopped ? stopped : refusalOf(outcome, address));
  }

  // 4. Anything but a readable acceptance is unknown, and the marker stays.
  if (outcome.fate == PostFate::Unknown || !outcome.reply) throw SubmissionUnknown(unknownMessage(outcome, address));
  try {
    co_return handleFrom(outcome.reply->body, submission.endpoint);
  } catch (const SorvanError& unreadable) {
    throw SubmissionUnknown(unreadable.message());
  }
}

Task<JobState> fetchJobState(std::shared_ptr<HttpTransport> transport, RemoteHandle handle, QString key,
                             std::stop_token stop) {
  const HttpReply reply = co_await sendChecked(transport, keyedRequest("GET", handle.statusURL, key), stop);
  co_return jobStateFrom(reply.body);
}

Task<PolledState> fetchJobStatePatiently(std::shared_ptr<HttpTransport> transport, std::shared_ptr<const Clock> clock,
                                         RemoteHandle handle, QString key, std::stop_token stop) {
  PolledState polled;
  std::chrono::milliseconds wait = std::chrono::seconds(2);
  while (true) {
    bool failed = false;
    try {
      polled.state = co_await fetchJobState(transport, handle, key, stop);
    } catch (const HttpError& error) {
      failed = isTransient(error) && polled.waits < mostFailuresInARow;
      if (!failed) throw;
    } catch (const ProviderRefusal& refusal) {
      failed = isTransient(refusal) && polled.waits < mostFailuresInARow;
      if (!failed) throw;
    }
    if (!failed) co_return polled;
    ++polled.waits;
    co_await clock->sleep(wait, stop);
    wait *= 2;
  }
}

Task<JobResult> fetchResult(std::shared_ptr<HttpTransport> transport, RemoteHandle handle, QString key,
                            std::stop_token stop) {
  try {
    const HttpReply reply = co_await sendChecked(transport, keyedRequest("GET", handle.resultURL, key), stop);
    co_return JobResult{jsonObject(reply.body), billedUnitsOf(reply)};
  } catch (const ProviderRefusal& refusal) {
    if (endsTheJob(refusal.reply())) throw failureOf(refusal);
    throw;
  }
}

Task<> cancelRemoteJob(std::shared_ptr<HttpTransport> transport, RemoteHandle handle, QString key,
                       std::stop_token stop) {
  try {
    co_await sendChecked(transport, keyedRequest("PUT", handle.cancelURL, key), stop);
  } catch (const ProviderRefusal& refusal) {
    const QJsonObject body = bodyOf(refusal.reply());
    const bool finished = body.value(u"status"_s).toString() == u"ALREADY_COMPLETED"_s ||
                          body.value(u"detail"_s).toString().contains(u"already completed"_s);
    if (refusal.status() == 400 && finished) throw RemoteJobAlreadyComplete(refusal.message());
    throw;
  }
}

}  // namespace sorvan::catalogue
