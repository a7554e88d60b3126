#pragma once

#include "base/task_scope.h"
#include "core/saved_information.h"
#include "shell/room.h"

#include <QObject>
#include <QString>

#include <optional>
#include <vector>

namespace sorvan::shell {

struct HealthRow {
  QString title;  // “Saved prompts”
  QString count;  // “3 saved”, “None saved”
  QString issue;  // empty: all is well
};

struct HealthDisplay {
  QString title;  // “Workspace Health”
  QString head;   // “No repairs needed”, “1 area to review”, “Checking this workspace…”
  QString line;   // while checking: what is looked for
  bool checking = false;
  QString section;  // “Saved workspace information”
  QString state;    // “No issues”, “Needs attention”; empty before the first result
  bool needsAttention = false;
  std::vector<HealthRow> rows;
  QString repair;  // “Try Saving Again”; empty: nothing can be repaired
  QString feedback;
  bool feedbackIsError = false;
  QString foot;
  QString checkAgain;
  QString done;
};

// What Workspace Health shows, and its repair. Main thread.
class HealthPresenter : public QObject {
  Q_OBJECT

 public:
  // The store outlives the presenter.
  explicit HealthPresenter(core::LibraryStore& store, QObject* parent = nullptr);

  HealthDisplay display() const;
  // The sheet opens, or Check Again was pressed. The answer of an earlier check that is still under way is dropped.
  void check();
  // Try Saving Again; then checks anew.
  void trySavingAgain();

 Q_SIGNALS:
  void changed();

 private:
  static Task<> inspect(HealthPresenter* self, quint64 id, std::stop_token stop);
  void finish(std::vector<core::SavedInformation> rows);
  void forget();
  bool canRepair() const;

  core::LibraryStore& store_;
  std::optional<std::vector<core::SavedInformation>> rows_;
  quint64 checkId_ = 0;
  bool checking_ = false;
  bool failed_ = false;
  bool repaired_ = false;  // the check under way follows a repair
  QString feedback_;
  bool feedbackIsError_ = false;
  base::TaskScope tasks_;
};

}  // namespace sorvan::shell
