#include "shell/step_card.h"

#include "core/history.h"
#include "core/library_store.h"
#include "shell/alerts_presenter.h"
#include "shell/texts.h"

namespace sorvan::shell {

namespace {

constexpr core::HistoryDirection back = core::HistoryDirection::undo;

// Takes the card away once its step is not the next one, and goes with it.
class StepWatch final : public QObject {
 public:
  StepWatch(core::LibraryStore& store, AlertsPresenter& alerts, quint64 card)
      : QObject(&alerts), store_(store), alerts_(alerts), card_(card), step_(store.history().next(back)) {
    connect(&store.history(), &core::LibraryHistory::changed, this, &StepWatch::look);
    connect(&store, &core::LibraryStore::activityChanged, this, &StepWatch::look);
    connect(&alerts, &AlertsPresenter::toastDismissed, this, [this](quint64 gone) {
      if (gone == card_) deleteLater();
    });
  }

 private:
  void look() {
    if (store_.history().next(back) != step_ || !core::canTake(store_, back)) alerts_.dismissToast(card_);
  }

  core::LibraryStore& store_;
  AlertsPresenter& alerts_;
  quint64 card_;
  std::shared_ptr<const core::LibraryEdit> step_;
};

}  // namespace

void showStepCard(core::LibraryStore& store, AlertsPresenter& alerts, Toast toast) {
  if (!core::canTake(store, back)) {
    alerts.showToast(std::move(toast));
    return;
  }
  toast.actionTitle = texts::undo;
  toast.leaves = true;
  const quint64 card = alerts.showToast(std::move(toast), [&store] { core::applyHistory(store, back); });
  new StepWatch(store, alerts, card);
}

}  // namespace sorvan::shell
