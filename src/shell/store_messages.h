#pragma once

#include "shell/room.h"

#include <QHash>
#include <QObject>
#include <QString>

#include <optional>

namespace sorvan::core {
class LibraryStore;
}

namespace sorvan::shell {

class AlertsPresenter;
class WorkspaceState;

// Shows the store's `error` as an alert and its `notice` as a card that stays, and clears them once they are dismissed.
// An error that comes while another one stands waits behind it. While something waits to be saved, the alert offers to
// try again; a notice about Trash leads there. Main thread.
class StoreMessages : public QObject {
  Q_OBJECT

 public:
  // All outlive this object.
  StoreMessages(core::LibraryStore& store, AlertsPresenter& alerts, WorkspaceState& state, QObject* parent = nullptr);

 private:
  void showError();
  void showNotice();
  void tell(const QString& error);
  enum class Answered { dismissed, tryAgain };
  void answered(const QString& text, Answered answer);

  core::LibraryStore& store_;
  AlertsPresenter& alerts_;
  WorkspaceState& state_;
  // The store's error as it was shown last, and the errors that have not been read yet with their alerts.
  std::optional<QString> told_;
  QHash<QString, quint64> unread_;
  std::optional<quint64> shownNotice_;
};

}  // namespace sorvan::shell
