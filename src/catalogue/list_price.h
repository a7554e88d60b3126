// What one request costs at a model's list price, where the list says enough to tell.
#pragma once

#include <QString>

#include <optional>

#include <boost/describe.hpp>

#include "catalogue/fal_model.h"
#include "core/request_values.h"

namespace sorvan::catalogue {

struct ModelPrice {
  double unitPrice = 0;         ///< US dollars
  QString unit;                 ///< the service's own word
  std::optional<QString> date;  ///< when it was read, "2026-11-21"; absent in lists that were stored without
  bool operator==(const ModelPrice&) const = default;
};
BOOST_DESCRIBE_STRUCT(ModelPrice, (), (unitPrice, unit, date))

/// US dollars for the whole request. Nothing when the unit, the size or the length does not tell: a false figure would
/// be worse than none.
std::optional<double> listEstimate(const ModelPrice& price, const GenerationRequest& request, const FalModel& model);

}  // namespace sorvan::catalogue
