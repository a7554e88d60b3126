// What one window's composer is composing.
#pragma once

#include <QObject>
#include <QSet>
#include <QString>
#include <QUuid>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "base/clock.h"
#include "base/task_scope.h"
#include "catalogue/fal_model.h"
#include "composer/intent.h"
#include "composer/reference_names.h"
#include "composer/selectable_models.h"
#include "core/ledger_values.h"
#include "core/request_values.h"

namespace sorvan::composer {

/// The prompt, the request under construction, the chosen models, the destination and the message line. One object a
/// window; it lives as long as the window. Main thread.
class ComposerState : public QObject {
  Q_OBJECT

 public:
  /// `models` is what can be chosen now, in catalogue order.
  ComposerState(std::vector<SelectableModel> models, std::shared_ptr<const Clock> clock, QObject* parent = nullptr);
  ~ComposerState() override;

  /// The size that a composer starts with.
  static const QString defaultSize;
  /// The key of the model that a composer starts with.
  static const QString defaultModel;

  /// How the text is read. While commands are typed the prompt waits, and `saved` holds it.
  ComposerMode mode() const { return mode_; }
  /// Turns to commands or back to the prompt, which is there again as it was left.
  void setMode(ComposerMode mode);
  const QString& draft() const { return draft_; }
  const GenerationRequest& request() const { return request_; }
  const QSet<QString>& selectedModels() const { return selectedModels_; }
  const QString& seedText() const { return seedText_; }
  std::optional<QUuid> projectId() const { return projectId_; }
  bool isExpanded() const { return expanded_; }
  const QString& message() const { return message_; }
  bool messageIsError() const { return isError_; }

  /// What can be chosen, in catalogue order, and the chosen ones of it in the same order.
  const std::vector<SelectableModel>& allModels() const { return models_; }
  std::vector<SelectableModel> chosenModels() const;

  /// The snapshot that survives a restart.
  ComposerDraft saved() const;
  /// Takes a snapshot over. One whose request does not decode changes nothing; references, projects and models that
  /// are gone are left out silently.
  void restore(const ComposerDraft& saved, const std::function<bool(const QUuid&)>& usable,
               const std::function<bool(const QUuid&)>& project);
  /// Back to how a composer starts; the destination stays.
  void reset();
  bool isUntouched() const;

  /// For the text field, at each keystroke.
  void updateLiveDraft(const QString& text);
  /// For code: replaces the whole draft.
  void setText(const QString& text);
  void setSeedText(const QString& text);
  void setProject(std::optional<QUuid> project);
  void setExpanded(bool expanded);
  /// Whether the settings beyond the few that are always there are shown.
  bool isAdvanced() const { return advanced_; }
  void setAdvanced(bool advanced);
  void setCount(int count);
  void setSize(const QString& size);
  /// Sets a model setting of the request; an empty value takes it away.
  void setOption(const QString& field, const QString& value);
  /// Sets the lengths of several video models, by model id; what a model does not offer is dropped.
  void setLengths(const TextByKey& lengthByModel);
  /// Replaces the attached pictures, in the order of upload, and their names.
  void setReferences(std::vector<QUuid> ids, std::vector<ReferenceBinding> bindings);
  /// Gives an attached picture another name and part; the draft follows. Throws SorvanError for a name that is unfit or
  /// taken; nothing changes then.
  void renameReference(const QUuid& asset, const QString& label, const std::optional<QString>& role);
  /// Numbers the automatic names anew, when a reused item starts a fresh prompt; the draft follows.
  void resetReferenceNamesForNewPrompt();
  /// After a submission: what belonged to that one prompt goes, while models, shape, count and destination stay.
  void finishPrompt();
  /// Takes a recipe over in place of what is there: words, model, settings, shape, count, and the references that
  /// `usable` accepts, with their marks. Neither its seed nor what belonged to that one run comes along; the destination
  /// stays. False when its model cannot be chosen any more: then the chosen models stay as they are.
  bool reuse(const GenerationRequest& recipe, const std::function<bool(const QUuid&)>& usable);
  const std::vector<PromptImprovement>& improvements() const { return improvements_; }
  void focus();
  /// Sets the message line. An error stays until it is replaced; a note leaves after `noteSeconds`.
  void report(const QString& text, bool isError);
  /// Ends what waits, such as the time of a message; nothing is left to wait for afterwards. Awaited before the program
  /// ends: a task that still sleeps then would never end.
  Task<> drain() { return tasks_.drain(); }
  void clearMessage();

  void chooseOnly(const QString& key);
  void selectModel(const QString& key, bool selected);
  /// After models were added or removed: choices that are gone are dropped, and with none left the default returns.
  void setModels(std::vector<SelectableModel> models);

  /// The picture on which `request().markup` was drawn.
  std::optional<QUuid> markupAssetId() const { return markupAssetId_; }
  /// Attaches a picture as the first reference, or moves an attached one there; one without a role takes `role`.
  /// Throws SorvanError when as many are attached as a prompt may have; nothing changes then.
  void attachFirst(const QUuid& asset, const std::optional<QString>& role = std::nullopt);
  /// Takes a reference away, and with it the marks that were drawn on it.
  void detachReference(const QUuid& asset);
  /// Marks areas of a picture; none takes the marks away. With an empty draft their notes become the text.
  void setMarkup(const std::vector<MarkupBox>& boxes, const QUuid& asset);
  /// Whether everything outside the marks is to stay as it is, which is what a request starts with.
  void setConfinesToMarks(bool confines);
  /// Makes sure that one model is chosen that can take a picture and makes this kind of media; false when there is
  /// none, and then nothing changes.
  bool useModel(MediaType output);

  double noteSeconds = 5.0;

 Q_SIGNALS:
  /// Anything but the draft's words and the message.
  void changed();
  /// Every change of the draft, by keystroke or code.
  void draftEdited();
  /// Code replaced the draft.
  void draftReplaced(const QString& text);
  void messageChanged();
  void focusRequested();

 private:
  const QString& prompt() const { return mode_ == ComposerMode::command ? waitingPrompt_ : draft_; }
  void adoptFirstSelected();
  void fitOutputSettings();
  void fitOptions(const std::vector<SelectableModel>& chosen);
  void fitLengths(const std::vector<SelectableModel>& chosen);
  void fitRatio(const std::vector<SelectableModel>& chosen);
  void dropStrayMarks();
  void synchronizeReferenceNames();
  void keepNames(std::vector<ReferenceBinding> bindings);
  void takeNames(const NamedReferences& names);
  void takeRequest(GenerationRequest request, const std::function<bool(const QUuid&)>& usable);
  Task<> clearLater(quint64 message, double seconds, std::stop_token stop);

  std::vector<SelectableModel> models_;
  std::shared_ptr<const Clock> clock_;
  TaskScope tasks_;
  ComposerMode mode_ = ComposerMode::generation;
  QString draft_;
  QString waitingPrompt_;  ///< the prompt while commands are typed
  mutable QByteArray encodedRequest_;  ///< the last that could be encoded
  std::vector<PromptImprovement> improvements_;
  GenerationRequest request_;
  std::optional<QUuid> markupAssetId_;
  std::optional<QUuid> projectId_;
  bool expanded_ = false;
  bool advanced_ = false;
  QSet<QString> selectedModels_;
  QString seedText_;
  QString message_;
  bool isError_ = false;
  quint64 messageNumber_ = 0;
};

}  // namespace sorvan::composer
