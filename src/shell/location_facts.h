#pragma once

#include "shell/inspector_presenter.h"

#include "account/charges.h"
#include "base/instant.h"

#include <optional>

namespace sorvan::shell {

// What a location of the sidebar holds. Items in Trash count in Trash alone.
struct LocationFacts {
  qsizetype pictures = 0;
  qsizetype clips = 0;
  qsizetype sounds = 0;
  qsizetype favorites = 0;
  std::int64_t bytes = 0;  // of the originals
  std::optional<Instant> oldest;
  std::optional<Instant> newest;

  qsizetype items() const { return pictures + clips + sounds; }
  bool operator==(const LocationFacts&) const = default;
};

LocationFacts factsOf(const core::LibraryStore& store, const QString& location);

// What the inspector shows while nothing is selected. The facts are asked for at each change of the library, so they
// are kept until the library or the location is another. Main thread.
class LocationOverview {
 public:
  InspectorDisplay display(const core::LibraryStore& store, const QString& location, const account::Spend& spend);

 private:
  struct Known {
    std::uint64_t opening = 0;
    std::uint64_t revision = 0;
    QString location;
    bool operator==(const Known&) const = default;
  };
  const LocationFacts& facts(const core::LibraryStore& store, const QString& location);

  std::optional<Known> known_;
  LocationFacts facts_;
  account::MonthSpend month_;
};

}  // namespace sorvan::shell
