// What must hold after every trial, each under its name.
#pragma once

#include <QString>
#include <QStringList>
#include <vector>

#include "torture/evidence.h"

namespace sorvan::torture {

struct Violation {
  QString invariant;  // "I3"
  QString what;
};

struct InvariantName {
  const char* name;
  const char* text;
};

// I1 to I13 with their sentences, in order.
const std::vector<InvariantName>& invariantNames();

struct Verdict {
  std::vector<Violation> violations;
  int unknownSubmissions = 0;  // jobs whose submission's answer was lost: nothing is bought for them again here
};

Verdict judge(const Evidence& evidence);

}  // namespace sorvan::torture
