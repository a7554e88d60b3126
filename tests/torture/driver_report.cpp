#include "torture/driver_report.h"

#include <QFile>
#include <QJsonArray>

#include "base/checksum.h"
#include "base/ids.h"
#include "base/sorvan_error.h"
#include "generation/cancel_and_retry.h"
#include "generation/result_recovery.h"
#include "torture/driver_projects.h"
#include "torture/driver_sheets.h"

namespace sorvan::torture {
namespace {

// The areas that a job's result is kept to, and the picture that lies around them.
QJsonObject marksReport(const core::LibraryStore& store, const core::GenerationRequest& request) {
  QJsonArray boxes;
  for (const core::MarkupBox& box : *request.markup) boxes.append(QJsonArray{box.x, box.y, box.width, box.height});
  const core::AssetRef original = request.referenceIDs.empty() ? nullptr : store.asset(request.referenceIDs.front());
  return {{QStringLiteral("boxes"), boxes}, {QStringLiteral("original"), original ? original->localFilePath : QString()}};
}

// Whether the retained result says what it cost; one that cannot be read says nothing.
bool isPriced(const core::LibraryStore& store, const QUuid& job) {
  try {
    const auto outputs = generation::ResultRecovery::load(store.files(), job);
    return outputs && !outputs->empty() && outputs->front().cost.has_value();
  } catch (const base::SorvanError&) {
    return false;
  }
}

QJsonObject jobReport(const core::LibraryStore& store, const core::JobRef& job) {
  const QUuid id = job->id;
  const auto request = job->request();
  QJsonArray items;
  for (const core::AssetRef& asset : store.outputs(id)) items.append(base::uuidText(asset->id));
  const bool marked = request && request->markup && !request->markup->empty() && !job->saveOriginal;
  return {{QStringLiteral("id"), base::uuidText(id)},
          {QStringLiteral("prompt"), request ? request->prompt : QString()},
          {QStringLiteral("marks"), marked ? marksReport(store, *request) : QJsonObject()},
          {QStringLiteral("noted"), store.extraCharges().contains(id)},
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
          {QStringLiteral("trashed"), asset->isTrashed()},
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
  QJsonArray prompts;
  for (const core::PromptEntry& entry : store.prompts().entries()) prompts.append(entry.text);
  QStringList reviewed;
  for (auto review = store.analyses().entries().keyBegin(); review != store.analyses().entries().keyEnd(); ++review)
    reviewed.append(base::uuidText(*review));
  reviewed.sort();
  const auto draft = store.keptComposer();
  return {{QStringLiteral("jobs"), jobs},
          {QStringLiteral("items"), items},
          {QStringLiteral("prompts"), prompts},
          {QStringLiteral("reviews"), QJsonArray::fromStringList(reviewed)},
          {QStringLiteral("draft"), draft ? draft->text : QString()},
          {QStringLiteral("sheets"), static_cast<qint64>(store.contactSheets().size())},
          {QStringLiteral("contactSheets"), sheetReports(store)},
          {QStringLiteral("projects"), projectReports(store)},
          {QStringLiteral("savedReferences"), static_cast<qint64>(store.savedReferences().size())},
          {QStringLiteral("charges"), static_cast<qint64>(store.extraCharges().entries().size())},
          {QStringLiteral("error"), store.error() ? QJsonValue(*store.error()) : QJsonValue()},
          {QStringLiteral("unsaved"), store.hasUnsavedMetadata()}};
}

QJsonObject reportOfOpening(const HeadlessStudio& studio) {
  const core::LibraryStore& store = *studio.store;
  QJsonArray retained;
  for (const core::JobRef& job : store.jobs()) {
    if (job->status == QStringLiteral("complete") || !generation::hasRecoverableResult(store, job->id)) continue;
    const auto request = job->request();
    retained.append(QJsonObject{{QStringLiteral("prompt"), request ? request->prompt : QString()},
                                {QStringLiteral("priced"), isPriced(store, job->id)},
                                {QStringLiteral("noted"), store.extraCharges().contains(job->id)}});
  }
  return {{QStringLiteral("retained"), retained}, {QStringLiteral("spendingReads"), !store.extraCharges().issue()}};
}

}  // namespace sorvan::torture
