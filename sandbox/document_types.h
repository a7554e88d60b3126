// The types that many published documents share.
#pragma once
#include <boost/json.hpp>
#include <optional>
#include <string_view>

namespace sandbox {

// The type of this name, or nothing.
std::optional<boost::json::object> sharedType(std::string_view name);

// An object of these fields, as documents write it: properties in an order of their own, beside the order to show.
class Field;
boost::json::object objectOfFields(std::string_view title, const std::vector<Field>& fields, bool saysOrder = true);

}  // namespace sandbox
