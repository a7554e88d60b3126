#include "shell/gallery_index.h"

#include "base/text.h"

#include <algorithm>

namespace sorvan::shell {

namespace {

// So few are folded where they are needed: it takes less than a frame.
constexpr std::size_t fewItems = 256;
// One batch takes the main thread a few milliseconds.
constexpr std::size_t batchItems = 1000;
constexpr std::size_t batchLooks = 4000;

std::vector<FoldedItem> foldAll(std::vector<std::pair<QUuid, SearchSource>> sources) {
  std::vector<FoldedItem> items;
  items.reserve(sources.size());
  for (auto& [id, source] : sources) items.push_back(fold(id, std::move(source)));
  return items;
}

}  // namespace

GalleryIndex::GalleryIndex(core::LibraryStore& store, std::function<QString(const QString&)> modelName, QObject* parent)
    : QObject(parent), store_(store), modelName_(std::move(modelName)) {
  connect(&store_, &core::LibraryStore::itemsTouched, this, &GalleryIndex::noteTouched);
  connect(&store_, &core::LibraryStore::itemsReread, this, &GalleryIndex::noteReread);
  connect(&store_, &core::LibraryStore::workspaceChanged, this, &GalleryIndex::noteWorkspace);
  noteReread();
}

GalleryIndex::~GalleryIndex() = default;

Task<> GalleryIndex::drain() { return tasks_.drain(); }
Task<> GalleryIndex::whenSearchStands() { return tasks_.whenIdle(); }

// ---- Keeping the texts

void GalleryIndex::noteTouched(const std::vector<QUuid>& items) {
  todo_.insert(todo_.end(), items.begin(), items.end());
  if (todo_.size() > fewItems) startBuilding();
}

void GalleryIndex::noteReread() {
  modelNames_.clear();
  recheck_ = true;
  if (store_.assetRows().size() > fewItems) startBuilding();
}

void GalleryIndex::noteWorkspace() {
  result_.reset();
  texts_.clear();
  todo_.clear();
  nameOrder_.clear();
  unordered_.clear();
  ++growth_;
  noteReread();
}

const QString& GalleryIndex::nameOfModel(const QString& model) {
  auto known = modelNames_.constFind(model);
  if (known == modelNames_.constEnd()) known = modelNames_.insert(model, modelName_ ? modelName_(model) : model);
  return *known;
}

SearchSource GalleryIndex::sourceOf(const core::Asset& asset) {
  SearchSource source;
  source.path = asset.localFilePath;
  source.originalName = asset.originalFilename;
  source.notes = asset.notes.value_or(QString());
  if (const core::GenerationRef generation = store_.generationOf(asset.id)) {
    source.prompt = generation->prompt;
    source.modelName = nameOfModel(generation->model);
  }
  if (asset.projectID)
    if (const core::ProjectRef project = store_.project(*asset.projectID)) source.projectName = project->name;
  return source;
}

std::vector<std::pair<QUuid, SearchSource>> GalleryIndex::takeBatch(std::size_t most) {
  if (recheck_) {
    recheck_ = false;
    todo_.clear();
    for (const core::AssetRow& row : store_.assetRows()) todo_.push_back(row.id);
  }
  std::vector<std::pair<QUuid, SearchSource>> batch;
  for (std::size_t looks = 0; !todo_.empty() && batch.size() < most && looks < batchLooks; ++looks) {
    const QUuid id = todo_.front();
    todo_.pop_front();
    const core::AssetRef asset = store_.asset(id);
    if (!asset) continue;
    SearchSource source = sourceOf(*asset);
    if (!texts_.isCurrent(id, source)) batch.emplace_back(id, std::move(source));
  }
  return batch;
}

void GalleryIndex::take(std::vector<FoldedItem> items) {
  if (items.empty()) return;
  std::vector<QUuid> ids;
  for (const FoldedItem& item : items) ids.push_back(item.id);
  texts_.put(std::move(items));
  for (const QUuid& id : ids) unordered_.push_back(texts_.numberOf(id));
  ++growth_;
}

// The little that changed since the texts were built is folded when it is asked for.
void GalleryIndex::catchUp() {
  const std::size_t due = recheck_ ? store_.assetRows().size() : todo_.size();
  if (due > fewItems) return startBuilding();
  if (building_) return;
  while (recheck_ || !todo_.empty()) take(foldAll(takeBatch(batchItems)));
}

void GalleryIndex::startBuilding() {
  if (building_) return;
  building_ = true;
  tasks_.spawnLater([self = QPointer(this), stop = tasks_.token()] { return build(self, stop); });
}

Task<> GalleryIndex::build(QPointer<GalleryIndex> self, std::stop_token stop) {
  while (self && (self->recheck_ || !self->todo_.empty())) {
    const std::uint64_t opening = self->store_.opening();
    std::vector<std::pair<QUuid, SearchSource>> batch = self->takeBatch(batchItems);
    if (batch.empty()) {
      co_await base::yieldToLoop();
      base::throwIfStopped(stop);
      continue;
    }
    std::function<std::vector<FoldedItem>()> work = [batch = std::move(batch)]() mutable {
      return foldAll(std::move(batch));
    };
    std::vector<FoldedItem> folded = co_await base::onPool(std::move(work), stop);
    if (!self) co_return;
    // Another workspace's items are none of this one's.
    if (self->store_.opening() == opening) self->take(std::move(folded));
  }
  if (self) self->endBuilding();
}

void GalleryIndex::endBuilding() {
  building_ = false;
  Q_EMIT searchGrew();
}

// ---- Answers

const RowNumbers& GalleryIndex::matching(const GalleryFilter& filter) {
  catchUp();
  const bool usesTexts = !base::isBlank(filter.search) || filter.sort == GallerySort::name;
  if (result_ && result_->revision == store_.revision() && result_->filter == filter &&
      (!usesTexts || result_->growth == growth_))
    return result_->numbers;
  result_ = Result{store_.revision(), growth_, filter, select(filter)};
  return result_->numbers;
}

RowNumbers GalleryIndex::select(const GalleryFilter& filter) {
  ++passes_;
  const Rows& rows = store_.assetRows();
  const bool anyModel = filter.model == QStringLiteral("all");
  const RowTest passes(filter, store_.now(),
                       ModelTest(filter.model, anyModel ? std::vector<QString>() : models(),
                                 [this](const QString& model) { return nameOfModel(model); }));
  RowNumbers numbers;
  const QByteArray needle = foldedNeedle(filter.search);
  if (needle.isEmpty()) {
    for (std::uint32_t number = 0; number < rows.size(); ++number)
      if (passes(rows[number])) numbers.push_back(number);
  } else {
    const std::vector<char> hits = texts_.find(needle);
    const std::vector<std::uint32_t>& texts = textNumbers();
    for (std::uint32_t number = 0; number < rows.size(); ++number)
      if (texts[number] != SearchTexts::unknown && hits[texts[number]] != 0 && passes(rows[number]))
        numbers.push_back(number);
  }
  sortRows(rows, numbers, filter.sort, filter.sort == GallerySort::name ? nameRanks() : std::vector<std::uint32_t>());
  return numbers;
}

// Rows and texts mostly stand in one order, so that the next text is looked at before the table is asked.
const std::vector<std::uint32_t>& GalleryIndex::textNumbers() {
  const std::pair now{store_.revision(), growth_};
  if (textNumbersAt_ == now) return textNumbers_;
  textNumbersAt_ = now;
  textNumbers_.clear();
  textNumbers_.reserve(store_.assetRows().size());
  std::uint32_t expected = 0;
  for (const core::AssetRow& row : store_.assetRows()) {
    const bool follows = expected < texts_.count() && texts_.idOf(expected) == row.id;
    const std::uint32_t number = follows ? expected : texts_.numberOf(row.id);
    textNumbers_.push_back(number);
    if (number != SearchTexts::unknown) expected = number + 1;
  }
  return textNumbers_;
}

void GalleryIndex::orderNames() {
  const auto before = [this](std::uint32_t left, std::uint32_t right) {
    return texts_.nameKeyOf(left) < texts_.nameKeyOf(right);
  };
  if (unordered_.size() > fewItems) {
    nameOrder_.resize(texts_.count());
    for (std::uint32_t number = 0; number < texts_.count(); ++number) nameOrder_[number] = number;
    std::ranges::sort(nameOrder_, before);
  } else if (!unordered_.empty()) {
    std::ranges::sort(unordered_);
    unordered_.erase(std::unique(unordered_.begin(), unordered_.end()), unordered_.end());
    std::erase_if(nameOrder_, [this](std::uint32_t number) { return std::ranges::binary_search(unordered_, number); });
    for (const std::uint32_t number : unordered_)
      nameOrder_.insert(std::ranges::upper_bound(nameOrder_, number, before), number);
  }
  unordered_.clear();
}

// Equal names share a rank, so that they keep their order; an item whose text does not stand yet comes last.
std::vector<std::uint32_t> GalleryIndex::nameRanks() {
  orderNames();
  std::vector<std::uint32_t> rankOfText(texts_.count());
  std::uint32_t rank = 0;
  for (std::size_t place = 0; place < nameOrder_.size(); ++place) {
    if (place > 0 && texts_.nameKeyOf(nameOrder_[place - 1]) != texts_.nameKeyOf(nameOrder_[place])) ++rank;
    rankOfText[nameOrder_[place]] = rank;
  }
  std::vector<std::uint32_t> ranks;
  ranks.reserve(store_.assetRows().size());
  for (const std::uint32_t number : textNumbers())
    ranks.push_back(number == SearchTexts::unknown ? SearchTexts::unknown : rankOfText[number]);
  return ranks;
}

std::vector<core::AssetRef> GalleryIndex::assets(const GalleryFilter& filter) {
  std::vector<core::AssetRef> found;
  const Rows& rows = store_.assetRows();
  for (const std::uint32_t number : matching(filter))
    if (core::AssetRef asset = store_.asset(rows[number].id)) found.push_back(std::move(asset));
  return found;
}

const QHash<QUuid, qsizetype>& GalleryIndex::projectCounts() {
  if (countedAt_ == store_.revision()) return projectCounts_;
  countedAt_ = store_.revision();
  projectCounts_.clear();
  for (const core::AssetRow& row : store_.assetRows())
    if (!row.trashed) ++projectCounts_[row.projectID.value_or(QUuid())];
  return projectCounts_;
}

namespace {

// The different texts of many rows. Neighbours share their text more often than not.
class DistinctTexts {
 public:
  void add(const std::optional<QString>& text) {
    if (!text || text->constData() == last_) return;
    last_ = text->constData();
    seen_.insert(*text);
  }
  std::vector<QString> all() const { return {seen_.begin(), seen_.end()}; }

 private:
  const QChar* last_ = nullptr;
  QSet<QString> seen_;
};

}  // namespace

void GalleryIndex::gatherNames() {
  if (namesAt_ == store_.revision()) return;
  namesAt_ = store_.revision();
  DistinctTexts models;
  DistinctTexts providers;
  for (const core::AssetRow& row : store_.assetRows()) {
    models.add(row.model);
    providers.add(row.provider);
  }
  models_ = models.all();
  std::ranges::sort(models_, [this](const QString& left, const QString& right) {
    const int order = base::naturalCompare(nameOfModel(left), nameOfModel(right));
    return order != 0 ? order < 0 : left < right;
  });
  providers_ = providers.all();
  std::ranges::sort(providers_, base::naturalLess);
}

const std::vector<QString>& GalleryIndex::models() {
  gatherNames();
  return models_;
}

const std::vector<QString>& GalleryIndex::providers() {
  gatherNames();
  return providers_;
}

}  // namespace sorvan::shell
