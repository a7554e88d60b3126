#include "torture/driver_projects.h"

#include <QFileInfo>
#include <QJsonArray>

#include <algorithm>

#include "base/ids.h"
#include "base/sorvan_error.h"
#include "core/projects.h"

namespace sorvan::torture {
namespace {

std::vector<core::ProjectRef> oldestFirst(const core::LibraryStore& store) {
  std::vector<core::ProjectRef> projects(store.projects().begin(), store.projects().end());
  std::ranges::stable_sort(projects, std::less<>(), [](const auto& project) { return project->createdAt; });
  return projects;
}

bool folderStands(const core::LibraryStore& store, const core::Project& project) {
  return QFileInfo(store.files().absolute(project.rootFolder)).isDir();
}

QJsonObject madeProject(core::LibraryStore& store, int number) {
  try {
    const core::ProjectRef project = core::createProject(store, QString::number(number));
    return {{QStringLiteral("id"), base::uuidText(project->id)}, {QStringLiteral("number"), number}};
  } catch (const base::SorvanError&) {
    return {};  // a save that failed promises nothing
  }
}

QJsonObject changed(core::LibraryStore& store, const core::ProjectRef& project, const QJsonObject& command) {
  const QString what = command.value(QLatin1String("what")).toString();
  QJsonObject promise{{QStringLiteral("id"), base::uuidText(project->id)}};
  if (what == QStringLiteral("name")) {
    const int number = command.value(QLatin1String("number")).toInt();
    core::renameProject(store, project, QString::number(number));
    promise.insert(QStringLiteral("number"), number);
  } else if (what == QStringLiteral("archive")) {
    core::setArchived(store, project, true);
    promise.insert(QStringLiteral("archived"), true);
  }
  return promise;
}

}  // namespace

QJsonObject changeProject(HeadlessStudio& studio, const QJsonObject& command) {
  core::LibraryStore& store = *studio.store;
  if (command.value(QLatin1String("what")).toString() == QStringLiteral("make"))
    return madeProject(store, command.value(QLatin1String("number")).toInt());
  const std::vector<core::ProjectRef> projects = oldestFirst(store);
  if (projects.empty()) return {};
  const QJsonObject promise = changed(store, projects.front(), command);
  return store.error() ? QJsonObject() : promise;
}

QJsonArray projectReports(const core::LibraryStore& store) {
  QJsonArray reports;
  for (const core::ProjectRef& project : oldestFirst(store))
    reports.append(QJsonObject{{QStringLiteral("id"), base::uuidText(project->id)},
                               {QStringLiteral("name"), project->name},
                               {QStringLiteral("archived"), project->archived},
                               {QStringLiteral("folder"), folderStands(store, *project)}});
  return reports;
}

}  // namespace sorvan::torture
