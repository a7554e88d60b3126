// What a file that credits paid for is called, and where the options of a request are settled that its price depends on.
#pragma once

#include <QByteArrayView>
#include <QString>
#include <QUrl>

#include "catalogue/fal_model.h"
#include "core/request_values.h"

namespace sorvan::catalogue {

/// The extension of a result: the address's, when it is a known one, else what the kind of output usually is; of a sound
/// what its first bytes show.
QString fileExtension(const QUrl& address, QByteArrayView start, MediaType made);

/// A copy of the request in which the length, the resolution and the quality stand that the charge is reckoned with.
/// Throws SorvanError when a model that is charged by the second would run without a length.
GenerationRequest withPricedOptions(const GenerationRequest& request, const FalModel& model, bool isPricedPerSecond);

/// The length with which a clip of the model is charged, as the text of its option; empty when there is none.
QString pricedLength(const GenerationRequest& request, const FalModel& model);

}  // namespace sorvan::catalogue
