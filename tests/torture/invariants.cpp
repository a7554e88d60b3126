#include "torture/invariants.h"

#include <sqlite3.h>

#include <QDir>
#include <QFile>
#include <QImage>
#include <QJsonDocument>

#include "torture/marked_picture.h"
#include "torture/old_library.h"

namespace sorvan::torture {
namespace {

using namespace Qt::StringLiterals;

class Judge {
 public:
  explicit Judge(const Evidence& evidence) : seen(evidence) {
    for (const QJsonValue& item : seen.report.value(u"items"_s).toArray()) items.append(item.toObject());
    for (const QJsonValue& job : seen.report.value(u"jobs"_s).toArray()) jobs.append(job.toObject());
  }

  void purchases();
  void acknowledged();
  void upgraded();
  void spending();
  void results();
  void files();
  void database();
  void sidecars();
  void untouched();
  void temporaryFiles();
  void secondRecovery();
  void posts();
  void credits();
  void secret();
  void rest();

  Verdict verdict;

 private:
  void violated(const char* invariant, const QString& what) {
    verdict.violations.push_back({QString::fromLatin1(invariant), what});
  }
  QJsonObject jobOf(const QString& prompt) const;
  QJsonObject item(const QString& id) const;
  bool keeps(const QJsonObject& promise) const;
  bool keepsSheet(const QJsonObject& promise) const;
  bool keepsProject(const QJsonObject& promise) const;
  void result(const Purchase& purchase);
  void rawResult(const Purchase& purchase);
  void markedResult(const Purchase& purchase, const QJsonObject& job);

