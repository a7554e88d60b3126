// The sheet in which a saved reference is made or changed.
#pragma once

#include <QDialog>
#include <QTimer>

#include "shell/saved_references_presenter.h"
#include "shell/views/room.h"

class QFormLayout;

namespace sorvan::views {

class AttachGrid;
class Button;
class ChoiceField;
class Paragraph;
class PictureRow;
class SegmentedControl;
class TextArea;
class TextField;
class ThumbnailStore;

// Fields with what is wrong under the one that it concerns. It stays open until the reference is saved. Deletes itself
// when it is closed.
class ReferenceEditor final : public QDialog {
  Q_OBJECT

 public:
  // Both outlive the sheet.
  ReferenceEditor(SavedReferencesPresenter& references, const SavedReferenceDraft& draft, ThumbnailStore& thumbnails,
                  QWidget* parent);

  SavedReferenceDraft draft() const;

 private:
  void build();
  void buildScope(QFormLayout& form);
  void buildImages(QFormLayout& form);
  void fill();
  void refreshHandle();
  void refreshImages();
  void openPicker(bool open);
  void showProblem(const ReferenceProblem& problem);
  void openImageMenu(int place);
  void save();

  SavedReferencesPresenter& references_;
  SavedReferenceDraft draft_;
  ThumbnailStore& thumbnails_;
  TextField* name_;
  Paragraph* nameHint_;
  ChoiceField* kind_;
  SegmentedControl* scope_ = nullptr;
  std::optional<QUuid> project_;
  Paragraph* scopeProblem_;
  TextField* subject_;
  Paragraph* subjectHint_;
  PictureRow* images_;
  Paragraph* imagesProblem_;
  QWidget* picker_;
  TextField* search_;
  AttachGrid* grid_;
  TextArea* notes_;
  Paragraph* problem_;
  Button* save_;
  QTimer typing_;
};

// The pictures of the reference, small, with a place to add more.
class PictureRow final : public QWidget {
  Q_OBJECT

 public:
  explicit PictureRow(ThumbnailStore& thumbnails, QWidget* parent = nullptr);
  void show(const std::vector<ReferenceTile>& tiles);

 Q_SIGNALS:
  void pressed(int place);
  void moved(int place, int step);
  void removed(int place);
  void addPressed();

 private:
  ThumbnailStore& thumbnails_;
  std::vector<QWidget*> buttons_;
};

}  // namespace sorvan::views
