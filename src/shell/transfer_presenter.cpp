#include "shell/transfer_presenter.h"

#include "core/library_store.h"
#include "shell/alerts_presenter.h"
#include "shell/gallery_presenter.h"
#include "shell/transfer_texts.h"
#include "shell/workspace_state.h"

#include <QFileInfo>

#include <algorithm>

namespace sorvan::shell {

TransferPresenter::TransferPresenter(Ports ports, QObject* parent) : QObject(parent), on_(std::move(ports)) {}

bool TransferPresenter::hasItems() const {
  return std::ranges::any_of(on_.state.selection(), [this](const QUuid& id) { return on_.store.asset(id) != nullptr; });
}

std::vector<TransferItem> TransferPresenter::items() const {
  std::vector<TransferItem> items;
  const QSet<QUuid>& selection = on_.state.selection();
  for (int index = on_.gallery.jobCount(); index < on_.gallery.count(); ++index) {
    const QUuid id = on_.gallery.idAt(index);
    const core::AssetRef item = selection.contains(id) ? on_.store.asset(id) : nullptr;
    if (!item) continue;
    const QString path = on_.store.fileOf(*item);
    if (QFileInfo::exists(path)) items.push_back({id, path, item->type() == core::MediaType::image});
  }
  return items;
}

std::unique_ptr<QMimeData> TransferPresenter::selectedItems() const {
  const std::vector<TransferItem> found = items();
  return found.empty() ? nullptr : transferOf(found);
}

void TransferPresenter::copySelected() {
  if (!hasItems()) return;
  const std::vector<TransferItem> found = items();
  Toast toast;
  toast.tone = found.empty() ? AlertTone::warning : AlertTone::success;
  toast.text = found.empty() ? texts::originalsMissing(on_.state.selection().size())
                             : texts::itemsCopied(static_cast<qsizetype>(found.size()));
  if (!found.empty()) on_.toClipboard(transferOf(found));
  on_.alerts.showToast(std::move(toast));
}

void TransferPresenter::refuseFiles(qsizetype count) {
  Toast toast;
  toast.text = texts::importLater;
  toast.secondLine = texts::nothingTouched(count);
  on_.alerts.showToast(std::move(toast));
}

}  // namespace sorvan::shell
