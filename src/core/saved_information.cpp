#include "core/saved_information.h"

#include "base/file_reading.h"
#include "base/json.h"
#include "core/texts.h"

namespace sorvan::core {
namespace {

/// Each throws when the bytes are not what its file holds.
void decodePrompts(const QByteArray& json) { decodeJson<std::vector<PromptEntry>>(json); }
void decodeReviews(const QByteArray& json) { decodeJson<QHash<QUuid, SavedAnalysis>>(json); }
void decodeSpending(const QByteArray& json) { decodeJson<std::vector<ExtraCharge>>(json); }
void decodeDraft(const QByteArray& json) { decodeJson<ComposerDraft>(json); }

struct SidecarKind {
  const char* id;
  const char* file;
  void (*decode)(const QByteArray& json);
};
constexpr SidecarKind kinds[] = {{"prompts", "prompts.json", decodePrompts},
                                 {"reviews", "analyses.json", decodeReviews},
                                 {"spending", "charges.json", decodeSpending},
                                 {"draft", "composer.json", decodeDraft}};

/// What is wrong with a file that is there; nothing when it decodes.
std::optional<QString> issueOfFile(const QString& path, const SidecarKind& kind, const SavedInformation& row) {
  try {
    kind.decode(readFile(path));
    return std::nullopt;
  } catch (const SorvanError&) {
    const bool inMemory = row.count >= 1 && row.id != QStringLiteral("draft");
    return inMemory ? texts::savedCopyUnreadable() : texts::savedInformationUnreadable();
  }
}

/// What is wrong with a file that is not there.
std::optional<QString> issueOfAbsence(const QString& path, const SavedInformation& row) {
  if (row.count >= 1) return texts::savedCopyMissing();
  if (QFileInfo::exists(path + QStringLiteral(".previous"))) return texts::savedInformationMissing();
  return std::nullopt;
}

const SidecarKind& kindOf(const SavedInformation& row) {
  for (const SidecarKind& kind : kinds)
    if (row.id == QLatin1StringView(kind.id)) return kind;
  throw std::logic_error("every row stands for a sidecar");
}

}  // namespace

std::vector<SavedInformation> savedInformation(const LibraryStore& store) {
  const std::optional<ComposerDraft> kept = store.keptComposer();
  const auto draftIssue = store.hasUnsavedDraft() ? std::optional(texts::draftWaits()) : std::nullopt;
  return {{QStringLiteral("prompts"), texts::savedPromptsTitle(), store.prompts().entries().size(),
           store.prompts().issue()},
          {QStringLiteral("reviews"), texts::imageReviewsTitle(),
           static_cast<std::size_t>(store.analyses().entries().size()), store.analyses().issue()},
          {QStringLiteral("spending"), texts::spendingTitle(), store.extraCharges().entries().size(),
           store.extraCharges().issue()},
          {QStringLiteral("draft"), texts::unfinishedPromptTitle(), kept ? 1U : 0U, draftIssue}};
}

std::vector<SavedInformation> inspectSavedInformation(const WorkspaceFiles& files, std::vector<SavedInformation> rows) {
  for (SavedInformation& row : rows) {
    if (row.issue) continue;
    const SidecarKind& kind = kindOf(row);
    const QString path = files.sidecar(QLatin1StringView(kind.file));
    row.issue = QFileInfo::exists(path) ? issueOfFile(path, kind, row) : issueOfAbsence(path, row);
  }
  return rows;
}

bool canSaveFromMemory(const SavedInformation& row) {
  return row.issue && row.count >= 1 && row.id != QStringLiteral("draft");
}

void saveInformationAgain(LibraryStore& store, const std::vector<SavedInformation>& rows) {
  if (store.isBackingUp()) return;
  // 1. What is known to be pending.
  store.retryMetadataSave();
  // 2. What was found on the disk only now: the ledgers themselves believe that all is well.
  const auto ledgerOf = [&](const SavedInformation& row) -> Ledger* {
    if (row.id == QStringLiteral("prompts")) return &store.prompts();
    if (row.id == QStringLiteral("reviews")) return &store.analyses();
    return &store.extraCharges();
  };
  for (const SavedInformation& row : rows) {
    if (!canSaveFromMemory(row)) continue;
    Ledger* ledger = ledgerOf(row);
    if (!ledger->issue() && !ledger->isUnreadable()) ledger->persist();
  }
}

}  // namespace sorvan::core
