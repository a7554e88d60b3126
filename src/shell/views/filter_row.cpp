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

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kDivider = 18;

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
      clear_(new Button(texts::clearFilters(), ButtonVariant::link)) {
  setAccessibleName(texts::filterZone());
  setFixedHeight(metrics().filterRow);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(16, 0, 16, 1);
  row->setSpacing(8);
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
  row->addWidget(clear_);
  row->addStretch(1);
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

// What does not fit goes from the right; the chips that are in use stay.
void FilterRow::fit() {
  int room =
      width() - 32 - types_->sizeHint().width() - 9 - (clear_->isVisibleTo(this) ? clear_->sizeHint().width() + 8 : 0);
  const std::vector<FilterChip> states = filters_.chips();
  for (std::size_t index = 0; index < chips_.size(); ++index)
    if (!states[index].value.isEmpty()) room -= chips_[index]->sizeHint().width() + 8;
  for (std::size_t index = 0; index < chips_.size(); ++index) {
    if (!states[index].value.isEmpty()) {
      chips_[index]->show();
      continue;
    }
    room -= chips_[index]->sizeHint().width() + 8;
    chips_[index]->setVisible(room >= 0);
  }
}

void FilterRow::openChoices(int place) {
  const FilterChip state = filters_.chips()[static_cast<std::size_t>(place)];
  auto* menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->setAccessibleName(state.title);
  auto* group = new QActionGroup(menu);
  for (std::size_t index = 0; index < state.choices.size(); ++index) {
    QAction* choice = menu->addAction(QString(state.choices[index]).replace(u'&', u"&&"_s));
    choice->setCheckable(true);
    choice->setChecked(static_cast<int>(index) == state.current);
    group->addAction(choice);
    connect(choice, &QAction::triggered, &filters_,
            [this, kind = state.kind, index] { filters_.choose(kind, static_cast<int>(index)); });
  }
  Chip& chip = *chips_[static_cast<std::size_t>(place)];
  menu->popup(chip.mapToGlobal(QPoint(0, chip.height() + 4)));
}

void FilterRow::resizeEvent(QResizeEvent*) { fit(); }

void FilterRow::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), colors().surfaceChrome);
  painter.fillRect(QRect(0, height() - 1, width(), 1), colors().lineSubtle);
}

}  // namespace sorvan::views
