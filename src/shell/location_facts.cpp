#include "shell/location_facts.h"

#include "base/ids.h"
#include "core/library_store.h"
#include "shell/gallery_filter.h"
#include "shell/inspector_texts.h"
#include "shell/locations.h"
#include "shell/texts.h"
#include "shell/wording.h"
#include "shell/workspace_state.h"

#include <functional>

namespace sorvan::shell {

namespace {

std::function<bool(const core::Asset&)> belongingTo(const core::LibraryStore& store, const QString& location) {
  if (location == trashLocation) return [](const core::Asset& item) { return item.isTrashed(); };
  if (location == recentLocation)
    return [cutoff = recentCutoff(store.now())](const core::Asset& item) {
      return !item.isTrashed() && item.importedAt.value_or(item.createdAt) >= cutoff;
    };
  if (location == favoritesLocation) return [](const core::Asset& item) { return !item.isTrashed() && item.favorite; };
  if (location == inboxLocation) return [](const core::Asset& item) { return !item.isTrashed() && !item.projectID; };
  const QUuid project = uuidFromText(location);
  if (project.isNull()) return [](const core::Asset& item) { return !item.isTrashed(); };
  return [project](const core::Asset& item) { return !item.isTrashed() && item.projectID == project; };
}

void count(LocationFacts& facts, const core::Asset& item) {
  // What a type is written as tells it without reading it; all that is unknown counts as a picture.
  static const QString clip = rawValue(core::MediaType::video);
  static const QString sound = rawValue(core::MediaType::audio);
  ++(item.mediaType == clip ? facts.clips : item.mediaType == sound ? facts.sounds : facts.pictures);
  if (item.favorite) ++facts.favorites;
  facts.bytes += item.fileSize;
  if (!facts.oldest || item.createdAt < *facts.oldest) facts.oldest = item.createdAt;
  if (!facts.newest || item.createdAt > *facts.newest) facts.newest = item.createdAt;
}

void addCount(InspectorSection& section, const QString& label, qsizetype number) {
  if (number > 0) section.rows.push_back({label, countText(number)});
}

InspectorSection contents(const LocationFacts& facts, Instant now) {
  InspectorSection section{texts::contentsSection, {}, {}};
  addCount(section, texts::typeImages, facts.pictures);
  addCount(section, texts::typeVideo, facts.clips);
  addCount(section, texts::typeAudio, facts.sounds);
  addCount(section, texts::favoritesLabel, facts.favorites);
  if (facts.items() == 0) return section;
  section.rows.push_back({texts::sizeLabel, fileSizeText(facts.bytes)});
  section.rows.push_back({texts::newestLabel, dayAndTimeText(*facts.newest, now)});
  if (facts.items() > 1) section.rows.push_back({texts::oldestLabel, dayAndTimeText(*facts.oldest, now)});
  return section;
}

}  // namespace

LocationFacts factsOf(const core::LibraryStore& store, const QString& location) {
  LocationFacts facts;
  const auto belongs = belongingTo(store, location);
  for (const core::AssetRef& item : store.assets())
    if (belongs(*item)) count(facts, *item);
  return facts;
}

const LocationFacts& LocationOverview::facts(const core::LibraryStore& store, const QString& location) {
  const Known now{store.opening(), store.revision(), location};
  if (known_ == now) return facts_;
  facts_ = factsOf(store, location);
  known_ = now;
  return facts_;
}

InspectorDisplay LocationOverview::display(const core::LibraryStore& store, const QString& location,
                                           const account::Spend& spend) {
  InspectorDisplay display;
  if (!store.hasWorkspace()) {
    display.title = texts::nothingSelected;
    return display;
  }
  const LocationFacts& found = facts(store, location);
  display.title = locationTitle(store, location);
  display.facts = texts::itemCount(countText(found.items()), found.items());
  InspectorSection held = contents(found, store.now());
  if (!held.rows.empty()) display.sections.push_back(std::move(held));
  const double spent = month_.total(store);
  InspectorSection money{texts::monthSection, {}, {}};
  money.rows.push_back({texts::spentLabel, spent > 0 ? spend.text(spent) : texts::nothingSpent, false, texts::spentNote});
  display.sections.push_back(std::move(money));
  return display;
}

}  // namespace sorvan::shell
