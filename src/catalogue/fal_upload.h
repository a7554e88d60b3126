// Sends one reference to the service's storage.
#pragma once

#include <memory>
#include <stop_token>

#include "catalogue/provider_http.h"
#include "catalogue/room.h"

namespace sorvan::catalogue {

struct ReferenceUpload {
  QString file;  ///< absolute path
  QString key;
  std::optional<qint64> pictureLimit{};  ///< bytes; a larger PNG goes as JPEG
};

/// The address under which the service holds the reference. The media are prepared on the pool. Throws SorvanError.
Task<QString> uploadReference(std::shared_ptr<HttpTransport> transport, ReferenceUpload upload, std::stop_token stop);

}  // namespace sorvan::catalogue
