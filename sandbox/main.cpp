// sorvan-sandbox: the simulated service, a program of its own.
#include <signal.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QImageReader>
#include <QSocketNotifier>
#include <cstdio>

extern "C" {
#include <libavutil/log.h>
}

#include "catalogue.h"
#include "service.h"

namespace {

int signalPipe[2];

void noteSignal(int) {
  const char byte = 1;
  [[maybe_unused]] const auto written = ::write(signalPipe[1], &byte, 1);
}

// SIGTERM and SIGINT end the event loop, so that what is being written is written.
void quitOnSignals(QCoreApplication& application) {
  if (::pipe(signalPipe) != 0) return;
  auto* notifier = new QSocketNotifier(signalPipe[0], QSocketNotifier::Read, &application);
  QObject::connect(notifier, &QSocketNotifier::activated, &application, &QCoreApplication::quit);
  ::signal(SIGTERM, noteSignal);
  ::signal(SIGINT, noteSignal);
  ::signal(SIGPIPE, SIG_IGN);
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  QCoreApplication::setApplicationName(QStringLiteral("sorvan-sandbox"));
  QImageReader::setAllocationLimit(1024);
  av_log_set_level(AV_LOG_FATAL);
  const sandbox::Options options = sandbox::readOptions(application.arguments());
  quitOnSignals(application);
  try {
    if (!options.schemasFolder.isEmpty()) {
      sandbox::writeDocuments(options.schemasFolder);
      return 0;
    }
    const sandbox::Service service(options);
    service.writeConfiguration(options.configurationFile);
    std::puts("ready");
    std::fflush(stdout);
    return QCoreApplication::exec();
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "%s\n", failure.what());
    return 1;
  }
}
