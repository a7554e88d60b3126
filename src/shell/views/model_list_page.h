// The picker's tabs of models that can be chosen at once.
#pragma once

#include <QSet>
#include <QWidget>

#include "shell/composer_presenter.h"
#include "shell/views/room.h"

namespace sorvan::views {

class Button;
class EmptyNote;
class Label;
class ModelRow;
class RowList;

// Shows the models of one tab, or while words are searched for those of all tabs that match, under their headings.
class ModelListPage final : public QWidget {
  Q_OBJECT

 public:
  explicit ModelListPage(QWidget* parent = nullptr);

  RowList& list() { return *list_; }
  void setSections(const std::vector<ModelSection>& sections);
  void setTab(int tab);
  void setWords(const QString& words);

 Q_SIGNALS:
  void onlyRequested(const QString& key);
  void toggleRequested(const QString& key, bool chosen);
  void removeRequested(const QString& id);
  // More models are wanted than these.
  void browseRequested();

 private:
  struct Group {
    Label* heading;
    std::vector<ModelRow*> rows;
  };
  void rebuild();
  void filter();
  void fillEmptiness(bool any);
  ModelRow* makeRow(const ModelChoice& model, bool several);
  bool showsTheSameModels(const std::vector<ModelSection>& sections) const;

  RowList* list_;
  EmptyNote* empty_;
  QWidget* foot_;
  std::vector<ModelSection> sections_;
  std::vector<Group> groups_;
  int tab_ = 0;
  QString words_;
};

}  // namespace sorvan::views
