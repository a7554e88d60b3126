// A transport whose answers the test has written down; it records what was asked.
#pragma once

#include <deque>
#include <list>
#include <vector>

#include <QJsonValue>

#include "platform/http.h"

namespace sorvan::test {

enum class ScriptedCall { Send, PostOnce, Download };

struct RecordedCall {
  ScriptedCall kind;
  sorvan::platform::HttpRequest request;
};

// What one address answers, step by step. A call beyond the last step is a failure, unless `repeating` was said.
class ScriptedRoute {
 public:
  using Answer = std::function<sorvan::platform::HttpReply(const sorvan::platform::HttpRequest&)>;

  ScriptedRoute(QByteArray verb, QString part) : verb(std::move(verb)), part(std::move(part)) {}

  ScriptedRoute& answers(int status, const QByteArray& body = {},
                         std::vector<sorvan::platform::HttpHeader> headers = {});
  ScriptedRoute& answersJson(const QJsonValue& body, int status = 200);
  ScriptedRoute& answersBy(Answer answer);
  // `send` and `download` throw this; `postOnce` has the fate NotSent for CannotConnect, and Unknown for the others.
  ScriptedRoute& fails(sorvan::platform::HttpProblem problem, const QString& message = QStringLiteral("Planted."));
  // `postOnce` ends so, without a reply.
  ScriptedRoute& ends(sorvan::platform::PostFate fate, const QString& problem = QStringLiteral("Planted."));
  // The step before this is held until the completion is finished; cancelling the call finishes it too.
  ScriptedRoute& after(sorvan::base::Completion gate);
  // The last step answers every further call too.
  ScriptedRoute& repeating();
  int calls() const { return used; }

 private:
  friend class ScriptedTransport;
  struct Step {
    Answer answer;
    std::optional<sorvan::platform::HttpProblem> problem;
    std::optional<sorvan::platform::PostFate> fate;
    QString message;
    std::optional<sorvan::base::Completion> gate;
  };
  bool matches(const sorvan::platform::HttpRequest& request) const;
  Step& add(Step step);

  QByteArray verb;
  QString part;
  std::vector<Step> steps;
  int used = 0;
  bool repeats = false;
};

class ScriptedTransport final : public sorvan::platform::HttpTransport {
 public:
  // Requests with this verb whose address holds the text. The route that was added last is looked at first, and one
  // that has no step left is passed over.
  ScriptedRoute& on(const QByteArray& verb, const QString& part);

  sorvan::base::Task<sorvan::platform::HttpReply> send(sorvan::platform::HttpRequest request,
                                                       std::stop_token stop) override;
  sorvan::base::Task<sorvan::platform::PostOutcome> postOnce(sorvan::platform::HttpRequest request,
                                                             std::stop_token stop) override;
  sorvan::base::Task<sorvan::platform::HttpReply> download(sorvan::platform::HttpRequest request, QString toPath,
                                                           std::stop_token stop) override;

  // Everything that was asked, in order; also what no route answered.
  std::vector<RecordedCall> recorded;
  // Requests that no route answered, as "VERB address". A test asserts that it is empty.
  QStringList unexpected;
  // How often `postOnce` was called for an address that holds the text.
  int posts(const QString& part = {}) const;
  // The requests whose address holds the text.
  std::vector<sorvan::platform::HttpRequest> requests(const QString& part) const;

 private:
  ScriptedRoute::Step take(ScriptedCall kind, const sorvan::platform::HttpRequest& request);

  std::list<ScriptedRoute> routes;
};

}  // namespace sorvan::test
