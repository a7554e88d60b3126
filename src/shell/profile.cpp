#include "shell/profile.h"

#include "base/settings.h"
#include "core/workspace_opening.h"
#include "shell/application_id.h"
#include "shell/texts.h"

#include <QDir>
#include <QStandardPaths>

namespace sorvan::shell {

namespace {

QString dataHome() { return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation); }

std::optional<QString> forcedWorkspace() {
  const QString path = qEnvironmentVariable("SORVAN_WORKSPACE");
  return path.isEmpty() ? std::nullopt : std::optional(QDir::current().absoluteFilePath(path));
}

}  // namespace

QString Profile::busName() const { return isSandbox() ? sandboxBusName : applicationID; }

Profile profileFromEnvironment() {
  Profile profile;
  profile.service = serviceConfigurationFromEnvironment();
  profile.forcedWorkspace = forcedWorkspace();
  if (profile.isSandbox()) {
    profile.title = texts::applicationName + texts::sandboxSuffix;
    profile.dataFolder = dataHome() + QStringLiteral("/sorvan-studio-sandbox");
    profile.settingsFile = profile.dataFolder + QStringLiteral("/settings.json");
    profile.defaultWorkspace = profile.dataFolder + QStringLiteral("/Sorvan");
  } else {
    profile.title = texts::applicationName;
    profile.dataFolder = dataHome() + QStringLiteral("/sorvan-studio");
    profile.settingsFile = Settings::defaultPath();
    profile.defaultWorkspace = core::defaultWorkspacePath();
  }
  return profile;
}

}  // namespace sorvan::shell
