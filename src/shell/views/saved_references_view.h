// The page of saved references: kinds over a grid of cards.
#pragma once

#include <QWidget>

#include "shell/saved_references_presenter.h"
#include "shell/views/room.h"
#include "shell/views/tile_grid.h"

namespace sorvan::views {

class Button;
class EmptyNote;
class Label;
class SegmentedControl;
class TextField;
class ThumbnailStore;

// Cards with up to four pictures of the reference, its name, its kind and what it shows.
class ReferenceGrid final : public TileGrid {
  Q_OBJECT

 public:
  explicit ReferenceGrid(ThumbnailStore& thumbnails, QWidget* parent = nullptr);
  void show(const std::vector<ReferenceCard>& cards);

 protected:
  void paintTile(QPainter& painter, int index, const QRect& area, const Look& look) override;

 private:
  void paintMosaic(QPainter& painter, const ReferenceCard& card, const QRect& area) const;
  void paintPicture(QPainter& painter, const std::pair<QString, QString>& picture, const QRect& area) const;
  void paintWords(QPainter& painter, const ReferenceCard& card, const QRect& area) const;

  ThumbnailStore& thumbnails_;
  std::vector<ReferenceCard> cards_;
};

// Enter attaches a reference to the composer, E edits it, Delete deletes it.
class SavedReferencesView final : public QWidget {
  Q_OBJECT

 public:
  // Both outlive the view.
  SavedReferencesView(SavedReferencesPresenter& references, ReferenceScope scope, ThumbnailStore& thumbnails,
                      QWidget* parent = nullptr);

  ReferenceGrid* grid() const { return grid_; }
  // The search and the button of a new reference, for the toolbar.
  QWidget* tools() const { return tools_; }
  QString title() const;
  QString countText() const;

 Q_SIGNALS:
  void titleChanged();

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void build();
  void refresh();
  void edit(QUuid reference);
  void openMenu(QUuid reference, QPoint at);

  SavedReferencesPresenter& references_;
  ReferenceScope scope_;
  SegmentedControl* kinds_ = nullptr;
  ReferenceGrid* grid_;
  QWidget* emptyRoom_;  // keeps the note together in the middle
  EmptyNote* empty_;
  QWidget* tools_;
  TextField* search_;
  QString kind_;
};

}  // namespace sorvan::views
