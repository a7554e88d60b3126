// Runs the real library without a window, as told, and prints what the library then holds as one line of JSON.
//
//   SORVAN_SERVICE=FILE torture-driver WORKSPACE COMMANDS
//
// COMMANDS is a JSON array of objects, see driver_commands.h. Exits 0, or 1 with the sentence of what was refused.
#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTimer>
#include <cstdio>

#include "base/sorvan_error.h"
#include "core/workspace_opening.h"
#include "platform/temporary_files.h"
#include "torture/driver_commands.h"
#include "torture/driver_report.h"

namespace sorvan::torture {
namespace {

base::Task<> drive(HeadlessStudio& studio, QString workspace, QJsonArray commands) {
  QString refused;
  QJsonObject opened;
  try {
    core::openWorkspace(*studio.store, workspace, core::Remember::no);
    opened = reportOfOpening(studio);
    for (const QJsonValue& command : std::as_const(commands)) co_await carryOut(studio, command.toObject());
    co_await untilMaintained(studio);
  } catch (const std::exception& failure) {
    refused = base::describe(failure);
  }
  QJsonObject report;
  if (studio.store->hasWorkspace()) report = reportOf(studio);
  if (!opened.isEmpty()) report.insert(QStringLiteral("opened"), opened);
  if (!refused.isEmpty()) report.insert(QStringLiteral("refused"), refused);
  std::puts(QJsonDocument(report).toJson(QJsonDocument::Compact).constData());
  std::fflush(stdout);
  co_await studio.imports->drain();
  co_await studio.maintenance->drain();
  co_await studio.queue->drain();
  QCoreApplication::exit(refused.isEmpty() ? 0 : 1);
}

}  // namespace
}  // namespace sorvan::torture

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QGuiApplication application(argc, argv);
  if (argc != 3) {
    std::fputs("usage: torture-driver WORKSPACE COMMANDS\n", stderr);
    return 2;
  }
  const QJsonArray commands = QJsonDocument::fromJson(argv[2]).array();
  // As if it were started the day after: what a crash left in the cache folder must go then.
  sorvan::platform::sweepTemporaryFiles(QDateTime::currentDateTime().addDays(2));
  try {
    sorvan::torture::HeadlessStudio studio;
    std::optional<sorvan::base::Task<>> task;
    QTimer::singleShot(0, &application, [&] {
      task.emplace(sorvan::torture::drive(studio, QString::fromLocal8Bit(argv[1]), commands));
    });
    return application.exec();
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "%s\n", sorvan::base::describe(failure).toUtf8().constData());
    return 1;
  }
}
