#include "torture/driver_report.h"

#include <QFile>
#include <QJsonArray>

#include "base/checksum.h"
#include "base/ids.h"
#include "generation/cancel_and_retry.h"

namespace sorvan::torture {
namespace {

QJsonObject jobReport(const core::LibraryStore& store, const core::JobRef& job) {
  const QUuid id = job->id;
  const auto request = job->request();
  QJsonArray items;
  for (const core::AssetRef& asset : store.outputs(id)) items.append(base::uuidText(asset->id));
  return {{QStringLiteral("id"), base::uuidText(id)},
          {QStringLiteral("prompt"), request ? request->prompt : QString()},
          {QStringLiteral("items"), items},
          {QStringLiteral("status"), job->status},
          {QStringLiteral("detail"), job->detail},
          {QStringLiteral("error"), job->errorMessage.value_or(QString())},
          {QStringLiteral("hasHandle"), job->remoteHandleData.has_value()},
          {QStringLiteral("requestID"), job->providerRequestID.value_or(QString())},
          {QStringLiteral("outputs"), static_cast<qint64>(store.outputs(id).size())},
          {QStringLiteral("retained"), generation::hasRecoverableResult(store, id)},
          {QStringLiteral("unknown"), generation::submissionIsUnknown(store, id)},
          {QStringLiteral("recoveryFolder"), QFile::exists(store.files().recoveryFolder(id))}};
}

QJsonObject itemReport(const core::LibraryStore& store, const core::AssetRef& asset) {
  const QString file = store.fileOf(*asset);
  const bool there = QFile::exists(file);
  const std::optional<QString>& thumbnail = asset->thumbnailFilePath;
  return {{QStringLiteral("id"), base::uuidText(asset->id)},
          {QStringLiteral("stars"), asset->rating.value_or(0)},
          {QStringLiteral("thumbnail"), thumbnail.value_or(QString())},
          {QStringLiteral("path"), asset->localFilePath},
          {QStringLiteral("type"), asset->mediaType},
          {QStringLiteral("exists"), there},
          {QStringLiteral("checksum"), asset->checksum.value_or(QString())},
          {QStringLiteral("actualChecksum"), there ? base::sha256OfFile(file, {}) : QString()}};
}

}  // namespace

QJsonObject reportOf(const HeadlessStudio& studio) {
  const core::LibraryStore& store = *studio.store;
  QJsonArray jobs;
  for (const core::JobRef& job : store.jobs()) jobs.append(jobReport(store, job));
  QJsonArray items;
  for (const core::AssetRef& asset : store.assets()) items.append(itemReport(store, asset));
  return {{QStringLiteral("jobs"), jobs},
          {QStringLiteral("items"), items},
          {QStringLiteral("charges"), static_cast<qint64>(store.extraCharges().entries().size())},
          {QStringLiteral("error"), store.error() ? QJsonValue(*store.error()) : QJsonValue()},
          {QStringLiteral("unsaved"), store.hasUnsavedMetadata()}};
}

}  // namespace sorvan::torture