  const Evidence& seen;
  QList<QJsonObject> items;
  QList<QJsonObject> jobs;
};

QJsonObject Judge::jobOf(const QString& prompt) const {
  for (const QJsonObject& job : jobs)
    if (job.value(u"prompt"_s).toString().section(u'\n', 0, 0) == prompt) return job;
  return {};
}

QJsonObject Judge::item(const QString& id) const {
  for (const QJsonObject& item : items)
    if (item.value(u"id"_s).toString() == id) return item;
  return {};
}

void Judge::purchases() {
  QHash<QString, int> bought;
  for (const Purchase& purchase : seen.purchases) {
    if (jobOf(purchase.prompt).isEmpty()) violated("I1", u"a purchase without a row: "_s + purchase.prompt);
    if (!purchase.cancelled && ++bought[purchase.prompt] == 2) violated("I1", u"bought twice: "_s + purchase.prompt);
  }
}

// A sheet's number grows as a draft's does; its order and its place in Trash are changed once each.
bool Judge::keepsSheet(const QJsonObject& promise) const {
  for (const QJsonValue& value : seen.report.value(u"contactSheets"_s).toArray()) {
    const QJsonObject sheet = value.toObject();
    if (sheet.value(u"id"_s) != promise.value(u"id"_s)) continue;
    const auto same = [&](const QString& part) { return !promise.contains(part) || sheet[part] == promise[part]; };
    return same(u"items"_s) && same(u"trashed"_s) &&
           sheet.value(u"title"_s).toString().toInt() >= promise.value(u"number"_s).toInt();
  }
  return false;
}

// A project's number grows as a draft's does; what was put away stays so.
bool Judge::keepsProject(const QJsonObject& promise) const {
  for (const QJsonValue& value : seen.report.value(u"projects"_s).toArray()) {
    const QJsonObject project = value.toObject();
    if (project.value(u"id"_s) != promise.value(u"id"_s)) continue;
    const bool archived = !promise.value(u"archived"_s).toBool() || project.value(u"archived"_s).toBool();
    return archived && project.value(u"name"_s).toString().toInt() >= promise.value(u"number"_s).toInt();
  }
  return false;
}

// Whether what was promised is there. Drafts and ratings are numbers that grow: a later one may have reached the disk
// without its acknowledgement, an earlier one may not come back.
bool Judge::keeps(const QJsonObject& promise) const {
  const QString did = promise.value(u"did"_s).toString();
  const QJsonValue id = promise.value(u"id"_s);
  const auto isIt = [&id](const QJsonObject& record) { return record.value(u"id"_s) == id; };
  if (did == u"enqueue"_s) return std::any_of(jobs.begin(), jobs.end(), isIt);
  if (did == u"place"_s) return item(id.toString()).value(u"actualChecksum"_s) == promise.value(u"checksum"_s);
  if (did == u"rate"_s)
    return item(id.toString()).value(u"stars"_s).toInt() >= promise.value(u"stars"_s).toInt();
  if (did == u"trash"_s) return item(id.toString()).value(u"trashed"_s) == promise.value(u"trashed"_s);
  if (did == u"sheet"_s) return keepsSheet(promise);
  if (did == u"project"_s) return keepsProject(promise);
  if (did == u"prompt"_s) return seen.report.value(u"prompts"_s).toArray().contains(promise.value(u"text"_s));
  if (did == u"review"_s) return seen.report.value(u"reviews"_s).toArray().contains(id);
  if (did == u"draft"_s)
    return seen.report.value(u"draft"_s).toString().toInt() >= promise.value(u"text"_s).toString().toInt();
  return false;
}

void Judge::acknowledged() {
  for (const QJsonObject& promise : seen.acknowledged)
    if (!keeps(promise))
      violated("I2", u"what was promised is gone: "_s +
                         QString::fromUtf8(QJsonDocument(promise).toJson(QJsonDocument::Compact)));
  if (seen.leftUnsaved) violated("I2", u"saving again left something unsaved"_s);
}

// The library as it was before its upgrade stands in a snapshot, whole.
void Judge::upgraded() {
  if (seen.oldVersion == 0) return;
  const QDir backups(seen.grounds.workspace() + u"/.sorvan/backups"_s);
  int whole = 0;
  for (const QString& folder : backups.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
    const QString file = backups.filePath(folder + u"/library.store"_s);
    if (!QFile::exists(file)) {
      violated("I8", u"half of a snapshot remains: "_s + folder);
      continue;
    }
    const OldDatabase snapshot = lookAtOldDatabase(file);
    if (snapshot.sound && snapshot.holdsPicture && snapshot.version == seen.oldVersion) ++whole;
    else if (!snapshot.sound) violated("I5", u"a snapshot is damaged: "_s + folder);
  }
  if (whole == 0) violated("I2", u"the library from before its upgrade is gone"_s);
  if (seen.report.value(u"sheets"_s).toInt() != (seen.oldVersion >= 3 ? 1 : 0) ||
      seen.report.value(u"savedReferences"_s).toInt() != (seen.oldVersion >= 4 ? 1 : 0))
    violated("I2", u"records were lost in the upgrade"_s);
}

// What was paid for and has not landed is in the spending history; what has landed is no longer in it twice.
void Judge::spending() {
  for (const QJsonValue& value : seen.opened.value(u"retained"_s).toArray()) {
    const bool unaccounted = value[u"priced"_s].toBool() && !value[u"noted"_s].toBool();
    if (unaccounted && seen.opened.value(u"spendingReads"_s).toBool())
      violated("I4", u"paid bytes wait that no charge note knows of: "_s + value[u"prompt"_s].toString());
  }
  for (const QJsonObject& job : jobs)
    if (job.value(u"status"_s).toString() == u"complete"_s && job.value(u"noted"_s).toBool())
      violated("I4", u"a finished job still has its charge note"_s);
}

void Judge::rawResult(const Purchase& purchase) {
  for (const QString& checksum : purchase.checksums) {
    const auto holds = [&](const QJsonObject& item) { return item.value(u"actualChecksum"_s).toString() == checksum; };
    const auto times = std::count_if(items.begin(), items.end(), holds);
    if (times != 1) violated("I3", u"a result of “%1” stands %2 times"_s.arg(purchase.prompt).arg(times));
  }
}

// The bytes that the service made are laid into the original: what lies outside the marks is the original's.
void Judge::markedResult(const Purchase& purchase, const QJsonObject& job) {
  const QJsonObject marks = job.value(u"marks"_s).toObject();
  const QString original = seen.grounds.workspace() + u'/' + marks.value(u"original"_s).toString();
  for (const QJsonValue& id : job.value(u"items"_s).toArray()) {
    const QString file = seen.grounds.workspace() + u'/' + item(id.toString()).value(u"path"_s).toString();
    const QString fault = faultOfMarkedPicture(file, original, marks.value(u"boxes"_s).toArray());
    if (!fault.isEmpty()) violated("I3", u"the marked result of “%1”: %2"_s.arg(purchase.prompt, fault));
  }
}

void Judge::result(const Purchase& purchase) {
  const QJsonObject job = jobOf(purchase.prompt);
  if (purchase.cancelled || job.isEmpty() || job.value(u"unknown"_s).toBool()) return;
  const QJsonArray made = job.value(u"items"_s).toArray();
  if (made.size() != purchase.checksums.size())
    violated("I3", u"%1 of %2 results of “%3”: %4"_s.arg(QString::number(made.size()),
                                                          QString::number(purchase.checksums.size()), purchase.prompt,
                                                          job.value(u"error"_s).toString()));
  if (job.value(u"marks"_s).toObject().isEmpty()) rawResult(purchase);
  else markedResult(purchase, job);
}

void Judge::results() {
  for (const Purchase& purchase : seen.purchases) result(purchase);
}

void Judge::files() {
  QSet<QString> owned;
  QSet<QString> checksums;
  for (const QJsonObject& item : items) {
    owned << item.value(u"path"_s).toString() << item.value(u"thumbnail"_s).toString();
    checksums << item.value(u"actualChecksum"_s).toString();
    if (!item.value(u"exists"_s).toBool()) violated("I4", u"a record names a missing file: "_s + item.value(u"path"_s).toString());
    const QString checksum = item.value(u"checksum"_s).toString();  // the oldest libraries have none
    if (!checksum.isEmpty() && checksum != item.value(u"actualChecksum"_s).toString())
      violated("I4", u"a file is not what its record says: "_s + item.value(u"path"_s).toString());
    const QString thumbnail = item.value(u"thumbnail"_s).toString();
    if (!thumbnail.isEmpty() && QImage(seen.grounds.workspace() + u'/' + thumbnail).isNull())
      violated("I4", u"a record names a thumbnail that is missing or damaged: "_s + thumbnail);
  }
  // A second copy of bytes that an item holds may stay behind; bytes that only stand there may not.
  for (auto file = seen.after.begin(); file != seen.after.end(); ++file)
    if (file.key().contains(u"/generated/"_s) && !owned.contains(file.key()) &&
        !checksums.contains(QString::fromLatin1(file.value())))
      violated("I4", u"bytes that no record names: "_s + file.key());
  // What was imported has its record once the next opening has settled it, and then no note speaks of it.
  for (auto file = seen.after.begin(); file != seen.after.end(); ++file) {
    if (file.key().contains(u"/references/"_s) && !owned.contains(file.key()))
      violated("I4", u"an imported file without a record: "_s + file.key());
    if (file.key().startsWith(u".sorvan/imports/"_s))
      violated("I4", u"an import that is not settled: "_s + file.key());
  }
  // Projects that are made here have numbers for names. The libraries of earlier forms come as a database alone, whose
  // projects have no folders.
  for (const QJsonValue& project : seen.report.value(u"projects"_s).toArray()) {
    bool madeHere = false;
    project[u"name"_s].toString().toInt(&madeHere);
    if (madeHere && !project[u"folder"_s].toBool())
      violated("I4", u"a project without its folder: "_s + project[u"name"_s].toString());
  }
  for (const QJsonObject& job : jobs)
    if (job.value(u"status"_s).toString() == u"complete"_s && job.value(u"recoveryFolder"_s).toBool())
      violated("I4", u"a finished job still has its recovery folder"_s);
}

QString integrityOf(const QString& file) {
  sqlite3* database = nullptr;
  QString answer = u"it does not open"_s;
  if (sqlite3_open_v2(QFile::encodeName(file).constData(), &database, SQLITE_OPEN_READWRITE, nullptr) == SQLITE_OK)
    sqlite3_exec(
        database, "PRAGMA integrity_check",
        [](void* text, int, char** values, char**) {
          *static_cast<QString*>(text) = QString::fromUtf8(values[0]);
          return 0;
        },
        &answer, nullptr);
  sqlite3_close(database);
  return answer;
}

void Judge::database() {
  const QString answer = integrityOf(seen.grounds.workspace() + u"/.sorvan/library.store"_s);
  if (answer != u"ok"_s) violated("I5", answer);
}

bool parses(const QString& path) {
  QFile file(path);
  QJsonParseError problem;
  if (!file.open(QFile::ReadOnly)) return false;
  QJsonDocument::fromJson(file.readAll(), &problem);
  return problem.error == QJsonParseError::NoError;
}

void Judge::sidecars() {
  for (auto file = seen.after.begin(); file != seen.after.end(); ++file) {
    if (!file.key().startsWith(u".sorvan/"_s) || !file.key().contains(u".json"_s)) continue;
    const bool asItWas = seen.before.value(file.key()) == file.value();
    if (!asItWas && !parses(seen.grounds.workspace() + u'/' + file.key()))
      violated("I6", u"a sidecar is damaged: "_s + file.key());
  }
  const QString& damaged = seen.damagedSidecar;
  if (!damaged.isEmpty() && seen.after.value(damaged) != seen.before.value(damaged))
    violated("I6", u"an unreadable sidecar was not left as it was: "_s + damaged);
}

void Judge::untouched() {
  for (auto file = seen.before.begin(); file != seen.before.end(); ++file)
    if (!file.key().startsWith(u".sorvan/"_s) && seen.after.value(file.key()) != file.value())
      violated("I7", u"a file of the library is not as it was: "_s + file.key());
  const Files outside = filesBelow(seen.grounds.outside());
  if (outside.size() != 1 || outside.begin().key() != u"of-somebody-else.png"_s)
    violated("I7", u"something outside the workspace was touched"_s);
}

void Judge::temporaryFiles() {
  for (const QString& path : seen.after.keys()) {
    const QString name = path.section(u'/', -1);
    static const QStringList endings{u".sorvan-temporary"_s, u".part"_s, u".tmp"_s, u"-journal"_s, u"-wal"_s, u"-shm"_s};
    const auto ends = [&name](const QString& ending) { return name.endsWith(ending); };
    const bool temporary = std::any_of(endings.begin(), endings.end(), ends);
    if (temporary) violated("I8", u"a temporary file remains: "_s + path);
  }
  for (const QString& path : filesBelow(seen.grounds.home()).keys())
    if (path.contains(u"sorvan"_s) && path.contains(u"tmp/"_s)) violated("I8", u"a temporary file remains: "_s + path);
}

void Judge::secondRecovery() {
  if (seen.after != seen.second) {
    for (const QString& path : QSet<QString>(seen.after.keyBegin(), seen.after.keyEnd()) +
                                   QSet<QString>(seen.second.keyBegin(), seen.second.keyEnd()))
      if (seen.after.value(path) != seen.second.value(path)) violated("I9", u"another start changed "_s + path);
  }
  for (const QString& part : {u"jobs"_s, u"items"_s, u"prompts"_s, u"reviews"_s, u"draft"_s, u"charges"_s,
                              u"contactSheets"_s, u"projects"_s})
    if (seen.report.value(part) != seen.secondReport.value(part))
      violated("I9", u"another start changed the "_s + part);
}

void Judge::posts() {
  if (seen.mostPosts > 1) violated("I10", u"%1 POSTs of one attempt"_s.arg(seen.mostPosts));
}

// The gateway's books by themselves, and beside what it says of its operations.
void Judge::credits() {
  const QJsonObject books = seen.gateway.value(u"books"_s).toObject();
  const auto amount = [&books](const QString& name) { return books.value(name).toInteger(); };
  if (!books.value(u"balanced"_s).toBool()) violated("I12", u"the books do not balance"_s);
  if (amount(u"reserved"_s) != amount(u"charged"_s) + amount(u"returned"_s) + amount(u"open"_s))
    violated("I12", u"credits are lost between hold and charge"_s);
  qint64 charged = 0;
  qint64 held = 0;
  for (const QJsonValue& operation : seen.gateway.value(u"operations"_s).toArray()) {
    charged += operation[u"charged"_s].toInteger();
    held += operation[u"held"_s].toInteger();
  }
  if (charged != amount(u"charged"_s)) violated("I12", u"operations were charged otherwise than the books say"_s);
  if (held != amount(u"open"_s)) violated("I12", u"credits are held for no operation"_s);
}

// Everything that the program wrote anywhere: the library, its home, what it said, and the journal of its steps.
void Judge::secret() {
  for (const QString& path : filesBelow(seen.grounds.folder).keys()) {
    QFile file(seen.grounds.folder + u'/' + path);
    if (file.open(QFile::ReadOnly) && file.readAll().contains(seen.secret))
      violated("I11", u"the key stands in "_s + path);
  }
  if (seen.secretShownElsewhere) violated("I11", u"the key was shown to a foreign host"_s);
}

void Judge::rest() {
  for (const QString& run : seen.unended) violated("I13", run);
  if (seen.report.isEmpty()) violated("I13", u"the library does not open"_s);
  if (seen.report.contains(u"refused"_s)) violated("I13", u"refused: "_s + seen.report.value(u"refused"_s).toString());
  for (const QJsonObject& job : jobs) {
    const bool unknown = job.value(u"unknown"_s).toBool();
    verdict.unknownSubmissions += unknown ? 1 : 0;
    if (!unknown && job.value(u"status"_s).toString() != u"complete"_s)
      violated("I13", u"“%1” stays %2: %3"_s.arg(job.value(u"prompt"_s).toString(), job.value(u"status"_s).toString(),
                                                 job.value(u"error"_s).toString()));
  }
}

}  // namespace

const std::vector<InvariantName>& invariantNames() {
  static const std::vector<InvariantName> names{
      {"I1", "at most one purchase a job, and each has its row"},
      {"I2", "what was acknowledged is still there"},
      {"I3", "a purchase leads to its item, once, with the bytes that the service made"},
      {"I4", "no record names a missing file, and no paid bytes lie about without a record or a charge note"},
      {"I5", "the database is sound"},
      {"I6", "every sidecar reads, and an unreadable one is byte for byte what it was"},
      {"I7", "nothing that a record owns is gone, and nothing outside was touched"},
      {"I8", "no temporary file remains"},
      {"I9", "a second recovery changes nothing"},
      {"I10", "at most one POST an attempt"},
      {"I11", "the key is found nowhere, and shown to nobody else"},
      {"I12", "credits: reserved = charged + returned + open"},
      {"I13", "once faults stop, every job comes to rest"},
  };
  return names;
}

Verdict judge(const Evidence& evidence) {
  Judge judge(evidence);
  judge.purchases();
  judge.acknowledged();
  judge.upgraded();
  judge.results();
  judge.spending();
  judge.files();
  judge.database();
  judge.sidecars();
  judge.untouched();
  judge.temporaryFiles();
  judge.secondRecovery();
  judge.posts();
  judge.credits();
  judge.secret();
  judge.rest();
  return judge.verdict;
}

}  // namespace sorvan::torture
