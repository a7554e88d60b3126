// Gives a result the form that its endpoint's document publishes.
#pragma once
#include <QJsonObject>

#include "field.h"

namespace sandbox {

// The files under the published names, one or a list of them as the document says; nothing beside them that is not
// published, and everything that is required.
QJsonObject asPublished(const json::object& document, const QJsonObject& result);

// The input with the published default of each field that it leaves out. The resolution is left alone: what is not
// asked for is made small and quickly.
QJsonObject withDefaults(const json::object& document, const QJsonObject& input);

}  // namespace sandbox
