#include "core/composer_sidecar.h"

#include <QPointer>

#include <mutex>

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

/// Whether a composer could take the document over. Words whose request does not decode would be out of sight for
/// good, though they stand in the file.
bool isRestorable(const QByteArray& json) {
  const std::optional<ComposerDraft> draft = decoded(json);
  if (!draft) return false;
  if (draft->text.isEmpty()) return true;
  try {
    decodeRequest(draft->request);
    return true;
  } catch (const std::exception&) {
    return false;
  }
}

void putFileAside(const QString& path) {
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

}  // namespace

/// Writes one file, by one thread at a time and never an older draft over a newer one.
struct ComposerSidecar::Pen {
  explicit Pen(QString path) : file(std::move(path)) {}

  const QString file;
  quint64 given = 0;  ///< the number of the newest draft; main thread
  std::mutex mutex;
  quint64 done = 0;       ///< the number of the draft that was written last
  bool isClosed = false;  ///< the workspace is left

  /// The bytes that stand in the file now; nothing when a newer draft was there already.
  std::optional<QByteArray> write(quint64 number, const ComposerDraft& draft) {
    const std::lock_guard lock(mutex);
    if (isClosed || number <= done) return std::nullopt;
    QByteArray json = encodeJson(draft);
    const std::optional<QByteArray> current = readIfPresent(file);
    if (current && !isRestorable(*current)) putFileAside(file);
    WorkspaceJSON::write(json, file, [](const QByteArray& bytes) { return decoded(bytes).has_value(); });
    done = number;
    return json;
  }
};

ComposerSidecar::ComposerSidecar() = default;

ComposerSidecar::~ComposerSidecar() { layDownPen(); }

void ComposerSidecar::layDownPen() {
  if (!pen_) return;
  const std::lock_guard wait(pen_->mutex);
  pen_->isClosed = true;
}

void ComposerSidecar::open(const std::optional<QString>& root) {
  layDownPen();
  pen_.reset();
  if (root) pen_ = std::make_shared<Pen>(WorkspaceFiles(*root).sidecar(QStringLiteral("composer.json")));
  pending_.reset();
  next_.reset();
  lastWritten_.reset();
  setIssue(std::nullopt);
}

void ComposerSidecar::keep(const ComposerDraft& draft) {
  // 1. Until it is on disk it is pending.
  pending_ = draft;
  next_.reset();
  // 2. Resuming, or opening a workspace, gives it a place.
  if (paused_ || !pen_) return;
  try {
    // 3. The pair is written as every sidecar is.
    if (requireWorkspace) requireWorkspace();
    const auto json = pen_->write(++pen_->given, draft);
    // 4. Done.
    if (json) written(pen_, *json);
  } catch (const std::exception&) {
    // 5. Memory keeps the draft.
    notWritten(draft);
  }
}

void ComposerSidecar::keepSoon(const ComposerDraft& draft) {
  if (paused_ || !pen_) {
    pending_ = draft;
  } else if (writing_) {
    next_ = draft;
  } else {
    tasks_.spawn(writeOnPool(draft));
  }
}

Task<> ComposerSidecar::writeOnPool(ComposerDraft draft) {
  const QPointer<ComposerSidecar> self(this);
  const std::shared_ptr<Pen> pen = pen_;
  writing_ = true;
  bool failed = false;
  try {
    if (requireWorkspace) requireWorkspace();
    const quint64 number = ++pen->given;
    const auto json = co_await onPool([pen, number, draft] { return pen->write(number, draft); });
    if (self && json) written(pen, *json);
  } catch (const std::exception&) {
    failed = true;
  }
  if (!self) co_return;
  writing_ = false;
  // A draft of a workspace that was left meanwhile concerns nobody.
  if (failed && pen == pen_ && !next_) notWritten(draft);
  if (next_ && pen_) keepSoon(*std::exchange(next_, std::nullopt));
}

void ComposerSidecar::written(const std::shared_ptr<Pen>& pen, const QByteArray& json) {
  if (pen != pen_) return;
  lastWritten_ = json;
  pending_.reset();
  setIssue(std::nullopt);
}

void ComposerSidecar::notWritten(const ComposerDraft& draft) {
  pending_ = draft;
  setIssue(texts::draftNotSaved());
}

Task<> ComposerSidecar::whenWritten() { return tasks_.whenIdle(); }

std::optional<ComposerDraft> ComposerSidecar::kept() const {
  if (!pen_) return std::nullopt;
  try {
    return decoded(readFile(pen_->file));
  } catch (const SorvanError&) {
    return std::nullopt;
  }
}

bool ComposerSidecar::hasUnsavedDraft() const {
  // Without a workspace there is no file that could fall behind, and nothing that opening one would have to wait for.
  if (!pending_ || !pen_) return false;
  if (!lastWritten_) {
    try {
      lastWritten_ = readIfPresent(pen_->file).value_or(QByteArray());
    } catch (const SorvanError&) {
      lastWritten_ = QByteArray();
    }
  }
  return encodeJson(*pending_) != lastWritten_.value_or(QByteArray());
}

void ComposerSidecar::setPaused(bool paused) {
  paused_ = paused;
  if (paused_ && pen_) {
    // What is being written is on disk before a copy is made.
    const std::lock_guard wait(pen_->mutex);
  }
  if (!paused_ && pending_) keep(ComposerDraft(*pending_));
}

void ComposerSidecar::setIssue(std::optional<QString> issue) {
  if (issue == issue_) return;
  const std::optional<QString> before = std::exchange(issue_, std::move(issue));
  Q_EMIT issueChanged(before);
}

}  // namespace sorvan::core
