#include "shell/views/selection_bar.h"

#include <QAction>
#include <QHBoxLayout>
#include <QMenu>
#include <QPainter>

#include "shell/actions_presenter.h"
#include "shell/curation_presenter.h"
#include "shell/gallery_presenter.h"
#include "shell/views/controls.h"
#include "shell/views/labels.h"
#include "shell/views/menus.h"
#include "shell/views/painting.h"
#include "shell/views/wall_texts.h"
#include "shell/workspace_state.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kPadding = 16;
constexpr int kGap = 6;
constexpr int kNumber = 18;   // the count, a disc when it is short
constexpr int kNumberPad = 5;

constexpr ActionId kStatuses[] = {ActionId::statusDraft, ActionId::statusShortlist, ActionId::statusApproved,
                                  ActionId::statusFinal, ActionId::statusRejected};

// The actions with words, from the left; what is not offered for the selection is absent.
std::vector<std::pair<ActionId, QString>> wordActions() {
  return {{ActionId::compareItems, u"grid-2x2"_s},
          {ActionId::saveAsReference, u"at-sign"_s},
          {ActionId::moveToProject, u"folder"_s},
          {ActionId::restoreItems, u"undo-2"_s}};
}

// The place to move to is chosen in a menu right here, which is no question to come.
QString wordsOf(ActionId id) {
  const QString title = actionRow(id).title;
  return id == ActionId::moveToProject ? QString(title).remove(u'…') : title;
}

}  // namespace

SelectionBar::SelectionBar(const Menus& menus, Presenters presenters, QWidget* parent)
    : QWidget(parent),
      menus_(menus),
      on_(presenters),
      number_(new Label({}, Type::caption, &Colors::textOnAccent)),
      word_(new Label(texts::selected(), Type::body)) {
  setAccessibleName(texts::selectionZone());
  setFixedHeight(metrics().filterRow);
  number_->setWeight(Weight::semibold);
  number_->setContentsMargins(kNumberPad, 0, kNumberPad, 0);
  number_->setAlignment(Qt::AlignCenter);
  number_->setMinimumWidth(kNumber);
  number_->setFixedHeight(kNumber);
  word_->setWeight(Weight::medium);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(kPadding, 0, kPadding, 1);
  row->setSpacing(kGap);
  row->addWidget(number_, 0, Qt::AlignVCenter);
  row->addWidget(word_);
  row->addSpacing(12);
  addActions();
  addStatus();
  row->addWidget(iconAction(ActionId::toggleFavorite, u"heart"_s));
  row->addStretch(1);
  row->addWidget(iconAction(ActionId::moveToTrash, u"trash-2"_s));
  auto* clear = new IconButton(u"x"_s, texts::clearSelection(), u"Esc"_s);
  clear->setControlSize(ControlSize::compact);
  connect(clear, &IconButton::clicked, this, [this] { on_.state->select({}); });
  row->addWidget(clear);
  connect(on_.actions, &ActionsPresenter::changed, this, &SelectionBar::refresh);
  refresh();
}

void SelectionBar::addActions() {
  for (const auto& [id, icon] : wordActions()) {
    auto* button = new Button(wordsOf(id), ButtonVariant::quiet);
    button->setIconName(icon);
    button->setControlSize(ControlSize::compact);
    connect(button, &Button::clicked, this, [this, action = id] { on_.actions->trigger(action); });
    layout()->addWidget(button);
    actions_.push_back({id, icon, button});
  }
}

void SelectionBar::addStatus() {
  status_ = new Button(texts::statusMenu(), ButtonVariant::quiet);
  status_->setTrailingIconName(u"chevron-down"_s);
  status_->setControlSize(ControlSize::compact);
  connect(status_, &Button::clicked, this, &SelectionBar::openStatuses);
  layout()->addWidget(status_);
}

QWidget* SelectionBar::iconAction(ActionId id, const QString& iconName) {
  const QString keys = QKeySequence(actionRow(id).shortcut, QKeySequence::PortableText).toString(QKeySequence::NativeText);
  auto* button = new IconButton(iconName, actionRow(id).title, keys);
  button->setControlSize(ControlSize::compact);
  connect(button, &IconButton::clicked, this, [this, id] { on_.actions->trigger(id); });
  icons_.emplace_back(id, button);
  return button;
}

void SelectionBar::openStatuses() {
  auto* menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->setAccessibleName(texts::statusMenu());
  for (const ActionId id : kStatuses) menu->addAction(menus_.action(id));
  menu->popup(status_->mapToGlobal(QPoint(0, status_->height() + 4)));
}

void SelectionBar::refresh() {
  const bool was = isNeeded();
  count_ = on_.curation->selectedItems();
  if (isNeeded()) {
    number_->setText(QString::number(count_));
    number_->setAccessibleName(texts::selectedCount(count_));
    for (const ActionButton& action : actions_) action.button->setVisible(on_.actions->isEnabled(action.id));
    status_->setVisible(on_.actions->isEnabled(ActionId::statusDraft));
    for (const auto& [id, button] : icons_) button->setVisible(on_.actions->isEnabled(id));
    fit();
    update();
  }
  if (was != isNeeded()) Q_EMIT neededChanged();
}

// Where the words do not fit, the icons stay.
void SelectionBar::fit() {
  for (const ActionButton& action : actions_) action.button->setText(wordsOf(action.id));
  layout()->activate();
  if (layout()->minimumSize().width() <= width()) return;
  for (const ActionButton& action : actions_) {
    action.button->setAccessibleName(actionRow(action.id).title);
    action.button->setToolTip(actionRow(action.id).title);
    action.button->setText({});
  }
}

void SelectionBar::resizeEvent(QResizeEvent*) { fit(); }

void SelectionBar::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), colors().surfaceRaised);
  painter.fillRect(QRect(0, height() - 1, width(), 1), colors().lineSubtle);
  paintPanel(painter, number_->geometry(), number_->height() / 2.0, colors().accentFill);
  const int divider = word_->geometry().right() + 8;
  painter.fillRect(QRect(divider, (height() - 18) / 2, 1, 18), colors().lineDefault);
}

}  // namespace sorvan::views
