#include "generation/studio.h"

#include <QDir>
#include <QDirIterator>

#include "platform/sqlite.h"

namespace sorvan::generation::test {

using sorvan::test::runTask;
using sorvan::test::runUntil;

namespace {

void copyFolder(const QString& from, const QString& to) {
  QDirIterator files(from, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
  while (files.hasNext()) {
    const QString file = files.next();
    const QString target = to + u'/' + QDir(from).relativeFilePath(file);
    QDir().mkpath(QFileInfo(target).path());
    QFile::copy(file, target);
  }
}

}  // namespace

Studio::Studio() {
  provider->models = {imageModel()};
  open();
}

Studio::Studio(const Studio& other, AfterCrashOf) : clock(other.clock), facts(other.facts), provider(other.provider) {
  copyFolder(other.root(), root());
  adjustPorts = other.adjustPorts;
  open();
}

Studio::~Studio() { shutDown(); }

GenerationPorts Studio::portsOfTheTest() {
  GenerationPorts ports;
  ports.providerResolver = [this](ProviderID id) -> std::shared_ptr<GenerationProvider> {
    if (id == ProviderID::openAI) return std::make_shared<RetiredProvider>();
    return provider;
  };
  ports.keyReader = [this](ProviderID) { return key; };
  ports.billing = [this] { return billing; };
  ports.models = facts;
  ports.forModel = [](const GenerationRequest& request, const ComparisonModel& model) {
    GenerationRequest copy = request;
    copy.model = model.model.id;
    return copy;
  };
  ports.feature = [](const GenerationRequest&) { return QStringLiteral("text-to-image"); };
  ports.noteUsage = [this](const QString& name, int count) { usage.append(name + u'=' + QString::number(count)); };
  if (adjustPorts) adjustPorts(ports);
  return ports;
}

void Studio::open() {
  LibraryStore::Services services;
  services.settings = std::make_shared<Settings>();
  services.clock = clock;
  services.defaultWorkspace = root();
  store = std::make_unique<LibraryStore>(services);
  openWorkspace(*store, root(), Remember::no);
  queue = std::make_unique<JobQueue>(*store, portsOfTheTest());
}

void Studio::shutDown() {
  // Whatever is held is let go, so that every task ends.
  clock->passSleeps();
  runTask(queue->drain());
  clock->passSleeps(false);
  queue.reset();
  store.reset();
}

void Studio::restart() {
  shutDown();
  open();
}

void Studio::settle() {
  runUntil([this] { return queue->runningCount() == 0; });
  sorvan::test::runPosted();
}

void Studio::awaitEvent(const QString& event, qsizetype times) {
  runUntil([&] { return provider->events.count(event) >= times; });
}

GenerationJob Studio::onDisk(const QUuid& id) const {
  RecordContext reader(store->files().database());
  for (const JobRef& job : reader.fetch<GenerationJob>())
    if (job->id == id) return *job;
  throw SorvanError(QStringLiteral("The job is not on disk."));
}

QUuid Studio::enqueue(const GenerationRequest& request, std::optional<QUuid> project) {
  return enqueueRequests(*queue, {request}, project).front();
}

JobRef Studio::finished(const GenerationRequest& request, std::optional<QUuid> project) {
  const QUuid id = enqueue(request, project);
  settle();
  return job(id);
}

AssetRef Studio::addAsset(MediaType type, const QString& name, const QByteArray& bytes) {
  folder.write(QStringLiteral("workspace/Inbox/imported/") + name, bytes);
  MediaMetadata metadata;
  metadata.type = type;
  const Asset asset({}, type, QStringLiteral("Inbox/imported/") + name, name, metadata, store->now());
  NewRecords records;
  records.assets = {store->context().insert(asset)};
  store->save(LibraryTables::none);
  store->registerRecords(records);
  return records.assets.front();
}

ProjectRef Studio::addProject(const QString& name) {
  const QString projectFolder = store->files().createProjectFolder(name);
  const ProjectRef project = store->context().insert(Project(name, projectFolder, store->now()));
  store->save(LibraryTables::projects);
  return project;
}

void Studio::sql(const QString& statement) const {
  platform::Database other(store->files().database(), platform::DatabaseOpening::ReadWrite);
  other.execute(statement);
}

bool Studio::hasRecoveryFolder(const QUuid& id) const { return QDir(store->files().recoveryFolder(id)).exists(); }

bool Studio::hasMarker(const QUuid& id) const { return QFileInfo::exists(store->files().submissionMarker(id)); }

QStringList Studio::mediaFiles() const {
  QStringList files = folder.files().filter(QStringLiteral("workspace/"));
  QStringList media;
  for (const QString& file : std::as_const(files))
    if (!file.startsWith(QStringLiteral("workspace/.sorvan"))) media.append(file.mid(10));
  return media;
}

}  // namespace sorvan::generation::test
