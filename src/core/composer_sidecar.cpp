#include "core/composer_sidecar.h"

#include "base/durable_file.h"
#include "base/file_reading.h"
#include "base/json.h"
#include "base/sorvan_error.h"
#include "core/texts.h"
#include "core/workspace_files.h"
#include "core/workspace_json.h"

namespace sorvan::core {
namespace {

std::optional<ComposerDraft> decoded(const QByteArray& json) {
  try {
    return decodeJson<ComposerDraft>(json);
  } catch (const SorvanError&) {
    return std::nullopt;
  }
}

}  // namespace

void ComposerSidecar::open(const std::optional<QString>& root) {
  file_.reset();
  if (root) file_ = WorkspaceFiles(*root).sidecar(QStringLiteral("composer.json"));
  pending_.reset();
  lastWritten_.reset();
  setIssue(std::nullopt);
}

void ComposerSidecar::keep(const ComposerDraft& draft) {
  // 1. Until it is on disk it is pending.
  pending_ = draft;
  // 2. Resuming, or opening a workspace, gives it a place.
  if (paused_ || !file_) return;
  try {
    // 3. The pair is written as every sidecar is.
    write(encodeJson(draft));
    // 4. Done.
    pending_.reset();
    setIssue(std::nullopt);
  } catch (const std::exception&) {
    // 5. Memory keeps the draft.
    setIssue(texts::draftNotSaved());
  }
}

void ComposerSidecar::write(const QByteArray& json) {
  if (requireWorkspace) requireWorkspace();
  const std::optional<QByteArray> current = readIfPresent(*file_);
  if (current && !decoded(*current)) putDamagedFileAside(*file_);
  WorkspaceJSON::write(json, *file_, [](const QByteArray& bytes) { return decoded(bytes).has_value(); });
  lastWritten_ = json;
}

void ComposerSidecar::putDamagedFileAside(const QString& path) {
  for (int counter = 1;; ++counter) {
    const QString ending = counter == 1 ? QString() : QStringLiteral("-%1").arg(counter);
    try {
      renameDurably(path, path + QStringLiteral(".unreadable") + ending, Replacing::NoReplace);
      return;
    } catch (const FileError& failure) {
      if (failure.number() != EEXIST) throw;
    }
  }
}

std::optional<ComposerDraft> ComposerSidecar::kept() const {
  if (!file_) return std::nullopt;
  try {
    return decoded(readFile(*file_));
  } catch (const SorvanError&) {
    return std::nullopt;
  }
}

bool ComposerSidecar::hasUnsavedDraft() const {
  // Without a workspace there is no file that could fall behind, and nothing that opening one would have to wait for.
  if (!pending_ || !file_) return false;
  if (!lastWritten_) {
    try {
      lastWritten_ = readIfPresent(*file_).value_or(QByteArray());
    } catch (const SorvanError&) {
      lastWritten_ = QByteArray();
    }
  }
  return encodeJson(*pending_) != lastWritten_.value_or(QByteArray());
}

void ComposerSidecar::setPaused(bool paused) {
  paused_ = paused;
  if (!paused_ && pending_) keep(ComposerDraft(*pending_));
}

void ComposerSidecar::setIssue(std::optional<QString> issue) {
  if (issue == issue_) return;
  const std::optional<QString> before = std::exchange(issue_, std::move(issue));
  Q_EMIT issueChanged(before);
}

}  // namespace sorvan::core
