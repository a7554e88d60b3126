// The planted bugs, and the trials that must catch them.
#pragma once

#include <QString>
#include <QStringList>
#include <vector>

#include "torture/plan.h"

namespace sorvan::torture {

struct Bug {
  QString name;         // as SORVAN_PLANTED_BUG switches it on
  QStringList catches;  // the invariants of which one must be violated
  enum class Hunt { plain, kills, cuts, writeErrors, submits, downloads, purchases } hunt;
  QString where = {};   // kills only at steps whose place holds this
  QString scenario = QStringLiteral("picture");  // where it is hunted
};

// Those that the library can have by now.
const std::vector<Bug>& plantedBugs();

// The trials that are tried against it, in order, until one catches it.
std::vector<Planned> huntFor(const Bug& bug, const Scenario& scenario, const std::vector<Counted>& steps, quint64 seed);

// The first violation that gives the bug away, as text; empty when there is none.
QString givenAway(const Bug& bug, const TrialResult& result);

}  // namespace sorvan::torture
