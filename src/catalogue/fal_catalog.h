// The models that this library can be asked for: those compiled in and those the user added.
#pragma once

#include <QSet>

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

#include "base/settings.h"
#include "catalogue/fal_model.h"

namespace sorvan::catalogue {

/// The compiled-in records: two image models, the sound models, the sound tools, then the models that carry a sound on
/// and those that make sound for a clip.
const std::vector<FalModel>& builtInModels();
/// The compiled-in record of the all-round image model.
const FalModel& nanoBanana2();

/// An added model that was taken out, and its place among the added ones.
struct RemovedModel {
  FalModel model;
  std::size_t place = 0;
};

/// Lookups over the compiled-in and the added models. The added ones stand as one JSON array, as text, under the
/// settings key "falModels.v2". A text of which anything does not read is kept under "falModels.v2.unreadable" before
/// the first write over it.
///
/// Thread: lookups from any; changes on the thread of the settings. The lists never change and the lock is held only to
/// copy or swap the pointer to one, which a lookup does when there is a new list; so it waits for nothing and copies
/// nothing. Each thread that looks up keeps the list it saw last until it looks again or ends.
class FalCatalog {
 public:
  explicit FalCatalog(std::shared_ptr<Settings> settings);
  ~FalCatalog();

  /// The model of this id, or null. It stays as it is, whatever is changed in the catalogue afterwards.
  std::shared_ptr<const FalModel> find(const QString& id) const;
  /// A copy of it.
  std::optional<FalModel> model(const QString& id) const;
  std::vector<FalModel> added() const;
  /// The ids that need no adding: those of `all`.
  QSet<QString> addedIDs() const;
  /// The compiled-in models followed by the added ones.
  std::vector<FalModel> all() const;

  /// Replaces an added model of the same id in place, or appends, and stores the list. A compiled-in id is ignored.
  /// Throws SorvanError when it cannot be stored; memory has the model then, and the next change stores it.
  void add(const FalModel& model);
  /// Takes an added model out and stores the list; what `restore` needs to put it back, or nothing when no such model
  /// was added. Jobs that run on it go on: they need no model. Throws as `add`.
  std::optional<RemovedModel> remove(const QString& id);
  /// Puts a model back where it stood. One of the same id that was added meanwhile stays instead. Throws as `add`.
  void restore(const RemovedModel& removed);

  /// A name for any id: the model's, else that of a recommended row or a tool, else the id without "fal-ai/".
  QString displayName(const QString& id) const;

  /// What the provider of own-key requests lists: the option of each model, in the order of `all`.
  std::vector<ModelOption> options() const;
  /// What the composer of pictures and clips offers: models of `all` whose output is a picture or a clip and that work
  /// on neither a sound nor a clip.
  std::vector<ComparisonModel> comparisonModels() const;

 private:
  struct AddedModels;
  struct Seen;
  const Seen& seen() const;
  void change(std::vector<FalModel> models);
  std::shared_ptr<const AddedModels> current() const;

  std::shared_ptr<Settings> settings;
  mutable std::mutex lock;
  std::shared_ptr<const AddedModels> addedModels;
  std::atomic<std::uint64_t> listNumber;  ///< of the list in place; no two lists of the program share one
};

}  // namespace sorvan::catalogue
