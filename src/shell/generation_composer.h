#pragma once

#include <QObject>
#include <QSet>

#include "base/task_scope.h"
#include "composer/composer_state.h"
#include "core/request_values.h"
#include "shell/composer_presenter.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace sorvan::core {
class LibraryStore;
}
namespace sorvan::generation {
class JobQueue;
}

namespace sorvan::shell {

class AlertsPresenter;
class ModelBrowserPresenter;
class ModelPrices;
class WorkspaceState;

// The composer of pictures, clips and sounds: what its controls show, and the one road from Generate to the queue.
// The unfinished prompt is kept in the workspace shortly after each change. Main thread.
class GenerationComposer final : public ComposerPresenter {
  Q_OBJECT

 public:
  // What the composer uses; all of it outlives the composer.
  struct Ports {
    core::LibraryStore& store;
    generation::JobQueue& queue;
    WorkspaceState& window;
    ComposerState& state;
    // Resumes once the key store has answered; asks it again when its last answer was a failure. Never throws but
    // `Cancelled`: the failure itself shows when the key is read.
    std::function<Task<>(std::stop_token)> awaitKey;
    ModelPrices& prices;
    AlertsPresenter& alerts;
    // Puts a text on the clipboard.
    std::function<void(const QString&)> copyText;
    // Null where models cannot be added.
    ModelBrowserPresenter* browser = nullptr;
    ReferencesPresenter* references = nullptr;
  };
  explicit GenerationComposer(Ports ports, QObject* parent = nullptr);
  ~GenerationComposer() override;

  ComposerDisplay display() const override;
  std::vector<ModelSection> modelSections() const override;
  ModelBrowserPresenter* browser() override { return ports_.browser; }
  ReferencesPresenter* references() override { return ports_.references; }
  MessageLine message() const override;
  QString draft() const override;

  void editDraft(const QString& text) override;
  void chooseOnlyModel(const QString& key) override;
  void setModelChosen(const QString& key, bool chosen) override;
  void showModels() override;
  void chooseSize(const QString& size) override;
  void chooseCount(int count) override;
  void chooseLength(const QString& value) override;
  void editSeed(const QString& text) override;
  void rollSeed() override;
  void setExpanded(bool expanded) override;
  void focus() override;
  void startAudio() override;
  void startImages() override;
  void submit() override;
  void clear() override;
  void reusePrompt(QUuid itemOrJob) override;
  void useSeed(QUuid itemOrJob) override;
  void copyPrompt(QUuid itemOrJob) override;
  void useAsReference(QUuid item) override;
  void useAsReferences(const std::vector<QUuid>& items) override;
  void detachReference(QUuid item) override;
  void removeMarks() override;
  void openMarks(QUuid item) override;

  // Writes the unfinished prompt into the workspace now, when it differs from what is kept there.
  void keepNow();
  // Asks for the prices of the chosen models that are not known for today.
  void refreshPrices();

 private:
  // One press of Generate, as it stood when it was pressed.
  struct Submission {
    GenerationRequest request;
    std::vector<SelectableModel> models;
    std::optional<QUuid> project;
    QString draft;
    QString note;
  };
  Submission makeSubmission() const;
  Submission makePictureSubmission(const std::vector<SelectableModel>& models) const;
  Submission makeSoundSubmission(const SelectableModel& model) const;
  Task<> submitWhenKeyIsKnown(Submission submission, std::stop_token stop);
  void enqueue(const Submission& submission);
  std::vector<AttachedReference> attachedReferences() const;
  void attach(QUuid item, const std::optional<QString>& role);
  bool chooseModelFor(const std::optional<QString>& role);
  void takePendingMarks();
  void noteChoice();
  QString estimate() const;
  bool isUsable(const QUuid& asset) const;
  void takeBack(const core::ComposerDraft& draft);
  void offerUndo(const QString& text, const core::ComposerDraft& before);
  void restoreKept();
  void scheduleKeeping();
  Task<> keepLater(std::stop_token stop);
  void adoptLocation();

  Ports ports_;
  QSet<QString> pricedChoice_;   // the choice whose prices were asked for last
  QSet<QString> visualChoice_;   // the pictures' and clips' models that were chosen last
  bool submitting_ = false;
  bool keepingScheduled_ = false;
  TaskScope tasks_;
};

}  // namespace sorvan::shell
