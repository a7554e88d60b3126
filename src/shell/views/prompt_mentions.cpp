#include "shell/views/prompt_mentions.h"

#include <QKeyEvent>

#include "composer/mention_completion.h"
#include "generation/texts.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

// What is typed already is the one name that there is: nothing is left to offer.
bool isComplete(const MentionOffer& offer) {
  if (offer.groups.size() != 1 || offer.groups.front().choices.size() != 1) return false;
  const MentionChoice& only = offer.groups.front().choices.front();
  return !only.saved && only.handle == offer.typed.name;
}

}  // namespace

PromptMentions::PromptMentions(PromptEdit& prompt, ReferencesPresenter& references, ThumbnailStore& thumbnails)
    : QObject(&prompt), prompt_(prompt), references_(references), thumbnails_(thumbnails) {
  soon_.setSingleShot(true);
  soon_.setInterval(0);
  connect(&soon_, &QTimer::timeout, this, &PromptMentions::offer);
  connect(&prompt, &PromptEdit::textChanged, this, [this] {
    mark();
    offerSoon();
  });
  connect(&prompt, &PromptEdit::draftTaken, this, [this] {
    close();
    mark();
  });
  connect(&prompt, &QTextEdit::cursorPositionChanged, this, [this] {
    mark();
    if (isOpen()) offerSoon();
  });
  connect(&prompt, &PromptEdit::composingChanged, this, [this] {
    prompt_.isComposing() ? close() : offerSoon();
  });
  connect(&references, &ReferencesPresenter::changed, this, &PromptMentions::mark);
  prompt.installEventFilter(this);
  mark();
}

PromptMentions::~PromptMentions() { delete popup_; }

// On the next turn of the event loop, so that the text, the cursor and what an input method shows agree.
void PromptMentions::offerSoon() { soon_.start(); }

void PromptMentions::offer() {
  const QTextCursor cursor = prompt_.textCursor();
  if (!prompt_.hasFocus() || prompt_.isComposing() || cursor.hasSelection()) return close();
  const QString text = prompt_.toPlainText();
  const auto typed = composer::typedMention(text, cursor.position());
  if (!typed) {
    dismissed_ = -1;
    return close();
  }
  if (typed->start == dismissed_) return close();
  const auto offered = references_.mentionOffer(text, cursor.position());
  if (!offered || isComplete(*offered)) return close();
  if (!popup_) {
    popup_ = new MentionPopup(thumbnails_, prompt_.window());
    connect(&popup_->list(), &MentionList::chosen, this, &PromptMentions::accept);
  }
  start_ = offered->typed.start;
  end_ = offered->typed.end;
  const QRect place = prompt_.rectOf(static_cast<int>(start_));
  popup_->showAt(*offered, {prompt_.viewport()->mapTo(prompt_.window(), place.topLeft()), place.size()});
  if (!popup_->list().choices().empty()) announceCurrentRow(popup_->list(), 0);
}

void PromptMentions::close() {
  soon_.stop();
  if (popup_) popup_->hide();
}

// The name takes the place of what was typed, as one step that the field's own Undo takes back.
void PromptMentions::accept(int choice) {
  if (!isOpen()) return;
  const MentionChoice chosen = popup_->list().choices().at(static_cast<std::size_t>(choice));
  const QString before = prompt_.toPlainText();
  close();
  const auto name = references_.takeMention(chosen);
  // A saved reference may have taken its time and the text another shape.
  if (!name || prompt_.toPlainText() != before) return;
  QTextCursor edit = prompt_.textCursor();
  edit.beginEditBlock();
  edit.setPosition(static_cast<int>(start_));
  edit.setPosition(static_cast<int>(end_), QTextCursor::KeepAnchor);
  edit.insertText(u'@' + *name);
  edit.endEditBlock();
  prompt_.setTextCursor(edit);
  dismissed_ = start_;
  soon_.stop();
}

// The one that is being typed is no mistake yet.
void PromptMentions::mark() {
  std::vector<MentionMark> marks = composer::mentionMarks(prompt_.toPlainText(), references_.mentionableNames());
  const int cursor = prompt_.textCursor().position();
  QStringList unknown;
  std::erase_if(marks, [&](const MentionMark& each) {
    return !each.attached && prompt_.hasFocus() && cursor > each.start && cursor == each.start + each.length;
  });
  const QString text = marks.empty() ? QString() : prompt_.toPlainText();
  for (const MentionMark& each : marks)
    if (!each.attached) unknown << generation::texts::notAttached(text.mid(each.start + 1, each.length - 1));
  prompt_.setAccessibleDescription(unknown.join(u' '));
  prompt_.setMarks(std::move(marks));
}

bool PromptMentions::takeKey(int key) {
  MentionList& list = popup_->list();
  switch (key) {
    case Qt::Key_Down:
      list.setCurrent(list.current() + 1);
      return true;
    case Qt::Key_Up:
      list.setCurrent(list.current() - 1);
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Tab:
      if (list.choices().empty()) return key != Qt::Key_Tab;
      accept(list.current());
      return true;
    case Qt::Key_Escape:
      dismissed_ = start_;
      close();
      return true;
    default:
      return false;
  }
}

bool PromptMentions::eventFilter(QObject* watched, QEvent* event) {
  // A field that is going loses the keyboard once more, and is a bare widget by then.
  if (!qobject_cast<PromptEdit*>(watched)) return false;
  if (event->type() == QEvent::FocusOut) {
    close();
    mark();
  }
  if (!isOpen()) return false;
  if (event->type() == QEvent::ShortcutOverride) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Escape || key == Qt::Key_Tab || key == Qt::Key_Return) event->accept();
    return false;
  }
  if (event->type() != QEvent::KeyPress) return false;
  const auto* press = static_cast<QKeyEvent*>(event);
  const bool plain = !(press->modifiers() & ~Qt::KeypadModifier);
  return plain && takeKey(press->key());
}

}  // namespace sorvan::views
