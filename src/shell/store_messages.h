#pragma once

#include "shell/room.h"

#include <QObject>
#include <QString>

#include <optional>

namespace sorvan::core {
class LibraryStore;
}

namespace sorvan::shell {

class AlertsPresenter;

// Shows the store's `error` as an alert and its `notice` as a card that stays, and clears them once they are dismissed.
// While something waits to be saved, the alert offers to try again. Main thread.
class StoreMessages : public QObject {
  Q_OBJECT

 public:
  // Both outlive this object.
  StoreMessages(core::LibraryStore& store, AlertsPresenter& alerts, QObject* parent = nullptr);

 private:
  void showError();
  void showNotice();
  enum class Answered { dismissed, tryAgain };
  void answered(const QString& text, Answered answer);

  core::LibraryStore& store_;
  AlertsPresenter& alerts_;
  std::optional<quint64> shownError_;
  std::optional<quint64> shownNotice_;
};

}  // namespace sorvan::shell
