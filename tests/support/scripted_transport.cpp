#include "support/scripted_transport.h"

#include "base/durable_file.h"
#include "base/json.h"

namespace sorvan::test {
using namespace sorvan::base;
using namespace sorvan::platform;

static HttpReply replyOf(int status, const QByteArray& body, std::vector<HttpHeader> headers) {
  HttpReply reply;
  reply.status = status;
  reply.reason = statusPhrase(status);
  reply.headers = std::move(headers);
  reply.body = body;
  return reply;
}

ScriptedRoute::Step& ScriptedRoute::add(Step step) {
  steps.push_back(std::move(step));
  return steps.back();
}

ScriptedRoute& ScriptedRoute::answers(int status, const QByteArray& body, std::vector<HttpHeader> headers) {
  const HttpReply reply = replyOf(status, body, std::move(headers));
  return answersBy([reply](const HttpRequest&) { return reply; });
}

ScriptedRoute& ScriptedRoute::answersJson(const QJsonValue& body, int status) {
  return answers(status, jsonText(body), {{"Content-Type", "application/json"}});
}

ScriptedRoute& ScriptedRoute::answersBy(Answer answer) {
  add({std::move(answer), {}, {}, {}, {}});
  return *this;
}

ScriptedRoute& ScriptedRoute::fails(HttpProblem problem, const QString& message) {
  const PostFate fate = problem == HttpProblem::CannotConnect ? PostFate::NotSent : PostFate::Unknown;
  add({{}, problem, fate, message, {}});
  return *this;
}

ScriptedRoute& ScriptedRoute::ends(PostFate fate, const QString& problem) {
  add({{}, HttpProblem::Interrupted, fate, problem, {}});
  return *this;
}

ScriptedRoute& ScriptedRoute::after(Completion gate) {
  steps.back().gate = gate;
  return *this;
}

ScriptedRoute& ScriptedRoute::repeating() {
  repeats = true;
  return *this;
}

bool ScriptedRoute::matches(const HttpRequest& request) const {
  if (request.verb != verb || !request.url.toString(QUrl::FullyEncoded).contains(part)) return false;
  return !steps.empty() && (repeats || used < static_cast<int>(steps.size()));
}

ScriptedRoute& ScriptedTransport::on(const QByteArray& verb, const QString& part) {
  return routes.emplace_front(verb, part);
}

ScriptedRoute::Step ScriptedTransport::take(ScriptedCall kind, const HttpRequest& request) {
  recorded.push_back({kind, request});
  for (ScriptedRoute& route : routes) {
    if (!route.matches(request)) continue;
    const size_t index = std::min(static_cast<size_t>(route.used++), route.steps.size() - 1);
    return route.steps[index];
  }
  const QString asked = QString::fromLatin1(request.verb) + u' ' + request.url.toString();
  unexpected.append(asked);
  ScriptedRoute::Step step;
  step.problem = HttpProblem::Other;
  step.fate = PostFate::NotSent;
  step.message = QStringLiteral("The script has no answer for %1.").arg(asked);
  return step;
}

static Task<> pass(std::optional<Completion> gate, std::stop_token stop) {
  co_await yieldToLoop();
  throwIfStopped(stop);
  if (!gate) co_return;
  const Completion opened = *gate;
  std::stop_callback onStop(stop, [opened] { opened.finish(); });
  co_await opened;
  throwIfStopped(stop);
}

Task<HttpReply> ScriptedTransport::send(HttpRequest request, std::stop_token stop) {
  throwIfStopped(stop);
  const auto step = take(ScriptedCall::Send, request);
  co_await pass(step.gate, stop);
  if (step.problem) throw HttpError(*step.problem, step.message);
  HttpReply reply = step.answer(request);
  reply.url = request.url;
  co_return reply;
}

// Shielded, like the real one: a stop that comes while the answer is held changes nothing.
Task<PostOutcome> ScriptedTransport::postOnce(HttpRequest request, std::stop_token stop) {
  throwIfStopped(stop);
  const auto step = take(ScriptedCall::PostOnce, request);
  co_await pass(step.gate, {});
  PostOutcome outcome;
  if (step.problem) {
    outcome.fate = *step.fate;
    outcome.problem = step.message;
    co_return outcome;
  }
  outcome.reply = step.answer(request);
  outcome.reply->url = request.url;
  outcome.fate = fateOfStatus(outcome.reply->status);
  co_return outcome;
}

Task<HttpReply> ScriptedTransport::download(HttpRequest request, QString toPath, std::stop_token stop) {
  throwIfStopped(stop);
  const auto step = take(ScriptedCall::Download, request);
  co_await pass(step.gate, stop);
  if (step.problem) throw HttpError(*step.problem, step.message);
  HttpReply reply = step.answer(request);
  reply.url = request.url;
  if (reply.succeeded()) writeDurably(toPath, std::exchange(reply.body, {}), DurableMode::Media);
  co_return reply;
}

int ScriptedTransport::posts(const QString& part) const {
  return static_cast<int>(std::count_if(recorded.begin(), recorded.end(), [&](const RecordedCall& call) {
    return call.kind == ScriptedCall::PostOnce && call.request.url.toString().contains(part);
  }));
}

std::vector<HttpRequest> ScriptedTransport::requests(const QString& part) const {
  std::vector<HttpRequest> found;
  for (const RecordedCall& call : recorded) {
    if (call.request.url.toString().contains(part)) found.push_back(call.request);
  }
  return found;
}

}  // namespace sorvan::test
