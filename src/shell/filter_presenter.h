#pragma once

#include "shell/room.h"

#include <QObject>
#include <QString>

#include "shell/gallery_filter.h"

#include <vector>

namespace sorvan::shell {

class GalleryPresenter;
class WorkspaceState;

enum class FilterKind { model, provider, status, rating, orientation, days };

// One chip of the filter row with the choices behind it; the first choice lets everything through.
struct FilterChip {
  FilterKind kind = FilterKind::model;
  QString title;  // “Model”
  QString value;  // what is chosen; empty when everything passes
  std::vector<QString> choices;
  int current = 0;  // -1: a value that is no choice, such as a part of a model's name
};

// The search field, the filter row and the sort menu of the gallery. Main thread.
class FilterPresenter : public QObject {
  Q_OBJECT

 public:
  // Both outlive the presenter.
  FilterPresenter(GalleryPresenter& gallery, WorkspaceState& state, QObject* parent = nullptr);

  QString search() const;
  void setSearch(const QString& text);

  std::vector<QString> types() const;  // “All”, “Images”, “Video”, “Audio”
  int type() const;
  void setType(int index);

  std::vector<FilterChip> chips() const;
  void choose(FilterKind kind, int choice);

  std::vector<QString> sorts() const;  // “Newest”, “Oldest”…
  int sort() const;
  void setSort(int index);

  // Whether anything but the sort narrows the location.
  bool narrows() const;
  void clear();

 Q_SIGNALS:
  void changed();

 private:
  void edit(const std::function<void(GalleryFilter&)>& change);
  FilterChip modelChip() const;
  FilterChip providerChip() const;

  GalleryPresenter& gallery_;
  WorkspaceState& state_;
};

}  // namespace sorvan::shell
