#include "core/ledgers.h"

#include "base/durable_file.h"
#include "base/file_reading.h"
#include "base/ids.h"
#include "base/json.h"
#include "base/sorvan_error.h"
#include "core/texts.h"
#include "core/workspace_files.h"
#include "core/workspace_json.h"

namespace sorvan::core {

Ledger::Ledger(LedgerName name) : name_(std::move(name)) {}
Ledger::~Ledger() = default;

QString Ledger::unreadableMessage() const { return texts::ledgerUnreadable(name_.noun); }

void Ledger::report(const QString& message) {
  issue_ = message;
  Q_EMIT changed();
  if (onError) onError(message);
}

bool Ledger::loadFrom(const QString& path) {
  try {
    decodeEntries(readFile(path));
    return true;
  } catch (const std::exception&) {
    clearEntries();
    return false;
  }
}

void Ledger::load(const std::optional<QString>& workspaceRoot) {
  // 1. Start from nothing.
  file_.reset();
  if (workspaceRoot) file_ = WorkspaceFiles(*workspaceRoot).sidecar(name_.file);
  clearEntries();
  issue_.reset();
  pending_ = unreadable_ = orphanPrevious_ = false;
  Q_EMIT changed();
  if (!file_) return;

  // 2. No file is a normal state, and only "no such file" says that there is none. A previous version that stands alone
  //    may be the only copy of what was once there: the first write puts it aside.
  const QString previous = WorkspaceJSON::previousPath(*file_);
  const auto stands = [](const QString& path) {
    try {
      return readIfPresent(path).has_value();
    } catch (const std::exception&) {
      return true;
    }
  };
  if (!stands(*file_)) {
    orphanPrevious_ = stands(previous);
    return;
  }
  // 3. The file itself.
  if (loadFrom(*file_)) {
    Q_EMIT changed();
    return;
  }
  // 4. The version before it. What was recovered is not on disk as the latest version yet.
  if (loadFrom(previous)) {
    pending_ = true;
    report(texts::loadedEarlierVersion(name_.noun));
    return;
  }
  // 5. Neither.
  unreadable_ = true;
  report(unreadableMessage());
}

void Ledger::writeFile() {
  if (requireWorkspace) requireWorkspace();
  if (orphanPrevious_) {
    const QString previous = WorkspaceJSON::previousPath(*file_);
    QString kept = previous + QStringLiteral(".kept");
    for (int counter = 2; readIfPresent(kept); ++counter) kept = previous + QStringLiteral(".kept-%1").arg(counter);
    renameDurably(previous, kept, Replacing::NoReplace);
    orphanPrevious_ = false;
  }
  WorkspaceJSON::write(encodeEntries(), *file_, [this](const QByteArray& json) { return decodes(json); });
}

void Ledger::persistOrThrow() {
  // 1. It is pending until it is really on disk.
  pending_ = true;
  Q_EMIT changed();
  // 2. Resuming writes it.
  if (paused_) return;
  // 3. A file that could not be read is never overwritten.
  if (unreadable_) throw SorvanError(unreadableMessage());
  // 4. There must be a place for it.
  if (!file_) throw SorvanError(name_.chooseWorkspaceFirst);
  // 5. and 6. Keep the last good version, then write.
  try {
    writeFile();
  } catch (const std::exception&) {
    // 8. Memory keeps the entries.
    issue_ = texts::ledgerNotSaved(name_.noun);
    Q_EMIT changed();
    throw SorvanError(*issue_);
  }
  // 7. Done.
  pending_ = false;
  issue_.reset();
  Q_EMIT changed();
}

void Ledger::persist() {
  try {
    persistOrThrow();
  } catch (const SorvanError& failure) {
    report(failure.message());
  }
}

bool Ledger::canRetrySave() const {
  return file_.has_value() && !unreadable_ && !paused_ && (pending_ || issue_.has_value());
}

void Ledger::setPaused(bool paused) {
  paused_ = paused;
  if (!paused_ && pending_) persist();
}

// ---- Prompts

PromptLibrary::PromptLibrary()
    : Ledger({QStringLiteral("prompts.json"), texts::promptsNoun(), texts::workspaceBeforePrompt()}) {}

QByteArray PromptLibrary::encodeEntries() const { return encodeJson(entries_); }
void PromptLibrary::decodeEntries(const QByteArray& json) { entries_ = decodeJson<std::vector<PromptEntry>>(json); }
bool PromptLibrary::decodes(const QByteArray& json) const {
  try {
    decodeJson<std::vector<PromptEntry>>(json);
    return true;
  } catch (const SorvanError&) {
    return false;
  }
}

namespace {

/// The first seven words; an ellipsis where that is shorter than the text.
QString promptTitle(const QString& text) {
  static const QRegularExpression space(QStringLiteral("\\s+"), QRegularExpression::UseUnicodePropertiesOption);
  const QString title = text.split(space, Qt::SkipEmptyParts).mid(0, 7).join(u' ');
  return title.size() < text.size() ? title + u'…' : title;
}

}  // namespace

PromptEntry PromptLibrary::save(const std::optional<PromptEntry>& entry, const QString& text, Instant now) {
  if (isUnreadable()) throw SorvanError(unreadableMessage());
  const QString trimmedText = text.trimmed();
  if (trimmedText.isEmpty()) throw SorvanError(texts::promptBlank());

  const auto withId = std::ranges::find_if(entries_, [&](const auto& one) { return entry && one.id == entry->id; });
  const auto withText = std::ranges::find(entries_, trimmedText, &PromptEntry::text);
  PromptEntry saved;
  if (withId != entries_.end()) {
    saved = {entry->id, promptTitle(trimmedText), trimmedText, now};
    *withId = saved;
  } else if (withText != entries_.end()) {
    saved = *withText;
    saved.savedAt = now;
    entries_.erase(withText);
    entries_.insert(entries_.begin(), saved);
  } else {
    saved = {newUuid(), promptTitle(trimmedText), trimmedText, now};
    entries_.insert(entries_.begin(), saved);
  }
  persistOrThrow();
  return saved;
}

void PromptLibrary::remove(const QUuid& entry) {
  std::erase_if(entries_, [&](const PromptEntry& one) { return one.id == entry; });
  persist();
}

// ---- Charges

ChargeLedger::ChargeLedger()
    : Ledger({QStringLiteral("charges.json"), texts::chargesNoun(), texts::workspaceBeforeCharges()}) {}

QByteArray ChargeLedger::encodeEntries() const { return encodeJson(entries_); }
void ChargeLedger::decodeEntries(const QByteArray& json) { entries_ = decodeJson<std::vector<ExtraCharge>>(json); }
bool ChargeLedger::decodes(const QByteArray& json) const {
  try {
    decodeJson<std::vector<ExtraCharge>>(json);
    return true;
  } catch (const SorvanError&) {
    return false;
  }
}

bool ChargeLedger::contains(const QUuid& id) const {
  return std::ranges::find(entries_, id, &ExtraCharge::id) != entries_.end();
}

void ChargeLedger::add(const std::vector<ExtraCharge>& charges) {
  for (const ExtraCharge& charge : charges)
    if (!contains(charge.id)) entries_.push_back(charge);
  persist();
}

void ChargeLedger::remove(const std::vector<QUuid>& ids) {
  const auto removed = std::erase_if(
      entries_, [&](const ExtraCharge& charge) { return std::ranges::find(ids, charge.id) != ids.end(); });
  // Every landed job asks for the removal of its note, and most never had one: nothing changed then.
  if (removed > 0) persist();
}

void ChargeLedger::removeProject(const QUuid& project) {
  for (ExtraCharge& charge : entries_)
    if (charge.projectID == project) charge.projectID.reset();
  persist();
}

void ChargeLedger::restoreProjects(const QHash<QUuid, std::optional<QUuid>>& projects) {
  for (ExtraCharge& charge : entries_)
    if (const auto found = projects.constFind(charge.id); found != projects.constEnd()) charge.projectID = *found;
  persist();
}

// ---- Reviews

AnalysisLedger::AnalysisLedger()
    : Ledger({QStringLiteral("analyses.json"), texts::analysesNoun(), texts::workspaceBeforeAnalyses()}) {}

QByteArray AnalysisLedger::encodeEntries() const { return encodeJson(entries_); }
void AnalysisLedger::decodeEntries(const QByteArray& json) { entries_ = decodeJson<QHash<QUuid, SavedAnalysis>>(json); }
bool AnalysisLedger::decodes(const QByteArray& json) const {
  try {
    decodeJson<QHash<QUuid, SavedAnalysis>>(json);
    return true;
  } catch (const SorvanError&) {
    return false;
  }
}

void AnalysisLedger::clearEntries() { entries_.clear(); }

void AnalysisLedger::keep(const SavedAnalysis& analysis, const QUuid& asset) {
  entries_.insert(asset, analysis);
  persist();
}

}  // namespace sorvan::core
