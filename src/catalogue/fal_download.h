// Fetches one finished output into the job's recovery folder.
#pragma once

#include <memory>
#include <stop_token>

#include "catalogue/outputs.h"
#include "catalogue/provider_http.h"
#include "catalogue/room.h"
#include "generation/provider.h"

namespace sorvan::catalogue {

/// More than any model makes; a download that is longer is broken off.
inline constexpr qint64 largestOutput = 8LL << 30;  ///< bytes

/// Streams the output to `path`, which is durably on the disk afterwards, and looks whether it is whole and what it is
/// said to be. Throws "The completed result could not be downloaded. …" when it is not, and then there is no file.
Task<GeneratedOutput> downloadOutput(std::shared_ptr<HttpTransport> transport, OutputAddress address, QString path,
                                     std::stop_token stop);

}  // namespace sorvan::catalogue
