#include "shell/views/model_picker.h"

#include <QApplication>
#include <QKeyEvent>
#include <QVBoxLayout>

#include "shell/model_browser.h"
#include "shell/views/browser_page.h"
#include "shell/views/controls.h"
#include "shell/views/fields.h"
#include "shell/views/labels.h"
#include "shell/views/model_list_page.h"
#include "shell/views/row_list.h"
#include "shell/views/segmented_control.h"
#include "shell/views/texts.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kWidth = 460;
constexpr int kTallestList = 396;
constexpr int kShortestList = 150;
constexpr int kHeadAndFoot = 138;

int tabOfChoice(const std::vector<ModelSection>& sections) {
  for (std::size_t tab = 0; tab < sections.size(); ++tab)
    for (const ModelChoice& model : sections[tab].models)
      if (model.chosen) return static_cast<int>(tab);
  return 0;
}

}  // namespace

ModelPicker::ModelPicker(ComposerPresenter& composer, int height, QWidget* parent)
    : Popover(texts::model(), parent),
      composer_(composer),
      sections_(composer.modelSections()),
      search_(new TextField(texts::searchModels(), texts::searchModels())),
      models_(new ModelListPage),
      chosen_(new Label({}, Type::small, &Colors::textTertiary)) {
  const bool canBrowse = composer_.browser() && !sections_.empty() && sections_.front().browserCategory >= 0;
  if (canBrowse) browser_ = new BrowserPage(*composer_.browser());
  build(height);
  connectParts();
  refresh();
  showTab(tabOfChoice(sections_));
  composer_.showModels();
  search_->setFocus();
}

void ModelPicker::buildTabs() {
  std::vector<Segment> segments;
  for (const ModelSection& section : sections_) segments.push_back({section.title, {}, {}});
  if (browser_) segments.push_back({texts::browse(), {}, {}});
  tabs_ = new SegmentedControl(texts::modelTabs(), segments, ControlSize::compact);
  tabs_->setStretched(true);
}

void ModelPicker::build(int height) {
  panel()->setFixedWidth(kWidth);
  auto* column = new QVBoxLayout(panel());
  column->setContentsMargins(1, 10, 1, 1);
  column->setSpacing(0);
  search_->setIconName(u"search"_s);
  buildTabs();
  auto* head = new QVBoxLayout;
  head->setContentsMargins(10, 0, 10, 8);
  head->setSpacing(8);
  head->addWidget(search_);
  head->addWidget(tabs_);
  column->addLayout(head);
  const int room = std::clamp(height - kHeadAndFoot, kShortestList, kTallestList);
  models_->setFixedHeight(room);
  column->addWidget(models_);
  if (browser_) {
    browser_->setFixedHeight(room);
    column->addWidget(browser_);
  }
  column->addWidget(new Hairline(&Colors::lineDefault));
  auto* foot = new QHBoxLayout;
  foot->setContentsMargins(12, 8, 12, 8);
  auto* done = new Button(texts::done());
  done->setControlSize(ControlSize::compact);
  foot->addWidget(chosen_, 1);
  foot->addWidget(done);
  column->addLayout(foot);
  connect(done, &Button::clicked, this, &Popover::dismiss);
}

void ModelPicker::connectParts() {
  const auto only = [this](const QString& key) { composer_.chooseOnlyModel(key); };
  const auto toggle = [this](const QString& key, bool on) { composer_.setModelChosen(key, on); };
  connect(tabs_, &SegmentedControl::chosen, this, &ModelPicker::showTab);
  connect(search_, &QLineEdit::textChanged, this, &ModelPicker::search);
  connect(models_, &ModelListPage::onlyRequested, this, only);
  connect(models_, &ModelListPage::toggleRequested, this, toggle);
  connect(models_, &ModelListPage::browseRequested, this, &ModelPicker::browse);
  connect(&models_->list(), &RowList::leftUpwards, this, [this] { search_->setFocus(Qt::TabFocusReason); });
  connect(&composer_, &ComposerPresenter::changed, this, &ModelPicker::refresh);
  if (!browser_) return;
  connect(models_, &ModelListPage::removeRequested, composer_.browser(), &ModelBrowserPresenter::remove);
  connect(browser_, &BrowserPage::onlyRequested, this, only);
  connect(browser_, &BrowserPage::toggleRequested, this, toggle);
  connect(&browser_->list(), &RowList::leftUpwards, this, [this] { search_->setFocus(Qt::TabFocusReason); });
}

void ModelPicker::refresh() {
  sections_ = composer_.modelSections();
  models_->setSections(sections_);
  QSet<QString> chosen;
  for (const ModelSection& section : sections_)
    for (const ModelChoice& model : section.models)
      if (model.chosen) chosen.insert(model.key);
  if (browser_) browser_->setChosen(chosen);
  chosen_->setText(texts::modelsChosen(static_cast<int>(chosen.size())));
}

bool ModelPicker::isBrowsing() const { return browser_ && tabs_->current() == static_cast<int>(sections_.size()); }

RowList& ModelPicker::list() { return isBrowsing() ? browser_->list() : models_->list(); }

void ModelPicker::showTab(int tab) {
  tabs_->setCurrent(tab);
  const bool browsing = isBrowsing();
  models_->setVisible(!browsing);
  if (browser_) browser_->setVisible(browsing);
  search_->setPlaceholderText(browsing ? texts::searchCatalogue() : texts::searchModels());
  if (browsing) composer_.browser()->appear();
  if (!browsing) models_->setTab(tab);
  search(search_->text());
}

void ModelPicker::search(const QString& text) {
  if (isBrowsing())
    composer_.browser()->editWords(text);
  else
    models_->setWords(text);
}

// More of the kind that is shown now.
void ModelPicker::browse() {
  const auto tab = static_cast<std::size_t>(tabs_->current());
  if (tab < sections_.size()) composer_.browser()->chooseCategory(sections_[tab].browserCategory);
  showTab(static_cast<int>(sections_.size()));
  search_->setFocus(Qt::OtherFocusReason);
}

void ModelPicker::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Down && list().moveBy(+1)) return;
  if (event->key() == Qt::Key_Up && list().moveBy(-1)) return;
  Popover::keyPressEvent(event);
}

}  // namespace sorvan::views
