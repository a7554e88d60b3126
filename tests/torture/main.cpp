// sorvan-torture: kills, fills, cuts and misleads the real library in every way it knows, and checks after each time that
// nothing was bought twice, that no result was lost, and that no work disappeared.
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QStorageInfo>
#include <QTemporaryDir>
#include <cstdio>

#include "torture/run.h"

namespace sorvan::torture {
namespace {

using namespace Qt::StringLiterals;

RunOptions optionsFrom(const QCoreApplication& application) {
  QCommandLineParser parser;
  parser.setApplicationDescription(u"Tortures the library and prints, last, what it came to."_s);
  parser.addHelpOption();
  parser.addOptions({{u"quick"_s, u"At least 300 trials, in a few minutes on two cores (the default)."_s},
                     {u"full"_s, u"At least 3,000 trials, for at least --minutes."_s},
                     {u"seed"_s, u"What is chosen by chance."_s, u"N"_s, u"1"_s},
                     {u"minutes"_s, u"How long a full run takes at least."_s, u"M"_s, u"20"_s},
                     {u"scenario"_s, u"Only this scenario; may be said several times."_s, u"NAME"_s},
                     {u"no-bugs"_s, u"Leaves the planted bugs out."_s},
                     {u"only-bugs"_s, u"Only counts, then hunts the planted bugs."_s}});
  parser.process(application);
  RunOptions options;
  options.full = parser.isSet(u"full"_s);
  options.onlyBugs = parser.isSet(u"only-bugs"_s);
  options.seed = parser.value(u"seed"_s).toULongLong();
  options.limit = std::chrono::minutes(parser.value(u"minutes"_s).toInt());
  options.scenarios = parser.values(u"scenario"_s);
  options.driver = QStringLiteral(SORVAN_DRIVER);
  options.bugs = !parser.isSet(u"no-bugs"_s);
  options.plantedDriver = QStringLiteral(SORVAN_PLANTED_DRIVER);
  return options;
}

// Memory, where there is plenty: nothing here needs a real disk, whose power cuts are played from the journal, and a
// thousand trials wait for a disk a hundred thousand times.
QString placeToWork() {
  constexpr qint64 plenty = 2LL << 30;
  const QStorageInfo memory(u"/dev/shm"_s);
  const bool fits = memory.isValid() && memory.isReady() && !memory.isReadOnly() && memory.bytesAvailable() > plenty;
  return (fits ? u"/dev/shm"_s : QDir::tempPath()) + u"/sorvan-torture-XXXXXX"_s;
}

}  // namespace
}  // namespace sorvan::torture

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  try {
    sorvan::torture::RunOptions options = sorvan::torture::optionsFrom(application);
    QTemporaryDir folder(sorvan::torture::placeToWork());
    options.folder = folder.path();
    const bool well = sorvan::torture::Run(options).carryOut();
    folder.setAutoRemove(well);
    return well ? 0 : 1;
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "the harness itself failed: %s\n", failure.what());
    return 2;
  }
}
