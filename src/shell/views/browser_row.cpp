#include "shell/views/browser_row.h"

#include <QAccessible>
#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include "shell/views/controls.h"
#include "shell/views/feedback.h"
#include "shell/views/icons.h"
#include "shell/views/model_row.h"
#include "shell/views/painting.h"
#include "shell/views/texts.h"
#include "shell/views/touch.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {
constexpr int kRightPad = 12;
constexpr int kRadius = 7;
constexpr int kActionWidth = 64;  // the same for each state, so that prices stand in a column
constexpr int kProblemFoot = 8;
}  // namespace

BrowserRowView::BrowserRowView(const BrowserRow& row, QWidget* parent)
    : QAbstractButton(parent),
      add_(new Button(texts::addModel(), ButtonVariant::secondary, this)),
      cancel_(new IconButton(u"x"_s, texts::cancelAdding(row.name), {}, this)),
      remove_(new IconButton(u"trash-2"_s, texts::removeNamed(row.name), texts::deleteKey(), this)),
      spinner_(new Spinner(metrics().iconSmall, this)),
      problem_(new Paragraph({}, Type::small, &Colors::dangerText, this)) {
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_Hover);
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
  // On a button the toolkit writes in the button's colour.
  problem_->setForegroundRole(QPalette::WindowText);
  add_->setControlSize(ControlSize::compact);
  add_->setAccessibleName(texts::addNamed(row.name));
  for (IconButton* button : {cancel_, remove_}) button->setControlSize(ControlSize::compact);
  connect(add_, &Button::clicked, this, [this] { Q_EMIT addRequested(row_.id); });
  connect(cancel_, &IconButton::clicked, this, [this] { Q_EMIT cancelRequested(row_.id); });
  connect(remove_, &IconButton::clicked, this, [this] { Q_EMIT removeRequested(row_.id); });
  setRow(row);
}

bool BrowserRowView::isUsable() const {
  return row_.state == BrowserRowState::added || row_.state == BrowserRowState::builtIn;
}

ModelRowLook BrowserRowView::look() const {
  return {row_.name, row_.badge, row_.licence, row_.summary, false, {}, row_.price, row_.priceDate, kActionWidth};
}

void BrowserRowView::setRow(const BrowserRow& row) {
  const BrowserRow before = row_;
  row_ = row;
  const bool hadFocus = isAncestorOf(QApplication::focusWidget());
  add_->setVisible(row.state == BrowserRowState::offered);
  cancel_->setVisible(row.state == BrowserRowState::adding);
  spinner_->setVisible(row.state == BrowserRowState::adding);
  remove_->setVisible(row.state == BrowserRowState::added);
  // The button that was pressed is gone: the keyboard stays with its row.
  if (hadFocus) setFocus();
  problem_->setVisible(!row.problem.isEmpty());
  problem_->setParagraph(row.problem);
  setCheckable(isUsable());
  setAccessibleName(accessibleModelName(look()));
  QStringList about;
  for (const QString& part : {row.stateText, row.problem}) {
    if (!part.isEmpty()) about << part;
  }
  if (!row.priceDate.isEmpty()) about << texts::listPrice(row.priceDate);
  setAccessibleDescription(about.join(u". "_s));
  setToolTip(row.stateText.isEmpty() ? row.summary : row.summary + u'\n' + row.stateText);
  arrange();
  tellState(before);
  update();
}

// What came of a press is said once; what was there from the start is not.
void BrowserRowView::tellState(const BrowserRow& before) {
  const bool isNews = before.id == row_.id && before.state != row_.state;
  if (!isNews || !isVisible()) return;
  QAccessibleEvent announcement(row_.problem.isEmpty() ? static_cast<QWidget*>(this) : problem_, QAccessible::Alert);
  QAccessible::updateAccessibility(&announcement);
}

void BrowserRowView::setChosen(bool chosen) {
  if (chosen_ == chosen) return;
  chosen_ = chosen;
  if (isCheckable()) setChecked(chosen);
  update();
}

