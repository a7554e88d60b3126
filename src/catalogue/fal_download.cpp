#include "catalogue/fal_download.h"

#include <QFile>

#include "base/durable_file.h"
#include "base/planted_bug.h"
#include "base/task.h"
#include "catalogue/media_wholeness.h"
#include "catalogue/texts.h"
#include "generation/media_kind.h"

namespace sorvan::catalogue {

namespace {

struct Judged {
  QString ext;
  bool usable = false;
};

/// What the file is, by its bytes first and by what was announced second, and whether all of it came.
Judged judged(const QString& path, const QString& announced, std::optional<qint64> announcedBytes) {
  Judged result;
  result.ext = fittingExtension(announced, extensionOfFile(path));
  const Wholeness wholeness = wholenessOf(path, result.ext);
  const bool shorter = announcedBytes && QFile(path).size() < *announcedBytes;
  result.usable = wholeness == Wholeness::whole || (wholeness == Wholeness::unknown && !shorter);
  return result;
}

QByteArray startOf(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.read(mediaKindBytes) : QByteArray();
}

void removeIfThere(const QString& path) {
  if (QFile::exists(path)) removeDurably(path);
}

Task<HttpReply> fetched(std::shared_ptr<HttpTransport> transport, QUrl url, QString path, DownloadRules rules,
                         std::stop_token stop) {
  HttpRequest request;
  request.url = url;
  request.mayFollow = rules.mayFollow;
  request.maximumBytes = largestOutput;
  try {
    HttpReply reply = co_await transport->download(std::move(request), path, stop);
    if (!reply.succeeded()) throw SorvanError(rules.failed);
    co_return reply;
  } catch (const HttpError& error) {
    const bool broken = error.problem() == HttpProblem::Truncated || error.problem() == HttpProblem::TooLarge;
    if (broken || rules.tellsEveryFailure) throw SorvanError(rules.failed);
    throw;
  }
}

}  // namespace

Task<GeneratedOutput> downloadOutput(std::shared_ptr<HttpTransport> transport, OutputAddress address, QString path,
                                     std::stop_token stop) {
  DownloadRules rules;
  rules.failed = texts::downloadFailed();
  return downloadOutput(std::move(transport), std::move(address), std::move(path), std::move(rules), std::move(stop));
}

Task<GeneratedOutput> downloadOutput(std::shared_ptr<HttpTransport> transport, OutputAddress address, QString path,
                                     DownloadRules rules, std::stop_token stop) {
  // An earlier attempt that was cut off may have left a file.
  removeIfThere(path);
  co_await fetched(transport, address.url, path, rules, stop);
  const auto judge = [path, rules, ext = address.ext, bytes = address.announcedBytes] {
    return judged(path, rules.extension ? rules.extension(startOf(path)) : ext, bytes);
  };
  const Judged result = co_await onPool(judge);
  if (!result.usable && !planted("truncated-body")) {
    removeIfThere(path);
    throw SorvanError(rules.failed);
  }
  GeneratedOutput output;
  output.file = path;
  output.ext = result.ext;
  output.label = address.label;
  co_return output;
}

}  // namespace sorvan::catalogue
