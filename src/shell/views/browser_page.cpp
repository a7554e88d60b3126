#include "shell/views/browser_page.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "shell/views/browser_row.h"
#include "shell/views/controls.h"
#include "shell/views/empty_note.h"
#include "shell/views/feedback.h"
#include "shell/views/labels.h"
#include "shell/views/row_list.h"
#include "shell/views/segmented_control.h"
#include "shell/views/texts.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

BrowserPage::BrowserPage(ModelBrowserPresenter& browser, QWidget* parent)
    : QWidget(parent),
      browser_(browser),
      list_(new RowList(texts::catalogueList())),
      heading_(new QWidget),
      headingText_(new Label({}, Type::caption, &Colors::textTertiary)),
      headingSpinner_(new Spinner(metrics().iconSmall)),
      empty_(new EmptyNote),
      foot_(new QWidget),
      footSpinner_(new Spinner(metrics().iconSmall)),
      footText_(new Label({}, Type::small, &Colors::textTertiary)),
      footButton_(new Button({}, ButtonVariant::quiet)) {
  build();
  connect(&browser_, &ModelBrowserPresenter::changed, this, &BrowserPage::refresh);
  connect(list_, &RowList::nearEnd, this, &BrowserPage::wantMore);
  connect(empty_, &EmptyNote::pressed, this, [this] { browser_.searchAgain(); });
  connect(footButton_, &Button::clicked, this, [this] {
    if (browser_.display().allTitle.isEmpty())
      browser_.loadMore();
    else
      browser_.showAll();
  });
  refresh();
}

void BrowserPage::build() {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  std::vector<Segment> segments;
  for (const QString& title : browser_.display().categories) segments.push_back({title, {}, {}});
  categories_ = new SegmentedControl(texts::category(), segments, ControlSize::compact);
  categories_->setStretched(true);
  connect(categories_, &SegmentedControl::chosen, this, [this](int index) { browser_.chooseCategory(index); });
  auto* head = new QHBoxLayout;
  head->setContentsMargins(10, 0, 10, 2);
  head->addWidget(categories_);
  column->addLayout(head);
  headingText_->setWeight(Weight::semibold);
  auto* line = new QHBoxLayout(heading_);
  line->setContentsMargins(12, 8, 12, 4);
  line->setSpacing(6);
  line->addWidget(headingSpinner_);
  line->addWidget(headingText_, 1);
  auto* foot = new QHBoxLayout(foot_);
  foot->setContentsMargins(12, 6, 12, 6);
  foot->setSpacing(8);
  footText_->setWordWrap(true);
  footButton_->setControlSize(ControlSize::compact);
  foot->addStretch(1);
  foot->addWidget(footSpinner_);
  foot->addWidget(footText_);
  foot->addWidget(footButton_);
  foot->addStretch(1);
  list_->addOther(heading_);
  list_->addOther(empty_);
  column->addWidget(list_, 1);
  auto* note = new Paragraph(browser_.display().note, Type::caption, &Colors::textTertiary);
  note->setContentsMargins(12, 6, 12, 6);
  column->addWidget(new Hairline(&Colors::lineSubtle));
  column->addWidget(note);
}

void BrowserPage::setChosen(const QSet<QString>& keys) {
  chosen_ = keys;
  const auto shown = browser_.display().rows;
  for (std::size_t index = 0; index < rows_.size() && index < shown.size(); ++index)
    rows_[index]->setChosen(keys.contains(shown[index].key));
}

void BrowserPage::refresh() {
  const BrowserDisplay display = browser_.display();
  categories_->setCurrent(display.category);
  heading_->setVisible(!display.heading.isEmpty());
  headingText_->setText(display.heading);
  headingSpinner_->setVisible(display.state == BrowserState::searching);
  empty_->setVisible(!display.title.isEmpty());
  const bool failed = display.state == BrowserState::failed;
  empty_->setWords({failed ? u"circle-alert"_s : u"search"_s, display.title, display.text,
                    failed ? texts::tryAgain() : QString()});
  refreshRows(display.rows);
  refreshFoot(display);
}

BrowserRowView* BrowserPage::makeRow(const BrowserRow& row) {
  auto* view = new BrowserRowView(row);
  connect(view, &BrowserRowView::addRequested, &browser_, &ModelBrowserPresenter::add);
  connect(view, &BrowserRowView::cancelRequested, &browser_, &ModelBrowserPresenter::cancelAdding);
  connect(view, &BrowserRowView::removeRequested, &browser_, &ModelBrowserPresenter::remove);
  connect(view, &BrowserRowView::onlyRequested, this, &BrowserPage::onlyRequested);
  connect(view, &BrowserRowView::toggleRequested, this, &BrowserPage::toggleRequested);
  return view;
}

// Rows that stay keep their widgets, and with them the keyboard and the place that was scrolled to.
void BrowserPage::refreshRows(const std::vector<BrowserRow>& rows) {
  std::size_t same = 0;
  while (same < rows.size() && same < rows_.size() && rows_[same]->id() == rows[same].id) ++same;
  std::vector<QWidget*> gone(rows_.begin() + static_cast<std::ptrdiff_t>(same), rows_.end());
  const QWidget* focused = list_->rowWithFocus();
  const bool losesFocus = focused && std::find(gone.begin(), gone.end(), focused) != gone.end();
  rows_.resize(same);
  list_->removeRows(gone);
  for (std::size_t index = 0; index < same; ++index) rows_[index]->setRow(rows[index]);
  for (std::size_t index = same; index < rows.size(); ++index) {
    rows_.push_back(makeRow(rows[index]));
    list_->addRow(rows_.back());
  }
  for (std::size_t index = 0; index < rows_.size(); ++index) rows_[index]->setChosen(chosen_.contains(rows[index].key));
  if (losesFocus && rows_.empty()) categories_->setFocus(Qt::OtherFocusReason);
  if (losesFocus && !rows_.empty()) list_->focusRow(rows_.front());
}

void BrowserPage::refreshFoot(const BrowserDisplay& display) {
  footSpinner_->setVisible(display.loadingMore);
  footText_->setText(display.loadingMore ? texts::loadingMore() : display.moreProblem);
  footText_->setVisible(!footText_->text().isEmpty());
  const QString button = !display.moreProblem.isEmpty() ? texts::tryAgain() : display.allTitle;
  footButton_->setText(button);
  footButton_->setVisible(!button.isEmpty());
  foot_->setVisible(display.loadingMore || !display.moreProblem.isEmpty() || !button.isEmpty());
  list_->addOther(foot_);  // after the last row
}

void BrowserPage::wantMore() {
  const BrowserDisplay display = browser_.display();
  if (display.hasMore && !display.loadingMore && display.moreProblem.isEmpty()) browser_.loadMore();
}

}  // namespace sorvan::views
