#include "shell/views/model_picker.h"

#include <QApplication>
#include <QKeyEvent>
#include <QScrollArea>
#include <QVBoxLayout>

#include "shell/views/controls.h"
#include "shell/views/fields.h"
#include "shell/views/labels.h"
#include "shell/views/model_row.h"
#include "shell/views/texts.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {
constexpr int kWidth = 460;
constexpr int kTallestList = 368;
constexpr int kShortestList = 150;
constexpr int kHeadAndFoot = 104;
}  // namespace

ModelPicker::ModelPicker(ComposerPresenter& composer, int height, QWidget* parent)
    : Popover(texts::model(), parent),
      composer_(composer),
      search_(new TextField(texts::searchModels(), texts::searchModels())),
      list_(new QWidget),
      nothing_(new Label(texts::noModelMatches(), Type::small, &Colors::textTertiary)),
      chosen_(new Label({}, Type::small, &Colors::textTertiary)) {
  panel()->setFixedWidth(kWidth);
  auto* column = new QVBoxLayout(panel());
  column->setContentsMargins(1, 10, 1, 1);
  column->setSpacing(0);
  search_->setIconName(u"search"_s);
  auto* head = new QHBoxLayout;
  head->setContentsMargins(10, 0, 10, 8);
  head->addWidget(search_);
  column->addLayout(head);
  auto* scroll = new QScrollArea;
  scroll->setFrameShape(QFrame::NoFrame);
  scroll->setWidgetResizable(true);
  scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  scroll->setFocusPolicy(Qt::NoFocus);
  scroll->viewport()->setAutoFillBackground(false);
  list_->setAutoFillBackground(false);
  list_->setAccessibleName(texts::model());
  fill();
  scroll->setWidget(list_);
  list_->setAutoFillBackground(false);
  scroll->setFixedHeight(std::clamp(height - kHeadAndFoot, kShortestList, kTallestList));
  column->addWidget(scroll);
  column->addWidget(new Hairline(&Colors::lineDefault));
  auto* foot = new QHBoxLayout;
  foot->setContentsMargins(12, 8, 12, 8);
  auto* done = new Button(texts::done());
  done->setControlSize(ControlSize::compact);
  foot->addWidget(chosen_, 1);
  foot->addWidget(done);
  column->addLayout(foot);
  connect(done, &Button::clicked, this, &Popover::dismiss);
  connect(search_, &QLineEdit::textChanged, this, &ModelPicker::filter);
  connect(&composer_, &ComposerPresenter::changed, this, &ModelPicker::refresh);
  search_->setFocus();
  refresh();
}

void ModelPicker::fill() {
  auto* rows = new QVBoxLayout(list_);
  rows->setContentsMargins(4, 0, 4, 4);
  rows->setSpacing(0);
  for (const ModelSection& section : composer_.modelSections()) {
    auto* heading = new Label(section.title, Type::caption, &Colors::textTertiary);
    heading->setWeight(Weight::semibold);
    heading->setContentsMargins(12, 10, 0, 4);
    rows->addWidget(heading);
    const size_t first = rows_.size();
    for (const ModelChoice& model : section.models) {
      auto* row = new ModelRow(model, section.severalAllowed);
      connect(row, &ModelRow::onlyRequested, this, [this](const QString& key) { composer_.chooseOnlyModel(key); });
      connect(row, &ModelRow::toggleRequested, this,
              [this](const QString& key, bool on) { composer_.setModelChosen(key, on); });
      rows->addWidget(row);
      rows_.push_back(row);
    }
    headings_.push_back({heading, {first, rows_.size()}});
  }
  nothing_->setAlignment(Qt::AlignCenter);
  nothing_->setMinimumHeight(64);
  nothing_->hide();
  rows->addWidget(nothing_);
  rows->addStretch(1);
}

void ModelPicker::filter(const QString& text) {
  bool any = false;
  for (const auto& [heading, span] : headings_) {
    bool some = false;
    for (size_t index = span.first; index < span.second; ++index) {
      const bool shown = rows_[index]->matches(text);
      rows_[index]->setVisible(shown);
      some = some || shown;
    }
    heading->setVisible(some);
    any = any || some;
  }
  nothing_->setVisible(!any);
}

void ModelPicker::refresh() {
  QSet<QString> chosen;
  for (const ModelSection& section : composer_.modelSections()) {
    for (const ModelChoice& model : section.models) {
      if (model.chosen) chosen.insert(model.key);
    }
  }
  for (ModelRow* row : rows_) row->setChosen(chosen.contains(row->key()));
  chosen_->setText(texts::modelsChosen(static_cast<int>(chosen.size())));
}

void ModelPicker::moveFocus(int step) {
  std::vector<QWidget*> stops{search_};
  for (ModelRow* row : rows_) {
    if (row->isVisible()) stops.push_back(row);
  }
  const auto at = std::find(stops.begin(), stops.end(), QApplication::focusWidget());
  const auto here = at == stops.end() ? 0 : at - stops.begin();
  const auto next = std::clamp<std::ptrdiff_t>(here + step, 0, static_cast<std::ptrdiff_t>(stops.size()) - 1);
  QWidget* stop = stops[static_cast<size_t>(next)];
  stop->setFocus(Qt::TabFocusReason);
  if (auto* scroll = qobject_cast<QScrollArea*>(list_->parentWidget()->parentWidget()); scroll && next > 0)
    scroll->ensureWidgetVisible(stop, 0, 24);
}

void ModelPicker::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Down) return moveFocus(+1);
  if (event->key() == Qt::Key_Up) return moveFocus(-1);
  Popover::keyPressEvent(event);
}

}  // namespace sorvan::views
