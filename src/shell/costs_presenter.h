#pragma once

#include "base/task_scope.h"
#include "shell/cost_display.h"

#include <QObject>

#include <functional>
#include <optional>

namespace sorvan::core {
class LibraryStore;
}

namespace sorvan::shell {

class AlertsPresenter;
class PaymentDesk;
class WorkspaceState;

enum class CostPageState { reading, empty, report, failed };

// One choice of what the report is about.
struct CostScope {
  QString key;  // a project's UUID, "all" or "inbox"
  QString title;
};

// What the page of costs shows, and its file for a spreadsheet. While another page is in front nothing is worked out.
// The report is made on the pool from a copy of the charges, which is taken a piece at a time; the newest question wins.
// Main thread. Await `drain` before what it stands on goes.
class CostsPresenter : public QObject {
  Q_OBJECT

 public:
  // All of these outlive the presenter.
  struct Ports {
    core::LibraryStore& store;
    WorkspaceState& state;
    AlertsPresenter& alerts;
    PaymentDesk& payment;
    account::NameOfModel nameOfModel;
    std::function<void(const QString& file)> showInFiles = {};  // without it, nothing offers that
  };
  explicit CostsPresenter(Ports ports, QObject* parent = nullptr);
  ~CostsPresenter() override;

  // The name of the workspace, beside the page's title.
  QString workspaceName() const;
  // “What your generations and AI assistance cost. …”
  QString explanation() const;
  // Under the table; may be empty.
  QString tableNote() const;

  static std::vector<QString> periods();
  int period() const;
  void setPeriod(int index);
  void showAllTime();
  // All projects, the Inbox, then the projects; archived ones last.
  std::vector<CostScope> scopes() const;
  QString scope() const { return about_.scope; }
  QString scopeTitle() const;
  void setScope(const QString& key);
  CostBreakdownKind showing() const { return showing_; }
  void setShowing(CostBreakdownKind kind);

  CostPageState pageState() const;
  // Whether a newer report is being made.
  bool isWorking() const { return working_; }
  // Why there is no report, while the state is `failed`.
  QString problem() const { return problem_; }
  // What stands in place of an empty report: one sentence, and whether another period can be offered.
  QString emptyText() const;
  bool offersAllTime() const;
  // Null until there is a report.
  const CostPage* page() const { return page_.get(); }
  // Another one for each report.
  quint64 pageNumber() const { return pageNumber_; }
  int rowCount() const { return page_ ? static_cast<int>(page_->charges.size()) : 0; }
  CostRow row(int index) const;

  // Opens the item of a row; does nothing for a row without one.
  void openRow(int index);
  void tryAgain() { refresh(); }

  // The name under which the file is offered, and whether there is anything to write.
  QString exportName() const;
  bool canExport() const { return page_ && !page_->charges.empty() && !exporting_; }
  // Writes what the report shows. The file is whole on the disk when the card says so; a failure leaves what was there.
  void exportTo(const QString& file);

  Task<> drain() { return tasks_.drain(); }

 Q_SIGNALS:
  void changed();

 private:
  static Task<> work(CostsPresenter* self, std::stop_token stop);
  static Task<> makeReport(CostsPresenter* self, std::stop_token stop);
  static Task<> write(CostsPresenter* self, QString file, std::shared_ptr<const CostPage> page);
  void refresh();
  void refreshIfShown();
  void forget();
  void dropLostScope();
  void tellExported(const QString& file, int rows);
  bool isShown() const;
  bool bookIsCurrent() const;
  CostQuestion question() const;
  account::Spend spend() const;

  Ports on_;
  account::CostDashboard about_;
  CostBreakdownKind showing_ = CostBreakdownKind::models;
  std::shared_ptr<const account::ChargeBook> book_;
  std::uint64_t bookOpening_ = 0;
  std::uint64_t bookRevision_ = 0;
  std::shared_ptr<const CostPage> page_;
  quint64 pageNumber_ = 0;
  account::CostDashboard pageAbout_;  // what `page_` is about
  QString problem_;
  bool working_ = false;
  bool again_ = false;
  bool exporting_ = false;
  base::TaskScope tasks_;
};

}  // namespace sorvan::shell
