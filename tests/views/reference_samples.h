// Sample references for the widgets, without a library behind them.
#pragma once

#include "shell/references_presenter.h"
#include "shell/saved_references_presenter.h"
#include "shell/views/room.h"

namespace sorvan::views {

// Three pictures and three saved references: attached, free, and one that cannot be used.
class SampleReferences final : public ReferencesPresenter {
 public:
  explicit SampleReferences(QString pictures) : pictures_(std::move(pictures)) {}

  QString countText() const override { return QStringLiteral("2 of 8 attached"); }
  QString inertText() const override { return inert; }
  AttachPanel attachPanel(ReferenceSource source, const QString& search) const override;
  ReferenceSource firstSource() const override { return source; }

  void toggleItem(QUuid) override {}
  bool attachItems(const std::vector<QUuid>&) override { return true; }
  void attachSaved(QUuid) override {}
  void importFiles(const QStringList&) override {}
  void importPicture(const QImage&) override {}
  bool isImporting() const override { return importing; }
  void cancelImport() override {}
  void detach(QUuid) override {}
  void move(QUuid, int) override {}
  bool rename(QUuid, const QString&) override { return true; }
  QStringList roles() const override { return {QStringLiteral("Product"), QStringLiteral("Generic")}; }
  QString roleOf(QUuid) const override { return QStringLiteral("Product"); }
  void setRole(QUuid, const QString&) override {}
  std::optional<MentionOffer> mentionOffer(const QString&, qsizetype) const override { return std::nullopt; }
  std::optional<QString> takeMention(const MentionChoice&) override { return std::nullopt; }
  QSet<QString> mentionableNames() const override { return {}; }
  void saveAttached() override {}
  void openSaved(bool) override {}

  QString inert;
  bool importing = false;
  bool hasTiles = true;
  ReferenceSource source = ReferenceSource::gallery;

 private:
  QString pictures_;
};

class SampleSavedReferences final : public SavedReferencesPresenter {
 public:
  explicit SampleSavedReferences(QString pictures) : pictures_(std::move(pictures)) {}

  ReferencePage page(ReferenceScope scope, const QString& kind, const QString& search) const override;
  void attach(QUuid) override {}
  void remove(QUuid) override {}
  std::vector<ReferencePlace> places(QUuid) const override { return {}; }
  void moveTo(QUuid, std::optional<QUuid>) override {}
  SavedReferenceDraft newDraft(ReferenceScope, const std::vector<QUuid>&) const override { return {}; }
  std::optional<SavedReferenceDraft> draftOf(QUuid) const override { return std::nullopt; }
  std::optional<ReferencePlace> projectFor(const SavedReferenceDraft&) const override;
  QString handleOf(const QString&) const override { return QStringLiteral("Tin"); }
  ReferenceTile tileOf(QUuid item) const override;
  std::vector<ReferenceTile> pictures(const QString& search) const override;
  std::optional<ReferenceProblem> save(const SavedReferenceDraft&) override { return problem; }
  std::vector<QUuid> usableSelection() const override { return {}; }
  void saveSelection() override {}

  bool hasCards = true;
  std::optional<ReferenceProblem> problem;

 private:
  QString pictures_;
};

}  // namespace sorvan::views
