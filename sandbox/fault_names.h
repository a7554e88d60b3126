// The names of faults and what each stands for.
#pragma once
#include "faults.h"

namespace sandbox {

struct NamedFault {
  const char* name;
  FaultKind kind;
  bool takesEffect;
  int status;               // of FaultKind::Answer
  const char* contentType;  // likewise
  const char* body;         // likewise
  const char* about;
};

// Every name that a script may use.
const std::vector<NamedFault>& namedFaults();
const NamedFault* faultNamed(const QString& name);

}  // namespace sandbox
