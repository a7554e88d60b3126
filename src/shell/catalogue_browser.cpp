#include "shell/catalogue_browser.h"

#include "catalogue/listings.h"
#include "shell/alerts_presenter.h"
#include "shell/model_prices.h"
#include "shell/texts.h"

#include <QPointer>

#include <algorithm>
#include <array>
#include <chrono>

namespace sorvan::shell {

namespace {

// Long enough that a word is typed, short enough that the list seems to follow.
constexpr std::chrono::milliseconds typingPause{250};
// Pages that hold nothing to show are passed over, but not for ever.
constexpr int mostPagesAtOnce = 10;

const std::array<QString, 4>& categoryKeys() {
  static const std::array keys{QStringLiteral("text-to-image"), QStringLiteral("image-to-image"),
                               QStringLiteral("text-to-video"), QStringLiteral("image-to-video")};
  return keys;
}

std::vector<QString> categoryTitles() {
  return {texts::textToImage, texts::imageToImage, texts::textToVideo, texts::imageToVideo};
}

QString badgeOf(const FalListing& listing) {
  if (!listing.badge.isEmpty()) return listing.badge;
  for (const auto& [category, rows] : recommendedModels())
    for (const FalListing& row : rows)
      if (row.id == listing.id) return row.badge;
  return {};
}

bool isBuiltIn(const QString& id) {
  const auto& models = builtInModels();
  return std::any_of(models.begin(), models.end(), [&](const FalModel& model) { return model.id == id; });
}

std::optional<FalListing> listingOf(const std::vector<CatalogRow>& rows, const QString& id) {
  const auto row = std::find_if(rows.begin(), rows.end(), [&](const auto& each) { return each.listing.id == id; });
  if (row == rows.end()) return std::nullopt;
  return row->listing;
}

}  // namespace

CatalogueBrowser::CatalogueBrowser(Ports ports, QObject* parent)
    : ModelBrowserPresenter(parent), ports_(std::move(ports)) {
  connect(&ports_.prices, &ModelPrices::changed, this, &CatalogueBrowser::changed);
  showRecommended();
}

CatalogueBrowser::~CatalogueBrowser() {
  searching_.request_stop();
  for (Adding& each : adding_) each.stop.request_stop();
}

// ---- What is shown

BrowserRow CatalogueBrowser::rowOf(const CatalogRow& from) const {
  const FalListing& listing = from.listing;
  BrowserRow row;
  row.id = listing.id;
  row.key = modelKey(ProviderID::fal, listing.id);
  row.name = listing.name;
  row.summary = listing.summary;
  row.badge = badgeOf(listing);
  row.licence = from.researchOnly ? texts::researchOnly : QString();
  const PriceText price = ports_.prices.text(listing.id);
  row.price = price.amount;
  row.priceDate = price.date;
  row.problem = problems_.value(listing.id);
  if (isBuiltIn(listing.id)) {
    row.state = BrowserRowState::builtIn;
    row.stateText = texts::builtIn;
  } else if (adding_.contains(listing.id)) {
    row.state = BrowserRowState::adding;
    row.stateText = texts::readingSettings;
  } else if (ports_.catalog->model(listing.id)) {
    row.state = BrowserRowState::added;
    row.stateText = texts::added;
  }
  return row;
}

void CatalogueBrowser::fillEmptiness(BrowserDisplay& display) const {
  if (state_ == BrowserState::failed) {
    display.title = texts::catalogueFailed;
    display.text = failure_;
  } else if (state_ == BrowserState::results && rows_.empty()) {
    display.title = texts::noModelFound;
    display.text = words_.trimmed().isEmpty() ? QString() : texts::noModelFoundFor(words_.trimmed());
  }
}

BrowserDisplay CatalogueBrowser::display() const {
  BrowserDisplay display;
  display.categories = categoryTitles();
  display.category = category_;
  display.words = words_;
  display.state = state_;
  if (state_ != BrowserState::failed)
    for (const CatalogRow& row : rows_) display.rows.push_back(rowOf(row));
  if (state_ == BrowserState::recommended) display.heading = texts::recommended;
  if (state_ == BrowserState::searching) display.heading = texts::searching;
  if (state_ == BrowserState::results && !rows_.empty())
    display.heading = texts::modelsFound(rows_.size(), next_.has_value());
  if (state_ == BrowserState::recommended) display.allTitle = texts::showWholeCatalogue;
  display.hasMore = state_ == BrowserState::results && next_.has_value();
  display.loadingMore = loadingMore_;
  display.moreProblem = moreFailure_;
  display.note = texts::catalogueNote;
  fillEmptiness(display);
  return display;
}

void CatalogueBrowser::appear() { refreshPrices(); }

void CatalogueBrowser::refreshPrices() {
  QStringList ids;
  for (const CatalogRow& row : rows_) ids << row.listing.id;
  ports_.prices.refresh(ids);
}

void CatalogueBrowser::showRecommended() {
  state_ = BrowserState::recommended;
  rows_.clear();
  for (const FalListing& listing : recommendedModels().at(categoryKeys()[static_cast<std::size_t>(category_)]))
    rows_.push_back({listing, false});
}

// ---- Searching

bool CatalogueBrowser::isSearch() const { return all_ || !words_.trimmed().isEmpty(); }

CatalogQuestion CatalogueBrowser::question() const {
  CatalogQuestion question;
  question.category = categoryKeys()[static_cast<std::size_t>(category_)];
  question.words = words_.trimmed();
  return question;
}

void CatalogueBrowser::chooseCategory(int category) {
  if (category == category_ || category < 0 || category >= static_cast<int>(categoryKeys().size())) return;
  category_ = category;
  // The rows of another category are no answer to wait with.
  rows_.clear();
  ask(Wait::none);
}

void CatalogueBrowser::editWords(const QString& words) {
  if (words == words_) return;
  words_ = words;
  all_ = false;
  ask(Wait::typing);
}

void CatalogueBrowser::showAll() {
  all_ = true;
  rows_.clear();
  ask(Wait::none);
}

void CatalogueBrowser::searchAgain() { ask(Wait::none); }

void CatalogueBrowser::ask(Wait wait) {
  // 1. What was asked before is not wanted any more.
  searching_.request_stop();
  searching_ = std::stop_source();
  next_.reset();
  pagesSeen_.clear();
  loadingMore_ = false;
  failure_.clear();
  moreFailure_.clear();
  problems_.clear();
  // 2. Without a question there are the recommendations, which need nobody.
  if (!isSearch()) {
    showRecommended();
    refreshPrices();
    Q_EMIT changed();
    return;
  }
  // 3. The rows of before stay until the answer is there.
  state_ = BrowserState::searching;
  Q_EMIT changed();
  tasks_.spawn(search(question(), wait, searching_.get_token()));
}

Task<> CatalogueBrowser::search(CatalogQuestion question, Wait wait, std::stop_token stop) {
  if (wait == Wait::typing) co_await ports_.clock->sleep(typingPause, stop);
  throwIfStopped(stop);
  std::optional<CatalogPage> page;
  QString failure;
  try {
    page = co_await ports_.client.search(question, stop);
  } catch (const SorvanError& error) {
    failure = error.message();
  }
  throwIfStopped(stop);
  rows_.clear();
  if (!page) {
    state_ = BrowserState::failed;
    failure_ = failure;
    Q_EMIT changed();
    co_return;
  }
  state_ = BrowserState::results;
  take(std::move(*page));
  // A page of which nothing can be shown is not the end of the list.
  if (rows_.empty() && next_) loadMore();
}

void CatalogueBrowser::take(CatalogPage page) {
  for (CatalogRow& row : page.rows)
    if (!listingOf(rows_, row.listing.id)) rows_.push_back(std::move(row));
  next_ = std::move(page.next);
  // A list that leads back to itself would never end.
  if (next_ && pagesSeen_.contains(*next_)) next_.reset();
  if (next_) pagesSeen_.insert(*next_);
  refreshPrices();
  Q_EMIT changed();
}

void CatalogueBrowser::loadMore() {
  if (state_ != BrowserState::results || !next_ || loadingMore_) return;
  loadingMore_ = true;
  moreFailure_.clear();
  Q_EMIT changed();
  tasks_.spawn(fetchMore(question(), searching_.get_token()));
}

Task<> CatalogueBrowser::fetchMore(CatalogQuestion question, std::stop_token stop) {
  const std::size_t before = rows_.size();
  try {
    for (int page = 0; page < mostPagesAtOnce && next_ && rows_.size() == before; ++page) {
      question.page = next_;
      CatalogPage more = co_await ports_.client.search(question, stop);
      throwIfStopped(stop);
      take(std::move(more));
    }
  } catch (const SorvanError& error) {
    throwIfStopped(stop);
    moreFailure_ = error.message();
  }
  throwIfStopped(stop);
  loadingMore_ = false;
  Q_EMIT changed();
}

// ---- Adding and removing

void CatalogueBrowser::add(const QString& id) {
  const auto listing = listingOf(rows_, id);
  if (!listing || adding_.contains(id) || ports_.catalog->model(id)) return;
  problems_.remove(id);
  adding_.insert(id, {});
  Q_EMIT changed();
  tasks_.spawn(addModel(*listing, adding_[id].stop.get_token()));
}

Task<> CatalogueBrowser::addModel(FalListing listing, std::stop_token stop) {
  QString problem;
  std::optional<FalModel> model;
  try {
    model = co_await ports_.client.load(listing, stop);
  } catch (const SorvanError& error) {
    problem = error.message();
  }
  throwIfStopped(stop);
  adding_.remove(listing.id);
  try {
    if (model) ports_.catalog->add(*model);
  } catch (const SorvanError& error) {
    // The model is there for this run; that it will not be there after the next start is said.
    problem = error.message();
  }
  if (!problem.isEmpty()) problems_.insert(listing.id, problem);
  if (model) offer();
  Q_EMIT changed();
}

void CatalogueBrowser::cancelAdding(const QString& id) {
  const auto adding = adding_.find(id);
  if (adding == adding_.end()) return;
  adding->stop.request_stop();
  adding_.erase(adding);
  Q_EMIT changed();
}

void CatalogueBrowser::offer() { ports_.composing.setModels(selectableModels(*ports_.catalog)); }

void CatalogueBrowser::remove(const QString& id) {
  const QSet<QString> chosen = ports_.composing.selectedModels();
  const auto place = placeOf(id);
  if (!place) return;
  const Removed removed{*place, chosen};
  try {
    ports_.catalog->remove(id);
  } catch (const SorvanError& error) {
    // It is gone for this run; that it will be back after the next start is said.
    ports_.alerts.showError(error.message());
  }
  problems_.remove(id);
  offer();
  Q_EMIT changed();
  Toast toast;
  toast.text = texts::modelRemoved(removed.model.model.name);
  toast.actionTitle = texts::undo;
  const QPointer<CatalogueBrowser> self(this);
  ports_.alerts.showToast(toast, [self, removed] {
    if (self) self->undoRemoval(removed);
  });
}

// An added model with its place; nothing for one that comes with the program.
std::optional<RemovedModel> CatalogueBrowser::placeOf(const QString& id) const {
  const std::vector<FalModel> added = ports_.catalog->added();
  for (std::size_t place = 0; place < added.size(); ++place)
    if (added[place].id == id) return RemovedModel{added[place], place};
  return std::nullopt;
}

void CatalogueBrowser::undoRemoval(const Removed& removed) {
  try {
    ports_.catalog->restore(removed.model);
  } catch (const SorvanError& error) {
    ports_.alerts.showError(error.message());
  }
  offer();
  chooseAgain(modelKey(ProviderID::fal, removed.model.model.id), removed.chosen);
  Q_EMIT changed();
}

// A model that was chosen is chosen again; the one that only stood in for it goes.
void CatalogueBrowser::chooseAgain(const QString& key, const QSet<QString>& chosenBefore) {
  ComposerState& composing = ports_.composing;
  if (!chosenBefore.contains(key)) return;
  const bool stoodIn = composing.selectedModels() == QSet<QString>{ComposerState::defaultModel} &&
                       !chosenBefore.contains(ComposerState::defaultModel);
  if (stoodIn) {
    composing.chooseOnly(key);
  } else {
    composing.selectModel(key, true);
  }
}

void CatalogueBrowser::rereadModels(std::shared_ptr<Settings> settings) {
  tasks_.spawn(reread(std::move(settings), tasks_.token()));
}

Task<> CatalogueBrowser::reread(std::shared_ptr<Settings> settings, std::stop_token stop) {
  co_await rereadIfStale(ports_.client, ports_.catalog, std::move(settings), stop);
  throwIfStopped(stop);
  offer();
  Q_EMIT changed();
}

}  // namespace sorvan::shell
