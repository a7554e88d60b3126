#pragma once

#include "shell/room.h"

#include <QObject>
#include <QString>

#include <vector>

namespace sorvan::shell {

enum class BrowserRowState {
  offered,  // may be added
  adding,   // its settings are being read
  added,    // may be chosen and removed
  builtIn,  // may be chosen
};

// One model of the service's catalogue.
struct BrowserRow {
  QString id;
  QString key;  // chooses the model once it is added
  QString name;
  QString summary;
  QString badge;    // “Top rated”, “New”, …, or empty
  QString licence;  // “Research use only”, or empty
  QString price;    // “$0.04 / image”, “Price unavailable”, or empty while it is not known
  QString priceDate;
  BrowserRowState state = BrowserRowState::offered;
  QString stateText;  // “Added”, “Built in”, “Reading this model's settings…”, or empty
  QString problem;    // why it could not be added: stands under the row
  bool operator==(const BrowserRow&) const = default;
};

enum class BrowserState {
  recommended,  // the lists that the program brings along
  searching,    // an answer is awaited; the rows are those of before
  results,
  failed,  // no answer; `title` and `text` say why
};

struct BrowserDisplay {
  std::vector<QString> categories;
  int category = 0;
  QString words;  // what is searched for
  BrowserState state = BrowserState::recommended;
  QString heading;  // “Recommended”, “Searching…”, “24 models”
  std::vector<BrowserRow> rows;
  // What stands in the place of rows, when there are none.
  QString title;
  QString text;
  QString allTitle;     // the button that shows the whole category; empty: there is none
  bool hasMore = false;  // a page follows
  bool loadingMore = false;
  QString moreProblem;  // why the next page did not come
  QString note;
};

// What the browser of models asks for. Main thread.
class ModelBrowserPresenter : public QObject {
  Q_OBJECT

 public:
  explicit ModelBrowserPresenter(QObject* parent = nullptr) : QObject(parent) {}

  virtual BrowserDisplay display() const = 0;

  // Shown again after a while: prices are brought up to date.
  virtual void appear() = 0;
  virtual void chooseCategory(int category) = 0;
  // At each keystroke; asks the service when the typing pauses.
  virtual void editWords(const QString& words) = 0;
  // The whole category, without words.
  virtual void showAll() = 0;
  // The next page; also the one that failed to come.
  virtual void loadMore() = 0;
  // The same question once more.
  virtual void searchAgain() = 0;
  virtual void add(const QString& id) = 0;
  virtual void cancelAdding(const QString& id) = 0;
  // Takes an added model out of the list, with an undo.
  virtual void remove(const QString& id) = 0;

 Q_SIGNALS:
  void changed();
};

}  // namespace sorvan::shell
