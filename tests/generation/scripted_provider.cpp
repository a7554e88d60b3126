#include "generation/scripted_provider.h"

#include <QFile>

#include "base/ids.h"

namespace sorvan::generation::test {
namespace {

struct AtWork {
  explicit AtWork(ScriptedProvider* provider) : owner(provider) {
    owner->mostAtWork = std::max(owner->mostAtWork, ++owner->atWork);
  }
  ~AtWork() { --owner->atWork; }
  ScriptedProvider* owner;
};

GeneratedOutput streamed(GeneratedOutput output, const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly)) throw SorvanError(QStringLiteral("The part file could not be opened."));
  file.write(output.data);
  output.data.clear();
  output.file = path;
  return output;
}

}  // namespace

RemoteHandle ScriptedProvider::handleNamed(const QString& id) {
  RemoteHandle handle;
  handle.requestID = id;
  handle.statusURL = QUrl(QStringLiteral("https://queue.example/%1/status").arg(id));
  handle.resultURL = QUrl(QStringLiteral("https://queue.example/%1").arg(id));
  handle.cancelURL = QUrl(QStringLiteral("https://queue.example/%1/cancel").arg(id));
  return handle;
}

void ScriptedProvider::note(const QString& event) {
  events.append(event);
  if (onEvent) onEvent(event);
}

Task<> ScriptedProvider::awaitAnswer(Script steps, ProviderCall call) {
  bool cut = false;
  try {
    if (steps.holdPost) co_await m_clock->sleep(std::chrono::seconds(5), call.run->submissionStop());
  } catch (const Cancelled&) {
    cut = true;
  }
  if (cut || steps.post == Script::Post::unknown) throw SubmissionUnknown(QStringLiteral("The answer did not come."));
}

Task<> ScriptedProvider::submit(Script steps, ProviderCall call) {
  const ProviderUpdate uploading{QStringLiteral("Uploading"), {}, {}, {}};
  co_await call.run->update(uploading);
  if (steps.post != Script::Post::key) co_await call.run->aboutToSubmit();
  ++posts;
  note(QStringLiteral("post"));
  co_await awaitAnswer(steps, call);
  if (steps.post == Script::Post::notSent) {
    co_await call.run->notSubmitted();
    throw SorvanError(QStringLiteral("Provider error 402: Payment Required"));
  }
  const QString id = QStringLiteral("remote-%1").arg(posts);
  note(QStringLiteral("answered"));
  const ProviderUpdate accepted{QStringLiteral("Waiting for fal.ai"), handleNamed(id), id, {}};
  co_await call.run->update(accepted);
}

Task<> ScriptedProvider::submitOperation(Script steps, ProviderCall call) {
  const QUuid request = call.request.creditRequestID.value();
  if (!operations.contains(request)) {
    co_await call.run->aboutToSubmitThrough(
        {QStringLiteral("https://gateway.example"), QStringLiteral("ada@example.org"), uuidText(request)});
    ++posts;
    operations.insert(request, QStringLiteral("operation-%1").arg(posts));
    note(QStringLiteral("post"));
    co_await awaitAnswer(steps, call);
    note(QStringLiteral("answered"));
  }
  const ProviderUpdate queued{QStringLiteral("Queued with Sorvan Credits"), {}, operations.value(request), {}};
  co_await call.run->update(queued);
}

Task<std::vector<GeneratedOutput>> ScriptedProvider::work(Script steps, ProviderCall call, std::stop_token stop) {
  note(QStringLiteral("poll"));
  if (steps.holdPoll) co_await m_clock->sleep(std::chrono::seconds(2), stop);
  throwIfStopped(stop);
  if (steps.failsAfterHandle) std::rethrow_exception(steps.failsAfterHandle);
  if (steps.charge) {
    const ProviderUpdate paid{QStringLiteral("Provider completed · downloading result"), {}, {}, steps.charge};
    co_await call.run->update(paid);
  }
  note(QStringLiteral("download"));
  std::vector<GeneratedOutput> outputs = steps.outputs;
  if (steps.streamsToPartFiles)
    for (std::size_t i = 0; i < outputs.size(); ++i)
      outputs[i] = streamed(outputs[i], call.run->partFile(static_cast<int>(i)));
  co_return outputs;
}

Task<std::vector<GeneratedOutput>> ScriptedProvider::generateImage(ProviderCall call, std::stop_token stop) {
  calls.push_back(call);
  const Script steps = scriptByPrompt.value(call.request.prompt, script);
  const AtWork counted(this);
  if (steps.post == Script::Post::operation) {
    co_await submitOperation(steps, call);
  } else if (!call.resume) {
    co_await submit(steps, call);
  } else {
    const ProviderUpdate attached{QStringLiteral("Waiting for fal.ai"), call.resume, {}, {}};
    co_await call.run->update(attached);
  }
  co_return co_await work(steps, call, stop);
}

Task<> ScriptedProvider::cancelJob(RemoteHandle handle, QString, std::stop_token) {
  cancelled.push_back(handle);
  if (cancelFails) std::rethrow_exception(cancelFails);
  co_return;
}

}  // namespace sorvan::generation::test
