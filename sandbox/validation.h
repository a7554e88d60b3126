// Holds the input of a job against the published document of its endpoint.
#pragma once
#include <QJsonArray>
#include <QString>

#include "field.h"

namespace sandbox {

// What is wrong with the input, in the form of a 422's "detail"; empty when it may pass. Types are taken strictly: a
// number written as text is no number. Fields that the document does not name pass, unless it forbids them.
QJsonArray problemsOf(const json::object& document, const QByteArray& input);

// The same value for Qt, whose objects sort their keys.
QJsonValue plainValue(const json::value& value);

// The properties that the document publishes for the result, each with whether it is required; empty when it has none.
struct PublishedOutput {
  QString name;
  bool required = false;
  bool isList = false;
  std::string type;  // "object", "string", "integer", … of the first type that is not null
};
std::vector<PublishedOutput> outputsOf(const json::object& document);

}  // namespace sandbox
