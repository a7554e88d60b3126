#include "composer/gateway_interpreter.h"

#include "base/ids.h"
#include "base/json.h"

namespace sorvan::composer {

using namespace Qt::StringLiterals;

namespace {

constexpr int longestWaitSeconds = 60;

/// What was paid for, whether its action reads or not.
Interpretation interpretationOf(const CreditsOperation& operation) {
  Interpretation answer;
  answer.microcredits = operation.charged;
  if (!operation.result || !operation.result->action) return answer;
  try {
    answer.action = fromJson<RemoteAppAction>(*operation.result->action);
  } catch (const JsonError&) {
    // An action that does not read is none; it costs what it costs.
  }
  return answer;
}

Task<Interpretation> finished(CreditsClient client, CreditsOperation operation, std::stop_token stop) {
  const CreditsOperation ended = co_await client.wait(std::move(operation), longestWaitSeconds, std::move(stop));
  co_return interpretationOf(ended);
}

/// What may be asked again under another key, and what may have been begun under this one, are told apart.
Task<CreditsOperation> begun(CreditsClient client, QJsonObject body, QUuid key, std::stop_token stop) {
  try {
    co_return co_await client.post<CreditsOperation>(u"v1/interpret"_s, body, std::optional(uuidText(key)), stop);
  } catch (const GatewayRefusal& refusal) {
    throw InterpretationNotSent(refusal.message());
  } catch (const HttpError& unreachable) {
    throw InterpretationNotSent(unreachable.message());
  }
}

}  // namespace

CreditsClient GatewayInterpreter::clientToSend() const {
  try {
    return makeClient_();
  } catch (const SorvanError& nobody) {
    throw InterpretationNotSent(nobody.message());
  }
}

Task<Interpretation> GatewayInterpreter::interpret(QString text, CommandContext context, QUuid key,
                                                   std::stop_token stop) {
  const CreditsClient client = clientToSend();
  const QJsonObject body{{u"text"_s, text}, {u"context"_s, toJson(context)}};
  const CreditsOperation operation = co_await begun(client, body, key, stop);
  co_return co_await finished(client, operation, stop);
}

Task<std::optional<Interpretation>> GatewayInterpreter::existing(QUuid key, std::stop_token stop) {
  const CreditsClient client = makeClient_();
  const auto found = co_await client.existing(uuidText(key), stop);
  if (!found) co_return std::nullopt;
  if (found->isFailed()) co_return Interpretation();
  co_return co_await finished(client, *found, stop);
}

}  // namespace sorvan::composer
