// What the gateway's interpreter makes of a command: a few plain rules, so that tests know the answer.
#pragma once

#include <QJsonObject>
#include <QString>

namespace sandbox {

// The action that a text stands for: a search, a filter, a project to make or move to, a favourite, a status, a
// comparison, or "unknown".
QJsonObject interpretation(const QString& text, const QJsonObject& context);

}  // namespace sandbox
