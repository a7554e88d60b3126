// The whole simulated service, put together.
#pragma once
#include <QTemporaryDir>

#include "control.h"
#include "front_desk.h"
#include "gateway_service.h"
#include "options.h"
#include "platform_service.h"
#include "queue_service.h"
#include "storage_service.h"

namespace sandbox {

// Listens from its construction on. Throws std::runtime_error when a file or a port cannot be had.
class Service {
 public:
  explicit Service(const Options& options);
  // Writes the file that tells a client how to reach the service; it appears whole or not at all.
  void writeConfiguration(const QString& path) const;

 private:
  HttpAnswer answer(const Call& call, const HttpRequest& request);
  QString statePath(const char* name) const;
  QString keyToAccept(const Options& options) const;
  void listen();

  QTemporaryDir temporary_;
  QString state_;
  KeyCheck keys_;
  Ledger ledger_;
  CallBook book_;
  FaultScript faults_;
  MediaShelf shelf_;
  JobBoard jobs_;
  QueueService queue_;
  StorageService storage_;
  PlatformService platform_;
  GatewayService gateway_;
  FrontDesk desk_;
  std::unique_ptr<TlsProxy> proxy_;
  std::unique_ptr<Control> control_;
};

}  // namespace sandbox
