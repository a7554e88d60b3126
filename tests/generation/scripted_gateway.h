// The gateway's side of cancelled operations: answers what the test tells it, and notes what it was asked.
#pragma once

#include <QHash>
#include <QStringList>

#include <functional>

#include "base/completion.h"
#include "generation/generation_ports.h"

namespace sorvan::generation::test {

struct ScriptedGateway {
  QHash<QString, QString> states;                  ///< by operation; one that is missing cannot be asked
  std::optional<QString> cancelReply;              ///< none: the gateway cannot be reached
  QHash<QUuid, CreditsOperationState> operations;  ///< by the request's own id; missing: never seen
  bool lookUpFails = false;
  QStringList asked;                                   ///< "cancel x", "state x", "look up"
  std::function<void(const QString& question)> onAsk;  ///< runs before the answer
  std::optional<Completion> heldBack;                  ///< answers to states wait for it

  void plugInto(GenerationPorts& ports) {
    ports.cancelCredits = [this](QString id, std::stop_token) { return cancel(id); };
    ports.creditState = [this](QString id, std::stop_token) { return state(id); };
    ports.existingCredits = [this](QUuid request, std::stop_token) { return lookUp(request); };
  }

  qsizetype countOf(const QString& question) const { return asked.count(question); }

 private:
  void note(const QString& question) {
    asked.append(question);
    if (onAsk) onAsk(question);
  }
  static SorvanError unreachable() { return SorvanError(QStringLiteral("The Sorvan gateway could not be reached.")); }

  Task<QString> cancel(QString id) {
    co_await yieldToLoop();
    note(QStringLiteral("cancel ") + id);
    if (!cancelReply) throw unreachable();
    // A task takes what it returns out of a lasting value, so it gets a copy.
    co_return QString(*cancelReply);
  }
  Task<QString> state(QString id) {
    co_await yieldToLoop();
    note(QStringLiteral("state ") + id);
    if (heldBack) co_await *heldBack;
    if (!states.contains(id)) throw unreachable();
    co_return states.value(id);
  }
  Task<std::optional<CreditsOperationState>> lookUp(QUuid request) {
    co_await yieldToLoop();
    note(QStringLiteral("look up"));
    if (lookUpFails) throw unreachable();
    co_return operations.contains(request) ? std::optional(operations.value(request)) : std::nullopt;
  }
};

}  // namespace sorvan::generation::test
