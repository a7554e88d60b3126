#include <QApplication>
#include <QDir>

#include <unistd.h>
#include <cstdio>
#include <cstring>

#include "app/composition_root.h"
#include "app/termination.h"
#include "base/durable_file.h"
#include "shell/application_id.h"
#include "shell/opened_addresses.h"
#include "shell/profile.h"
#include "shell/running_instance.h"
#include "shell/texts.h"
#include "shell/views/application_service.h"
#include "shell/views/text_scale.h"
#include "shell/views/theme.h"

namespace {

using namespace sorvan;

constexpr int cannotStart = 2;
constexpr const char* textScale = "SORVAN_TEXT_SCALE";  // from the first start to the second
constexpr const char* toolkitScale = "QT_SCALE_FACTOR";

bool asks(int count, char** arguments, const char* option) {
  for (int index = 1; index < count; ++index)
    if (std::strcmp(arguments[index], option) == 0) return true;
  return false;
}

void describeApplication(QApplication& application) {
  // The first window takes its class on the screen from this name; see `runStudio` for what it is afterwards.
  QApplication::setApplicationName(shell::applicationID);
  QApplication::setApplicationDisplayName(QString());
  QApplication::setApplicationVersion(QStringLiteral(SORVAN_VERSION));
  QApplication::setDesktopFileName(shell::applicationID);
  // The program ends when its work is put away, not when a window goes.
  QApplication::setQuitOnLastWindowClosed(false);
  views::Theme::instance().dress(application);
}

// Makes this process the running one of its data folder. Ends the program when another is: that one has come to the
// front, or does not answer.
enum class Start { here, elsewhere };
Start claim(shell::RunningInstance& instance, const shell::Profile& profile, const QString& address) {
  // A workspace that was named is a window of its own: its folder has a lock of its own.
  if (profile.forcedWorkspace || instance.become()) return Start::here;
  if (!instance.callRunningOne(address)) std::fputs("Sorvan Studio is already running and does not answer.\n", stderr);
  return Start::elsewhere;
}

// What the desktop asks for over the session bus. A window of its own has no part in it.
void answerDesktop(views::ApplicationService& service, const shell::Profile& profile, app::CompositionRoot& root) {
  QObject::connect(&service, &views::ApplicationService::activated, &root, [&root] { root.bringForward({}); });
  QObject::connect(&service, &views::ApplicationService::opened, &root, &app::CompositionRoot::bringForward);
  QObject::connect(&service, &views::ApplicationService::actionActivated, &root,
                   &app::CompositionRoot::performDesktopAction);
  if (!profile.forcedWorkspace) service.offer();
}

int runStudio(QApplication& application) {
  const shell::Profile profile = shell::profileFromEnvironment();
  const QString address = shell::firstAddress(QApplication::arguments().mid(1), QDir::currentPath());
  shell::RunningInstance instance(profile.dataFolder);
  // A data folder that cannot be used is no reason to keep the user from the library.
  std::optional<QString> problem;
  try {
    base::ensureFolderDurably(profile.dataFolder, 0700);
    if (claim(instance, profile, address) == Start::elsewhere) return 0;
  } catch (const base::SorvanError& failure) {
    problem = failure.message();
  }

  app::CompositionRoot root(profile);
  app::Termination termination;
  QObject::connect(&termination, &app::Termination::requested, &root, &app::CompositionRoot::shutDown);
  QObject::connect(&application, &QGuiApplication::commitDataRequest, &root, &app::CompositionRoot::keepUnfinishedWork,
                   Qt::DirectConnection);
  QObject::connect(&instance, &shell::RunningInstance::called, &root,
                   [&root](const QString& called) { root.bringForward({called}); });
  views::ApplicationService service(QDBusConnection::sessionBus(), profile.busName());
  answerDesktop(service, profile, root);
  if (!profile.forcedWorkspace) root.open({address});
  root.start(problem);
  // The window has its class; from now on the name is what screen readers speak.
  QApplication::setApplicationName(shell::texts::applicationName);
  return QApplication::exec();
}

// On X11 the size of the desktop's text comes with the screen. Elsewhere the program asks for it; the toolkit reads its
// factor once, so the program starts over with it.
void startOverWithTextScale(char** arguments) {
  const bool comesWithTheScreen = !QGuiApplication::platformName().startsWith(QStringLiteral("wayland"));
  if (comesWithTheScreen || qEnvironmentVariableIsSet(toolkitScale)) return;
  const double scale = views::desktopTextScale(QDBusConnection::sessionBus());
  if (scale == 1.0) return;
  qputenv(textScale, QByteArray::number(scale));
  ::execv("/proc/self/exe", arguments);
  qunsetenv(textScale);  // it could not start over: the text is as designed
}

}  // namespace

int main(int count, char** arguments) {
  // Answered without a display.
  if (asks(count, arguments, "--version")) {
    std::puts("Sorvan Studio " SORVAN_VERSION);
    return 0;
  }
  const QByteArray scale = qgetenv(textScale);
  if (!scale.isEmpty()) qputenv(toolkitScale, scale);
  QApplication application(count, arguments);
  if (scale.isEmpty()) {
    startOverWithTextScale(arguments);
  } else {
    // No program that this one starts is to take it for its own.
    qunsetenv(toolkitScale);
    qunsetenv(textScale);
  }
  describeApplication(application);
  try {
    return runStudio(application);
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "%s\n", qUtf8Printable(base::describe(failure)));
    return cannotStart;
  }
}
