#pragma once

#include "shell/once_per_turn.h"

#include "core/record_context.h"

#include <QHash>
#include <QObject>
#include <QString>
#include <QUuid>

#include <vector>

namespace sorvan::core {
class LibraryStore;
}

namespace sorvan::shell {

class AlertsPresenter;
class JobDisplays;
class WorkspaceState;

// A contact sheet as its card in the list shows it.
struct SheetCard {
  QUuid id;
  QString title;
  QString factsText;                   // “4 items · 12 Nov”, or that its comparison runs
  std::vector<QString> thumbnails;     // of at most four of its items, in its order
  std::vector<QString> files;          // the pictures themselves, where a thumbnail is missing; empty for others
  bool running = false;
  QString accessibleName;
};

// The contact sheets of the window's location, last changed first, narrowed by a query. Main thread.
class SheetBrowserPresenter : public QObject {
  Q_OBJECT

 public:
  // All of these outlive the presenter.
  struct Ports {
    core::LibraryStore& store;
    WorkspaceState& state;
    JobDisplays& displays;
    AlertsPresenter& alerts;
  };
  explicit SheetBrowserPresenter(Ports ports, QObject* parent = nullptr);

  int count() const { return static_cast<int>(sheets_.size()); }
  QUuid idAt(int index) const { return sheets_.at(static_cast<std::size_t>(index)); }
  int indexOf(QUuid sheet) const;
  const SheetCard& cardAt(int index) const;
  // Null when it is gone.
  core::ContactSheetRef recordOf(QUuid sheet) const;
  bool showsTrash() const;
  QString countText() const;
  QString emptyTitle() const;
  QString emptyText() const;

  const QString& query() const { return query_; }
  void setQuery(const QString& query);

  // A sheet of these items, in their order, in the window's project or the Inbox. Null when it cannot be made, which the
  // alerts tell.
  QUuid create(const std::vector<QUuid>& items);
  // Adds items that were dropped on a card; a card says what came of it.
  void addDropped(QUuid sheet, const std::vector<QUuid>& items);
  void rename(QUuid sheet, const QString& title);
  void moveToTrash(QUuid sheet);
  void restore(QUuid sheet);

 Q_SIGNALS:
  // Order, number or looks of the cards differ.
  void changed();

 private:
  void say(const QString& text);
  void refresh();
  SheetCard makeCard(QUuid id) const;

  Ports on_;
  QString query_;
  std::vector<QUuid> sheets_;
  mutable QHash<QUuid, SheetCard> cards_;  // made when first asked for, until the library changes
  OncePerTurn refreshSoon_{[this] { refresh(); }};
};

}  // namespace sorvan::shell
