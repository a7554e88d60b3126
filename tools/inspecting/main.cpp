// Prints, one JSON line for each file, what the studio makes of it: the same measuring, look for transparency and
// checksum as at import. Ends with 0, or with 1 when any file failed.
#include <QCoreApplication>
#include <QFile>

#include <cstdio>

#include "core/inspection_line.h"

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  if (argc < 2) {
    std::fputs("usage: inspect FILE...\n", stderr);
    return 2;
  }
  bool anyFailed = false;
  for (int index = 1; index < argc; ++index) {
    const auto line = sorvan::core::inspectionLine(QFile::decodeName(argv[index]));
    std::fwrite(line.json.constData(), 1, size_t(line.json.size()), stdout);
    anyFailed = anyFailed || line.failed;
  }
  return anyFailed ? 1 : 0;
}
