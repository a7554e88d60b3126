// A row of the bench: what is measured, against what.
//
// To add one, put a file here with a RegisterRow at namespace scope:
//
//   const RegisterRow row{{.name = QStringLiteral("sha256-1g"),
//                          .make = [](const QDir& data) { … write the data, from a seed … },
//                          .measure = [](const QDir& data) -> Contestants {
//                            return {.ours = [=] { return timed([&] { … }); },
//                                    .peer = [=] { return timedCommand({…}); }};
//                          }}};
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include <QDir>
#include <QString>
#include <QStringList>

namespace sorvan::bench {

/// One run: its seconds, or nothing where it cannot run, such as a command that is not installed.
using Run = std::function<std::optional<double>()>;

/// Who runs, in turn, round after round. A run that is not given shows as "-".
struct Contestants {
  Run ours;
  Run peer;   ///< another program that does the same work on the same data
  Run limit;  ///< the least that the work could take
  /// What else our last run showed, a few words; asked once, after all rounds. May be left out.
  std::function<QString()> note = {};
};

struct Row {
  QString name;
  /// Makes the data in an empty folder, from a fixed seed. Runs in a process of its own, so that its memory counts
  /// nowhere; what `measure` must know goes through the folder. May be left out.
  std::function<void(const QDir& data)> make;
  /// Opens what the runs share. The folder is removed after the last run.
  std::function<Contestants(const QDir& data)> measure;
  int rounds = 9;  ///< at most; fewer when the time for one row is up
};

/// Adds a row when the program starts.
class RegisterRow {
 public:
  explicit RegisterRow(Row row);
};

/// All rows by name.
const std::vector<Row>& allRows();

/// What this program does for a row in a process of its own: started with these words and given the arguments that
/// follow them. Its standard output goes to whoever started it.
using Order = std::function<int(const QStringList& arguments)>;
class RegisterOrder {
 public:
  RegisterOrder(const QString& name, Order order);
};
/// Null when there is no such order.
Order orderNamed(const QString& name);

/// Seconds that the work takes.
double timed(const std::function<void()>& work);
/// Seconds from the start of a command to its end, its output thrown away; nothing when it is not installed. A command
/// that fails ends the bench.
std::optional<double> timedCommand(const QStringList& command);
/// Runs a command that makes data. False when it is not installed or fails.
bool runCommand(const QStringList& command);

}  // namespace sorvan::bench
