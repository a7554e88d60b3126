#include "shell/marking_presenter.h"

#include "composer/composer_state.h"
#include "core/library_store.h"
#include "shell/workspace_state.h"

namespace sorvan::shell {

namespace {

// Of each side, for a box that is put down without a pointer.
constexpr double middleShare = 0.3;

QSize sizeOf(const core::Asset& asset) { return {static_cast<int>(asset.width), static_cast<int>(asset.height)}; }

}  // namespace

MarkingPresenter::MarkingPresenter(core::LibraryStore& store, const composer::ComposerState& composing,
                                   WorkspaceState& window, QObject* parent)
    : QObject(parent), store_(store), composing_(composing), window_(window) {
  // Whoever turns to something else has left the marks.
  connect(&window_, &WorkspaceState::modeChanged, this, [this] {
    const WorkspaceMode& mode = window_.mode();
    if (isMarking() && (mode.kind != ModeKind::asset || mode.subject != subject_)) leave();
  });
  connect(&store_, &core::LibraryStore::workspaceChanged, this, [this] {
    leave();
    drafts_.clear();
  });
}

bool MarkingPresenter::canMark(QUuid item) const {
  const core::AssetRef asset = store_.hasWorkspace() ? store_.asset(item) : nullptr;
  return asset && !asset->isTrashed() && asset->type() == core::MediaType::image && !sizeOf(*asset).isEmpty();
}

MarkingPresenter::Draft MarkingPresenter::startingDraft(QUuid item) const {
  const core::AssetRef asset = store_.asset(item);
  const core::GenerationRequest& request = composing_.request();
  if (!request.markup || composing_.markupAssetId() != item) return {MarksEditor({}, sizeOf(*asset)), true};
  return {MarksEditor(*request.markup, sizeOf(*asset)), request.confineToMarks.value_or(true)};
}

void MarkingPresenter::begin(QUuid item) {
  if (!canMark(item) || subject_ == item) return;
  leave();
  window_.select({item});
  const WorkspaceMode large{ModeKind::asset, item, 0};
  window_.setMode(large);
  // A window that does not hold the item has turned to something else.
  if (!(window_.mode() == large)) return;
  drafts_.try_emplace(item, startingDraft(item));
  subject_ = item;
  Q_EMIT markingChanged();
  Q_EMIT changed();
}

void MarkingPresenter::end() {
  subject_ = QUuid();
  Q_EMIT markingChanged();
}

void MarkingPresenter::leave() {
  if (!isMarking()) return;
  const Draft& draft = current();
  // Nothing drawn and nothing to take back: the next time starts from what the composer has.
  if (draft.editor.boxes().empty() && !draft.editor.canUndo()) drafts_.erase(subject_);
  end();
}

void MarkingPresenter::done() {
  if (!isMarking()) return;
  const QUuid item = subject_;
  store_.setPendingMarks(core::PendingMarks{item, marks().boxes(), confines()});
  // Still there: no composer could take them, and has said why.
  if (store_.pendingMarks()) return store_.setPendingMarks(std::nullopt);
  end();
  drafts_.erase(item);
}

const MarkingPresenter::Draft& MarkingPresenter::current() const {
  static const Draft none;
  const auto found = drafts_.find(subject_);
  return found == drafts_.end() ? none : found->second;
}

MarksEditor* MarkingPresenter::editor() {
  const auto found = drafts_.find(subject_);
  return found == drafts_.end() ? nullptr : &found->second.editor;
}

void MarkingPresenter::select(int index) {
  MarksEditor* marks = editor();
  if (!marks || marks->selected() == index) return;
  marks->select(index);
  Q_EMIT changed();
}

int MarkingPresenter::add(const QRectF& area) {
  MarksEditor* marks = editor();
  const int index = marks ? marks->add(area) : -1;
  if (index < 0) return index;
  Q_EMIT changed();
  Q_EMIT noteRequested(index);
  return index;
}

void MarkingPresenter::addInTheMiddle() {
  add(QRectF((1 - middleShare) / 2, (1 - middleShare) / 2, middleShare, middleShare));
}

void MarkingPresenter::place(int index, const QRectF& area) {
  if (MarksEditor* marks = editor()) marks->place(index, area);
  Q_EMIT changed();
}

void MarkingPresenter::nudge(QPoint pixels) {
  if (MarksEditor* marks = editor()) marks->nudge(marks->selected(), pixels);
  Q_EMIT changed();
}

void MarkingPresenter::stretch(QPoint pixels) {
  if (MarksEditor* marks = editor()) marks->stretch(marks->selected(), pixels);
  Q_EMIT changed();
}

void MarkingPresenter::setNote(int index, const QString& note) {
  if (MarksEditor* marks = editor()) marks->setNote(index, note);
  Q_EMIT changed();
}

void MarkingPresenter::remove(int index) {
  if (MarksEditor* marks = editor()) marks->remove(index);
  Q_EMIT changed();
}

void MarkingPresenter::clear() {
  if (MarksEditor* marks = editor()) marks->clear();
  Q_EMIT changed();
}

void MarkingPresenter::undo() {
  if (MarksEditor* marks = editor()) marks->undo();
  Q_EMIT changed();
}

void MarkingPresenter::redo() {
  if (MarksEditor* marks = editor()) marks->redo();
  Q_EMIT changed();
}

void MarkingPresenter::setConfines(bool confines) {
  const auto found = drafts_.find(subject_);
  if (found == drafts_.end() || found->second.confines == confines) return;
  found->second.confines = confines;
  Q_EMIT changed();
}

}  // namespace sorvan::shell
