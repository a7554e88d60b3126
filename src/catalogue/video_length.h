// Choices of a clip's length across models: pure functions.
#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

#include "catalogue/fal_model.h"
#include "core/request_values.h"

namespace sorvan::catalogue::video_length {

/// The lengths of one model, and the one in force.
struct Choice {
  QString id;    ///< model id
  QString name;  ///< model name
  QStringList values;
  QString value;
  bool operator==(const Choice&) const = default;
};

enum class Lengths { fixedOnly, all };

/// The number that the text begins with: 5 of "5s", 10.5 of "10.5"; nothing of "auto".
std::optional<double> leadingNumber(const QString& value);
/// Whether the text begins with digits that read as a number: "5", "5s", "10.5", not "auto".
bool isFixed(const QString& value);
/// The fixed values, or all of them when none is fixed.
QStringList fixed(const QStringList& values);
/// The value whose leading number is nearest to the seconds; the first of equals; nothing without numbers.
std::optional<QString> closest(double seconds, const QStringList& values);
/// The value with " s" behind it when all of it is a number.
QString label(const QString& value);
/// The values of the first choice that every choice has.
QStringList shared(const std::vector<Choice>& choices);
/// The seconds that a prompt speaks of, if any.
std::optional<int> mentioned(const QString& prompt);
/// One choice for each video model that has a length.
std::vector<Choice> plan(const GenerationRequest& request, const std::vector<FalModel>& models, Lengths lengths);

}  // namespace sorvan::catalogue::video_length
