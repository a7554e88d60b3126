#pragma once

#include "shell/room.h"

#include <QString>

namespace sorvan::shell {

// What the composer says of who pays.
struct PayWithDisplay {
  QString label;  // “Pay with Credits”; empty where there is nothing to choose or to say
  QString help;
  bool offered = false;     // there are two ways to pay
  bool ownKeyPays = false;
  QString credits;          // “Sorvan Credits”
  QString creditsBalance;   // “1,240 credits”, or empty while it is not known
  QString creditsHelp;
  QString key;              // “My fal.ai Key (BYOK)”
  QString keyHelp;
  QString keyProblem;       // why a key that is saved pays for nothing, or empty
  QString account;          // “Account and Credits…”
  QString line;             // “Paid with Sorvan Credits · 24 credits”
  QString lineHelp;
};

}  // namespace sorvan::shell
