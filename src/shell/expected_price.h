#pragma once

#include "catalogue/fal_model.h"
#include "core/request_values.h"
#include "shell/room.h"

#include <QString>

namespace sorvan::shell {

class ModelPrices;
class PaymentDesk;

// What one output of the request is expected to cost whoever pays for it, as the composer told before: “≈ $0.060”,
// “6 credits”, “up to 6 credits”. Empty while no price is known.
QString expectedPrice(const core::GenerationRequest& request, const catalogue::FalModel& model,
                      const ModelPrices& prices, const PaymentDesk& payment);

}  // namespace sorvan::shell
