// The sentences that this room shows to a user.
#pragma once

#include <QString>

#include "generation/room.h"

namespace sorvan::generation::texts {

// ---- Checking a request
inline QString chooseCount() { return QStringLiteral("Choose between 1 and 4 outputs."); }
inline QString unsupportedSize() { return QStringLiteral("Unsupported image size."); }
inline QString retiredProvider() {
  return QStringLiteral(
      "This request used an OpenAI key, which Sorvan no longer uses. Choose a model in the composer and generate "
      "again.");
}
inline QString retiredProviderCancel() { return QStringLiteral("This provider does not support remote cancellation."); }
inline QString chooseSupportedModel() { return QStringLiteral("Choose a supported model."); }
inline QString enterPrompt() { return QStringLiteral("Enter a prompt first."); }
inline QString marksNeedImage() {
  return QStringLiteral("Marks need the image they were drawn on. Attach it as the first reference.");
}
inline QString oneEndFrame() { return QStringLiteral("Mark only one reference as the end frame."); }
inline QString noEndFrame(const QString& model) {
  return QStringLiteral("%1 does not accept an end frame. Change that reference's role or choose another model.")
      .arg(model);
}
inline QString supportedRatios(const QString& model, const QString& ratios) {
  return QStringLiteral("%1 supports these ratios: %2. Choose one of these ratios.").arg(model, ratios);
}
inline QString tooManyOutputs(const QString& model, int most) {
  if (most == 1) return QStringLiteral("%1 returns one output per request. Lower the image count.").arg(model);
  return QStringLiteral("%1 returns up to %2 outputs per request. Lower the image count.")
      .arg(model, QString::number(most));
}
inline QString textOnly(const QString& model) {
  return QStringLiteral("%1 is text-only. Choose a model that accepts images to use references.").arg(model);
}
inline QString needsInputImage(const QString& model) {
  return QStringLiteral("%1 needs an input image. Attach a reference first.").arg(model);
}
inline QString referenceTwice() { return QStringLiteral("A reference image is attached more than once."); }
inline QString oneInputImage(const QString& model) { return QStringLiteral("%1 accepts one input image.").arg(model); }
inline QString eightReferences() { return QStringLiteral("Use up to 8 reference images."); }

// ---- Names of references
inline QString referenceNames() {
  return QStringLiteral("Give each reference a unique name starting with a letter (up to 48 letters or numbers).");
}
inline QString groupNames() {
  return QStringLiteral("Reference group names must be unique and different from individual image names.");
}
inline QString notAttached(const QString& name) {
  return QStringLiteral("@%1 is not attached. Add that reference or remove its mention before generating.").arg(name);
}

// ---- The queue
inline QString backingUp() {
  return QStringLiteral(
      "Sorvan is backing up this workspace. Please wait until the backup finishes before making changes.");
}
inline QString workspaceOrProjectUnavailable() { return QStringLiteral("Workspace or project unavailable."); }
inline QString signInToPay(bool ownKeyAllowed) {
  return ownKeyAllowed ? QStringLiteral(
                             "Sign in under Settings → Account to pay with Sorvan Credits, or switch Pay With "
                             "to your own fal.ai key.")
                       : QStringLiteral("Sign in under Settings → Account to pay with Sorvan Credits.");
}
inline QString addKeyToPay() {
  return QStringLiteral("Add your fal.ai key under Settings → fal.ai Key, or switch Pay With to Sorvan Credits.");
}
inline QString referenceImageGone() { return QStringLiteral("A reference image is no longer available."); }
inline QString clipGone() { return QStringLiteral("The clip is no longer available."); }
inline QString soundGone() { return QStringLiteral("The sound is no longer available."); }
inline QString chooseTwoModels() { return QStringLiteral("Choose at least two different models."); }
inline QString contactSheetFull() {
  return QStringLiteral("A contact sheet can contain up to 8 outputs. Reduce the models or outputs per model.");
}
inline QString untitledComparison() { return QStringLiteral("Untitled comparison"); }

// ---- The run
inline QString connecting() { return QStringLiteral("Connecting…"); }
inline QString interrupted() { return QStringLiteral("Interrupted"); }
inline QString requestMissing() { return QStringLiteral("The saved request or project is missing."); }
inline QString projectUnavailable() { return QStringLiteral("Destination project is unavailable."); }
inline QString noWayToPay() { return QStringLiteral("No way to pay for this request is set up."); }
inline QString referenceUnavailable() { return QStringLiteral("Reference image unavailable."); }
inline QString resultDownloaded() { return QStringLiteral("Result downloaded; saving to library"); }
inline QString resultRetained() { return QStringLiteral("Result retained locally · Save Result or Save Raw Result"); }
inline QString paidResultNeedsRecovery() {
  return QStringLiteral("Paid result · download needs recovery; Retry does not buy another generation");
}
inline QString progressNotSaved() {
  return QStringLiteral(
      "Sorvan couldn’t save this generation’s progress. Check that your workspace folder is available and your disk "
      "has "
      "free space. Keep Sorvan open, and avoid starting the same generation again because it may already have been "
      "paid "
      "for.");
}
inline QString chargeTitle() { return QStringLiteral("Paid result awaiting local save"); }
inline QString chargeNote() { return QStringLiteral("Retry downloads/saves this result without a new purchase."); }
inline QString submissionLost() {
  return QStringLiteral(
      "The answer to this request was lost. fal.ai may have accepted it and may charge for it. Check your fal.ai "
      "history "
      "before generating again.");
}
inline QString invalidManifest() { return QStringLiteral("Invalid recovery manifest."); }
inline QString noOutputs() { return QStringLiteral("The provider returned no outputs."); }
inline QString workspaceFolderGone() { return QStringLiteral("The workspace folder isn’t available."); }

// ---- Registration
inline QString shapeDiffers(const QString& model) {
  return QStringLiteral(
             "%1 returned a picture of a different shape from the one it was given, so its change could not be kept to "
             "the marked areas. The raw result is retained. Choose Save Raw Result to recover it without another "
             "generation charge.")
      .arg(model);
}
inline QString rawResultNote() {
  return QStringLiteral("Recovered original provider output. Marked-area confinement was not applied.");
}
inline QString extendedNotRead() { return QStringLiteral("The extended sound could not be read."); }
inline QString extendedNotJoined() { return QStringLiteral("The extended sound could not be joined."); }
inline QString markedImageUnreadable() { return QStringLiteral("Cannot read the image to mark up."); }
inline QString marksCannotBePrepared() { return QStringLiteral("Cannot draw the marks."); }
inline QString notMedia(const QString& kind, const QString& place) {
  return QStringLiteral("The result is not a picture, a clip or a sound (%1). It is kept at %2.").arg(kind, place);
}
inline QString layUnderDone(const QString& clip, const QString& file) {
  return QStringLiteral("The sound for “%1” is ready: %2").arg(clip, file);
}
inline QString layUnderFailed(const QString& clip, const QString& error) {
  return QStringLiteral("The sound for “%1” is in the gallery, but it could not be laid under the clip: %2")
      .arg(clip, error);
}

// ---- Cancelling and trying again
inline QString stillStopping() { return QStringLiteral("This job is still stopping. Retry in a moment."); }
inline QString alreadySaved() {
  return QStringLiteral("This job already saved outputs. Create a new generation to run it again.");
}
inline QString mayBeChargedTwice() {
  return QStringLiteral("fal.ai may have charged for the failed request. Generate again?");
}
inline QString cancelledLocally() {
  return QStringLiteral("Cancelled locally; remote processing may still be billed.");
}
inline QString cancellationRequested() { return QStringLiteral("Cancellation requested from provider"); }
inline QString alreadyFinishedRemotely() {
  return QStringLiteral(
      "Stopped locally. The job had already finished; Retry fetches its result without a new purchase.");
}
inline QString stoppedLocally(const QString& error) {
  return QStringLiteral("Stopped locally. Remote cancellation: %1").arg(error);
}

// ---- What became of a cancelled request that credits pay for
inline QString cancelledFree() { return QStringLiteral("Cancelled. No credits were charged."); }
inline QString cancelledCharged() {
  return QStringLiteral("Cancelled here, but the model had already finished the work, so it was charged.");
}
inline QString cancelledHeld() {
  return QStringLiteral(
      "Cancelled here. The model had already started; its credits are held until it stops or finishes.");
}
inline QString fetchingResult() { return QStringLiteral("The model had finished: fetching the result…"); }
inline QString salvaged() {
  return QStringLiteral("Cancelled, but the model had already finished, so it was charged. The result is in Trash.");
}
inline QString salvagedNotice() {
  return QStringLiteral(
      "A job you cancelled had already finished, so its credits were spent. The result is in Trash: restore it from "
      "there if you want it.");
}
inline QString notFetched() {
  return QStringLiteral(
      "Cancelled here, but the model had already finished the work, so it was charged. Its result could not be "
      "fetched.");
}

}  // namespace sorvan::generation::texts
