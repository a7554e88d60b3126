// The service simulator as a child process of a test: started, steered, read, ended.
#pragma once
#include <QJsonArray>
#include <QJsonObject>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <memory>

namespace sorvan::test {

// Every function blocks until the sandbox has answered, and throws std::runtime_error when it does not within 30 s.
// The sandbox ends with this object, and with the test process if that is killed.
class SandboxProcess {
 public:
  struct Options {
    int delayMilliseconds = 0;  // what a job takes at least
    QString stateFolder;        // empty for a temporary one
    QStringList more;           // further arguments
  };

  // Starts the sandbox and returns once it is ready.
  SandboxProcess();
  explicit SandboxProcess(Options options);
  ~SandboxProcess();
  SandboxProcess(const SandboxProcess&) = delete;
  SandboxProcess& operator=(const SandboxProcess&) = delete;

  // What SORVAN_SERVICE is to name. The same path after a restart, with new ports and a new authority in it.
  QString configurationPath() const;
  QJsonObject configuration() const { return configuration_; }
  QString key() const;
  QString stateFolder() const;
  QString authorityPath() const;
  QString proxyHost() const;
  quint16 proxyPort() const;

  // Ends the sandbox (politely, or by SIGKILL) and starts it again on the same state.
  void restart();
  void killAndRestart();

  // Faults: see `sorvan-sandbox --help`. `call` and `kind` are its names; `more` are the other fields.
  void addFault(const QString& call, const QString& kind, const QJsonObject& more = {});
  void clearFaults();
  // Lets held and stalled calls go on: of one kind, or all. Returns how many.
  int release(const QString& call = {});
  // Jobs move only by step().
  void setManualPace(bool manual);
  void step();
  // Names the trial that later purchases belong to.
  void setRun(const QString& run);

  // Return once so many calls of the kind arrived in all, or are held at this moment.
  void waitForCalls(const QString& call, int count = 1);
  void waitForHeld(const QString& call, int count = 1);
  // Returns once no call of the kind is held any more: released, or its sender is gone.
  void waitUntilNoneHeld(const QString& call);

  // The purchases, one object a line of the ledger.
  QList<QJsonObject> ledger() const;
  QList<QJsonObject> ledgerOfRun(const QString& run) const;
  // POSTs in all, to one endpoint ("fal-ai/flux/schnell", or "upload-start"), and the most of one attempt.
  int posts() const;
  int postsTo(const QString& endpoint) const;
  int mostPostsOfOneAttempt() const;
  // Every call of this process in order: number, call, method, host, path, endpoint, key (none, good, wrong), answer.
  QList<QJsonObject> calls() const;
  int callCount(const QString& call) const;
  QJsonObject state() const;

  // The token of the account that the gateway has from the start.
  QString token() const;
  // What the gateway's books, users and operations say, and how it is steered: see `sorvan-sandbox --help`.
  QJsonObject gateway() const;
  void steerGateway(const QJsonObject& command);
  // The last link that was mailed to an address; empty when there was none.
  QString mailedLink(const QString& email) const;
  // A page of the control address, such as one to pay on.
  QByteArray page(const QByteArray& method, const QByteArray& path) const { return control(method, path).body; }

 private:
  struct Answer {
    int status = 0;
    QByteArray body;
  };
  void start();
  void end();
  Answer control(const QByteArray& method, const QByteArray& path, const QJsonValue& body = {}) const;
  QJsonObject controlled(const QByteArray& method, const QByteArray& path, const QJsonValue& body = {}) const;

  Options options_;
  QTemporaryDir folder_;
  std::unique_ptr<QProcess> process_;
  QJsonObject configuration_;
};

}  // namespace sorvan::test
