// What the gateway takes for a model, in credits, of every kind that its list knows.
#pragma once

#include <QJsonObject>
#include <QString>

#include <optional>

namespace sandbox {

// The row of the list, as "v1/prices" tells it; nothing for a model that is not sold.
std::optional<QJsonObject> listedPrice(const QString& model);

// The microcredits that are held for this input: by its row, rounded up to whole credits, at least one.
qint64 reserveFor(const QString& model, const QJsonObject& input);

// What is charged in the end for work that was held so much for: less, where the row is only a ceiling.
qint64 chargeFor(const QString& model, qint64 reserved);

// What one interpretation of a command costs.
inline constexpr qint64 interpretationPrice = 300'000;  // microcredits

}  // namespace sandbox
