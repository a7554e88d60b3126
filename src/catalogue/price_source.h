// What the list price of a request is, for the record of its cost.
#pragma once

#include <QString>

#include <optional>
#include <stop_token>

#include "base/task.h"
#include "catalogue/room.h"
#include "core/request_values.h"

namespace sorvan::catalogue {

struct ListedPrice {
  double total = 0;      ///< US dollars for the whole request
  double unitPrice = 0;  ///< US dollars
  QString unit;          ///< such as "image"
};

/// Thread: the main one. What is thrown counts as no price.
class PriceSource {
 public:
  virtual ~PriceSource() = default;
  /// Asks the service where it must, and answers nothing when the price is not known.
  virtual Task<std::optional<ListedPrice>> listedPrice(GenerationRequest request, QString key,
                                                       std::stop_token stop) = 0;
};

}  // namespace sorvan::catalogue
