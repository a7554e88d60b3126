#include "shell/opened_addresses.h"

#include "core/workspace_files.h"

#include <QDir>
#include <QFileInfo>
#include <QUrl>

#include <algorithm>

namespace sorvan::shell {

namespace {

constexpr int deepestFolder = 64;
const QString actionOption = QStringLiteral("--action=");
const QString actionScheme = QStringLiteral("action:");

bool isOwnLink(const QString& address) {
  return address.startsWith(QStringLiteral("sorvan:"), Qt::CaseInsensitive);
}

bool isWorkspace(const QString& folder) { return QFileInfo(core::WorkspaceFiles(folder).database()).isFile(); }

std::optional<QString> workspaceOf(const QString& address) {
  const QUrl url(address, QUrl::StrictMode);
  if (!url.isLocalFile()) return std::nullopt;
  const QFileInfo opened(url.toLocalFile());
  if (!opened.exists() || !opened.isAbsolute()) return std::nullopt;
  QString folder = opened.isDir() ? opened.absoluteFilePath() : opened.absolutePath();
  for (int level = 0; level < deepestFolder; ++level) {
    if (isWorkspace(folder)) return folder;
    const QString above = QFileInfo(folder).absolutePath();
    if (above == folder) break;
    folder = above;
  }
  return std::nullopt;
}

}  // namespace

QString addressOfArgument(const QString& argument, const QString& currentFolder) {
  if (isOwnLink(argument)) return argument;
  if (argument.startsWith(QStringLiteral("file:"), Qt::CaseInsensitive)) return argument;
  if (argument.startsWith(actionOption)) return actionAddress(argument.mid(actionOption.size()));
  if (argument.isEmpty() || argument.startsWith(QLatin1Char('-'))) return {};
  const QString path = QDir(currentFolder).absoluteFilePath(argument);
  return QFileInfo::exists(path) ? QUrl::fromLocalFile(QDir::cleanPath(path)).toString(QUrl::FullyEncoded) : QString();
}

QString firstAddress(const QStringList& arguments, const QString& currentFolder) {
  for (const QString& argument : arguments) {
    const QString address = addressOfArgument(argument, currentFolder);
    if (!address.isEmpty()) return address;
  }
  return {};
}

std::optional<QString> workspaceAmong(const QStringList& addresses) {
  for (const QString& address : addresses)
    if (auto workspace = workspaceOf(address)) return workspace;
  return std::nullopt;
}

std::optional<QString> ownLinkAmong(const QStringList& addresses) {
  const auto link = std::find_if(addresses.begin(), addresses.end(), isOwnLink);
  return link == addresses.end() ? std::nullopt : std::optional(*link);
}

QString actionAddress(const QString& name) { return actionScheme + name; }

std::optional<ActionId> actionAmong(const QStringList& addresses) {
  for (const QString& address : addresses)
    if (address.startsWith(actionScheme)) return desktopAction(address.mid(actionScheme.size()));
  return std::nullopt;
}

std::optional<ActionId> desktopAction(const QString& name) {
  if (name == QLatin1StringView("new-generation")) return ActionId::focusComposer;
  if (name == QLatin1StringView("history")) return ActionId::showHistory;
  if (name == QLatin1StringView("settings")) return ActionId::openSettings;
  return std::nullopt;
}

}  // namespace sorvan::shell
