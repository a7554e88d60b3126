#pragma once

#include "base/task_scope.h"
#include "composer/composer_state.h"
#include "exchange/import_one.h"
#include "shell/references_presenter.h"

#include <functional>

namespace sorvan::shell {

class GalleryIndex;
class WorkspaceState;

// What the panel shows for a search: at most so many pictures outside Trash, the newest first.
std::vector<core::AssetRef> newestPictures(const core::LibraryStore& store, GalleryIndex& index, const QString& search,
                                           std::size_t most);

// The references of the composer over the open library. Main thread.
class LibraryReferences final : public ReferencesPresenter {
  Q_OBJECT

 public:
  // All of these outlive the presenter, or `drain` was awaited.
  struct Ports {
    core::LibraryStore& store;
    ComposerState& state;
    WorkspaceState& window;
    // The newest pictures outside Trash that a search finds, at most so many.
    std::function<std::vector<core::AssetRef>(const QString& search, std::size_t most)> findPictures;
    exchange::ImportPorts imports = {};
  };
  explicit LibraryReferences(Ports ports, QObject* parent = nullptr);
  ~LibraryReferences() override;

  QString countText() const override;
  QString inertText() const override;
  AttachPanel attachPanel(ReferenceSource source, const QString& search) const override;
  ReferenceSource firstSource() const override;

  void toggleItem(QUuid item) override;
  bool attachItems(const std::vector<QUuid>& items) override;
  void attachSaved(QUuid reference) override;
  void importFiles(const QStringList& paths) override;
  void importPicture(const QImage& picture) override;
  bool isImporting() const override { return importing_; }
  void cancelImport() override;
  void detach(QUuid item) override;
  void move(QUuid item, int place) override;
  bool rename(QUuid item, const QString& label) override;
  QStringList roles() const override;
  QString roleOf(QUuid item) const override;
  void setRole(QUuid item, const QString& role) override;

  std::optional<MentionOffer> mentionOffer(const QString& text, qsizetype cursor) const override;
  std::optional<QString> takeMention(const MentionChoice& choice) override;
  QSet<QString> mentionableNames() const override;

  void saveAttached() override;
  void openSaved(bool ofProject) override;

  // Ends an import that runs, and resumes when it has.
  Task<> drain();

 private:
  struct ImportGuard;
  using Bring = std::function<Task<exchange::ImportedReference>(std::stop_token)>;
  struct Delivery {
    QString name;  // what a failure is told with; empty for the only one
    Bring bring;
  };
  std::vector<ReferenceTile> pictureTiles(const QString& search) const;
  std::vector<ReferenceTile> savedTiles(const std::optional<QUuid>& project, const QString& search) const;
  bool isAttached(const QUuid& item) const;
  std::optional<QString> refusal(std::size_t files) const;
  void startImport(std::vector<Delivery> deliveries);
  static Task<> importAll(LibraryReferences* self, std::vector<Delivery> deliveries, std::stop_token stop);
  static Task<> bringAll(LibraryReferences* self, std::vector<Delivery> deliveries, std::stop_token stop);
  MentionChoice choiceOf(const MentionRow& row) const;
  const std::vector<SavedReferenceSuggestion>& suggestions() const;
  void forgetSuggestions();

  Ports ports_;
  bool importing_ = false;
  std::stop_source stopImport_;
  mutable std::optional<std::vector<SavedReferenceSuggestion>> suggestions_;
  TaskScope tasks_;
};

}  // namespace sorvan::shell
