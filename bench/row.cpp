#include "bench/row.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

#include <chrono>
#include <cstdlib>
#include <map>
#include <stdexcept>

#include <QFile>
#include <QStandardPaths>

extern char** environ;

namespace sorvan::bench {
namespace {

std::vector<Row>& rows() {
  static std::vector<Row> all;
  return all;
}

std::map<QString, Order>& orders() {
  static std::map<QString, Order> all;
  return all;
}

/// The exit status of a command whose output goes nowhere.
int statusOf(const QStringList& command) {
  std::vector<QByteArray> words;
  for (const QString& word : command) words.push_back(QFile::encodeName(word));
  std::vector<char*> arguments;
  for (QByteArray& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
  posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
  pid_t child = 0;
  const int spawned = posix_spawnp(&child, arguments[0], &actions, nullptr, arguments.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  if (spawned != 0) return -1;
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

bool isInstalled(const QString& program) { return !QStandardPaths::findExecutable(program).isEmpty(); }

}  // namespace

RegisterRow::RegisterRow(Row row) {
  auto& all = rows();
  const auto before = [](const Row& left, const Row& right) { return left.name < right.name; };
  all.insert(std::upper_bound(all.begin(), all.end(), row, before), std::move(row));
}

RegisterOrder::RegisterOrder(const QString& name, Order order) { orders().emplace(name, std::move(order)); }

Order orderNamed(const QString& name) {
  const auto found = orders().find(name);
  return found == orders().end() ? Order() : found->second;
}

const std::vector<Row>& allRows() { return rows(); }

double timed(const std::function<void()>& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

std::optional<double> timedCommand(const QStringList& command) {
  if (!isInstalled(command.first())) return std::nullopt;
  int status = 0;
  const double seconds = timed([&] { status = statusOf(command); });
  if (status != 0) throw std::runtime_error("a peer failed: " + command.join(QLatin1Char(' ')).toStdString());
  return seconds;
}

bool runCommand(const QStringList& command) { return isInstalled(command.first()) && statusOf(command) == 0; }

}  // namespace sorvan::bench
