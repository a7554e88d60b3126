#include "interpretation.h"

#include <QJsonArray>

namespace sandbox {

namespace {

QJsonObject action(const char* name) { return {{QStringLiteral("action"), QString::fromLatin1(name)}}; }

QJsonObject with(QJsonObject object, const char* key, const QJsonValue& value) {
  object.insert(QString::fromLatin1(key), value);
  return object;
}

// The project of the context that the text names.
QString projectIn(const QString& text, const QJsonObject& context) {
  for (const QJsonValue& project : context.value(QStringLiteral("projects")).toArray())
    if (!project.toString().isEmpty() && text.contains(project.toString(), Qt::CaseInsensitive))
      return project.toString();
  return {};
}

}  // namespace

QJsonObject interpretation(const QString& text, const QJsonObject& context) {
  const QString lower = text.toLower();
  const auto says = [&lower](const char* word) { return lower.contains(QLatin1StringView(word)); };
  if (says("compare")) return action("compare");
  if (says("favorite") || says("favourite"))
    return says("show") ? with(action("filter"), "favorites", true) : with(action("favorite"), "enabled", !says("un"));
  if (says("approve")) return with(action("status"), "status", QStringLiteral("approved"));
  if (says("move") && !projectIn(text, context).isEmpty())
    return with(action("move"), "project", projectIn(text, context));
  if (says("new project")) return with(action("createProject"), "project", text.section(QLatin1Char(' '), -1));
  if (says("video")) return with(action("filter"), "media", QStringLiteral("video"));
  if (says("picture of") || says("draw")) return with(with(action("generate"), "prompt", text), "count", 1);
  if (says("find") || says("search"))
    return with(action("search"), "query", text.section(QLatin1Char(' '), 1).trimmed());
  return with(action("unknown"), "message", QStringLiteral("Please say what you would like to do."));
}

}  // namespace sandbox
