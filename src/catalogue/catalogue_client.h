// The service's public catalogue: browsing it, and reading the models that the user adds.
#pragma once

#include <memory>
#include <optional>
#include <stop_token>
#include <vector>

#include "base/settings.h"
#include "base/task.h"
#include "catalogue/fal_catalog.h"
#include "platform/http.h"

namespace sorvan::catalogue {

/// One row of the catalogue as the service tells it.
struct CatalogRow {
  FalListing listing;         ///< its badge is empty
  bool researchOnly = false;  ///< the licence allows no other use
  bool operator==(const CatalogRow&) const = default;
};

struct CatalogPage {
  std::vector<CatalogRow> rows;
  std::optional<QString> next;  ///< what asks for the page after this one; absent on the last
};

struct CatalogQuestion {
  QString category;
  QString words;  ///< blank for everything of the category
  int limit = 40;
  std::optional<QString> page;  ///< `next` of the page before; absent for the first
};

/// Asks without a key. A call keeps what it needs, so the client may go while it runs. Thread: the main one.
class CatalogClient {
 public:
  explicit CatalogClient(std::shared_ptr<HttpTransport> over) : transport(std::move(over)) {}

  /// One page. Rows that lack an id, a name, a category or a description are left out. Throws SorvanError, HttpError or
  /// Cancelled.
  Task<CatalogPage> search(CatalogQuestion question, std::stop_token stop) const;

  /// The model of a row, read from the document that the service publishes for it. Nothing is stored. Throws
  /// SchemaRefusal when it cannot be used, SorvanError, HttpError or Cancelled.
  Task<FalModel> load(FalListing listing, std::stop_token stop) const;

 private:
  std::shared_ptr<HttpTransport> transport;
};

/// The version of the reader that models are read with.
inline constexpr int falReaderVersion = 4;

/// Reads every added model again when an older reader made it, and stores it under its own name and summary. One that
/// cannot be read stays as it was, and the next start tries again: the settings key "falReaderVersion" follows only
/// when all were read. Throws Cancelled, and SorvanError when the settings cannot be written.
Task<> rereadIfStale(CatalogClient client, std::shared_ptr<FalCatalog> catalog, std::shared_ptr<Settings> settings,
                     std::stop_token stop);

}  // namespace sorvan::catalogue
