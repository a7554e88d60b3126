#pragma once

#include "shell/room.h"

#include <QHash>
#include <QObject>
#include <QPointer>

#include "base/task_scope.h"
#include "core/library_store.h"
#include "shell/gallery_filter.h"
#include "shell/search_texts.h"

#include <deque>
#include <functional>
#include <optional>
#include <vector>

namespace sorvan::shell {

// Turns a filter into an ordered list of items, and remembers what it computed until the library's revision moves. The
// texts for searching are folded on the pool, a batch at a time, after a workspace opened; a search before they all
// stand finds among those that do, and `searchGrew` tells when it finds more. Main thread.
class GalleryIndex : public QObject {
  Q_OBJECT

 public:
  // The store outlives the index. `modelName` gives a model's name as people read it.
  GalleryIndex(core::LibraryStore& store, std::function<QString(const QString&)> modelName, QObject* parent = nullptr);
  ~GalleryIndex() override;

  // Numbers of rows in the store's `assetRows`, valid until the revision moves. The same filter at the same revision
  // gives the same list without another pass, so that a list of recent days may be stale: see `forgetTimes`.
  const RowNumbers& matching(const GalleryFilter& filter);
  std::vector<core::AssetRef> assets(const GalleryFilter& filter);
  // How many items outside Trash each project holds; the Inbox is the null id.
  const QHash<QUuid, qsizetype>& projectCounts();
  // Ids of the models that made something, by name.
  const std::vector<QString>& models();
  // Display names of the providers that made something, by name.
  const std::vector<QString>& providers();
  // Another day may have begun: lists that depend on the time are made again.
  void forgetTimes() { result_.reset(); }

  bool searchIsComplete() const { return !building_ && todo_.empty() && !recheck_; }
  // Passes that were made so far.
  int passes() const { return passes_; }
  const SearchTexts& texts() const { return texts_; }
  // Ends the folding.
  Task<> drain();
  // Resumes when all texts stand.
  Task<> whenSearchStands();

 Q_SIGNALS:
  // More can be found than before.
  void searchGrew();

 private:
  struct Result {
    std::uint64_t revision = 0;
    std::uint64_t growth = 0;
    GalleryFilter filter;
    RowNumbers numbers;
  };

  void noteTouched(const std::vector<QUuid>& items);
  void noteReread();
  void noteWorkspace();
  void catchUp();
  void startBuilding();
  static Task<> build(QPointer<GalleryIndex> self, std::stop_token stop);
  std::vector<std::pair<QUuid, SearchSource>> takeBatch(std::size_t most);
  void take(std::vector<FoldedItem> items);
  void endBuilding();
  SearchSource sourceOf(const core::Asset& asset);
  const QString& nameOfModel(const QString& model);

  RowNumbers select(const GalleryFilter& filter);
  void gatherNames();
  const std::vector<std::uint32_t>& textNumbers();
  std::vector<std::uint32_t> nameRanks();
  void orderNames();

  core::LibraryStore& store_;
  std::function<QString(const QString&)> modelName_;
  QHash<QString, QString> modelNames_;
  std::optional<Result> result_;
  QHash<QUuid, qsizetype> projectCounts_;
  std::vector<QString> models_;
  std::vector<QString> providers_;
  // The revisions at which those were made.
  std::optional<std::uint64_t> countedAt_;
  std::optional<std::uint64_t> namesAt_;

  SearchTexts texts_;
  std::deque<QUuid> todo_;  // items whose texts may have changed
  bool recheck_ = false;    // all of them may have
  bool building_ = false;
  std::uint64_t growth_ = 0;  // moves whenever texts do
  std::optional<std::pair<std::uint64_t, std::uint64_t>> textNumbersAt_;
  std::vector<std::uint32_t> textNumbers_;  // for each row the number of its text
  std::vector<std::uint32_t> nameOrder_;    // text numbers in the order of their names
  std::vector<std::uint32_t> unordered_;    // those whose names are new
  int passes_ = 0;
  TaskScope tasks_;
};

}  // namespace sorvan::shell
