// The payment choice as the lower rooms see it; its rules live with the account.
#pragma once

#include "core/room.h"

namespace sorvan::core {

/// Who pays for the next request.
enum class PayWith { credits, ownKey };

/// One answer of the injected `billing` function: the choice at this moment.
struct Billing {
  PayWith payWith = PayWith::ownKey;
  /// Whether the own-key way may be offered at all; several texts leave it out otherwise.
  bool ownKeyAllowed = true;

  bool operator==(const Billing&) const = default;
};

}  // namespace sorvan::core
