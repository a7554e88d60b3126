#include "account/charges.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <QDate>
#include <QSet>

#include "account/texts.h"
#include "core/library_store.h"

namespace sorvan::account {

namespace {

const QString imported = QStringLiteral("imported");

/// Early records named a single credit in the plural.
QString repaired(const QString& note) {
  const QString wrong = QStringLiteral("with 1 Sorvan Credits.");
  return note.endsWith(wrong) ? note.chopped(2) + QLatin1Char('.') : note;
}

Charge rowOf(const ExtraCharge& entry, const LibraryStore& store) {
  Charge row;
  row.id = entry.id;
  row.date = entry.date;
  row.title = entry.title;
  row.prompt = entry.detail;
  row.model = entry.model;
  row.provider = entry.provider;
  row.projectID = entry.projectID;
  if (entry.mediaType) row.mediaType = fromRawValue<MediaType>(*entry.mediaType).value_or(MediaType::image);
  row.cost = entry.usd;
  row.credits = entry.credits;
  row.basis = entry.basis;
  if (!entry.note.isEmpty()) row.note = repaired(entry.note);
  if (entry.assetID) row.asset = store.asset(*entry.assetID);
  row.filename = row.asset ? row.asset->filename() : QString();
  return row;
}

/// The ledger entries of a scope that no generation stands for.
std::vector<const ExtraCharge*> extras(const LibraryStore& store, const ChargeScope& scope) {
  std::vector<const ExtraCharge*> found;
  QSet<QUuid> ids;
  for (const ExtraCharge& entry : store.extraCharges().entries()) {
    if (!scope.covers(entry.projectID, entry.date) || !store.generationsOf(entry.id).empty()) continue;
    found.push_back(&entry);
    ids.insert(entry.id);
  }
  if (found.empty()) return found;
  QSet<QUuid> landed;
  for (const GenerationRef& generation : store.generations())
    if (ids.contains(generation->id)) landed.insert(generation->id);
  std::erase_if(found, [&](const ExtraCharge* entry) { return landed.contains(entry->id); });
  return found;
}

}  // namespace

bool isBilled(const Generation& generation) { return generation.status != imported && !generation.isCopy(); }

bool ChargeScope::covers(const std::optional<QUuid>& project, Instant date) const {
  if (projects == ChargedProjects::one && project != projectID) return false;
  return !interval || interval->contains(date);
}

QString paidWith(const QString& provider) {
  if (provider == QLatin1StringView("fal.ai")) return texts::paidWithOwnKey();
  if (provider == QLatin1StringView("OpenAI")) return texts::paidWithRetiredKey();
  return provider;
}

QString Charge::paidWith() const { return account::paidWith(provider); }

QString Charge::costDisplay(const Spend& spend) const {
  if (!cost) return texts::notRecorded();
  if (credits) return creditsText(*credits) + spend.aside(*cost);
  return spend.ownKeyAllowed ? Spend::estimate(*cost) : spend.text(*cost);
}

Charge chargeOf(const Generation& generation, const AssetRef& asset) {
  Charge row;
  row.id = generation.id;
  row.date = generation.createdAt;
  row.prompt = generation.prompt;
  row.model = generation.model;
  row.provider = generation.provider;
  row.mediaType = asset ? asset->type() : MediaType::image;
  if (const auto cost = generation.costRecord()) {
    row.cost = cost->perImageUSD;
    row.credits = cost->credits;
    row.basis = cost->basis;
    row.note = repaired(cost->note);
  }
  if (!asset) return row;
  row.projectID = asset->projectID;
  row.filename = asset->filename();
  row.title = row.filename;
  row.asset = asset;
  return row;
}

std::vector<GenerationRef> billedGenerations(const LibraryStore& store, const ChargeScope& scope) {
  std::vector<GenerationRef> billed;
  for (const GenerationRef& generation : store.generations()) {
    if (scope.interval && !scope.interval->contains(generation->createdAt)) continue;
    if (scope.projects == ChargedProjects::one) {
      const AssetRef asset = store.asset(generation->assetID);
      if ((asset ? asset->projectID : std::nullopt) != scope.projectID) continue;
    }
    if (isBilled(*generation)) billed.push_back(generation);
  }
  return billed;
}

std::vector<Charge> charges(const LibraryStore& store, const ChargeScope& scope) {
  std::vector<Charge> rows;
  for (const GenerationRef& generation : billedGenerations(store, scope))
    rows.push_back(chargeOf(*generation, store.asset(generation->assetID)));
  for (Charge& row : ledgerCharges(store, scope)) rows.push_back(std::move(row));
  sortNewestFirst(rows);
  return rows;
}

std::vector<Charge> ledgerCharges(const LibraryStore& store, const ChargeScope& scope) {
  std::vector<Charge> rows;
  for (const ExtraCharge* entry : extras(store, scope)) rows.push_back(rowOf(*entry, store));
  return rows;
}

std::vector<Charge> chargesWithin(const std::vector<Charge>& charges, const ChargeScope& scope) {
  std::vector<Charge> rows;
  for (const Charge& row : charges)
    if (scope.covers(row.projectID, row.date)) rows.push_back(row);
  return rows;
}

void sortNewestFirst(std::vector<Charge>& charges) {
  std::stable_sort(charges.begin(), charges.end(), [](const Charge& a, const Charge& b) { return a.date > b.date; });
}

DateInterval calendarMonth(Instant moment) {
  const QDate day = moment.toDateTime().toLocalTime().date();
  const QDate first(day.year(), day.month(), 1);
  const double next = Instant::fromDateTime(first.addMonths(1).startOfDay()).seconds;
  return {Instant::fromDateTime(first.startOfDay()), {std::nextafter(next, -std::numeric_limits<double>::infinity())}};
}

double MonthSpend::total(const LibraryStore& store) {
  const Known now{store.opening(), store.revision(), calendarMonth(store.now())};
  if (known == now) return sum;
  const ChargeScope scope{{}, ChargedProjects::all, now.month};
  sum = 0;
  for (const GenerationRef& generation : billedGenerations(store, scope))
    if (const auto cost = generation->costRecord()) sum += cost->perImageUSD;
  for (const ExtraCharge* entry : extras(store, scope)) sum += entry->usd.value_or(0);
  known = now;
  return sum;
}

}  // namespace sorvan::account
