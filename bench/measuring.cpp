#include "bench/measuring.h"

#include <malloc.h>

#include <stdexcept>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

namespace sorvan::bench {
namespace {

constexpr qint64 roundsBudget = 25'000;  // milliseconds; the data and the last round come on top
constexpr int fewestRounds = 3;

struct Times {
  const Run& run;
  std::vector<double> seconds;

  void again() {
    if (!run) return;
    if (const auto time = run()) seconds.push_back(*time);
  }

  std::optional<double> median() {
    if (seconds.empty()) return std::nullopt;
    std::sort(seconds.begin(), seconds.end());
    const size_t middle = seconds.size() / 2;
    return seconds.size() % 2 == 1 ? seconds[middle] : (seconds[middle - 1] + seconds[middle]) / 2;
  }
};

/// Starts the count of this process's peak anew, with what earlier runs freed given back. Before every run: one that
/// finds the memory of another at hand is spared what asking the system for it costs.
void forgetPeak() {
  malloc_trim(0);
  QFile file(QStringLiteral("/proc/self/clear_refs"));
  if (file.open(QIODevice::WriteOnly)) file.write("5");
}

double peakMiB() {
  QFile file(QStringLiteral("/proc/self/status"));
  if (!file.open(QIODevice::ReadOnly)) return 0;
  for (const QByteArray& line : file.readAll().split('\n'))
    if (line.startsWith("VmHWM:")) return line.mid(6).replace("kB", "").trimmed().toDouble() / 1024;
  return 0;
}

void makeData(const Row& row, const QString& folder) {
  if (!row.make) return;
  if (!runCommand({QCoreApplication::applicationFilePath(), QStringLiteral("--make"), row.name, folder}))
    throw std::runtime_error("the data of " + row.name.toStdString() + " could not be made");
}

QString milliseconds(const std::optional<double>& seconds) {
  return seconds ? QString::number(*seconds * 1000, 'f', *seconds < 0.01 ? 3 : 1) + QStringLiteral(" ms")
                 : QStringLiteral("-");
}

QString ratio(const std::optional<double>& ours, const std::optional<double>& other) {
  return ours && other && *other > 0 ? QString::number(*ours / *other, 'f', 2) : QStringLiteral("-");
}

}  // namespace

Result measured(const Row& row) {
  // 1. Data of its own, from a seed.
  const QTemporaryDir folder(QDir::tempPath() + QStringLiteral("/sorvan-bench-XXXXXX"));
  if (!folder.isValid()) throw std::runtime_error("no folder for the data");
  makeData(row, folder.path());
  // 2. One round that does not count warms caches; then rounds in which each runs once.
  const Contestants contestants = row.measure(QDir(folder.path()));
  Times ours{contestants.ours, {}};
  Times peer{contestants.peer, {}};
  Times limit{contestants.limit, {}};
  Result result;
  QElapsedTimer clock;
  clock.start();
  for (int round = 0; round <= row.rounds; ++round) {
    if (round > fewestRounds && clock.elapsed() > roundsBudget) break;
    forgetPeak();
    ours.again();
    result.peakMiB = std::max(result.peakMiB, peakMiB());
    for (Times* times : {&peer, &limit}) {
      forgetPeak();
      times->again();
    }
    if (round == 0)
      for (Times* times : {&ours, &peer, &limit}) times->seconds.clear();
  }
  // 3. Medians.
  result.ours = ours.median();
  result.peer = peer.median();
  result.limit = limit.median();
  if (contestants.note) result.note = contestants.note();
  return result;
}

QString header() { return QStringLiteral("row | ours | peer | limit | ours/peer | ours/limit | peak MiB | note"); }

QString line(const QString& name, const Result& result) {
  return QStringList{name,
                     milliseconds(result.ours),
                     milliseconds(result.peer),
                     milliseconds(result.limit),
                     ratio(result.ours, result.peer),
                     ratio(result.ours, result.limit),
                     QString::number(result.peakMiB, 'f', 1),
                     result.note}
      .join(QStringLiteral(" | "));
}

}  // namespace sorvan::bench
