// The sentences around the prompt: notices, prices, controls.
#pragma once

#include <QString>
#include <QStringList>

#include "composer/room.h"

namespace sorvan::composer::texts {

/// "1 image", "2 images".
inline QString counted(qint64 count, const QString& noun) {
  return QStringLiteral("%1 %2%3").arg(QString::number(count), noun, count == 1 ? QString() : QStringLiteral("s"));
}

// ---- The submit button
inline QString interpreting() { return QStringLiteral("Interpreting…"); }
inline QString interpret() { return QStringLiteral("Interpret"); }
inline QString runCommand() { return QStringLiteral("Run"); }
inline QString generate() { return QStringLiteral("Generate"); }
inline QString generateAndCompare() { return QStringLiteral("Generate & Compare"); }
inline QString selectModel() { return QStringLiteral("Select Model"); }
inline QString models(qsizetype count) { return QStringLiteral("%1 models").arg(count); }

// ---- The confirmation
inline QString useCredits(qint64 credits) { return QStringLiteral("Use %1 credits").arg(credits); }
inline QString unknownBalance() { return QStringLiteral("an unknown number of"); }
inline QString confirmCredits(const QString& balance) {
  return QStringLiteral(
             "This request costs more than 500 credits. You have %1 credits. A generation that fails costs nothing.")
      .arg(balance);
}

// ---- The price beside the button
inline QString dollars(double amount) {
  return QStringLiteral("≈ $") + QString::number(amount, 'f', amount < 0.1 ? 3 : 2);
}
inline QString ownKeyPrice() {
  return QStringLiteral(
      "Paid by your own fal.ai key. Estimated from fal.ai's list prices; your actual charge may differ.");
}
inline QString credits(qint64 count) { return counted(count, QStringLiteral("credit")); }
inline QString upTo(const QString& amount) { return QStringLiteral("up to ") + amount; }
inline QString creditsPrice() {
  return QStringLiteral("Paid from your Sorvan Credits. Large sizes can cost more; a failed generation costs nothing.");
}
inline QString heldPrice() {
  return QStringLiteral(
      "The most this can cost. That many credits are held, and you are charged what the generation turns out to cost; "
      "a failed generation costs nothing.");
}
inline QString creditsAndMore(qint64 count) { return QStringLiteral("%1+ credits").arg(count); }
inline QString creditsOrMore(qint64 count) { return QStringLiteral("%1 or more credits").arg(count); }
inline QString unpriced(const QStringList& names) {
  return QStringLiteral(
             "At least this many credits. No estimate for %1: a video needs a set length, and a price may still be "
             "loading.")
      .arg(names.join(QStringLiteral(", ")));
}

// ---- Notices
inline QString allLengthsAlike(const QString& length) {
  return QStringLiteral("Every model will make a %1 clip.").arg(length);
}
inline QString lengthsDiffer(const QStringList& items) {
  return QStringLiteral("Clips will differ in length: %1.").arg(items.join(QStringLiteral(" · ")));
}
inline QString chooseLengths() { return QStringLiteral("Choose Lengths…"); }
inline QString promptMentions(int seconds, const QString& length) {
  return QStringLiteral("Your prompt mentions %1 seconds, but Length is %2.").arg(QString::number(seconds), length);
}
inline QString closestLength(const QString& length) {
  return QStringLiteral(" This model's closest length is %1.").arg(length);
}
inline QString setLengthTo(const QString& length) { return QStringLiteral("Set Length to %1").arg(length); }
inline QString ratioNotSupported(const QString& name, const QString& ratio) {
  return QStringLiteral("%1 · %2 isn’t supported by every selected model. Choose a compatible ratio below.")
      .arg(name, ratio);
}
inline QString importingReferences() { return QStringLiteral("Importing reference images…"); }
inline QString referencesNeedImages() {
  return QStringLiteral("References require models that accept images. Deselect text-only models in the model picker.");
}
inline QString interpretationNotice() {
  return QStringLiteral(
      "AI interpretation · Sorvan Credits · Text and project context sent to DeepSeek; review before execution.");
}
inline QString orOwnKey(bool ownKeyAllowed) {
  return ownKeyAllowed ? QStringLiteral(", or switch Pay With to your own fal.ai key.") : QStringLiteral(".");
}
inline QString needsAccount(bool ownKeyAllowed) {
  return QStringLiteral("Paying with Sorvan Credits needs an account. Sign in under Settings → Account") +
         orOwnKey(ownKeyAllowed);
}
inline QString cannotPayFor(const QStringList& names, bool ownKeyAllowed) {
  return QStringLiteral("Credits cannot pay for %1 yet. Choose another model").arg(names.join(QStringLiteral(", "))) +
         orOwnKey(ownKeyAllowed);
}
inline QString shortOfCredits(qint64 needed, const QString& balance) {
  return QStringLiteral("This needs %1 credits and you have %2.").arg(QString::number(needed), balance);
}
inline QString buyCredits() { return QStringLiteral("Buy Credits"); }
inline QString payWithOwnKey() { return QStringLiteral("Pay with My fal.ai Key"); }
inline QString images(qint64 count) { return counted(count, QStringLiteral("image")); }
inline QString perModel() { return QStringLiteral(" per model"); }
inline QString interpretedCount(qint64 count, bool perModelToo) {
  return QStringLiteral("Interpreted: ") + images(count) + (perModelToo ? perModel() : QString());
}

// ---- Controls
inline QString countTooltip(int count, bool perModelToo) {
  return images(count) + (perModelToo ? perModel() : QString()) +
         QStringLiteral(". A count written in your prompt takes precedence.");
}
inline QString setByModel() { return QStringLiteral("set by model"); }
inline QString fromImage() { return QStringLiteral("from image"); }
inline QString modelChoosesShape() { return QStringLiteral("This model chooses the shape itself."); }
inline QString modelKeepsShape() { return QStringLiteral("This model keeps the shape of the image it starts from."); }
inline QString image() { return QStringLiteral("Image"); }
inline QString clipKeepsShape() {
  return QStringLiteral("The clip keeps the shape of the image it starts from, unless you pick another here.");
}
inline QString ratioTooltip(const QString& name) {
  return QStringLiteral("Aspect ratio: %1. Ratios must be supported by every selected model.").arg(name);
}
inline QString videoLength() { return QStringLiteral("Video Length"); }
inline QString allModels() { return QStringLiteral("All models"); }
inline QString noLengthInCommon() {
  return QStringLiteral("These models have no length in common, so each makes its own.");
}
inline QString differentLengths() { return QStringLiteral("Different lengths"); }
inline QString lengthFoot() {
  return QStringLiteral("A longer video costs more. The estimate beside Generate follows these choices.");
}
inline QString lengthTooltip(bool severalModels) {
  return severalModels ? QStringLiteral("Length: how long each model's video will be. A longer video costs more.")
                       : QStringLiteral("Length: how long the video will be. A longer video costs more.");
}
inline QString modelDefault() { return QStringLiteral("Model default"); }
inline QString automatic() { return QStringLiteral("Auto"); }
inline QString seedTooltip() {
  return QStringLiteral("Seed: makes a result repeatable. Leave it empty for a different result each time.");
}
inline QString seedDetail() {
  return QStringLiteral(
      "The same seed, prompt and settings give the same result on models that support it. Leave empty for a new result "
      "each time.");
}
inline QString clearTooltip() {
  return QStringLiteral(
      "Clear the prompt and references and put the model and settings back to how the composer starts");
}

// ---- Attachments
inline QString attachTooltip() {
  return QStringLiteral("Attach images from your library or import files. Use @names in the prompt.");
}
inline QString attached(qsizetype count) { return QStringLiteral("%1 of 8 attached").arg(count); }
inline QString textOnly(bool severalModels) {
  return severalModels ? QStringLiteral("One or more of the chosen models take text only.")
                       : QStringLiteral("The chosen model takes text only.");
}
inline QString waitForImport() { return QStringLiteral("Wait for the current import to finish."); }
inline QString eightReferencesAtMost() {
  return QStringLiteral("Use up to 8 reference images. Remove an attachment before adding more.");
}
inline QString referencesImported(const QString& destination) {
  return QStringLiteral("References attached · Files saved in %1. Type @ to use them in your prompt.").arg(destination);
}
inline QString workspaceGallery() { return QStringLiteral("Workspace Gallery"); }
inline QString projectReferences() { return QStringLiteral("Project References"); }
inline QString globalReferences() { return QStringLiteral("Global References"); }

}  // namespace sorvan::composer::texts
