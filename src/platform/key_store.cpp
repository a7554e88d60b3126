#include "platform/key_store.h"

#include <qt6keychain/keychain.h>

#include <QTimer>

#include "platform/texts.h"

namespace sorvan::platform {

// The key store's own number for "there is no key store to speak to".
static constexpr int otherFailure = QKeychain::OtherError;

namespace {

QString serviceName() { return QStringLiteral("app.sorvan.providers"); }

struct JobEnd {
  int number = QKeychain::NoError;
  QString message;
};

// Starts the job and resumes when it has ended, when it took too long, or when a stop was requested. A job that is left
// alone deletes itself whenever it ends.
Task<JobEnd> finished(QKeychain::Job* job, std::chrono::milliseconds patience, std::stop_token stop) {
  const auto end = std::make_shared<std::optional<JobEnd>>();
  Completion done;
  job->setInsecureFallback(false);
  QObject::connect(job, &QKeychain::Job::finished, [end, done](QKeychain::Job* ended) {
    *end = JobEnd{static_cast<int>(ended->error()), ended->errorString()};
    done.finish();
  });
  QTimer limit;
  limit.setSingleShot(true);
  QObject::connect(&limit, &QTimer::timeout, [done] { done.finish(); });
  limit.start(patience);
  std::stop_callback onStop(stop, [done] { done.finish(); });
  job->start();
  co_await done;
  throwIfStopped(stop);
  co_return end->value_or(JobEnd{otherFailure, texts::keyStoreTimedOut()});
}

void throwIfFailed(const JobEnd& end) {
  if (end.number != QKeychain::NoError) throw KeyStoreError(end.number, end.message);
}

class SecretServiceBackend final : public KeyBackend {
 public:
  explicit SecretServiceBackend(std::chrono::milliseconds limit) : patience(limit) {}

  Task<std::optional<QString>> read(QString account, std::stop_token stop) override {
    throwIfStopped(stop);
    auto* job = new QKeychain::ReadPasswordJob(serviceName());
    job->setKey(account);
    // The text is taken in the signal: the job deletes itself right after it.
    const auto text = std::make_shared<QString>();
    QObject::connect(job, &QKeychain::Job::finished, [text, job](QKeychain::Job*) { *text = job->textData(); });
    const JobEnd end = co_await finished(job, patience, stop);
    if (end.number == QKeychain::EntryNotFound) co_return std::nullopt;
    throwIfFailed(end);
    co_return *text;
  }

  Task<> write(QString account, QString secret, std::stop_token stop) override {
    throwIfStopped(stop);
    auto* job = new QKeychain::WritePasswordJob(serviceName());
    job->setKey(account);
    job->setTextData(secret);
    throwIfFailed(co_await finished(job, patience, stop));
  }

  Task<> remove(QString account, std::stop_token stop) override {
    throwIfStopped(stop);
    auto* job = new QKeychain::DeletePasswordJob(serviceName());
    job->setKey(account);
    const JobEnd end = co_await finished(job, patience, stop);
    if (end.number != QKeychain::EntryNotFound) throwIfFailed(end);
  }

 private:
  std::chrono::milliseconds patience;
};

}  // namespace

std::unique_ptr<KeyBackend> secretServiceKeyBackend(std::chrono::milliseconds patience) {
  return std::make_unique<SecretServiceBackend>(patience);
}

void MemoryKeyBackend::failIfAsked() const {
  if (failingNumber) throw KeyStoreError(*failingNumber, QStringLiteral("Planted."));
}

Task<std::optional<QString>> MemoryKeyBackend::read(QString account, std::stop_token stop) {
  co_await yieldToLoop();
  throwIfStopped(stop);
  failIfAsked();
  const auto found = entries.find(account);
  if (found == entries.end()) co_return std::nullopt;
  // A task moves from an lvalue that it returns, so the entry itself must not be named here.
  co_return QString(found->second);
}

Task<> MemoryKeyBackend::write(QString account, QString secret, std::stop_token stop) {
  co_await yieldToLoop();
  throwIfStopped(stop);
  failIfAsked();
  entries[account] = secret;
}

Task<> MemoryKeyBackend::remove(QString account, std::stop_token stop) {
  co_await yieldToLoop();
  throwIfStopped(stop);
  failIfAsked();
  entries.erase(account);
}

}  // namespace sorvan::platform
