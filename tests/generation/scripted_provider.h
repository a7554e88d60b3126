// A back end that does what the test tells it, and notes what it was asked.
#pragma once

#include <QStringList>

#include <functional>

#include "generation/provider.h"
#include "generation/test_media.h"
#include "support/fake_clock.h"

namespace sorvan::generation::test {

/// What one call does.
struct Script {
  enum class Post {
    accepted,
    notSent,
    unknown,
    key,
    operation
  } post = Post::accepted;  ///< key: accepted under an idempotency key; operation: as a gateway does, without a handle
  bool holdPost = false;    ///< the answer to the POST waits for the clock
  bool holdPoll = false;    ///< the first look at the state waits for the clock
  std::optional<GenerationCost> charge;
  std::vector<GeneratedOutput> outputs = {pictureOutput()};
  bool streamsToPartFiles = false;
  std::exception_ptr failsAfterHandle;

  static GeneratedOutput pictureOutput(const QByteArray& bytes = pictureBytes(),
                                       const QString& ext = QStringLiteral("png")) {
    GeneratedOutput output;
    output.data = bytes;
    output.ext = ext;
    return output;
  }
};

class ScriptedProvider final : public GenerationProvider {
 public:
  explicit ScriptedProvider(std::shared_ptr<sorvan::test::FakeClock> clock) : m_clock(std::move(clock)) {}

  std::vector<ModelOption> models;
  Script script;
  QHash<QString, Script> scriptByPrompt;
  std::vector<ProviderCall> calls;
  QStringList events;  ///< "post", "poll", "download" and so on, of all calls
  std::function<void(const QString& event)> onEvent;
  std::vector<RemoteHandle> cancelled;
  std::exception_ptr cancelFails;
  QHash<QUuid, QString> operations;  ///< by the request's own id: what was posted as an operation
  int posts = 0;
  int atWork = 0;
  int mostAtWork = 0;

  std::vector<ModelOption> listModels() const override { return models; }
  Task<std::vector<GeneratedOutput>> generateImage(ProviderCall call, std::stop_token stop) override;
  Task<> cancelJob(RemoteHandle handle, QString key, std::stop_token stop) override;

  static RemoteHandle handleNamed(const QString& id);

 private:
  Task<> submit(Script steps, ProviderCall call);
  Task<> submitOperation(Script steps, ProviderCall call);
  Task<> awaitAnswer(Script steps, ProviderCall call);
  Task<std::vector<GeneratedOutput>> work(Script steps, ProviderCall call, std::stop_token stop);
  void note(const QString& event);

  std::shared_ptr<sorvan::test::FakeClock> m_clock;
};

}  // namespace sorvan::generation::test
