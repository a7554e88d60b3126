#pragma once

#include "platform/service_configuration.h"
#include "shell/room.h"

#include <QString>

#include <optional>

namespace sorvan::shell {

// Where one run of the program keeps what is the user's, and what it calls itself. A run on the service simulator has
// places of its own, so that it touches nothing of the user's.
struct Profile {
  QString title;                           // “Sorvan Studio”, “Sorvan Studio (sandbox)”
  QString dataFolder;                      // absolute; holds the lock of the running instance
  QString settingsFile;                    // absolute
  QString defaultWorkspace;                // absolute
  std::optional<QString> forcedWorkspace;  // opened instead of the last one, and not remembered
  std::optional<ServiceConfiguration> service;

  // The name on the session bus.
  QString busName() const;
  bool isSandbox() const { return service.has_value(); }
};

// Reads the environment. Throws SorvanError when a service configuration is named and cannot be used: such a run must
// never fall back to the real service.
Profile profileFromEnvironment();

}  // namespace sorvan::shell
