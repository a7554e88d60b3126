#include "options.h"

#include <QCommandLineParser>
#include <cstdio>
#include <cstdlib>

#include "control.h"
#include "faults.h"

namespace sandbox {

namespace {

QString description() {
  return QStringLiteral(
             "A simulated service for pictures, clips and sounds: queue, storage, media and platform hosts over TLS, "
             "behind a\n"
             "CONNECT proxy on 127.0.0.1. It prints `ready` once it listens and the configuration file stands:\n"
             "  {\"proxy\":\"127.0.0.1:PORT\",\"authority\":\"PEM "
             "FILE\",\"key\":\"…\",\"control\":\"127.0.0.1:PORT\"}\n"
             "It ends on SIGTERM, SIGINT or POST /shutdown.\n\n"
             "In the state folder: ledger.jsonl (one line a purchase, appended and synced), posts.jsonl (one line a "
             "POST),\n"
             "jobs/, media/, authority.pem and key.txt. All but the authority are taken up again by a later start.\n\n"
             "The control address (plain HTTP):\n%1\n"
             "Faults, for the calls submit, status, result, cancel, upload-start, upload, download, models, "
             "pricing, document:\n%2\n"
             "One that is \"carried out\" charges as usual; \"charged\": true or false says otherwise.")
      .arg(controlHelp(), faultNames());
}

[[noreturn]] void fail(const QString& text) {
  std::fputs(qPrintable(text + QLatin1Char('\n')), stderr);
  std::exit(2);
}

}  // namespace

Options readOptions(const QStringList& arguments) {
  QCommandLineParser parser;
  parser.setApplicationDescription(description());
  const auto option = [&parser](const QString& name, const QString& about, const QString& value) {
    parser.addOption(QCommandLineOption(name, about, value));
  };
  parser.addHelpOption();
  option(QStringLiteral("write"), QStringLiteral("Picks free ports and writes the configuration file."),
         QStringLiteral("FILE"));
  option(QStringLiteral("state"), QStringLiteral("Keeps ledger, counts, jobs and media in this folder."),
         QStringLiteral("DIR"));
  option(QStringLiteral("faults"), QStringLiteral("Starts with this JSON array of faults."), QStringLiteral("FILE"));
  option(QStringLiteral("key"), QStringLiteral("The key to accept, instead of a new one."),
         QStringLiteral("ID:SECRET"));
  option(QStringLiteral("delay"), QStringLiteral("Milliseconds that a job takes at least (default 1500)."),
         QStringLiteral("MS"));
  option(QStringLiteral("longest-side"),
         QStringLiteral("Makes pictures and clips no larger than this many pixels, for tests that order thousands."),
         QStringLiteral("PIXELS"));
  option(QStringLiteral("write-schemas"),
         QStringLiteral("Writes the published document of every model into this folder, and ends."),
         QStringLiteral("FOLDER"));
  parser.process(arguments);

  Options options;
  options.schemasFolder = parser.value(QStringLiteral("write-schemas"));
  if (!options.schemasFolder.isEmpty()) return options;
  options.configurationFile = parser.value(QStringLiteral("write"));
  options.stateFolder = parser.value(QStringLiteral("state"));
  options.faultsFile = parser.value(QStringLiteral("faults"));
  options.key = parser.value(QStringLiteral("key"));
  if (options.configurationFile.isEmpty()) fail(QStringLiteral("Say where the configuration goes: --write FILE"));
  if (parser.isSet(QStringLiteral("delay"))) {
    bool readable = false;
    options.delayMilliseconds = parser.value(QStringLiteral("delay")).toInt(&readable);
    if (!readable || options.delayMilliseconds < 0) fail(QStringLiteral("--delay takes milliseconds, 0 or more."));
  }
  if (parser.isSet(QStringLiteral("longest-side"))) {
    options.longestSide = parser.value(QStringLiteral("longest-side")).toInt();
    if (options.longestSide < 16) fail(QStringLiteral("--longest-side takes pixels, 16 or more."));
  }
  return options;
}

}  // namespace sandbox
