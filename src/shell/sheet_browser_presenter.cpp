#include "shell/sheet_browser_presenter.h"

#include "base/ids.h"
#include "shell/alerts_presenter.h"
#include "shell/contact_sheets.h"
#include "shell/job_displays.h"
#include "shell/sheet_texts.h"
#include "shell/wording.h"
#include "shell/workspace_state.h"


#include <algorithm>

namespace sorvan::shell {

namespace {

constexpr std::size_t mosaicPictures = 4;

}  // namespace

SheetBrowserPresenter::SheetBrowserPresenter(Ports ports, QObject* parent) : QObject(parent), on_(ports) {
  connect(&on_.store, &core::LibraryStore::revisionChanged, &refreshSoon_, &OncePerTurn::request);
  connect(&on_.store, &core::LibraryStore::workspaceChanged, &refreshSoon_, &OncePerTurn::request);
  connect(&on_.state, &WorkspaceState::locationChanged, this, &SheetBrowserPresenter::refresh);
  refresh();
}

core::ContactSheetRef SheetBrowserPresenter::recordOf(QUuid sheet) const {
  return sheetFor(on_.store, StoredSheet{sheet});
}

bool SheetBrowserPresenter::showsTrash() const { return on_.state.location() == trashLocation; }

void SheetBrowserPresenter::setQuery(const QString& query) {
  if (query_ == query) return;
  query_ = query;
  refresh();
}

void SheetBrowserPresenter::refresh() {
  refreshSoon_.withdraw();
  sheets_.clear();
  cards_.clear();
  if (on_.store.hasWorkspace()) {
    const auto modelName = [this](const QString& model) { return on_.displays.modelName(model); };
    for (const core::ContactSheetRef& sheet : sheetsAt(on_.store, on_.state.location(), query_, modelName))
      sheets_.push_back(sheet->id);
  }
  Q_EMIT changed();
}

int SheetBrowserPresenter::indexOf(QUuid sheet) const {
  const auto found = std::ranges::find(sheets_, sheet);
  return found == sheets_.end() ? -1 : static_cast<int>(found - sheets_.begin());
}

const SheetCard& SheetBrowserPresenter::cardAt(int index) const {
  const QUuid id = idAt(index);
  auto known = cards_.constFind(id);
  if (known == cards_.cend()) known = cards_.insert(id, makeCard(id));
  return *known;
}

SheetCard SheetBrowserPresenter::makeCard(QUuid id) const {
  SheetCard card;
  card.id = id;
  const core::ContactSheetRef sheet = sheetFor(on_.store, StoredSheet{card.id});
  if (!sheet) return card;
  const ContactSheetPlaces places = placesOf(on_.store, StoredSheet{card.id});
  const std::vector<core::AssetRef> items = assetsOf(places);
  card.title = sheet->title;
  card.running = places.running;
  for (const core::AssetRef& item : items) {
    if (card.thumbnails.size() == mosaicPictures) break;
    card.thumbnails.push_back(on_.store.thumbnailOf(*item).value_or(QString()));
    card.files.push_back(item->type() == core::MediaType::image ? on_.store.fileOf(*item) : QString());
  }
  const QString state = places.running ? texts::comparisonRunning : texts::sheetItems(std::ssize(items));
  card.factsText = state + QStringLiteral(" · ") + dayText(sheet->updatedAt, on_.store.now());
  card.accessibleName = card.title + QStringLiteral(", ") + card.factsText;
  if (sheet->deletedAt) card.accessibleName += QStringLiteral(", ") + texts::sheetInTrash;
  return card;
}

QString SheetBrowserPresenter::countText() const { return texts::sheetCount(shell::countText(count()), count()); }

QString SheetBrowserPresenter::emptyTitle() const {
  if (!query_.trimmed().isEmpty()) return texts::noSheetMatches;
  return showsTrash() ? texts::noSheetsInTrash : texts::noSheetsYet;
}

QString SheetBrowserPresenter::emptyText() const {
  if (!query_.trimmed().isEmpty()) return texts::noSheetMatchesText;
  return showsTrash() ? texts::noSheetsInTrashText : texts::noSheetsYetText;
}

QUuid SheetBrowserPresenter::create(const std::vector<QUuid>& items) {
  std::vector<core::AssetRef> assets;
  for (const QUuid& id : items)
    if (core::AssetRef asset = on_.store.asset(id)) assets.push_back(std::move(asset));
  const QUuid project = base::uuidFromText(on_.state.location());
  try {
    return createContactSheet(on_.store, assets, project.isNull() ? std::optional<QUuid>() : project)->id;
  } catch (const SorvanError& failure) {
    on_.alerts.showError(failure.message());
    return {};
  }
}

void SheetBrowserPresenter::say(const QString& text) {
  Toast toast;
  toast.text = text;
  on_.alerts.showToast(std::move(toast));
}

void SheetBrowserPresenter::addDropped(QUuid sheet, const std::vector<QUuid>& items) {
  const core::ContactSheetRef record = sheetFor(on_.store, StoredSheet{sheet});
  if (!record) return;
  const ContactSheetPlaces places = placesOf(on_.store, StoredSheet{sheet});
  if (places.running) return say(texts::addAfterComparison);
  if (record->deletedAt) return say(texts::trashedSheetStays);
  std::vector<QUuid> wanted;
  for (const core::AssetRef& asset : assetsOf(places)) wanted.push_back(asset->id);
  const std::size_t before = wanted.size();
  for (const QUuid& item : items)
    if (std::ranges::find(wanted, item) == wanted.end() && on_.store.asset(item)) wanted.push_back(item);
  if (wanted.size() == before) return say(texts::alreadyOnSheet(std::ssize(items)));
  setContactSheetAssets(on_.store, record, wanted);
  say(texts::addedToSheet(static_cast<qsizetype>(wanted.size() - before)));
}

void SheetBrowserPresenter::rename(QUuid sheet, const QString& title) {
  if (const core::ContactSheetRef record = sheetFor(on_.store, StoredSheet{sheet}))
    renameContactSheet(on_.store, record, title);
}

void SheetBrowserPresenter::moveToTrash(QUuid sheet) {
  if (const core::ContactSheetRef record = sheetFor(on_.store, StoredSheet{sheet}))
    deleteContactSheet(on_.store, record);
}

void SheetBrowserPresenter::restore(QUuid sheet) {
  if (const core::ContactSheetRef record = sheetFor(on_.store, StoredSheet{sheet}))
    restoreContactSheet(on_.store, record);
}

}  // namespace sorvan::shell
