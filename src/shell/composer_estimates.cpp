// What the composer tells before anything is pressed: prices, notices, what a command is understood as.
#include "composer/command_texts.h"
#include "composer/notice_texts.h"
#include "core/library_store.h"
#include "generation/job_queue.h"
#include "shell/composer_controls.h"
#include "shell/composer_texts.h"
#include "shell/generation_composer.h"
#include "shell/model_prices.h"
#include "shell/references_presenter.h"
#include "shell/texts.h"

namespace sorvan::shell {

namespace {

const QString interpretKey = QStringLiteral("interpretWithAI");

// What is lacking is told in amber; what only follows from the choices is told in blue.
AlertTone toneOf(NoticeKind kind) {
  switch (kind) {
    case NoticeKind::lengths:
    case NoticeKind::lengthHint:
    case NoticeKind::importing:
    case NoticeKind::interpretation:
    case NoticeKind::interpretedCount:
      return AlertTone::information;
    case NoticeKind::ratio:
    case NoticeKind::references:
    case NoticeKind::payment:
    case NoticeKind::shortfall:
      break;
  }
  return AlertTone::warning;
}

}  // namespace

KnownPrices GenerationComposer::knownPrices() const {
  KnownPrices prices;
  prices.dollars = [this](const GenerationRequest& request, const FalModel& model) {
    return ports_.prices.estimate(request, model);
  };
  prices.credits = [this](const GenerationRequest& request, const FalModel& model) {
    return ports_.payment.credits(request, model);
  };
  prices.isCeiling = [this](const QString& model) { return ports_.payment.isCeiling(model); };
  prices.isSold = [this](const QString& model) { return ports_.payment.isSold(model); };
  prices.forModel = [this](const GenerationRequest& request, const ComparisonModel& model) {
    return ports_.queue.ports().forModel(request, model);
  };
  return prices;
}

// The count of the text that is there now: a preview that lags behind decides no price.
EstimateInput GenerationComposer::estimateInput() const {
  EstimateInput input{ports_.state.request(), {}, ports_.state.chosenModels(), ports_.payment.billing()};
  input.request.prompt = ports_.state.draft().trimmed();
  if (const SorvanIntent intent = shownIntent(); const auto* asked = std::get_if<GenerationInstruction>(&intent))
    input.intentCount = asked->count;
  return input;
}

SorvanIntent GenerationComposer::shownIntent() const {
  if (review_ && review_->intent()) return *review_->intent();
  return preview_.intent();
}

bool GenerationComposer::interprets() const {
  return review_ && ports_.store.settings().get<bool>(interpretKey, false);
}

bool GenerationComposer::importsReferences() const { return ports_.references && ports_.references->isImporting(); }

bool GenerationComposer::needsInterpreter() const {
  const bool isReviewed = review_ && review_->intent();
  return needsInterpretation(ports_.state.mode(), interprets(), isReviewed, shownIntent());
}

void GenerationComposer::setInterprets(bool interprets) {
  try {
    ports_.store.settings().set(interpretKey, interprets);
  } catch (const std::exception& failure) {
    ports_.state.report(describe(failure), true);
  }
  Q_EMIT changed();
}

NoticeInput GenerationComposer::noticeInput() const {
  NoticeInput input;
  input.mode = ports_.state.mode();
  input.draft = ports_.state.draft();
  input.estimate = estimateInput();
  input.intent = shownIntent();
  input.mentionedSeconds = preview_.mentionedSeconds();
  input.needsInterpretation = needsInterpreter() && hasPrompt(ports_.state.draft());
  input.importsReferences = importsReferences();
  input.isSignedIn = ports_.payment.isSignedIn();
  input.account = ports_.payment.account();
  return input;
}

void GenerationComposer::fillEstimate(ComposerDisplay& display) const {
  const auto price = shownPrice(noticeInput(), knownPrices());
  if (!price) return;
  display.estimate = price->text;
  display.estimateSpoken = price->spoken;
  display.estimateTooltip = price->tooltip;
}

void GenerationComposer::fillNotices(ComposerDisplay& display) const {
  for (const Notice& notice : notices(noticeInput(), knownPrices())) {
    std::vector<QString> titles;
    for (const NoticeButton& button : notice.buttons) titles.push_back(button.title);
    display.notices.emplace_back(notice.text, std::move(titles), toneOf(notice.kind));
  }
}

void GenerationComposer::fillCommand(ComposerDisplay& display) const {
  display.command = ports_.state.mode() == ComposerMode::command;
  display.interpretOffered = display.command && review_ != nullptr;
  display.interprets = interprets();
  if (!display.command) return;
  if (hasPrompt(ports_.state.draft())) display.commandLabel = label(shownIntent());
  if (review_ && review_->action()) display.review = composer::texts::review(review_->action()->summary());
}

void GenerationComposer::fillPayer(ComposerDisplay& display) const {
  const EstimateInput input = estimateInput();
  const bool isOne = input.models.size() == 1;
  const FalModel* model = isOne ? &input.models.front().record : nullptr;
  const auto dollars = model ? ports_.prices.estimate(input.request, *model) : std::nullopt;
  display.ownKeyPays = paysWithOwnKey(input.billing);
  display.payWith = ports_.payment.payWithDisplay(input.request, model, dollars);
  display.payer = display.payWith.label;
}

void GenerationComposer::fillSubmit(ComposerDisplay& display) const {
  const bool isInterpreting = review_ && review_->isInterpreting();
  const bool isThere = hasPrompt(ports_.state.draft());
  const bool needed = needsInterpreter() && isThere;
  display.submitTitle =
      submitTitle({ports_.state.mode(), isInterpreting, needed, ports_.state.chosenModels().size()});
  display.submitEmphasised = isThere;
  display.submitBusy = submitting_ || !submitIsEnabled(isInterpreting, importsReferences());
  if (submitting_)
    display.submitTooltip = texts::waitingForKey;
  else if (!isThere)
    display.submitTooltip = display.command ? texts::emptyCommandTooltip : texts::emptyPromptTooltip;
}

void GenerationComposer::payWithOwnKey(bool ownKey) {
  ports_.payment.payWith(ownKey ? core::PayWith::ownKey : core::PayWith::credits);
}

void GenerationComposer::showAccount() { ports_.payment.buyCredits(); }

void GenerationComposer::performNotice(const QString& text, int button) {
  for (const Notice& notice : notices(noticeInput(), knownPrices())) {
    if (notice.text != text || button < 0 || button >= static_cast<int>(notice.buttons.size())) continue;
    const NoticeButton& pressed = notice.buttons[static_cast<std::size_t>(button)];
    switch (pressed.action) {
      case NoticeAction::chooseLengths:
        Q_EMIT lengthsRequested();
        return;
      case NoticeAction::setLength:
        return ports_.state.setOption(QStringLiteral("duration"), pressed.value);
      case NoticeAction::buyCredits:
        return ports_.payment.buyCredits();
      case NoticeAction::payWithOwnKey:
        return ports_.payment.payWith(core::PayWith::ownKey);
    }
  }
}

}  // namespace sorvan::shell
