#pragma once

#include "shell/saved_references_presenter.h"

#include <functional>

namespace sorvan::shell {

class AlertsPresenter;
class ReferencesPresenter;
class WorkspaceState;

// The saved references of the open library. Main thread.
class LibrarySavedReferences final : public SavedReferencesPresenter {
  Q_OBJECT

 public:
  // All of these outlive the presenter.
  struct Ports {
    core::LibraryStore& store;
    ComposerState& state;
    WorkspaceState& window;
    AlertsPresenter& alerts;
    ReferencesPresenter& references;
    std::function<std::vector<core::AssetRef>(const QString& search, std::size_t most)> findPictures;
  };
  explicit LibrarySavedReferences(Ports ports, QObject* parent = nullptr);

  ReferencePage page(ReferenceScope scope, const QString& kind, const QString& search) const override;
  void attach(QUuid reference) override;
  void remove(QUuid reference) override;
  std::vector<ReferencePlace> places(QUuid reference) const override;
  void moveTo(QUuid reference, std::optional<QUuid> project) override;
  SavedReferenceDraft newDraft(ReferenceScope scope, const std::vector<QUuid>& items) const override;
  std::optional<SavedReferenceDraft> draftOf(QUuid reference) const override;
  std::optional<ReferencePlace> projectFor(const SavedReferenceDraft& draft) const override;
  QString handleOf(const QString& name) const override;
  ReferenceTile tileOf(QUuid item) const override;
  std::vector<ReferenceTile> pictures(const QString& search) const override;
  std::optional<ReferenceProblem> save(const SavedReferenceDraft& draft) override;
  std::vector<QUuid> usableSelection() const override;
  void saveSelection() override;

 private:
  // The project of the sidebar's location; none elsewhere.
  std::optional<QUuid> openProject() const;
  ReferenceCard cardOf(const core::SavedReference& reference) const;

  Ports ports_;
};

}  // namespace sorvan::shell
