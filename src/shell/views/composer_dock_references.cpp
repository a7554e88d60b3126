// How the dock takes references: the panel, the names in the prompt, what is dropped on it and pasted into it.
#include <QDragEnterEvent>
#include <QMimeData>

#include "shell/views/attach_panel.h"
#include "shell/views/composer_dock.h"
#include "shell/views/dropped_media.h"
#include "shell/views/prompt_edit.h"
#include "shell/views/prompt_mentions.h"
#include "shell/views/reference_chip.h"
#include "shell/views/reference_strip.h"

namespace sorvan::views {

bool ComposerDock::hasReferences() const {
  return !display_.references.empty() || (references_->button() && !display_.audio);
}

void ComposerDock::connectReferences() {
  ReferencesPresenter* references = composer_.references();
  if (!references) return;
  new PromptMentions(*prompt_, *references, thumbnails_);
  setAcceptDrops(true);
  // The field would take a drop for text.
  prompt_->viewport()->installEventFilter(this);
  connect(prompt_, &PromptEdit::mediaPasted, this,
          [references](const QMimeData& data) { attachMedia(data, *references); });
  connect(references_, &ReferenceStrip::attachRequested, this, &ComposerDock::openAttachPanel);
  connect(references, &ReferencesPresenter::changed, this, [this] {
    Q_EMIT heightChanged();
    arrange();
  });
}

void ComposerDock::openAttachPanel() {
  ReferencesPresenter* references = composer_.references();
  if (!references || !references_->button()) return;
  auto* panel = new AttachPanelView(*references, thumbnails_, Popover::roomAbove(this));
  connect(panel, &AttachPanelView::filesRequested, this, &ComposerDock::filesRequested);
  popover_ = panel;
  panel->openAt(references_->button(), this);
}

bool ComposerDock::takeDrag(QDropEvent& event) {
  if (!composer_.references() || event.mimeData()->hasFormat(referenceMimeType) || !holdsMedia(*event.mimeData()))
    return false;
  event.setDropAction(Qt::CopyAction);
  event.accept();
  dropping_ = true;
  update();
  return true;
}

bool ComposerDock::takeDrop(QDropEvent& event) {
  dropping_ = false;
  update();
  if (!composer_.references() || !holdsMedia(*event.mimeData())) return false;
  event.setDropAction(Qt::CopyAction);
  event.accept();
  attachMedia(*event.mimeData(), *composer_.references());
  composer_.setExpanded(true);
  return true;
}

void ComposerDock::dragEnterEvent(QDragEnterEvent* event) { takeDrag(*event); }

void ComposerDock::dragLeaveEvent(QDragLeaveEvent*) {
  dropping_ = false;
  update();
}

void ComposerDock::dropEvent(QDropEvent* event) { takeDrop(*event); }

bool ComposerDock::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove:
      return takeDrag(*static_cast<QDropEvent*>(event));
    case QEvent::DragLeave:
      dropping_ = false;
      update();
      return false;
    case QEvent::Drop:
      return takeDrop(*static_cast<QDropEvent*>(event));
    default:
      return QWidget::eventFilter(watched, event);
  }
}

}  // namespace sorvan::views
