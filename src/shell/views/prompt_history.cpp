#include "shell/views/prompt_history.h"

#include <QAbstractButton>
#include <QKeyEvent>
#include <QPainter>
#include <QVBoxLayout>

#include "shell/views/composer_words.h"
#include "shell/views/controls.h"
#include "shell/views/icons.h"
#include "shell/views/labels.h"
#include "shell/views/painting.h"
#include "shell/views/row_list.h"
#include "shell/views/touch.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kWidth = 480;
constexpr int kRowHeight = 36;
constexpr int kRowsHigh = 9;
constexpr int kAroundRows = 130;  // pixels of heading, button and margins

// A prompt on one line; its whole text is the tooltip.
class PastPromptRow final : public QAbstractButton {
 public:
  PastPromptRow(const PastPrompt& prompt, QWidget* parent = nullptr) : QAbstractButton(parent), prompt_(prompt) {
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setFixedHeight(kRowHeight);
    setAccessibleName(prompt.title);
    setAccessibleDescription(isSaved() ? texts::savedPrompt() : texts::recentPrompt());
    setToolTip(prompt.text);
    if (!isSaved()) return;
    forget_ = new IconButton(u"x"_s, texts::removeSavedPrompt(), u"Del"_s, this);
    forget_->setControlSize(ControlSize::compact);
    forget_->setFocusPolicy(Qt::NoFocus);
  }
  bool isSaved() const { return !prompt_.saved.isNull(); }
  const PastPrompt& prompt() const { return prompt_; }
  IconButton* forgetButton() const { return forget_; }

 protected:
  void resizeEvent(QResizeEvent*) override {
    if (forget_) forget_->setGeometry(width() - 32, (height() - 26) / 2, 26, 26);
  }
  void keyPressEvent(QKeyEvent* event) override {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && !event->isAutoRepeat()) return click();
    if (event->key() == Qt::Key_Delete && forget_) return forget_->click();
    QAbstractButton::keyPressEvent(event);
  }
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    const Colors& c = colors();
    if (hasFocus()) paintPanel(painter, rect(), metrics().radiusControl, c.stateHover);
    paintTouch(painter, rect(), metrics().radiusControl, *this);
    const QString icon = isSaved() ? u"bookmark"_s : u"clock"_s;
    paintIcon(painter, icon, QRect(8, 0, 20, height()), metrics().iconSmall,
              {isSaved() ? c.accentText : c.textTertiary});
    const QRect room(36, 0, width() - 36 - (forget_ ? 38 : 10), height());
    const QString line = fontMetricsOf().elidedText(prompt_.title, Qt::ElideRight, room.width());
    paintText(painter, room, {line, fontFor(Type::body), c.textPrimary});
  }

 private:
  QFontMetrics fontMetricsOf() const { return QFontMetrics(fontFor(Type::body)); }
  PastPrompt prompt_;
  IconButton* forget_ = nullptr;
};

}  // namespace

PromptHistory::PromptHistory(ComposerPresenter& composer, int room)
    : Popover(texts::promptHistory()), composer_(composer), room_(room) {
  auto* column = new QVBoxLayout(panel());
  column->setContentsMargins(10, 12, 10, 10);
  column->setSpacing(8);
  auto* heading = new Label(texts::promptHistory(), Type::caption, &Colors::textTertiary);
  heading->setContentsMargins(4, 0, 4, 0);
  column->addWidget(heading);
  list_ = new RowList(texts::promptHistory());
  list_->setFixedWidth(kWidth);
  column->addWidget(list_);
  auto* note = new Paragraph(texts::noPastPrompts(), Type::small, &Colors::textSecondary);
  note->setFixedWidth(kWidth);
  note->setContentsMargins(4, 4, 4, 4);
  empty_ = note;
  column->addWidget(empty_);
  auto* save = new Button(texts::saveCurrentPrompt(), ButtonVariant::secondary);
  save->setControlSize(ControlSize::compact);
  column->addWidget(save, 0, Qt::AlignLeft);
  connect(save, &Button::clicked, this, [this] { composer_.savePrompt(); });
  connect(&composer_, &ComposerPresenter::changed, this, &PromptHistory::fill);
  fill();
}

void PromptHistory::fill() {
  const std::vector<PastPrompt> prompts = composer_.pastPrompts();
  const bool same = std::equal(prompts.begin(), prompts.end(), rows_.begin(), rows_.end(),
                               [](const PastPrompt& prompt, QWidget* row) {
                                 const PastPrompt& shown = static_cast<PastPromptRow*>(row)->prompt();
                                 return shown.saved == prompt.saved && shown.text == prompt.text;
                               });
  if (same && !rows_.empty()) return;
  const bool hadFocus = list_->rowWithFocus() != nullptr;
  list_->removeRows(std::exchange(rows_, {}));
  for (const PastPrompt& prompt : prompts) {
    auto* row = new PastPromptRow(prompt);
    connect(row, &QAbstractButton::clicked, this, [this, text = prompt.text] { take(text); });
    if (row->forgetButton())
      connect(row->forgetButton(), &IconButton::clicked, this,
              [this, saved = prompt.saved] { composer_.forgetSavedPrompt(saved); });
    list_->addRow(row);
    rows_.push_back(row);
  }
  const int high = std::min(static_cast<int>(rows_.size()), kRowsHigh) * (kRowHeight + 2) + 4;
  list_->setFixedHeight(std::max(kRowHeight, std::min(high, room_ - kAroundRows)));
  list_->setVisible(!rows_.empty());
  empty_->setVisible(rows_.empty());
  list_->settle();
  if (hadFocus && !rows_.empty()) list_->focusRow(rows_.front());
  refit();
}

void PromptHistory::take(const QString& text) {
  dismiss();
  composer_.usePastPrompt(text);
}

void PromptHistory::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Down && !list_->rowWithFocus() && !rows_.empty()) return list_->focusRow(rows_.front());
  Popover::keyPressEvent(event);
}

}  // namespace sorvan::views
