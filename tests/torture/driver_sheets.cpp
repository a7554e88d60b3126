#include "torture/driver_sheets.h"

#include <QJsonArray>

#include <algorithm>

#include "base/ids.h"
#include "base/sorvan_error.h"
#include "shell/contact_sheets.h"

namespace sorvan::torture {
namespace {

constexpr std::size_t mostItems = 8;

std::vector<core::ContactSheetRef> oldestFirst(const core::LibraryStore& store) {
  std::vector<core::ContactSheetRef> sheets(store.contactSheets().begin(), store.contactSheets().end());
  std::ranges::stable_sort(sheets, std::less<>(), [](const auto& sheet) { return sheet->createdAt; });
  return sheets;
}

core::ContactSheetRef makeSheet(core::LibraryStore& store) {
  std::vector<core::AssetRef> items;
  for (const core::AssetRef& item : store.assets())
    if (items.size() < mostItems && !item->isTrashed()) items.push_back(item);
  try {
    return shell::createContactSheet(store, items, std::nullopt);
  } catch (const base::SorvanError&) {
    return nullptr;  // a save that failed promises nothing
  }
}

QJsonArray itemsOf(const core::ContactSheet& sheet) {
  QJsonArray items;
  for (const QUuid& id : sheet.assetIDs) items.append(base::uuidText(id));
  return items;
}

QJsonObject madeSheet(core::LibraryStore& store) {
  const core::ContactSheetRef sheet = makeSheet(store);
  return sheet ? QJsonObject{{QStringLiteral("id"), base::uuidText(sheet->id)}} : QJsonObject();
}

QJsonObject changed(core::LibraryStore& store, const core::ContactSheetRef& sheet, const QJsonObject& command) {
  const QString what = command.value(QLatin1String("what")).toString();
  QJsonObject promise{{QStringLiteral("id"), base::uuidText(sheet->id)}};
  if (what == QStringLiteral("order")) {
    shell::setContactSheetAssets(store, sheet, {sheet->assetIDs.rbegin(), sheet->assetIDs.rend()});
    promise.insert(QStringLiteral("items"), itemsOf(*sheet));
  } else if (what == QStringLiteral("title")) {
    const int number = command.value(QLatin1String("number")).toInt();
    shell::renameContactSheet(store, sheet, QString::number(number));
    promise.insert(QStringLiteral("number"), number);
  } else if (what == QStringLiteral("trash")) {
    shell::deleteContactSheet(store, sheet);
    promise.insert(QStringLiteral("trashed"), true);
  } else if (what == QStringLiteral("restore")) {
    shell::restoreContactSheet(store, sheet);
    promise.insert(QStringLiteral("trashed"), false);
  }
  return promise;
}

}  // namespace

QJsonObject changeSheet(HeadlessStudio& studio, const QJsonObject& command) {
  core::LibraryStore& store = *studio.store;
  const QString what = command.value(QLatin1String("what")).toString();
  if (what == QStringLiteral("make")) return madeSheet(store);
  const std::vector<core::ContactSheetRef> sheets = oldestFirst(store);
  if (sheets.empty()) return {};
  const QJsonObject promise =
      changed(store, what == QStringLiteral("trash") ? sheets.back() : sheets.front(), command);
  return store.error() ? QJsonObject() : promise;
}

QJsonArray sheetReports(const core::LibraryStore& store) {
  QJsonArray reports;
  for (const core::ContactSheetRef& sheet : oldestFirst(store))
    reports.append(QJsonObject{{QStringLiteral("id"), base::uuidText(sheet->id)},
                               {QStringLiteral("title"), sheet->title},
                               {QStringLiteral("items"), itemsOf(*sheet)},
                               {QStringLiteral("trashed"), sheet->deletedAt.has_value()}});
  return reports;
}

}  // namespace sorvan::torture
