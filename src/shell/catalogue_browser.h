#pragma once

#include "base/clock.h"
#include "base/settings.h"
#include "base/task_scope.h"
#include "catalogue/catalogue_client.h"
#include "composer/composer_state.h"
#include "shell/model_browser.h"

#include <QHash>
#include <QSet>

#include <memory>
#include <optional>
#include <stop_token>
#include <vector>

namespace sorvan::shell {

class AlertsPresenter;
class ModelPrices;

// The browser over the program's own recommendations and the service's public catalogue. What it adds and removes is
// at once what the composer offers. Main thread.
class CatalogueBrowser final : public ModelBrowserPresenter {
  Q_OBJECT

 public:
  // What the browser uses; all of it outlives the browser.
  struct Ports {
    CatalogClient client;
    std::shared_ptr<FalCatalog> catalog;
    std::shared_ptr<const Clock> clock;
    ComposerState& composing;
    AlertsPresenter& alerts;
    ModelPrices& prices;
  };
  explicit CatalogueBrowser(Ports ports, QObject* parent = nullptr);
  ~CatalogueBrowser() override;

  BrowserDisplay display() const override;
  void appear() override;
  void chooseCategory(int category) override;
  void editWords(const QString& words) override;
  void showAll() override;
  void loadMore() override;
  void searchAgain() override;
  void add(const QString& id) override;
  void cancelAdding(const QString& id) override;
  void remove(const QString& id) override;

  // Reads again what an older reader made of the added models; the composer has the new ones afterwards.
  void rereadModels(std::shared_ptr<Settings> settings);

 private:
  enum class Wait { none, typing };
  // What is known of one row beyond what the service told.
  struct Adding {
    std::stop_source stop;
  };
  struct Removed {
    RemovedModel model;
    QSet<QString> chosen;  // what was chosen before
  };

  CatalogQuestion question() const;
  bool isSearch() const;
  void ask(Wait wait);
  Task<> search(CatalogQuestion question, Wait wait, std::stop_token stop);
  Task<> fetchMore(CatalogQuestion question, std::stop_token stop);
  void take(CatalogPage page);
  void showRecommended();
  void refreshPrices();
  Task<> addModel(FalListing listing, std::stop_token stop);
  void offer();
  std::optional<RemovedModel> placeOf(const QString& id) const;
  void undoRemoval(const Removed& removed);
  void chooseAgain(const QString& key, const QSet<QString>& chosenBefore);
  Task<> reread(std::shared_ptr<Settings> settings, std::stop_token stop);
  BrowserRow rowOf(const CatalogRow& row) const;
  void fillEmptiness(BrowserDisplay& display) const;

  Ports ports_;
  int category_ = 0;
  QString words_;
  bool all_ = false;
  BrowserState state_ = BrowserState::recommended;
  std::vector<CatalogRow> rows_;
  std::optional<QString> next_;
  QSet<QString> pagesSeen_;
  bool loadingMore_ = false;
  QString failure_;
  QString moreFailure_;
  QHash<QString, QString> problems_;  // by model id
  QHash<QString, Adding> adding_;
  std::stop_source searching_;
  TaskScope tasks_;
};

}  // namespace sorvan::shell
