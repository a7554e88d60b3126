#include "shell/views/filter_row.h"

#include <QActionGroup>
#include <QHBoxLayout>
#include <QMenu>
#include <QPainter>

#include "shell/views/controls.h"
#include "shell/views/labels.h"
#include "shell/views/segmented_control.h"
#include "shell/views/texts.h"
#include "shell/views/theme.h"
#include "shell/views/wall_texts.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kDivider = 18;
constexpr int kMargin = 16;
constexpr int kSpacing = 6;

std::vector<Segment> segmentsOf(const std::vector<QString>& names) {
  std::vector<Segment> segments;
  for (const QString& name : names) segments.push_back({name, {}, {}});
  return segments;
}

}  // namespace

FilterRow::FilterRow(FilterPresenter& filters, QWidget* parent)
    : QWidget(parent),
      filters_(filters),
      types_(new SegmentedControl(texts::mediaTypes(), segmentsOf(filters.types()), ControlSize::compact)),
      more_(new IconButton(u"ellipsis"_s, texts::moreFilters())),
      clear_(new Button(texts::clearFilters(), ButtonVariant::link)) {
  setAccessibleName(texts::filterZone());
  setFixedHeight(metrics().filterRow);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(kMargin, 0, kMargin, 1);
  row->setSpacing(kSpacing);
  row->addWidget(types_);
  auto* divider = new Hairline(&Colors::lineDefault, Qt::Vertical);
  divider->setFixedHeight(kDivider);
  row->addWidget(divider);
  for (std::size_t index = 0; index < filters_.chips().size(); ++index) {
    auto* chip = new Chip;
    chips_.push_back(chip);
    row->addWidget(chip);
    connect(chip, &Chip::clicked, this, [this, index] { openChoices(static_cast<int>(index)); });
    connect(chip, &Chip::clearRequested, &filters_, [this, index] { filters_.choose(filters_.chips()[index].kind, 0); });
  }
  more_->setControlSize(ControlSize::compact);
  row->addWidget(more_);
  row->addWidget(clear_);
  row->addStretch(1);
  connect(more_, &IconButton::clicked, this, &FilterRow::openHidden);
  connect(types_, &SegmentedControl::chosen, &filters_, &FilterPresenter::setType);
  connect(clear_, &Button::clicked, &filters_, &FilterPresenter::clear);
  connect(&filters_, &FilterPresenter::changed, this, &FilterRow::refresh);
  refresh();
}

void FilterRow::refresh() {
  types_->setCurrent(filters_.type());
  const std::vector<FilterChip> states = filters_.chips();
  for (std::size_t index = 0; index < chips_.size(); ++index) {
    const FilterChip& state = states[index];
    Chip& chip = *chips_[index];
    chip.setLabel(state.value.isEmpty() ? state.title : state.value);
    chip.setTone(state.value.isEmpty() ? ChipTone::quiet : ChipTone::active);
    chip.setClearable(!state.value.isEmpty());
    const QString shown = state.value.isEmpty() ? state.choices.front() : state.value;
    chip.setAccessibleName(texts::filterIs(state.title, shown));
    chip.setToolTip(texts::filterIs(state.title, shown));
  }
  clear_->setVisible(filters_.narrows());
  fit();
}

// What does not fit goes from the right into a menu of its own; the chips that are in use stay.
void FilterRow::fit() {
  const auto widthOf = [](const QWidget* part) { return part->sizeHint().width() + kSpacing; };
  const std::vector<FilterChip> states = filters_.chips();
  int room = width() - 2 * kMargin - types_->sizeHint().width() - kSpacing - 1;
  if (filters_.narrows()) room -= widthOf(clear_);
  int wanted = 0;
  for (const Chip* chip : chips_) wanted += widthOf(chip);
  more_->setVisible(wanted > room);
  if (wanted > room) room -= widthOf(more_);
  for (std::size_t index = 0; index < chips_.size(); ++index)
    if (!states[index].value.isEmpty()) room -= widthOf(chips_[index]);
  for (std::size_t index = 0; index < chips_.size(); ++index) {
    const bool used = !states[index].value.isEmpty();
    if (!used) room -= widthOf(chips_[index]);
    chips_[index]->setVisible(used || room >= 0);
  }
}

void FilterRow::fillChoices(QMenu& menu, const FilterChip& state) {
  menu.setAccessibleName(state.title);
  auto* group = new QActionGroup(&menu);
  for (std::size_t index = 0; index < state.choices.size(); ++index) {
    QAction* choice = menu.addAction(QString(state.choices[index]).replace(u'&', u"&&"_s));
    choice->setCheckable(true);
    choice->setChecked(static_cast<int>(index) == state.current);
    group->addAction(choice);
    connect(choice, &QAction::triggered, &filters_,
            [this, kind = state.kind, index] { filters_.choose(kind, static_cast<int>(index)); });
  }
}

void FilterRow::openChoices(int place) {
  auto* menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  fillChoices(*menu, filters_.chips()[static_cast<std::size_t>(place)]);
  Chip& chip = *chips_[static_cast<std::size_t>(place)];
  menu->popup(chip.mapToGlobal(QPoint(0, chip.height() + 4)));
}

void FilterRow::openHidden() {
  auto* menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->setAccessibleName(texts::moreFilters());
  const std::vector<FilterChip> states = filters_.chips();
  for (std::size_t index = 0; index < chips_.size(); ++index)
    if (chips_[index]->isHidden()) fillChoices(*menu->addMenu(states[index].title), states[index]);
  menu->popup(more_->mapToGlobal(QPoint(0, more_->height() + 4)));
}

void FilterRow::resizeEvent(QResizeEvent*) { fit(); }

void FilterRow::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), colors().surfaceCanvas);
  painter.fillRect(QRect(0, height() - 1, width(), 1), colors().lineSubtle);
}

}  // namespace sorvan::views
