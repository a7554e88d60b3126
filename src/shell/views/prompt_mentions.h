// What ties the prompt to the names of its references: the list that opens after an @, and the marks in the text.
#pragma once

#include <QPointer>
#include <QTimer>

#include "shell/references_presenter.h"
#include "shell/views/mention_popup.h"
#include "shell/views/prompt_edit.h"
#include "shell/views/room.h"

namespace sorvan::views {

class ThumbnailStore;

// Watches one prompt; a child of it. The keyboard stays in the prompt while the list is open: arrows walk through it,
// Enter and Tab choose, Escape closes it for this mention. While an input method composes there is no list.
class PromptMentions final : public QObject {
  Q_OBJECT

 public:
  // Both outlive the prompt.
  PromptMentions(PromptEdit& prompt, ReferencesPresenter& references, ThumbnailStore& thumbnails);
  ~PromptMentions() override;

  bool isOpen() const { return popup_ && popup_->isVisible(); }
  MentionPopup* popup() const { return popup_; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void offerSoon();
  void offer();
  void close();
  void accept(int choice);
  void mark();
  bool takeKey(int key);

  PromptEdit& prompt_;
  ReferencesPresenter& references_;
  ThumbnailStore& thumbnails_;
  QPointer<MentionPopup> popup_;
  QTimer soon_;
  qsizetype start_ = -1;      // of the mention that the list is open for
  qsizetype end_ = -1;
  qsizetype dismissed_ = -1;  // start of the mention that wants no list
};

}  // namespace sorvan::views
