#include "bench/library_data.h"

#include <random>

#include "base/ids.h"
#include "base/json.h"
#include "core/migration.h"
#include "core/record_context.h"
#include "core/workspace_files.h"

namespace sorvan::bench {
namespace {

using namespace sorvan::base;
using namespace sorvan::core;

class LibraryMaker {
 public:
  LibraryMaker(const WorkspaceFiles& files, unsigned seed) : files_(files), context_(files.database()), random_(seed) {}

  void make(const LibrarySize& size) {
    for (int index = 0; index < size.jobs; ++index) addJob();
    // The outputs of one job follow one another, as they do when a job lands.
    for (int index = 0; index < size.items; ++index)
      addItem(index, jobs_[static_cast<std::size_t>(index) * jobs_.size() / static_cast<std::size_t>(size.items)]);
    for (int index = 0; index < size.edges; ++index) addEdge();
    context_.save();
  }

 private:
  static constexpr double firstMoment = 700000000;

  int number(int below) { return static_cast<int>(random_() % static_cast<unsigned>(below)); }

  QUuid id() {
    QByteArray bytes(16, Qt::Uninitialized);
    for (char& byte : bytes) byte = static_cast<char>(random_());
    return QUuid::fromRfc4122(bytes);
  }

  QString prompt() {
    static const QStringList words{
        QStringLiteral("a"),        QStringLiteral("red"),    QStringLiteral("fox"),     QStringLiteral("under"),
        QStringLiteral("northern"), QStringLiteral("lights"), QStringLiteral("painted"), QStringLiteral("with"),
        QStringLiteral("oil"),      QStringLiteral("soft"),   QStringLiteral("evening"), QStringLiteral("harbour"),
        QStringLiteral("portrait"), QStringLiteral("wide"),   QStringLiteral("lens"),    QStringLiteral("rain")};
    QStringList chosen;
    for (int count = 16 + number(20); count > 0; --count) chosen += words[number(static_cast<int>(words.size()))];
    return chosen.join(u' ');
  }

  GenerationRequest request() {
    static const QStringList models{QStringLiteral("fal-ai/nano-banana-2"), QStringLiteral("fal-ai/flux/schnell"),
                                    QStringLiteral("fal-ai/veo3.1")};
    GenerationRequest value;
    value.model = models[number(static_cast<int>(models.size()))];
    value.prompt = prompt();
    value.seed = number(1 << 30);
    if (number(3) == 0) value.referenceIDs = {id()};
    if (number(20) == 0) value.comparisonID = id();
    value.options = TextByKey{{QStringLiteral("resolution"), QStringLiteral("1K")}};
    return value;
  }

  void addJob() {
    GenerationJob job({}, request(), {firstMoment + number(100000000)});
    job.id = id();
    job.status = jobStatus::complete;
    job.detail = QStringLiteral("Saved 4 images locally");
    job.finishedAt = job.createdAt + 20.0;
    job.providerRequestID = uuidText(id());
    job.remoteHandleData = encodeHandle({*job.providerRequestID,
                                         QUrl(QStringLiteral("https://queue.fal.run/fal-ai/flux/requests/1/status")),
                                         QUrl(QStringLiteral("https://queue.fal.run/fal-ai/flux/requests/1")),
                                         QUrl(QStringLiteral("https://queue.fal.run/fal-ai/flux/requests/1/cancel"))});
    jobs_.push_back(context_.insert(std::move(job)));
  }

  void addItem(int index, const JobRef& job) {
    const GenerationRequest made = request();
    const Instant moment{firstMoment + index * 60.0};
    Asset asset(
        {}, MediaType::image,
        QStringLiteral("Inbox/generated/%1-%2.png").arg(WorkspaceFiles::safeName(made.prompt.left(40))).arg(index), {},
        {MediaType::image, 1024, 1024, {}, 1500000 + index, QStringLiteral("image/png")}, moment);
    asset.id = id();
    asset.originalFilename = asset.filename();
    asset.thumbnailFilePath = QStringLiteral("Inbox/thumbnails/%1.jpg").arg(uuidText(asset.id));
    asset.sourceTypeRaw = QStringLiteral("generated");
    asset.checksum = QString::fromLatin1((asset.id.toRfc4122() + asset.id.toRfc4122()).toHex());
    if (number(4) == 0) asset.rating = 1 + number(5);
    const AssetRef saved = context_.insert(std::move(asset));
    assets_.push_back(saved->id);
    addGeneration(saved->id, *job, made, moment);
  }

  void addGeneration(const QUuid& asset, const GenerationJob& job, const GenerationRequest& made, Instant moment) {
    Generation generation(asset, job, made, 12.5, {}, moment);
    generation.id = id();
    generation.recipeData = encodeRequest(made);
    generation.parametersJSON =
        jsonText(QJsonObject{{QStringLiteral("outputs"), made.count},
                             {QStringLiteral("size"), made.size},
                             {QStringLiteral("quality"), made.quality},
                             {QStringLiteral("output_format"), QStringLiteral("png")},
                             {QStringLiteral("seed"), static_cast<qint64>(made.seed.value_or(0))},
                             {QStringLiteral("options"), toJson(*made.options)},
                             {QStringLiteral("billingSource"), QStringLiteral("byok")}},
                 JsonForm::Indented);
    generation.estimatedCost = 0.04;
    context_.insert(std::move(generation));
  }

  void addEdge() {
    const auto any = [this] { return assets_[static_cast<std::size_t>(number(static_cast<int>(assets_.size())))]; };
    AssetRelationship edge(any(), any(), RelationshipType::referenceFor);
    edge.id = id();
    context_.insert(std::move(edge));
  }

  WorkspaceFiles files_;
  RecordContext context_;
  std::mt19937 random_;
  std::vector<JobRef> jobs_;
  std::vector<QUuid> assets_;
};

}  // namespace

LibrarySize libraryOf(int items) { return {items, items / 5, items / 2}; }

void makeLibrary(const QString& folder, const LibrarySize& size, unsigned seed) {
  const WorkspaceFiles files(folder);
  files.prepare();
  files.prepareInbox();
  LibraryMaker(files, seed).make(size);
  writeSchemaMarker(files);
}

}  // namespace sorvan::bench
