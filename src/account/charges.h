// What work has cost, told from the library's own records: one row for each output that was paid for here and one for
// each entry of the spending ledger. Main thread, as the store.
#pragma once

#include <optional>
#include <vector>

#include <QString>
#include <QUuid>

#include "account/room.h"
#include "account/spend.h"
#include "base/instant.h"
#include "core/enumerations.h"
#include "core/records.h"

namespace sorvan::core {
class LibraryStore;
}

namespace sorvan::account {

/// From `start` to `end`, both included.
struct DateInterval {
  Instant start;
  Instant end;

  bool contains(Instant moment) const { return start <= moment && moment <= end; }
  bool operator==(const DateInterval&) const = default;
};

enum class ChargedProjects { one, all };

/// What a report is about. With `one`, no project means the Inbox.
struct ChargeScope {
  std::optional<QUuid> projectID;
  ChargedProjects projects = ChargedProjects::all;
  std::optional<DateInterval> interval;

  bool covers(const std::optional<QUuid>& project, Instant date) const;
};

/// One row of the spending; computed and never stored.
struct Charge {
  QUuid id;  ///< of the generation or the ledger entry
  Instant date;
  QString title;
  QString prompt;
  QString model;
  QString provider;  ///< display name: "fal.ai", "Sorvan Credits" or "OpenAI"
  std::optional<QUuid> projectID;
  std::optional<MediaType> mediaType;  ///< none for an assistant's work
  std::optional<double> cost;          ///< US dollars; none when it was not recorded
  std::optional<double> credits;       ///< none unless credits paid
  QString basis;
  std::optional<QString> note;
  QString filename;
  AssetRef asset;  ///< null when there is none

  /// “Sorvan Credits”, “My fal.ai key”, “OpenAI key (retired)”, or another provider's name.
  QString paidWith() const;
  /// “12 credits ($0.12)”, “≈ $0.060”, “Not recorded”.
  QString costDisplay(const Spend& spend) const;
};

/// Who paid, from a provider's display name.
QString paidWith(const QString& provider);

/// The row of one output; `asset` may be null.
Charge chargeOf(const Generation& generation, const AssetRef& asset);

/// The generations that cost something here: not the imported ones and not the copies.
std::vector<GenerationRef> billedGenerations(const LibraryStore& store, const ChargeScope& scope);

/// All rows of a scope, newest first. A ledger entry that stands for a job or an output whose generations are in the
/// library is left out, so that nothing counts twice.
std::vector<Charge> charges(const LibraryStore& store, const ChargeScope& scope);
/// The rows of the spending ledger among them, in the ledger's order.
std::vector<Charge> ledgerCharges(const LibraryStore& store, const ChargeScope& scope);
/// Whether a generation cost something here: not imported and not a copy.
bool isBilled(const Generation& generation);
/// Those of the rows that a scope covers, in their order. Values only; any thread.
std::vector<Charge> chargesWithin(const std::vector<Charge>& charges, const ChargeScope& scope);
/// Puts the newest first; what is equally old keeps its order. Any thread.
void sortNewestFirst(std::vector<Charge>& charges);

/// The calendar month of a moment in local time, up to the last instant before the next one.
DateInterval calendarMonth(Instant moment);

/// The total of this calendar month in US dollars. It is asked for at each change of the gallery, so the sum is kept
/// until the library or the month is another.
class MonthSpend {
 public:
  double total(const LibraryStore& store);

 private:
  struct Known {
    std::uint64_t opening = 0;
    std::uint64_t revision = 0;
    DateInterval month;

    bool operator==(const Known&) const = default;
  };
  std::optional<Known> known;
  double sum = 0;
};

}  // namespace sorvan::account
