#pragma once

#include "shell/room.h"

#include <QString>

namespace sorvan::shell {

// The two ways to pay, as an account has them.
struct PayChoicesDisplay {
  bool offered = false;  // only somebody whose account takes an own key has the choice
  bool ownKeyPays = false;
  QString credits = {};         // “Sorvan Credits”
  QString creditsBalance = {};  // “1,240 credits”, or empty while it is not known
  QString creditsHelp = {};
  QString key = {};  // “My fal.ai Key (BYOK)”
  QString keyHelp = {};
  QString keyProblem = {};  // why a key that is saved pays for nothing, or empty
};

// What the composer says of who pays.
struct PayWithDisplay : PayChoicesDisplay {
  QString label = {};  // “Pay with Credits”; empty where there is nothing to choose or to say
  QString help = {};
  QString account = {};  // “Account and Credits…”
  QString line = {};     // “Paid with Sorvan Credits · 24 credits”
  QString lineHelp = {};
};

}  // namespace sorvan::shell
