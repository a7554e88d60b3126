#pragma once

#include <QObject>
#include <QSet>

#include "base/task_scope.h"
#include "composer/command_review.h"
#include "composer/command_router.h"
#include "composer/composer_rules.h"
#include "composer/composer_state.h"
#include "composer/intent_preview.h"
#include "composer/notices.h"
#include "core/request_values.h"
#include "shell/composer_presenter.h"
#include "shell/draft_keeper.h"
#include "shell/payment_desk.h"

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

// The composer of pictures, clips and sounds, and of commands: what its controls show, and the one road from its button
// to the queue and the library. Main thread.
class GenerationComposer final : public ComposerPresenter {
  Q_OBJECT

 public:
  // Reads commands that the local rules do not understand, for credits. Both outlive the composer.
  struct Interpreting {
    CommandInterpreter& interpreter;
    InterpretationBooks& books;
  };
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
    // Carries commands and submissions out.
    LibraryDesk& desk;
    PaymentDesk& payment;
    // Null where models cannot be added.
    ModelBrowserPresenter* browser = nullptr;
    ReferencesPresenter* references = nullptr;
    // None: what the local rules do not understand stays not understood.
    std::optional<Interpreting> interpreting = {};
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
  void refusePaste(qsizetype characters) override;
  void chooseOnlyModel(const QString& key) override;
  void setModelChosen(const QString& key, bool chosen) override;
  void showModels() override;
  void chooseSize(const QString& size) override;
  void chooseCount(int count) override;
  void chooseLength(const QString& value) override;
  void chooseLengthOf(const QString& model, const QString& value) override;
  void chooseSetting(const QString& field, const QString& value) override;
  void setSettingsShown(bool shown) override;
  void editSeed(const QString& text) override;
  void rollSeed() override;
  void setExpanded(bool expanded) override;
  void focus() override;
  void startAudio() override;
  void startImages() override;
  void submit() override;
  void setCommandMode(bool command) override;
  void setInterprets(bool interprets) override;
  void performNotice(const QString& text, int button) override;
  std::vector<ComposerDestination> destinations() const override;
  void chooseDestination(std::optional<QUuid> project) override;
  void payWithOwnKey(bool ownKey) override;
  void showAccount() override;
  void keyboardLeft() override { keeper_.keepNow(); }
  void clear() override;
  void reusePrompt(QUuid itemOrJob) override;
  void useSeed(QUuid itemOrJob) override;
  void copyPrompt(QUuid itemOrJob) override;
  std::vector<PastPrompt> pastPrompts() const override;
  void usePastPrompt(const QString& text) override;
  void savePrompt() override;
  void forgetSavedPrompt(QUuid saved) override;
  void useAsReference(QUuid item) override;
  void useAsReferences(const std::vector<QUuid>& items) override;
  void detachReference(QUuid item) override;
  void removeMarks() override;
  void openMarks(QUuid item) override;

  // Writes the unfinished prompt into the workspace, when it differs from what is kept there, and waits for the disk.
  void keepNow();
  // Asks for the prices of the chosen models that are not known for today.
  void refreshPrices();

 private:
  // One press of Generate, as it stood when it was pressed.
  struct Press {
    Submission submission;
    QString draft;
  };

  void connectState();
  void noteContext();
  CommandReview::Situation situation() const;

  // What the button does; see composer_submission.cpp.
  void run(bool confirmed);
  PressedSubmit pressed(bool confirmed) const;
  void confirm(std::int64_t credits);
  void execute(const SorvanIntent& intent);
  void generate(const GenerationInstruction& instruction);
  void command(const SorvanIntent& intent);
  Submission makeSoundSubmission(const SelectableModel& model) const;
  Task<> submitWhenKeyIsKnown(Press press, std::stop_token stop);
  void enqueue(const Press& press);

  // What is known of prices and commands; see composer_estimates.cpp.
  KnownPrices knownPrices() const;
  EstimateInput estimateInput() const;
  NoticeInput noticeInput() const;
  SorvanIntent shownIntent() const;
  bool interprets() const;
  bool needsInterpreter() const;
  bool importsReferences() const;
  void fillEstimate(ComposerDisplay& display) const;
  void fillNotices(ComposerDisplay& display) const;
  void fillSubmit(ComposerDisplay& display) const;
  void fillPayer(ComposerDisplay& display) const;
  void fillCommand(ComposerDisplay& display) const;

  std::vector<AttachedReference> attachedReferences() const;
  void attach(QUuid item, const std::optional<QString>& role);
  bool chooseModelFor(const std::optional<QString>& role);
  void takePendingMarks();
  void noteChoice();
  void replaceDraft(const std::function<void()>& change, const QString& text);
  void offerUndo(const QString& text, const core::ComposerDraft& before);
  void adoptLocation();

  Ports ports_;
  DraftKeeper keeper_;
  SorvanCommandRouter router_;
  ComposerIntentPreview preview_;
  std::unique_ptr<CommandReview> review_;  // only with an interpreter
  QSet<QString> pricedChoice_;             // the choice whose prices were asked for last
  QSet<QString> visualChoice_;             // the pictures' and clips' models that were chosen last
  std::pair<std::optional<QUuid>, std::vector<QUuid>> context_;  // destination and references, as last noted
  bool submitting_ = false;
  bool confirming_ = false;
  TaskScope tasks_;
};

}  // namespace sorvan::shell
