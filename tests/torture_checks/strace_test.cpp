// The shim against strace: what the kernel saw the program do to the workspace, the shim's journal holds too.
#include <gtest/gtest.h>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <map>

#include "support_sandbox/sandbox_process.h"
#include "torture/journal.h"

namespace sorvan::torture {
namespace {

using namespace Qt::StringLiterals;
using Counts = std::map<QString, int>;

// Whether this machine lets one process trace another: a child is asked, because asking binds the asker.
bool tracingIsAllowed() {
  const pid_t child = ::fork();
  if (child == 0) ::_exit(::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) == 0 ? 0 : 1);
  int status = 1;
  ::waitpid(child, &status, 0);
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

// The name that the shim has for a call of the kernel, or nothing for one that changes no file.
QString shimName(const QString& call, const QString& line) {
  static const std::map<QString, QString> names{
      {u"write"_s, u"write"_s},       {u"pwrite64"_s, u"write"_s},     {u"writev"_s, u"write"_s},
      {u"pwritev"_s, u"write"_s},     {u"pwritev2"_s, u"write"_s},     {u"copy_file_range"_s, u"write"_s},
      {u"sendfile"_s, u"write"_s},    {u"fsync"_s, u"fsync"_s},        {u"fdatasync"_s, u"fsync"_s},
      {u"ftruncate"_s, u"truncate"_s}, {u"truncate"_s, u"truncate"_s}, {u"fallocate"_s, u"truncate"_s},
      {u"rename"_s, u"rename"_s},     {u"renameat"_s, u"rename"_s},    {u"renameat2"_s, u"rename"_s},
      {u"link"_s, u"link"_s},         {u"linkat"_s, u"link"_s},        {u"symlink"_s, u"symlink"_s},
      {u"mkdir"_s, u"mkdir"_s},       {u"mkdirat"_s, u"mkdir"_s},      {u"rmdir"_s, u"rmdir"_s},
      {u"unlink"_s, u"unlink"_s},     {u"creat"_s, u"open"_s}};
  if (call == u"unlinkat"_s) return line.contains(u"AT_REMOVEDIR"_s) ? u"rmdir"_s : u"unlink"_s;
  if (call == u"open"_s || call == u"openat"_s || call == u"openat2"_s) {
    if (line.contains(u"O_TRUNC"_s)) return u"opentrunc"_s;
    return line.contains(u"O_WRONLY"_s) || line.contains(u"O_RDWR"_s) || line.contains(u"O_CREAT"_s) ? u"open"_s : u""_s;
  }
  const auto name = names.find(call);
  return name == names.end() ? QString() : name->second;
}

// What strace saw succeed below the workspace, by the shim's names.
Counts seenByStrace(const QString& trace, const QString& workspace) {
  static const QRegularExpression begins(u"^\\d+\\s+(\\w+)\\("_s);
  Counts counts;
  for (const QString& line : trace.split(u'\n')) {
    const bool leftOut = line.contains(u"library.store-shm"_s) || line.contains(u"workspace.lock"_s);
    if (leftOut || !line.contains(workspace) || line.contains(u" = -1 "_s)) continue;
    const QString name = shimName(begins.match(line).captured(1), line);
    if (!name.isEmpty()) ++counts[name];
  }
  return counts;
}

Counts seenByShim(const QString& journal) {
  Counts counts;
  for (const Step& step : readJournal(journal))
    if (!step.path.isEmpty() && step.call != u"refused"_s) ++counts[step.call];
  return counts;
}

QString contentOf(const QString& path) {
  QFile file(path);
  return file.open(QFile::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

// Makes a picture in an empty workspace, under strace and the shim. Each call is one line, because strace is told to
// write the calls of every thread to a file of its own.
void runTraced(const QTemporaryDir& folder, const sorvan::test::SandboxProcess& sandbox) {
  const QJsonArray commands{QJsonObject{{u"do"_s, u"enqueue"_s},
                                        {u"model"_s, u"fal-ai/flux/schnell"_s},
                                        {u"prompt"_s, u"seen by two"_s}},
                            QJsonObject{{u"do"_s, u"run"_s}}};
  QProcess strace;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(u"SORVAN_SERVICE"_s, sandbox.configurationPath());
  environment.insert(u"HOME"_s, folder.path());
  strace.setProcessEnvironment(environment);
  const QString workspace = folder.filePath(u"workspace"_s);
  strace.start(u"strace"_s,
               {u"-ff"_s, u"-y"_s, u"-s"_s, u"0"_s, u"-o"_s, folder.filePath(u"trace"_s), u"-E"_s,
                u"LD_PRELOAD="_s + QStringLiteral(SORVAN_FAULTSHIM), u"-E"_s, u"SORVAN_FAULT_ROOT="_s + workspace, u"-E"_s,
                u"SORVAN_FAULT_JOURNAL="_s + folder.filePath(u"journal"_s), QStringLiteral(SORVAN_DRIVER), workspace,
                QString::fromUtf8(QJsonDocument(commands).toJson(QJsonDocument::Compact))});
  ASSERT_TRUE(strace.waitForFinished(50'000));
  ASSERT_EQ(strace.exitCode(), 0) << strace.readAllStandardError().toStdString();
}

TEST(TheShim, MissesNoStepThatStraceSees) {
  if (!tracingIsAllowed()) {
    // ctest counts a test that prints this as skipped, not as passed.
    std::puts("[  SKIPPED ] this machine lets no process trace another");
    return;
  }
  const QTemporaryDir folder;
  QDir(folder.path()).mkdir(u"workspace"_s);
  const sorvan::test::SandboxProcess sandbox;
  ASSERT_NO_FATAL_FAILURE(runTraced(folder, sandbox));
  QString trace;
  for (const QString& name : QDir(folder.path()).entryList({u"trace.*"_s}, QDir::Files))
    for (const QString& line : contentOf(folder.filePath(name)).split(u'\n')) trace += u"1 "_s + line + u'\n';
  const Counts kernel = seenByStrace(trace, folder.filePath(u"workspace"_s));
  EXPECT_GT(kernel.at(u"write"_s), 20);
  EXPECT_GT(kernel.at(u"fsync"_s), 10);
  EXPECT_EQ(seenByShim(folder.filePath(u"journal"_s)), kernel);
}

}  // namespace
}  // namespace sorvan::torture
