// The lines between the prompt and its controls: what the user should know before pressing the button.
#pragma once

#include <QString>

#include <optional>
#include <vector>

#include "catalogue/video_length.h"
#include "composer/estimates.h"
#include "composer/intent.h"

namespace sorvan::composer {

enum class NoticeKind {
  lengths,
  lengthHint,
  ratio,
  importing,
  references,
  interpretation,
  payment,
  shortfall,
  interpretedCount
};

enum class NoticeAction { chooseLengths, setLength, buyCredits, payWithOwnKey };

struct NoticeButton {
  NoticeAction action = NoticeAction::chooseLengths;
  QString title;
  QString value;  ///< of `setLength`: the value to set
  bool operator==(const NoticeButton&) const = default;
};

struct Notice {
  NoticeKind kind = NoticeKind::lengths;
  QString text;
  std::vector<NoticeButton> buttons;
  bool operator==(const Notice&) const = default;
};

/// Everything that notices depend on.
struct NoticeInput {
  ComposerMode mode = ComposerMode::generation;
  QString draft;
  EstimateInput estimate;
  SorvanIntent intent;
  std::optional<int> mentionedSeconds;
  bool needsInterpretation = false;
  bool importsReferences = false;
  bool isSignedIn = false;
  std::optional<AccountBalance> account;  ///< nothing until it is loaded
};

/// The notices from top to bottom.
std::vector<Notice> notices(const NoticeInput& input, const KnownPrices& prices);

/// The price to show beside the button: only for a prompt that would be generated.
std::optional<PriceLine> shownPrice(const NoticeInput& input, const KnownPrices& prices);

/// The lengths that several chosen models make; empty with fewer than two.
std::vector<video_length::Choice> lengthPlan(const GenerationRequest& request,
                                             const std::vector<SelectableModel>& models);

/// Where a prompt speaks of another length than the one that is set.
struct LengthHint {
  QString text;
  QString value;  ///< the closest that the model makes
  bool operator==(const LengthHint&) const = default;
};
std::optional<LengthHint> lengthHint(const GenerationRequest& request, const std::vector<SelectableModel>& models,
                                     std::optional<int> mentionedSeconds);

/// Why credits cannot pay as things stand, if they pay and cannot.
std::optional<QString> paymentNote(const EstimateInput& input, bool isSignedIn, const KnownPrices& prices);

/// A setting's value to read: "Model default", "Auto", "5 s".
QString settingText(const QString& value, const Setting& setting);

}  // namespace sorvan::composer
