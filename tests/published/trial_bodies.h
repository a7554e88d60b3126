// The requests that a model of the catalogue may send, from the smallest to the fullest, and their outside judge.
#pragma once

#include <QJsonArray>
#include <QString>

#include "catalogue/fal_model.h"

namespace sorvan::test {

/// The smallest body, the fullest ones at either end of every setting, and one of each size that can be chosen.
QJsonArray trialBodies(const catalogue::FalModel& model);

/// What `breaches` is asked: the bodies for the document of this file.
QJsonObject trial(const QString& file, const QJsonArray& bodies);

/// A sentence for each way in which a body breaks its document, as JSON text: "[]" when all hold. The judge is
/// python3-jsonschema, which shares no code with the reader. Throws std::runtime_error when it does not end.
std::string breaches(const QJsonArray& trials);

}  // namespace sorvan::test
