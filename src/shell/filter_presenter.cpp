#include "shell/filter_presenter.h"

#include "account/charges.h"
#include "core/enumerations.h"
#include "shell/gallery_presenter.h"
#include "shell/texts.h"
#include "shell/wording.h"
#include "shell/workspace_state.h"

#include <algorithm>
#include <array>

namespace sorvan::shell {

namespace {

const QString all = QStringLiteral("all");

constexpr std::array sortOrder{GallerySort::newest,   GallerySort::oldest,  GallerySort::rating,
                               GallerySort::costHigh, GallerySort::costLow, GallerySort::name};
constexpr std::array dayChoices{0, 1, 7, 30, 365};

// What the filter holds for each choice, in the order of the texts.
const std::vector<QString>& typeValues() {
  static const std::vector<QString> values{all, rawValue(core::MediaType::image), rawValue(core::MediaType::video),
                                           rawValue(core::MediaType::audio)};
  return values;
}

const std::vector<QString>& statusValues() {
  static const std::vector<QString> values = [] {
    std::vector<QString> made{all};
    for (const core::AssetStatus status : core::allAssetStatuses) made.push_back(rawValue(status));
    return made;
  }();
  return values;
}

const std::vector<QString>& orientationValues() {
  static const std::vector<QString> values{all, QStringLiteral("portrait"), QStringLiteral("landscape"),
                                           QStringLiteral("square")};
  return values;
}

template <class Values, class Value>
int placeOf(const Values& values, const Value& value) {
  const auto found = std::ranges::find(values, value);
  return found == values.end() ? -1 : static_cast<int>(found - values.begin());
}

template <class Values>
auto valueAt(const Values& values, int index) {
  return values[static_cast<std::size_t>(std::clamp(index, 0, static_cast<int>(values.size()) - 1))];
}

FilterChip chipOf(FilterKind kind, const QString& title, std::vector<QString> choices, int current) {
  FilterChip chip{kind, title, {}, std::move(choices), current};
  if (current > 0) chip.value = chip.choices[static_cast<std::size_t>(current)];
  return chip;
}

FilterChip statusChip(const GalleryFilter& filter) {
  std::vector<QString> choices{texts::anyStatus};
  for (const core::AssetStatus status : core::allAssetStatuses) choices.push_back(statusText(status));
  return chipOf(FilterKind::status, texts::statusFilter, choices, placeOf(statusValues(), filter.status));
}

FilterChip ratingChip(const GalleryFilter& filter) {
  std::vector<QString> choices{texts::anyRating};
  for (int stars = 1; stars <= 5; ++stars) choices.push_back(texts::starsOrMore(stars));
  return chipOf(FilterKind::rating, texts::ratingFilter, choices, std::clamp(filter.minimumRating, 0, 5));
}

FilterChip orientationChip(const GalleryFilter& filter) {
  return chipOf(FilterKind::orientation, texts::orientationFilter,
                {texts::anyOrientation, texts::portrait, texts::landscape, texts::square},
                placeOf(orientationValues(), filter.orientation));
}

FilterChip daysChip(const GalleryFilter& filter) {
  std::vector<QString> choices{texts::anyTime};
  for (const int days : dayChoices)
    if (days > 0) choices.push_back(texts::lastDays(days));
  return chipOf(FilterKind::days, texts::dateFilter, choices, placeOf(dayChoices, filter.days));
}

}  // namespace

FilterPresenter::FilterPresenter(GalleryPresenter& gallery, WorkspaceState& state, QObject* parent)
    : QObject(parent), gallery_(gallery), state_(state) {
  connect(&state_, &WorkspaceState::filterChanged, this, &FilterPresenter::changed);
}

void FilterPresenter::edit(const std::function<void(GalleryFilter&)>& change) {
  GalleryFilter filter = state_.filter();
  change(filter);
  gallery_.setFilter(filter);
}

QString FilterPresenter::search() const { return state_.filter().search; }
void FilterPresenter::setSearch(const QString& text) {
  edit([&](GalleryFilter& filter) { filter.search = text; });
}

std::vector<QString> FilterPresenter::types() const {
  return {texts::segmentAll, texts::typeImages, texts::typeVideo, texts::typeAudio};
}
int FilterPresenter::type() const { return std::max(placeOf(typeValues(), state_.filter().type), 0); }
void FilterPresenter::setType(int index) {
  edit([&](GalleryFilter& filter) { filter.type = valueAt(typeValues(), index); });
}

FilterChip FilterPresenter::modelChip() const {
  std::vector<QString> choices{texts::anyModel};
  const QString& wanted = state_.filter().model;
  int current = wanted == all ? 0 : -1;
  for (const auto& [id, name] : gallery_.models()) {
    if (id == wanted) current = static_cast<int>(choices.size());
    choices.push_back(name);
  }
  FilterChip chip = chipOf(FilterKind::model, texts::modelFilter, std::move(choices), current);
  if (current < 0) chip.value = wanted;
  return chip;
}

FilterChip FilterPresenter::providerChip() const {
  std::vector<QString> choices{texts::anyProvider};
  for (const QString& provider : gallery_.providers()) choices.push_back(account::paidWith(provider));
  const QString wanted = account::paidWith(state_.filter().provider);
  FilterChip chip =
      chipOf(FilterKind::provider, texts::providerFilter, choices, wanted == all ? 0 : placeOf(choices, wanted));
  if (chip.current < 0) chip.value = wanted;
  return chip;
}

std::vector<FilterChip> FilterPresenter::chips() const {
  const GalleryFilter& filter = state_.filter();
  return {modelChip(),        providerChip(),          statusChip(filter),
          ratingChip(filter), orientationChip(filter), daysChip(filter)};
}

void FilterPresenter::choose(FilterKind kind, int choice) {
  edit([&](GalleryFilter& filter) {
    switch (kind) {
      case FilterKind::model: {
        const auto models = gallery_.models();
        filter.model = choice < 1 || choice > static_cast<int>(models.size())
                           ? all
                           : models[static_cast<std::size_t>(choice - 1)].first;
        break;
      }
      case FilterKind::provider: {
        const auto providers = gallery_.providers();
        filter.provider = choice < 1 ? all : valueAt(providers, choice - 1);
        break;
      }
      case FilterKind::status:
        filter.status = valueAt(statusValues(), choice);
        break;
      case FilterKind::rating:
        filter.minimumRating = std::clamp(choice, 0, 5);
        break;
      case FilterKind::orientation:
        filter.orientation = valueAt(orientationValues(), choice);
        break;
      case FilterKind::days:
        filter.days = valueAt(dayChoices, choice);
        break;
    }
  });
}

std::vector<QString> FilterPresenter::sorts() const {
  return {texts::sortNewest,   texts::sortOldest,  texts::sortRating,
          texts::sortCostHigh, texts::sortCostLow, texts::sortName};
}
int FilterPresenter::sort() const { return std::max(placeOf(sortOrder, state_.filter().sort), 0); }
void FilterPresenter::setSort(int index) {
  edit([&](GalleryFilter& filter) { filter.sort = valueAt(sortOrder, index); });
}

bool FilterPresenter::narrows() const { return state_.filter().narrows(); }
void FilterPresenter::clear() { gallery_.clearFilters(); }

}  // namespace sorvan::shell