QSize BrowserRowView::sizeHint() const { return {400, height()}; }

void BrowserRowView::arrange() {
  const int right = width() - kRightPad;
  const auto place = [](QWidget* widget, int x) {
    const QSize size = widget->sizeHint();
    widget->setGeometry(x, (modelRowHeight - size.height()) / 2, size.width(), size.height());
  };
  place(add_, right - add_->sizeHint().width());
  place(cancel_, right + 4 - cancel_->sizeHint().width());
  place(remove_, right + 4 - remove_->sizeHint().width());
  place(spinner_, cancel_->x() - 8 - spinner_->sizeHint().width());
  int height = modelRowHeight;
  if (!row_.problem.isEmpty()) {
    const int words = std::max(80, right - modelBoxColumn);
    const int lines = problem_->heightForWidth(words);
    problem_->setGeometry(modelBoxColumn, modelRowHeight - 2, words, lines);
    height += lines + kProblemFoot;
  }
  if (height != this->height()) setFixedHeight(height);
}

void BrowserRowView::resizeEvent(QResizeEvent*) { arrange(); }

void BrowserRowView::mouseReleaseEvent(QMouseEvent* event) {
  const bool inside = rect().contains(event->position().toPoint());
  setDown(false);
  if (!inside || event->button() != Qt::LeftButton) return;
  const bool inBox = event->position().x() < modelBoxColumn;
  if (isUsable()) {
    const bool adds = inBox || event->modifiers().testFlag(Qt::ControlModifier);
    if (adds) Q_EMIT toggleRequested(row_.key, !chosen_);
    if (!adds) Q_EMIT onlyRequested(row_.key);
  } else if (row_.state == BrowserRowState::offered && inBox) {
    Q_EMIT addRequested(row_.id);
  }
}

void BrowserRowView::keyPressEvent(QKeyEvent* event) {
  const bool enters = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  const bool space = event->key() == Qt::Key_Space;
  if ((enters || space) && row_.state == BrowserRowState::offered) {
    Q_EMIT addRequested(row_.id);
  } else if (enters && isUsable()) {
    Q_EMIT onlyRequested(row_.key);
  } else if (space && isUsable()) {
    Q_EMIT toggleRequested(row_.key, !chosen_);
  } else if (event->key() == Qt::Key_Delete && row_.state == BrowserRowState::added) {
    Q_EMIT removeRequested(row_.id);
  } else if (event->key() == Qt::Key_Delete && row_.state == BrowserRowState::adding) {
    Q_EMIT cancelRequested(row_.id);
  } else {
    event->ignore();  // arrows belong to the list
  }
}

void BrowserRowView::paintEvent(QPaintEvent*) {
  const Colors& c = colors();
  QPainter painter(this);
  const bool focused = hasFocus() || isAncestorOf(QApplication::focusWidget());
  if (focused) paintPanel(painter, rect(), kRadius, c.stateHover);
  paintTouch(painter, rect(), kRadius, *this);
  if (isUsable()) {
    paintModelBox(painter, rect(), true, chosen_);
  } else {
    paintIcon(painter, u"plus"_s, QRectF(12, 0, 16, modelRowHeight), 16, {c.textTertiary});
  }
  ModelRowLook shown = look();
  shown.shaded = focused || underMouse();
  paintModelRow(painter, rect(), shown, false);
  if (row_.state == BrowserRowState::added)
    paintIcon(painter, u"circle-check"_s, QRectF(remove_->x() - 22, 0, 16, modelRowHeight), 16, {c.successText});
  if (row_.state == BrowserRowState::builtIn)
    paintText(painter, QRect(modelBoxColumn, 0, width() - kRightPad - modelBoxColumn, modelRowHeight),
              {row_.stateText, fontFor(Type::small), shown.shaded ? c.textTertiaryOnSelected : c.textTertiary, Qt::AlignRight | Qt::AlignVCenter});
}

}  // namespace sorvan::views
