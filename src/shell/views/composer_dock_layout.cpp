// Where the dock's controls stand, collapsed and open.
#include <QPainter>

#include "shell/views/composer_dock.h"
#include "shell/views/composer_head.h"
#include "shell/views/composer_settings.h"
#include "shell/views/controls.h"
#include "shell/views/feedback.h"
#include "shell/views/labels.h"
#include "shell/views/painting.h"
#include "shell/views/prompt_edit.h"
#include "shell/views/reference_strip.h"
#include "shell/views/segmented_control.h"
#include "shell/views/texts.h"

namespace sorvan::views {

namespace {

constexpr int kPadX = 12;
constexpr int kPadTop = 10;
constexpr int kPadBottom = 12;
constexpr int kRowGap = 10;
constexpr int kChipGap = 6;
constexpr int kNoticeGap = 5;
constexpr int kSubmitHeight = 34;
constexpr int kReadableModel = 136;  // a chip that still tells models apart
constexpr int kMessageHeight = 22;

void put(QWidget* widget, int x, int y, int width, int height) { widget->setGeometry(x, y, width, height); }

// Centres a widget of its own size on a row.
void centre(QWidget* widget, int x, int y, int rowHeight, int width) {
  const int height = widget->sizeHint().height();
  put(widget, x, y + (rowHeight - height) / 2, width, height);
}

}  // namespace

int ComposerDock::heightForWidth(int width) const {
  const int inner = width - 2 * margin;
  const int panel = display_.expanded ? arrangeExpanded(inner, false) : arrangeCollapsed(inner, false);
  return panel + 2 * margin;
}

void ComposerDock::resizeEvent(QResizeEvent*) { arrange(); }

void ComposerDock::arrange() {
  const bool open = display_.expanded;
  const bool prompting = !display_.command;
  for (QWidget* widget : std::initializer_list<QWidget*>{kind_, destination_, command_, clear_, collapse_})
    widget->setVisible(open);
  payer_->setVisible(open && !display_.payer.isEmpty());
  history_->setVisible(open && prompting);
  references_->setVisible(open && prompting && hasReferences());
  kindIcons_->setVisible(!open);
  model_->setVisible(prompting);
  length_->setVisible(open && prompting && display_.lengthShown);
  count_->setVisible(open && prompting && display_.countShown);
  seed_->setVisible(open && prompting && display_.seedShown);
  ratio_->setVisible(prompting && display_.ratioShown);
  more_->setVisible(open && prompting && display_.settingsOffered);
  settings_->setVisible(open && prompting && display_.settingsShown);
  commandIcon_->setVisible(open && display_.command);
  commandLabel_->setVisible(open && display_.command && !display_.commandLabel.isEmpty());
  interpret_->setVisible(open && display_.interpretOffered);
  if (review_) review_->setVisible(open);
  estimate_->setVisible(!display_.estimate.isEmpty());
  const bool message = !message_->text().isEmpty();
  message_->setVisible(message);
  messageIcon_->setVisible(message);
  const int inner = width() - 2 * margin;
  if (open)
    arrangeExpanded(inner, true);
  else
    arrangeCollapsed(inner, true);
}

int ComposerDock::arrangeCollapsed(int width, bool place) const {
  const int row = metrics().composerCollapsed - 2;
  const bool message = !message_->text().isEmpty();
  int height = metrics().composerCollapsed;
  if (message) height += kMessageHeight + 4;
  if (!place) return height;
  for (NoticeBar* notice : notices_) notice->hide();
  const int left = margin + kPadX - 2;
  int right = margin + width - kPadX + 2;
  const int submitWidth = submit_->sizeHint().width();
  centre(submit_, right - submitWidth, margin + 1, row, submitWidth);
  right -= submitWidth + kRowGap;
  right = placeEstimate(right, margin + 1, row);
  const int promptLeft = left + kindIcons_->sizeHint().width() + kRowGap;
  fitChips((right - promptLeft) / 2);
  for (Chip* chip : {ratio_, model_}) {
    if (!chip->isVisibleTo(this)) continue;
    right -= chip->width();
    centre(chip, right, margin + 1, row, chip->width());
    right -= kRowGap;
  }
  centre(kindIcons_, left, margin + 1, row, kindIcons_->sizeHint().width());
  const int line = lineHeight(Type::prompt);
  const int promptWidth = std::max(60, right - promptLeft);
  put(prompt_, promptLeft, margin + 1 + (row - line) / 2, promptWidth, line);
  prompt_->setPlaceholderText(
      QFontMetrics(prompt_->font()).elidedText(display_.placeholder, Qt::ElideRight, promptWidth - 4));
  if (message) {
    centre(messageIcon_, left + 4, margin + row, kMessageHeight, metrics().iconSmall);
    centre(message_, left + 24, margin + row, kMessageHeight, width - 2 * kPadX - 24);
  }
  return height;
}

int ComposerDock::arrangeExpanded(int width, bool place) const {
  const int left = margin + kPadX;
  const int right = margin + width - kPadX;
  int y = margin + kPadTop;
  const int head = metrics().controlCompact;
  if (place) placeHead(left, right, y);
  y += head + kRowGap;
  if (!display_.command && hasReferences()) {
    const int height = references_->heightForWidth(right - left);
    if (place) put(references_, left, y, right - left, height);
    y += height + kRowGap;
  }
  if (review_) {
    const int height = std::max(32, review_->heightForWidth(right - left));
    if (place) put(review_, left, y, right - left, height);
    y += height + kRowGap;
  }
  y += placePrompt(left, right, y, place) + kRowGap;
  if (!display_.command && display_.settingsShown) {
    const int edge = kPadX - 1;  // up to the border of the dock
    const int height = settings_->heightForWidth(right - left + 2 * edge);
    if (place) put(settings_, left - edge, y, right - left + 2 * edge, height);
    y += height + kRowGap;
  }
  for (NoticeBar* notice : notices_) {
    const int height = std::max(32, notice->heightForWidth(right - left));
    if (place) put(notice, left, y, right - left, height), notice->show();
    y += height + kNoticeGap;
  }
  if (!notices_.empty()) y += kRowGap - kNoticeGap;
  y = placeControls(left, right, y, place);
  if (!message_->text().isEmpty()) {
    if (place) {
      centre(messageIcon_, left + 4, y + 6, kMessageHeight, metrics().iconSmall);
      centre(message_, left + 24, y + 6, kMessageHeight, right - left - 28);
    }
    y += 6 + kMessageHeight;
  }
  return y + kPadBottom - margin;
}

// From the right: collapse, clear, the command switch, where to save, who pays.
int ComposerDock::placeHead(int left, int right, int top) const {
  const int head = metrics().controlCompact;
  const int kind = kind_->sizeHint().width();
  centre(kind_, left, top, head, kind);
  int end = right;
  for (QWidget* button : std::initializer_list<QWidget*>{collapse_, clear_, command_}) {
    centre(button, end - head, top, head, head);
    end -= head + 4;
  }
  end -= kChipGap;
  for (QWidget* choice : std::initializer_list<QWidget*>{destination_, payer_}) {
    if (!choice->isVisibleTo(this)) continue;
    const int room = std::max(0, end - (left + kind + kRowGap));
    const int wished = std::min(choice->sizeHint().width(), room);
    put(choice, end - wished, top, wished, head);
    end -= wished + kChipGap;
  }
  return end;
}

// The prompt with its tools behind it, or the command between its sign and what it is understood as.
int ComposerDock::placePrompt(int left, int right, int top, bool place) const {
  const int side = metrics().controlCompact;
  int start = left + 4;
  int end = right - 4;
  if (display_.command) {
    start += metrics().iconRegular + 8;
    if (!display_.commandLabel.isEmpty()) end -= commandLabel_->sizeHint().width() + kRowGap;
  } else {
    end -= side + 4;
  }
  const int width = end - start;
  const int height = display_.command ? lineHeight(Type::prompt) : prompt_->wishedHeight(width);
  if (!place) return height;
  put(prompt_, start, top, width, height);
  prompt_->setPlaceholderText(display_.placeholder);
  if (display_.command) {
    centre(commandIcon_, left + 4, top, height, metrics().iconRegular);
    const int label = commandLabel_->sizeHint().width();
    centre(commandLabel_, right - 4 - label, top, height, label);
  } else {
    put(history_, right - side, top + height - side, side, side);
  }
  return height;
}

int ComposerDock::placeControls(int left, int right, int top, bool place) const {
  if (!place) return top + kSubmitHeight;
  const int submitWidth = submit_->sizeHint().width();
  put(submit_, right - submitWidth, top, submitWidth, kSubmitHeight);
  const int end = placeEstimate(right - submitWidth - kRowGap, top, kSubmitHeight);
  const int more = more_->isVisibleTo(this) ? more_->sizeHint().width() : 0;
  fitChips(end - left - (more > 0 ? more + kChipGap : 0));
  int x = left;
  if (interpret_->isVisibleTo(this)) centre(interpret_, x, top, kSubmitHeight, interpret_->sizeHint().width());
  for (Chip* chip : {model_, ratio_, length_, count_, seed_}) {
    if (!chip->isVisibleTo(this)) continue;
    centre(chip, x, top, kSubmitHeight, chip->width());
    x += chip->width() + kChipGap;
  }
  if (more > 0) centre(more_, x, top, kSubmitHeight, more);
  return top + kSubmitHeight;
}

// Answers where what stands before the estimate must end.
int ComposerDock::placeEstimate(int right, int top, int height) const {
  if (display_.estimate.isEmpty()) return right;
  const int width = estimate_->sizeHint().width();
  centre(estimate_, right - width, top, height, width);
  return right - width - kRowGap;
}

// Chips never wrap: when the row is short, the seed loses its word, the count its suffix, then the model's name is cut;
// where the figure of the cost takes the last room, count, length and ratio become icons before too little of it is left.
void ComposerDock::fitChips(int room) const {
  for (Chip* chip : {seed_, count_, length_, ratio_}) chip->setWordsShown(true);
  const auto overflow = [this, room] {
    int used = -kChipGap;
    for (Chip* chip : {model_, ratio_, length_, count_, seed_})
      used += chip->isVisibleTo(this) ? chip->width() + kChipGap : 0;
    return used - room;
  };
  for (Chip* chip : {model_, ratio_, length_, count_, seed_}) chip->resize(chip->sizeHint());
  if (overflow() > 0) seed_->setWordsShown(!display_.seedText.isEmpty()), seed_->resize(seed_->sizeHint());
  if (overflow() > 0) count_->resize(count_->widthWithoutValue(), count_->height());
  const int spare = std::max(0, model_->width() - kReadableModel);
  for (Chip* chip : {count_, length_, ratio_}) {
    if (overflow() <= spare) break;
    chip->setWordsShown(false);
    chip->resize(chip->sizeHint());
  }
  const int wished = model_->width() - std::max(0, overflow());
  model_->resize(std::max(model_->minimumSizeHint().width(), wished), model_->height());
}

void ComposerDock::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QRect panel = rect().adjusted(margin, margin, -margin, -margin);
  paintShadow(painter, panel, metrics().radiusDock, colors().dockShadow);
  paintPanel(painter, panel, metrics().radiusDock, colors().surfaceRaised, colors().lineDefault);
  if (dropping_) paintRing(painter, panel, metrics().radiusDock, 2, colors().accentFill);
}

}  // namespace sorvan::views
