// The body that is submitted for a request, with an address for each of its references.
#pragma once

#include <QJsonObject>
#include <QStringList>

#include "catalogue/fal_model.h"
#include "core/request_values.h"

namespace sorvan::catalogue {

/// `addresses` stand in the request's order of references. Throws SorvanError for what the model cannot do.
QJsonObject submissionBody(const FalModel& model, const GenerationRequest& request, const QStringList& addresses);

/// As many stand-ins as the request has references: with them, what would be refused is refused before any upload.
QStringList pendingAddresses(const GenerationRequest& request);

}  // namespace sorvan::catalogue
