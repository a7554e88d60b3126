#include "shell/transfer_presenter.h"

#include "core/library_store.h"
#include "shell/alerts_presenter.h"
#include "shell/gallery_presenter.h"
#include "shell/transfer_texts.h"
#include "shell/workspace_state.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QSet>

#include <algorithm>

namespace sorvan::shell {

TransferPresenter::TransferPresenter(Ports ports, QObject* parent) : QObject(parent), on_(std::move(ports)) {}

bool TransferPresenter::hasItems() const {
  return std::ranges::any_of(on_.state.selection(), [this](const QUuid& id) { return on_.store.asset(id) != nullptr; });
}

// In the order of the gallery; what it does not show comes last.
std::vector<core::AssetRef> TransferPresenter::inOrder() const {
  std::vector<core::AssetRef> items;
  const auto add = [&](const QUuid& id) {
    if (core::AssetRef item = on_.store.asset(id)) items.push_back(std::move(item));
  };
  QSet<QUuid> others = on_.state.selection();
  for (int index = on_.gallery.jobCount(); index < on_.gallery.count() && !others.isEmpty(); ++index)
    if (others.remove(on_.gallery.idAt(index))) add(on_.gallery.idAt(index));
  for (const QUuid& id : others) add(id);
  return items;
}

TransferPresenter::Selected TransferPresenter::items() const {
  Selected selected;
  for (const core::AssetRef& item : inOrder()) {
    const QString path = on_.store.fileOf(*item);
    if (QFileInfo::exists(path))
      selected.there.push_back({item->id, path, item->type() == core::MediaType::image});
    else
      ++selected.missing;
  }
  return selected;
}

std::unique_ptr<QMimeData> TransferPresenter::selectedItems() const {
  const Selected found = items();
  return found.there.empty() ? nullptr : transferOf(found.there);
}

std::unique_ptr<QMimeData> TransferPresenter::itemsToDrag() {
  const Selected found = items();
  if (found.missing > 0) {
    Toast toast;
    toast.tone = AlertTone::warning;
    toast.text = found.there.empty() ? texts::nothingToDrag(found.missing) : texts::leftOut(found.missing);
    on_.alerts.showToast(std::move(toast));
  }
  return found.there.empty() ? nullptr : transferOf(found.there);
}

void TransferPresenter::copySelected() {
  const Selected found = items();
  if (found.there.empty() && found.missing == 0) return;
  Toast toast;
  toast.tone = found.missing > 0 ? AlertTone::warning : AlertTone::success;
  toast.text = found.there.empty() ? texts::originalsMissing(found.missing)
                                   : texts::itemsCopied(static_cast<qsizetype>(found.there.size()));
  if (!found.there.empty()) {
    if (found.missing > 0) toast.secondLine = texts::leftOut(found.missing);
    on_.toClipboard(transferOf(found.there));
  }
  on_.alerts.showToast(std::move(toast));
}

BroughtItems TransferPresenter::brought(const QMimeData& data) const {
  BroughtItems brought;
  QSet<QUuid> known;
  const auto add = [&](const QUuid& id) {
    if (known.contains(id) || !on_.store.asset(id)) return;
    known.insert(id);
    brought.items.push_back(id);
  };
  for (const QUuid& id : itemsFromInside(data)) add(id);
  const QList<QUrl> files = filesFromOutside(data);
  if (files.isEmpty()) return brought;
  // The file manager may know the library's folder by another way through links.
  const QDir root(QFileInfo(on_.store.files().root()).canonicalFilePath());
  QStringList relative;
  QHash<QString, QUuid> paths;
  for (const QUrl& file : files) {
    relative << root.relativeFilePath(QFileInfo(file.toLocalFile()).canonicalFilePath());
    paths.insert(relative.back(), {});
  }
  for (const core::AssetRef& asset : on_.store.assets()) {
    const auto path = paths.find(asset->localFilePath);
    if (path != paths.end()) *path = asset->id;
  }
  for (const QString& path : relative) {
    const QUuid item = paths.value(path);
    if (item.isNull()) ++brought.otherFiles;
    else add(item);
  }
  return brought;
}

void TransferPresenter::refuseFiles(qsizetype count) {
  Toast toast;
  toast.text = texts::importLater;
  toast.secondLine = texts::nothingTouched(count);
  on_.alerts.showToast(std::move(toast));
}

}  // namespace sorvan::shell
