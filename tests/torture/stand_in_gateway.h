// Credits where there is no gateway yet: the service's own jobs, asked about and stopped by the ids that a gateway would
// have for them. What such a job costs is not told; which requests were bought is.
#pragma once

#include <memory>

#include "core/library_store.h"
#include "generation/generation_ports.h"
#include "platform/http.h"

namespace sorvan::torture {

struct StandInGateway {
  bool pays = false;  // whether credits pay for what is ordered from now on
  bool away = false;  // whether it cannot be asked

  // Fills the ports of credits. The store must outlive the ports, and this object too.
  void plugInto(generation::GenerationPorts& ports, const core::LibraryStore& store,
                std::shared_ptr<platform::HttpTransport> transport, const QString& key);

 private:
  // What "queued", "running", "complete" and "failed" is here. Throws SorvanError when it cannot be asked.
  base::Task<QString> state(core::RemoteHandle handle, std::stop_token stop);
  base::Task<QString> cancelled(core::RemoteHandle handle, std::stop_token stop);
  core::RemoteHandle handleOf(const core::LibraryStore& store, const QString& operation) const;

  std::shared_ptr<platform::HttpTransport> transport_;
  QString key_;
};

}  // namespace sorvan::torture
