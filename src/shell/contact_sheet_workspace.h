#pragma once

#include "shell/compared_picture.h"
#include "shell/once_per_turn.h"
#include "shell/sheet_display.h"

#include <QObject>

#include <utility>

namespace sorvan::shell {

class AlertsPresenter;
class JobsPresenter;
class WorkspaceState;

// One contact sheet that is looked at: a passing selection, the comparison that runs, or a stored sheet. It follows the
// library: results take their places as they arrive. A change of a stored sheet is one step of Undo; a passing selection
// is changed for as long as it is open, in the window's state. Main thread.
class ContactSheetWorkspace : public QObject {
  Q_OBJECT

 public:
  // All of these outlive the presenter.
  struct Ports {
    core::LibraryStore& store;
    WorkspaceState& state;
    JobDisplays& displays;
    JobsPresenter& jobs;
    AlertsPresenter& alerts;
    PriceOf priceOf = {};
  };
  explicit ContactSheetWorkspace(Ports ports, QObject* parent = nullptr);

  // Shows another source.
  void open(const ContactSheetSource& source);
  const ContactSheetSource& source() const { return source_; }
  // The stored record behind the source; null for a selection and for one that is gone.
  core::ContactSheetRef sheet() const;

  // The jobs of the comparison, in the order of its requests.
  const std::vector<core::JobRef>& jobs() const { return places_.jobs; }
  // The items of the source, before what was added and taken out for now.
  std::vector<QUuid> baseIDs() const;
  // The items that are shown, in their order.
  std::vector<QUuid> ids() const;
  std::vector<core::AssetRef> assets() const { return assetsOf(places_); }
  const std::vector<ComparisonSlot>& slots() const { return places_.slots; }
  // The pictures among these items, as they are compared.
  std::vector<ComparedPicture> compared(const std::vector<QUuid>& items) const {
    return comparedPictures(on_.store, on_.displays, items);
  }
  // The sheet that is opened next begins with its pictures compared closely.
  void askToCompare() { comparing_ = true; }
  // Whether that was asked for; asked once.
  bool takeCompareRequest() { return std::exchange(comparing_, false); }
  bool isRunning() const { return places_.running; }

  const SheetDisplay& display() const { return display_; }

  // Refused while its comparison runs.
  bool canAdd() const { return !places_.running && !display_.trashed; }
  void add(const std::vector<QUuid>& items);
  // The same for what was dropped, which says in a card why nothing was added.
  void addDropped(const std::vector<QUuid>& items);
  // The item stays in the library.
  void remove(QUuid item) { removeAll({item}); }
  // Several at once, in one step of Undo.
  void removeAll(const std::vector<QUuid>& items);
  // Puts an item that was added by hand before another one of them, or at the end when `before` is null.
  void move(QUuid item, QUuid before);
  // One place further to the front (-1) or to the back (+1).
  void moveBy(QUuid item, int direction);
  void rename(const QString& title);
  void moveToTrash();
  void restore();
  // Makes a stored sheet of a passing selection, in the project, or the Inbox, of its items; null when it failed, which
  // the alerts tell.
  core::ContactSheetRef save();

  void setRating(QUuid item, int stars);  // 0 clears
  void toggleFavorite(QUuid item);
  void setStatus(QUuid item, core::AssetStatus status);
  // The review mark: Shortlist, or back to Draft.
  void toggleReview(QUuid item);
  // Cancel, Retry, Save Result: what the place offers.
  void perform(QUuid job, JobAction action);

 Q_SIGNALS:
  // `display` differs.
  void changed();

 private:
  void refresh();
  void show(const std::vector<QUuid>& items);
  ContactSheetPlaces passingPlaces() const;
  void changeForNow(const std::vector<QUuid>& items);
  void fillPrompt(SheetDisplay& shown) const;
  void say(const QString& text);

  Ports on_;
  ContactSheetSource source_;
  ContactSheetPlaces places_;
  SheetDisplay display_;
  bool comparing_ = false;
  OncePerTurn refreshSoon_{[this] { refresh(); }};
};

}  // namespace sorvan::shell
