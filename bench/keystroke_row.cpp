// One key in a prompt of 8,000 characters with 8 references: layout, marks, names, the draft. The program is one of
// its own, because only it needs widgets.
#include <QCoreApplication>
#include <QProcess>

#include "bench/row.h"

namespace sorvan::bench {
namespace {

using namespace Qt::StringLiterals;

/// What is promised: nobody feels a stall of ten milliseconds.
constexpr double longestAllowed = 0.010;

std::optional<double> longestStall() {
  QProcess program;
  program.start(QCoreApplication::applicationDirPath() + u"/sorvan-keystroke"_s, {});
  if (!program.waitForFinished(60000) || program.exitCode() != 0) return std::nullopt;
  bool isNumber = false;
  const double seconds = program.readAllStandardOutput().trimmed().toDouble(&isNumber);
  return isNumber ? std::optional(seconds) : std::nullopt;
}

Contestants contestants(const QDir&) {
  return {.ours = longestStall, .peer = {}, .limit = [] { return std::optional(longestAllowed); }};
}

const RegisterRow row{{.name = u"keystroke-8k"_s, .make = {}, .measure = contestants, .rounds = 3}};

}  // namespace
}  // namespace sorvan::bench
