// The text of an enumeration's cases, as records, files and wires hold it.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include <QString>
#include <boost/describe.hpp>
#include <boost/mp11.hpp>

namespace sorvan::base {

// Without a specialisation the text of a case is its name, as BOOST_DESCRIBE_ENUM tells it (one trailing underscore is
// not part of it, so that words of the language can be cases). A specialisation may have
//   static constexpr std::array<std::pair<E, const char*>, N> rows{…};   // UTF-8 texts that differ from the names
//   static constexpr E fallback = E::x;                                  // what an unknown text is read as
template <class E>
struct EnumText {};

namespace detail {
template <class E>
concept HasEnumRows = requires {
  EnumText<E>::rows;
};
template <class E>
concept HasEnumFallback = requires {
  EnumText<E>::fallback;
};

constexpr std::string_view withoutTrailingUnderscore(std::string_view name) {
  return name.ends_with('_') ? name.substr(0, name.size() - 1) : name;
}

// Calls `visit(case, text)` for each case until it returns true.
template <class E, class Visit>
void forEachCase(Visit visit) {
  if constexpr (HasEnumRows<E>) {
    for (const auto& [value, text] : EnumText<E>::rows) {
      if (visit(value, std::string_view(text))) return;
    }
  } else {
    bool done = false;
    boost::mp11::mp_for_each<boost::describe::describe_enumerators<E>>([&](auto described) {
      if (!done) done = visit(described.value, withoutTrailingUnderscore(described.name));
    });
  }
}
}  // namespace detail

template <class E>
QString enumText(E value) {
  QString found;
  detail::forEachCase<E>([&](E candidate, std::string_view text) {
    if (candidate != value) return false;
    found = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    return true;
  });
  return found;
}

// The case of exactly this text; the fallback, where the enumeration has one, for any other; else nothing.
template <class E>
std::optional<E> enumFromText(const QString& wanted) {
  std::optional<E> found;
  const std::string bytes = wanted.toStdString();
  detail::forEachCase<E>([&](E candidate, std::string_view text) {
    if (bytes != text) return false;
    found = candidate;
    return true;
  });
  if constexpr (detail::HasEnumFallback<E>) {
    if (!found) found = EnumText<E>::fallback;
  }
  return found;
}

}  // namespace sorvan::base
