// Fetches one finished output into the job's recovery folder.
#pragma once

#include <QByteArrayView>

#include <functional>
#include <memory>
#include <stop_token>

#include "catalogue/outputs.h"
#include "catalogue/provider_http.h"
#include "catalogue/room.h"
#include "generation/provider.h"

namespace sorvan::catalogue {

/// More than any model makes; a download that is longer is broken off.
inline constexpr qint64 largestOutput = 8LL << 30;  ///< bytes

/// What one kind of download may do, and what is told when it fails.
struct DownloadRules {
  QString failed;                              ///< the sentence for a result that is not whole
  std::function<bool(const QUrl&)> mayFollow;  ///< asked before each redirect; empty follows any https address
  bool tellsEveryFailure = false;              ///< a failing network is told with `failed` too
  /// The announced extension where only the first bytes tell it; empty keeps the address's own. Runs on the pool.
  std::function<QString(QByteArrayView start)> extension;
};

/// Streams the output to `path`, which is durably on the disk afterwards, and looks whether it is whole and what it is
/// said to be. Throws "The completed result could not be downloaded. …" when it is not, and then there is no file.
Task<GeneratedOutput> downloadOutput(std::shared_ptr<HttpTransport> transport, OutputAddress address, QString path,
                                     std::stop_token stop);
/// The same under rules of its own.
Task<GeneratedOutput> downloadOutput(std::shared_ptr<HttpTransport> transport, OutputAddress address, QString path,
                                     DownloadRules rules, std::stop_token stop);

}  // namespace sorvan::catalogue
