#include "shell/views/model_list_page.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "shell/views/controls.h"
#include "shell/views/empty_note.h"
#include "shell/views/labels.h"
#include "shell/views/model_row.h"
#include "shell/views/row_list.h"
#include "shell/views/texts.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

ModelListPage::ModelListPage(QWidget* parent)
    : QWidget(parent), list_(new RowList(texts::model())), empty_(new EmptyNote), foot_(new QWidget) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(list_);
  auto* browse = new Button(texts::browseModels(), ButtonVariant::quiet);
  browse->setIconName(u"plus"_s);
  browse->setControlSize(ControlSize::compact);
  auto* line = new QHBoxLayout(foot_);
  line->setContentsMargins(4, 6, 12, 6);
  line->addWidget(browse, 0, Qt::AlignLeft);
  connect(browse, &Button::clicked, this, &ModelListPage::browseRequested);
  connect(empty_, &EmptyNote::pressed, this, &ModelListPage::browseRequested);
}

bool ModelListPage::showsTheSameModels(const std::vector<ModelSection>& sections) const {
  const auto sameKeys = [](const ModelSection& one, const ModelSection& other) {
    return one.title == other.title &&
           std::equal(one.models.begin(), one.models.end(), other.models.begin(), other.models.end(),
                      [](const ModelChoice& a, const ModelChoice& b) { return a.key == b.key; });
  };
  return std::equal(sections.begin(), sections.end(), sections_.begin(), sections_.end(), sameKeys);
}

void ModelListPage::setSections(const std::vector<ModelSection>& sections) {
  const bool same = showsTheSameModels(sections);
  sections_ = sections;
  if (!same) return rebuild();
  for (std::size_t group = 0; group < groups_.size(); ++group)
    for (std::size_t row = 0; row < groups_[group].rows.size(); ++row)
      groups_[group].rows[row]->setModel(sections_[group].models[row]);
}

void ModelListPage::setTab(int tab) {
  tab_ = tab;
  filter();
}

void ModelListPage::setWords(const QString& words) {
  words_ = words.trimmed();
  filter();
}

ModelRow* ModelListPage::makeRow(const ModelChoice& model, bool several) {
  auto* row = new ModelRow(model, several);
  connect(row, &ModelRow::onlyRequested, this, &ModelListPage::onlyRequested);
  connect(row, &ModelRow::toggleRequested, this, &ModelListPage::toggleRequested);
  connect(row, &ModelRow::removeRequested, this, &ModelListPage::removeRequested);
  return row;
}

void ModelListPage::rebuild() {
  const bool hadFocus = list_->rowWithFocus() != nullptr;
  for (Group& group : groups_) {
    list_->removeRows({group.rows.begin(), group.rows.end()});
    group.heading->deleteLater();
  }
  groups_.clear();
  for (const ModelSection& section : sections_) {
    auto* heading = new Label(section.title, Type::caption, &Colors::textTertiary);
    heading->setWeight(Weight::semibold);
    heading->setContentsMargins(12, 10, 0, 4);
    list_->addOther(heading);
    Group group{heading, {}};
    for (const ModelChoice& model : section.models) {
      group.rows.push_back(makeRow(model, section.severalAllowed));
      list_->addRow(group.rows.back());
    }
    groups_.push_back(std::move(group));
  }
  list_->addOther(empty_);
  list_->addOther(foot_);
  filter();
  // The row that was taken out had the keyboard: its neighbour gets it.
  if (hadFocus) list_->moveBy(+1);
}

void ModelListPage::filter() {
  bool any = false;
  for (std::size_t index = 0; index < groups_.size(); ++index) {
    bool some = false;
    for (ModelRow* row : groups_[index].rows) {
      const bool shown = words_.isEmpty() ? static_cast<int>(index) == tab_ : row->matches(words_);
      row->setVisible(shown);
      some = some || shown;
    }
    groups_[index].heading->setVisible(some && !words_.isEmpty());
    any = any || some;
  }
  fillEmptiness(any);
  list_->settle();
}

void ModelListPage::fillEmptiness(bool any) {
  const bool tabIsThere = tab_ >= 0 && tab_ < static_cast<int>(sections_.size());
  const ModelSection section = tabIsThere ? sections_[static_cast<std::size_t>(tab_)] : ModelSection();
  const bool browses = section.browserCategory >= 0;
  empty_->setVisible(!any);
  foot_->setVisible(any && browses);
  if (words_.isEmpty())
    empty_->setWords({u"box"_s, section.emptyTitle, section.emptyText, browses ? texts::browseModels() : QString()});
  else
    empty_->setWords({u"search"_s, texts::noModelMatches(), {}, browses ? texts::browseModels() : QString()});
}

}  // namespace sorvan::views
