#include "composer/composer_rules.h"

#include "composer/local_intent_parser.h"
#include "composer/notice_texts.h"

namespace sorvan::composer {

bool hasPrompt(const QString& draft) { return !draft.trimmed().isEmpty(); }

bool needsInterpretation(ComposerMode mode, bool interpretWithAI, bool isReviewed, const SorvanIntent& intent) {
  const bool isUnplaced =
      std::holds_alternative<GenerationInstruction>(intent) || std::holds_alternative<Unknown>(intent);
  return mode == ComposerMode::command && interpretWithAI && !isReviewed && isUnplaced;
}

QString submitTitle(const SubmitLook& look) {
  if (look.isInterpreting) return texts::interpreting();
  if (look.needsInterpretation) return texts::interpret();
  if (look.mode == ComposerMode::command) return texts::runCommand();
  return look.models < 2 ? texts::generate() : texts::generateAndCompare();
}

bool submitIsEnabled(bool isInterpreting, bool importsReferences) { return !isInterpreting && !importsReferences; }

QString modelLabel(const std::vector<SelectableModel>& models) {
  if (models.empty()) return texts::selectModel();
  if (models.size() == 1) return models.front().comparison.model.name;
  return texts::models(static_cast<qsizetype>(models.size()));
}

bool referencesSupported(const std::vector<SelectableModel>& models) {
  return !models.empty() && std::all_of(models.begin(), models.end(), [](const SelectableModel& model) {
    return model.comparison.model.supportsReferences;
  });
}

int mostOutputs(const std::vector<SelectableModel>& models) {
  int most = 4;
  for (const SelectableModel& model : models)
    most =
        &model == &models.front() ? model.comparison.model.maxCount : std::min(most, model.comparison.model.maxCount);
  return std::max(most, 1);
}

SubmitStep submitStep(const PressedSubmit& pressed) {
  // 1. Something is under way.
  if (!submitIsEnabled(pressed.isInterpreting, pressed.importsReferences)) return DoNothing{};
  // 2. Nothing to submit.
  if (!hasPrompt(pressed.draft)) return DoNothing{};
  // 3. More credits than are spent without a question, where the sum is known.
  const bool isPriced = pressed.credits && pressed.credits->unpriced.isEmpty();
  if (!pressed.isConfirmed && pressed.mode == ComposerMode::generation && isPriced &&
      pressed.credits->credits > mostUnaskedCredits)
    return ConfirmCredits{pressed.credits->credits};
  // 4. What the text says now.
  const SorvanIntent intent =
      pressed.reviewed ? *pressed.reviewed : LocalIntentParser::parse(pressed.draft, pressed.mode);
  // 5. and 6. To the interpreter, or done here.
  if (needsInterpretation(pressed.mode, pressed.interpretWithAI, pressed.reviewed.has_value(), intent))
    return Interpret{};
  if (pressed.reviewed && pressed.reviewedSelection != pressed.selection) return RefuseSelection{};
  return Execute{intent};
}

std::optional<QString> attachRefusal(bool isImporting, std::size_t attached, std::size_t files) {
  if (isImporting) return texts::waitForImport();
  if (files > 0 && attached + files > mostReferences) return texts::eightReferencesAtMost();
  return std::nullopt;
}

}  // namespace sorvan::composer
