// The roads that the harness walks: what a user does, from an order to the item that stands in the library.
#pragma once

#include <QJsonArray>
#include <QString>
#include <vector>

namespace sorvan::torture {

struct Scenario {
  QString name;
  QJsonArray setUp;       // what the library holds before, made without a fault; may end in a kill, see below
  QString setUpEndsAt;    // a kill point of the shim at which the set-up ends, or empty
  QJsonArray commands;    // the measured run; "%1" in a prompt or text becomes the trial's own name
  bool jobsStand = false; // the service's jobs do not move during the measured run
  QString damagedSidecar; // a sidecar that is made unreadable before the measured run, or empty
  bool beginsWithNothing = false;  // the folder is empty; otherwise it is a library at least
  int oldVersion = 0;     // the library was left by a version whose form of the database this was; 0 for the present one
  bool setUpStands = false;  // the service's jobs do not move during the set-up
  bool endsSaved = false;    // it tries to save again at the end, so that one failed step leaves nothing unsaved
};

// All of them. `picture` is a picture file that may be placed into a library.
std::vector<Scenario> allScenarios(const QString& picture);

// The commands with the trial's name in their prompts.
QJsonArray named(const QJsonArray& commands, const QString& trial);

}  // namespace sorvan::torture
