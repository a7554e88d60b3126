// Items of the gallery, to be chosen for a contact sheet.
#pragma once

#include <QDialog>
#include <QSet>

#include "shell/views/thumbnail_store.h"
#include "shell/views/wall_source.h"

namespace sorvan::views {

class Button;
class MediaWall;

// Deletes itself when it is closed.
class AddMediaDialog final : public QDialog {
  Q_OBJECT

 public:
  // The source and the store outlive the dialog. What is on the sheet already, and work that has no result yet, cannot
  // be chosen.
  AddMediaDialog(WallSource& source, ThumbnailStore& thumbnails, const std::vector<QUuid>& alreadyThere,
                 QWidget* parent);

  MediaWall& wall() { return *wall_; }

 Q_SIGNALS:
  // In the order of the gallery.
  void chosen(const std::vector<QUuid>& items);

 private:
  void select(const QSet<QUuid>& cells);
  void accept() override;

  WallSource& source_;
  QSet<QUuid> there_;
  MediaWall* wall_;
  Button* add_;
};

}  // namespace sorvan::views
