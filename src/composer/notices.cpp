#include "composer/notices.h"

#include "composer/composer_rules.h"
#include "composer/notice_texts.h"
#include "core/image_format.h"

namespace sorvan::composer {

using namespace Qt::StringLiterals;

namespace {

using MaybeNotice = std::optional<Notice>;

std::vector<FalModel> recordsOf(const std::vector<SelectableModel>& models) {
  std::vector<FalModel> records;
  for (const SelectableModel& model : models) records.push_back(model.record);
  return records;
}

bool generates(const NoticeInput& input) { return input.mode == ComposerMode::generation; }

/// 1. Lengths across models.
MaybeNotice lengthsNotice(const NoticeInput& input, const KnownPrices&) {
  if (!generates(input)) return std::nullopt;
  const auto plan = lengthPlan(input.estimate.request, input.estimate.models);
  if (plan.size() < 2) return std::nullopt;
  QStringList items;
  bool alike = true;
  for (const video_length::Choice& choice : plan) {
    items << choice.name + u' ' + video_length::label(choice.value);
    alike = alike && choice.value == plan.front().value;
  }
  if (alike) return Notice{NoticeKind::lengths, texts::allLengthsAlike(video_length::label(plan.front().value)), {}};
  return Notice{
      NoticeKind::lengths, texts::lengthsDiffer(items), {{NoticeAction::chooseLengths, texts::chooseLengths(), {}}}};
}

/// 2. A length in the prompt.
MaybeNotice hintNotice(const NoticeInput& input, const KnownPrices&) {
  const auto hint = lengthHint(input.estimate.request, input.estimate.models, input.mentionedSeconds);
  if (!hint) return std::nullopt;
  const QString title = texts::setLengthTo(video_length::label(hint->value));
  return Notice{NoticeKind::lengthHint, hint->text, {{NoticeAction::setLength, title, hint->value}}};
}

/// 3. A ratio that not every model makes.
MaybeNotice ratioNotice(const NoticeInput& input, const KnownPrices&) {
  const ImageFormat* format = ImageFormat::find(input.estimate.request.size);
  if (!generates(input) || !format) return std::nullopt;
  const auto& models = input.estimate.models;
  const bool everywhere = std::all_of(models.begin(), models.end(), [&](const SelectableModel& model) {
    const auto& ratios = model.comparison.model.ratios;
    return !ratios || ratios->contains(format->ratio);
  });
  if (everywhere) return std::nullopt;
  return Notice{NoticeKind::ratio, texts::ratioNotSupported(QString(format->name), QString(format->ratio)), {}};
}

/// 4. to 6. What is under way, and what the models or the text need.
MaybeNotice importNotice(const NoticeInput& input, const KnownPrices&) {
  if (!input.importsReferences) return std::nullopt;
  return Notice{NoticeKind::importing, texts::importingReferences(), {}};
}

MaybeNotice referencesNotice(const NoticeInput& input, const KnownPrices&) {
  const EstimateInput& estimate = input.estimate;
  if (!generates(input) || estimate.request.referenceIDs.empty() || referencesSupported(estimate.models))
    return std::nullopt;
  return Notice{NoticeKind::references, texts::referencesNeedImages(), {}};
}

MaybeNotice interpretationNotice(const NoticeInput& input, const KnownPrices&) {
  if (!input.needsInterpretation) return std::nullopt;
  return Notice{NoticeKind::interpretation, texts::interpretationNotice(), {}};
}

/// 7. and 8. What stands in the way of paying.
MaybeNotice paymentNotice(const NoticeInput& input, const KnownPrices& prices) {
  if (!generates(input)) return std::nullopt;
  const auto text = paymentNote(input.estimate, input.isSignedIn, prices);
  if (!text) return std::nullopt;
  return Notice{NoticeKind::payment, *text, {}};
}

MaybeNotice shortfallNotice(const NoticeInput& input, const KnownPrices& prices) {
  if (!generates(input) || !input.isSignedIn || !hasPrompt(input.draft)) return std::nullopt;
  const auto lacking = shortfall(creditEstimate(input.estimate, prices), input.account);
  if (!lacking) return std::nullopt;
  Notice notice{NoticeKind::shortfall, texts::shortOfCredits(lacking->needed, lacking->balance), {}};
  notice.buttons.push_back({NoticeAction::buyCredits, texts::buyCredits(), {}});
  if (input.estimate.billing.ownKeyAllowed)
    notice.buttons.push_back({NoticeAction::payWithOwnKey, texts::payWithOwnKey(), {}});
  return notice;
}

/// 9. A number that was read in the text.
MaybeNotice countNotice(const NoticeInput& input, const KnownPrices&) {
  const auto* instruction = std::get_if<GenerationInstruction>(&input.intent);
  if (!instruction || !instruction->count) return std::nullopt;
  const bool perModel = input.estimate.models.size() > 1;
  return Notice{NoticeKind::interpretedCount, texts::interpretedCount(*instruction->count, perModel), {}};
}

QString currentLength(const GenerationRequest& request, const Setting& setting) {
  const TextByKey options = request.options.value_or(TextByKey());
  return options.value(setting.field, setting.defaultValue.value_or(QString()));
}

}  // namespace

std::vector<Notice> notices(const NoticeInput& input, const KnownPrices& prices) {
  std::vector<Notice> present;
  for (const auto rule : {lengthsNotice, hintNotice, ratioNotice, importNotice, referencesNotice, interpretationNotice,
                          paymentNotice, shortfallNotice, countNotice})
    if (MaybeNotice notice = rule(input, prices)) present.push_back(*std::move(notice));
  return present;
}

std::optional<PriceLine> shownPrice(const NoticeInput& input, const KnownPrices& prices) {
  if (!generates(input) || !hasPrompt(input.draft) || input.needsInterpretation) return std::nullopt;
  return priceLine(input.estimate, prices);
}

std::vector<video_length::Choice> lengthPlan(const GenerationRequest& request,
                                             const std::vector<SelectableModel>& models) {
  if (models.size() < 2) return {};
  return video_length::plan(request, recordsOf(models), video_length::Lengths::fixedOnly);
}

std::optional<LengthHint> lengthHint(const GenerationRequest& request, const std::vector<SelectableModel>& models,
                                     std::optional<int> mentionedSeconds) {
  if (!mentionedSeconds) return std::nullopt;
  const std::vector<Setting> offered = sharedSettings(recordsOf(models));
  const auto setting = std::find_if(offered.begin(), offered.end(),
                                    [](const Setting& candidate) { return candidate.field == u"duration"_s; });
  if (setting == offered.end()) return std::nullopt;
  const auto closest = video_length::closest(*mentionedSeconds, setting->values);
  const QString current = currentLength(request, *setting);
  if (!closest || current == *closest) return std::nullopt;
  const QString shown = current.isEmpty() ? texts::modelDefault() : video_length::label(current);
  QString text = texts::promptMentions(*mentionedSeconds, shown);
  if (video_length::leadingNumber(*closest) != double(*mentionedSeconds))
    text += texts::closestLength(video_length::label(*closest));
  return LengthHint{text, *closest};
}

std::optional<QString> paymentNote(const EstimateInput& input, bool isSignedIn, const KnownPrices& prices) {
  if (paysWithOwnKey(input.billing)) return std::nullopt;
  if (!isSignedIn) return texts::needsAccount(input.billing.ownKeyAllowed);
  QStringList names;
  for (const SelectableModel& model : input.models)
    if (!prices.isSold(model.record.id)) names << model.comparison.model.name;
  if (names.isEmpty()) return std::nullopt;
  return texts::cannotPayFor(names, input.billing.ownKeyAllowed);
}

QString settingText(const QString& value, const Setting& setting) {
  if (value.isEmpty()) return texts::modelDefault();
  if (value.compare(u"auto"_s, Qt::CaseInsensitive) == 0) return texts::automatic();
  return setting.field == u"duration"_s ? video_length::label(value) : value;
}

}  // namespace sorvan::composer
