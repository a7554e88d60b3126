// One trial: a scenario under a fault, the start after it, and what then must hold.
#pragma once

#include <QJsonObject>
#include <QString>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "torture/evidence.h"
#include "torture/invariants.h"
#include "torture/journal.h"
#include "torture/scenario.h"
#include "torture/station.h"

namespace sorvan::torture {

enum class FaultKind {
  none,     // nothing happens: what is counted, and must succeed
  kill,     // SIGKILL at a step; `cuts` says whether power cuts at the same moment are tried as well
  fail,     // a step fails, or it and all after it
  service,  // the sandbox misbehaves
  held,     // the sandbox holds a call, and the program is killed meanwhile
};

struct Fault {
  FaultKind kind = FaultKind::none;
  QString shim;        // "at before 2 write /.sorvan/library.store-wal", "at fail 1 fsync /.sorvan ENOSPC"
  QString call;        // of the sandbox's fault
  QString name;        // of the sandbox's fault
  QJsonObject more;
  bool forGood = false;  // what failed goes on failing
  bool cuts = false;
  quint64 seed = 0;    // of the torn power cut

  QString text() const;
};

// What became of one recovery.
struct Outcome {
  QString trial;  // "picture, at before 2 write /.sorvan/library.store-wal, power cut, torn"
  bool powerCut = false;
  Verdict verdict;
  QString folder;  // kept when something was violated
};

struct TrialResult {
  bool met = false;       // the fault did strike
  QString place;          // where the shim's fault struck
  QString workspace;      // the folder that the steps name
  std::vector<Step> steps;  // of the measured run; empty for faults of the sandbox
  std::vector<Outcome> outcomes;
};

// A worker's station with the libraries that its scenarios begin with.
class Workshop {
 public:
  // Works below `folder`, which must be empty. `driver` is the program under test, `bug` the planted bug that is on in
  // it, or empty, and `picture` the file that old libraries hold a copy of.
  Workshop(QString folder, const QString& driver, QString picture, const QString& bug = {});

  // Throws std::runtime_error when the harness itself does not work.
  TrialResult run(const Scenario& scenario, const Fault& fault);

 private:
  struct Beginning {
    QString workspace;  // to copy from
    Files files;
    QList<QJsonObject> acknowledged;
    QString run;  // of the sandbox's ledger
  };
  struct Recovery;

  const Beginning& beginningOf(const Scenario& scenario);
  void setUp(const Scenario& scenario, const Grounds& grounds);
  void measure(const Scenario& scenario, const Fault& fault, const Grounds& grounds, Recovery& recovery);
  Outcome recover(const Scenario& scenario, const Fault& fault, const Grounds& grounds, Recovery recovery,
                  const QString& variant);
  void comeToRest(const Grounds& grounds, Recovery& recovery);
  DriverEnd start(const Grounds& grounds, const QJsonArray& commands, const QString& what, Recovery& recovery);
  bool secretWasShownElsewhere() const;

  QString folder_;
  QString picture_;
  QByteArray secret_;
  std::unique_ptr<Station> station_;
  std::map<QString, Beginning> beginnings_;
  int number_ = 0;
};

}  // namespace sorvan::torture
