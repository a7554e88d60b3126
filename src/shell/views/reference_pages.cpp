#include "shell/views/reference_pages.h"

#include "shell/composer_presenter.h"
#include "shell/references_presenter.h"
#include "shell/saved_references_presenter.h"
#include "shell/views/desktop_folder_chooser.h"
#include "shell/views/library_view.h"
#include "shell/views/reference_editor.h"
#include "shell/views/reference_texts.h"
#include "shell/views/saved_references_view.h"

#include <QStandardPaths>

namespace sorvan::views {

namespace {

// Asks for picture files and hands them to the composer; lives as long as the library's view.
class FileAttacher final : public QObject {
 public:
  FileAttacher(LibraryView& library, ReferencesPresenter& references)
      : QObject(&library), references_(references), chooser_(&library) {
    connect(&library.dock(), &ComposerDock::filesRequested, this, [this] { ask(); });
  }

 private:
  void ask() {
    FolderQuestion question;
    question.acceptLabel = texts::attachTitle();
    question.message = texts::choosePictures();
    question.startFolder = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
    chooser_.choosePictures(question, [this](const QStringList& files) {
      if (!files.isEmpty()) references_.importFiles(files);
    });
  }

  ReferencesPresenter& references_;
  DesktopFolderChooser chooser_;
};

void addPage(LibraryView& library, SavedReferencesPresenter& saved, ReferenceScope scope) {
  auto* view = new SavedReferencesView(saved, scope, library.thumbnails());
  PageTraits traits;
  traits.title = [view] { return PageTitle{view->title(), view->countText()}; };
  traits.keyboard = view->grid();
  traits.tools = view->tools();
  const ModeKind kind = scope == ReferenceScope::global ? ModeKind::savedReferences : ModeKind::projectReferences;
  QObject::connect(view, &SavedReferencesView::titleChanged, &library, &LibraryView::titleChanged);
  library.addPage(kind, view, traits);
}

}  // namespace

void addReferencePages(const PageDesk& desk) {
  if (ReferencesPresenter* references = desk.on.composer ? desk.on.composer->references() : nullptr)
    new FileAttacher(desk.library, *references);
  SavedReferencesPresenter* saved = desk.on.savedReferences;
  if (!saved) return;
  addPage(desk.library, *saved, ReferenceScope::global);
  addPage(desk.library, *saved, ReferenceScope::project);
  LibraryView* library = &desk.library;
  QObject::connect(saved, &SavedReferencesPresenter::editorRequested, library,
                   [library, saved](const SavedReferenceDraft& draft) {
                     auto* editor = new ReferenceEditor(*saved, draft, library->thumbnails(), library->window());
                     editor->open();
                   });
}

}  // namespace sorvan::views
