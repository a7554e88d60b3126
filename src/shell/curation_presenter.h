#pragma once

#include "shell/room.h"

#include <QObject>
#include <QSet>

#include "core/enumerations.h"
#include "core/records.h"
#include "exchange/trash.h"

#include <functional>
#include <optional>
#include <vector>

namespace sorvan::core {
class LibraryStore;
}

namespace sorvan::shell {

class AlertsPresenter;
class GalleryPresenter;
class WorkspaceState;

// A place to which items can be moved.
struct Destination {
  std::optional<QUuid> project;  // none: the Inbox
  QString name;
};

// What a person does to the selected items: marks, names, places, Trash and the way back. Each is one step of Undo. It
// touches only what the gallery shows, so that nothing hidden by a filter is changed. A failure is shown by the store's
// `error`. Main thread.
class CurationPresenter : public QObject {
  Q_OBJECT

 public:
  // All of these outlive the presenter.
  struct Ports {
    core::LibraryStore& store;
    WorkspaceState& state;
    GalleryPresenter& gallery;
    AlertsPresenter& alerts;
    // Counts that a feature was used; may be empty.
    std::function<void(const QString& event)> noteUsage = {};
  };
  explicit CurationPresenter(Ports ports, QObject* parent = nullptr);

  bool hasLiveItems() const;     // a selected item is outside Trash
  bool hasTrashedItems() const;  // a selected item is in Trash
  qsizetype selectedItems() const;  // items among what is selected and shown
  // The one selected item that is outside Trash; null when there is none or are several.
  core::AssetRef soleItem() const;

  // Favourites all, or none when all are.
  void toggleFavorite();
  // One item, selected or not.
  void toggleFavoriteOf(QUuid item);
  void setRating(int stars);  // 0 clears
  void setStatus(core::AssetStatus status);
  void rename(QUuid item, const QString& name);
  void setNotes(QUuid item, const QString& notes);
  // The Inbox and every project that is not archived, without the place where all selected items are.
  std::vector<Destination> destinations() const;
  void moveTo(std::optional<QUuid> project);
  // Items were dropped on a place of the sidebar: it takes them up, marks them or sends them to Trash.
  void drop(const std::vector<QUuid>& items, const QString& location);
  // Asks first where a saved reference holds them or a contact sheet would be left with fewer than two items. The next
  // item is selected in their place; a card offers Restore.
  void moveToTrash();
  // Asks first where the items are listed by a saved reference or a contact sheet.
  void restoreSelected();

  // Whether a rating or a status given by key goes on to the next item. Kept in the settings.
  bool stepsOn() const;
  void setStepsOn(bool stepsOn);

 Q_SIGNALS:
  void stepsOnChanged();

 private:
  // Whether there is an item outside Trash, and one in it, in what is selected.
  struct Held {
    std::uint64_t opening = 0;
    std::uint64_t revision = 0;
    QSet<QUuid> selection;
    bool live = false;
    bool trashed = false;
  };
  const Held& held() const;
  std::vector<core::AssetRef> shownItems(bool inTrash) const;
  void mark(const std::function<void(const std::vector<core::AssetRef>&)>& change);
  using Change = std::function<void(const std::vector<core::AssetRef>&)>;
  void withinHistory(qint64 bytes, const std::vector<core::AssetRef>& items, Change change);
  void within(qint64 bytes, const QString& warning, const std::vector<core::AssetRef>& items, Change change);
  std::vector<core::AssetRef> still(const std::vector<QUuid>& ids) const;
  std::vector<QUuid> walkedItems() const;
  bool walks() const;
  QUuid itemAfter(const QSet<QUuid>& leaving) const;
  void goTo(QUuid item);
  std::vector<core::AssetRef> live(const std::vector<QUuid>& ids) const;
  void place(const std::vector<core::AssetRef>& items, std::optional<QUuid> project);
  void trash(const std::vector<core::AssetRef>& trashed);
  void showTrashCard(const std::vector<QUuid>& ids);
  void withdrawTrashCards();
  void restore(const std::vector<QUuid>& ids, exchange::Rejoin rejoin);

  // A card about what went to Trash.
  struct TrashCard {
    quint64 id = 0;
    std::vector<QUuid> items;
  };

  Ports on_;
  std::vector<TrashCard> trashCards_;
  mutable std::optional<Held> held_;
};

// The question before items come back out of Trash.
QString restoreQuestionText(qsizetype items, const exchange::Holders& holders);

}  // namespace sorvan::shell
