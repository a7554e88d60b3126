// When the composer's button does what, and what its controls say: pure functions.
#pragma once

#include <QSet>
#include <QString>
#include <QUuid>

#include <optional>
#include <variant>
#include <vector>

#include "composer/estimates.h"
#include "composer/intent.h"
#include "composer/selectable_models.h"

namespace sorvan::composer {

/// The most pictures that a prompt may have.
inline constexpr int mostReferences = 8;
/// The most credits that are spent without a question.
inline constexpr std::int64_t mostUnaskedCredits = 500;

/// Whether there is anything to submit.
bool hasPrompt(const QString& draft);

/// Whether the text goes to the remote interpreter: a command that the local rules did not place, while that is on and
/// nothing awaits the user's Run.
bool needsInterpretation(ComposerMode mode, bool interpretWithAI, bool isReviewed, const SorvanIntent& intent);

struct SubmitLook {
  ComposerMode mode = ComposerMode::generation;
  bool isInterpreting = false;
  bool needsInterpretation = false;
  std::size_t models = 0;
};
QString submitTitle(const SubmitLook& look);
/// Nothing else disables the button: pressing it with an empty prompt does nothing.
bool submitIsEnabled(bool isInterpreting, bool importsReferences);

/// "Select Model", the one model's name, or "2 models".
QString modelLabel(const std::vector<SelectableModel>& models);
/// Whether every chosen model takes pictures.
bool referencesSupported(const std::vector<SelectableModel>& models);
/// The most outputs that every chosen model makes; 4 where there is none.
int mostOutputs(const std::vector<SelectableModel>& models);

/// Everything that a press of the button depends on.
struct PressedSubmit {
  QString draft;
  ComposerMode mode = ComposerMode::generation;
  bool interpretWithAI = false;
  bool isInterpreting = false;
  bool importsReferences = false;
  bool isConfirmed = false;  ///< the user has agreed to the credits
  std::optional<SorvanIntent> reviewed;
  QSet<QUuid> reviewedSelection;  ///< what was selected when `reviewed` was asked for
  QSet<QUuid> selection;
  std::optional<CreditEstimate> credits;
};

struct DoNothing {
  bool operator==(const DoNothing&) const = default;
};
struct ConfirmCredits {
  std::int64_t credits = 0;
  bool operator==(const ConfirmCredits&) const = default;
};
/// The reviewed action was asked for on another selection.
struct RefuseSelection {
  bool operator==(const RefuseSelection&) const = default;
};
struct Interpret {
  bool operator==(const Interpret&) const = default;
};
struct Execute {
  SorvanIntent intent;
  bool operator==(const Execute&) const = default;
};
using SubmitStep = std::variant<DoNothing, ConfirmCredits, RefuseSelection, Interpret, Execute>;

/// What a press of the button does. The text is read anew: a preview that lags behind decides nothing.
SubmitStep submitStep(const PressedSubmit& pressed);

/// Why files cannot be attached now, if they cannot; `files` counts the pictures among them.
std::optional<QString> attachRefusal(bool isImporting, std::size_t attached, std::size_t files);

}  // namespace sorvan::composer
