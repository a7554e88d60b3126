// Every sentence of the model catalogue and its provider that a user may read.
#pragma once

#include <QString>
#include <QStringList>

namespace sorvan::catalogue::texts {

// Models that are read from their published settings
inline QString noUsableSettings(const QString& model) {
  return QStringLiteral("The model provider has not published usable settings for %1.").arg(model);
}
inline QString returnsNoPicture(const QString& model) {
  return QStringLiteral("%1 does not return an image or a video.").arg(model);
}
inline QString needsUnknownInputs(const QString& model, const QStringList& fields) {
  return QStringLiteral("%1 needs inputs Sorvan cannot supply yet: %2.")
      .arg(model, fields.join(QStringLiteral(", ")));
}
inline QString durationLabel() { return QStringLiteral("Duration"); }
inline QString resolutionLabel() { return QStringLiteral("Resolution"); }
inline QString qualityLabel() { return QStringLiteral("Quality"); }
inline QString upscaleLabel() { return QStringLiteral("Upscale by"); }
inline QString soundLabel() { return QStringLiteral("Sound"); }
inline QString draftLabel() { return QStringLiteral("Draft preview"); }
// Request bodies
inline QString textNeeded(const QString& model, const QString& label) {
  return QStringLiteral("%1 needs %2.").arg(model, label.toLower());
}
inline QString noEndFrame(const QString& model) {
  return QStringLiteral("%1 does not accept an end frame.").arg(model);
}
inline QString tooManyOutputs(const QString& model, int most) {
  return QStringLiteral("%1 returns at most %2 %3 per request.")
      .arg(model, QString::number(most), most == 1 ? QStringLiteral("output") : QStringLiteral("outputs"));
}
inline QString unsupportedSize() { return QStringLiteral("Unsupported image size."); }
inline QString supportedRatios(const QString& model, const QStringList& ratios) {
  return QStringLiteral("%1 supports these ratios: %2.").arg(model, ratios.join(QStringLiteral(", ")));
}
inline QString noReferences(const QString& model) {
  return QStringLiteral("%1 does not accept reference images.").arg(model);
}
inline QString needsAtLeastOneInput(const QString& model) {
  return QStringLiteral("%1 needs at least one input image.").arg(model);
}
inline QString needsMoreInputs(const QString& model, int fewest) {
  return QStringLiteral("%1 needs at least %2 input images.").arg(model, QString::number(fewest));
}
inline QString needsEndFrame(const QString& model) { return QStringLiteral("%1 needs an end frame.").arg(model); }
inline QString acceptsOneInput(const QString& model) {
  return QStringLiteral("%1 accepts one input image.").arg(model);
}
inline QString needsInput(const QString& model) { return QStringLiteral("%1 needs an input image.").arg(model); }
inline QString dialogueNeedsNames() {
  return QStringLiteral("Start each line with a voice’s name and a colon, such as “Aria: Did you hear that?”");
}
inline QString unknownDialogueVoice(const QString& name) {
  return QStringLiteral("“%1” is not one of this model’s voices. Start each line with a voice’s name, such as “Aria:”.")
      .arg(name);
}

// Replies
inline QString invalidServerResponse() { return QStringLiteral("Invalid server response."); }
inline QString invalidProviderResponse() { return QStringLiteral("Invalid provider response."); }
inline QString missingJobInformation() { return QStringLiteral("Missing provider job information."); }
inline QString unexpectedAddress() { return QStringLiteral("Unexpected provider job URL."); }
inline QString unexpectedState(const QString& state) {
  return QStringLiteral("Unexpected fal.ai job state: %1").arg(state);
}
inline QString providerError(int status, const QString& detail) {
  return QStringLiteral("Provider error %1: %2").arg(QString::number(status), detail);
}
inline QString keyRefused(int status, const QString& detail) {
  return QStringLiteral(
             "fal.ai refused your key for this request (%1: %2). Check that the key is still valid, that it may use "
             "this model, and that your fal.ai balance is not empty. Or switch the payment method to Sorvan Credits.")
      .arg(QString::number(status), detail);
}
inline QString noOutputs() { return QStringLiteral("The provider returned no outputs."); }
inline QString invalidOutputAddress() { return QStringLiteral("Invalid output URL."); }
inline QString downloadFailed() {
  return QStringLiteral(
      "The completed result could not be downloaded. Retry reconnects to the saved provider request.");
}
inline QString tooLong() {
  return QStringLiteral("The request is taking longer than expected. Retry will reconnect to the existing fal.ai job.");
}
inline QString modelGone() {
  return QStringLiteral("This fal.ai model is no longer in your model list. Add it again from Browse Models.");
}
inline QString keyMissing() {
  return QStringLiteral("Add your fal.ai key under Settings → fal.ai Key, or switch Pay With to Sorvan Credits.");
}
inline QString uploadRefused() { return QStringLiteral("fal.ai did not accept the reference upload."); }

// Progress
inline QString waiting() { return QStringLiteral("Waiting for fal.ai"); }
inline QString queued() { return QStringLiteral("Queued at fal.ai"); }
inline QString generating() { return QStringLiteral("Generating…"); }
inline QString downloading() { return QStringLiteral("Provider completed · downloading result"); }
inline QString uploading(qsizetype index, qsizetype count) {
  return QStringLiteral("Uploading reference %1 of %2").arg(QString::number(index), QString::number(count));
}
inline QString listedPriceNote(const QString& unitPrice, const QString& unit) {
  return QStringLiteral("Estimated from fal.ai's listed price of $%1 per %2. Your account's actual charge may differ.")
      .arg(unitPrice, unit);
}

inline QString pricesTimedOut() { return QStringLiteral("The list of prices did not come in time."); }
inline QString outputOnlyNote() {
  return QStringLiteral(
      "Output-only estimate at recorded list prices. Input text and reference-image charges are excluded; original "
      "usage is unavailable.");
}
inline QString openAIGuide() { return QStringLiteral("https://platform.openai.com/docs/guides/image-generation"); }

// The gateway and credits
inline QString credits(const QString& count) {
  return count == QStringLiteral("1") ? QStringLiteral("1 credit") : QStringLiteral("%1 credits").arg(count);
}
inline QString invalidGateway() {
  return QStringLiteral("Use an HTTPS gateway URL, or HTTP on localhost for development.");
}
inline QString gatewayRefused() { return QStringLiteral("The Sorvan gateway could not complete this request."); }
inline QString gatewayUnreachable() { return QStringLiteral("The Sorvan gateway could not be reached."); }
inline QString requestFailed() { return QStringLiteral("Request failed."); }
inline QString stillProcessing() {
  return QStringLiteral("This request is still processing. Retry reconnects using the same request ID.");
}
inline QString requestIDMissing() { return QStringLiteral("Missing persisted credits request ID."); }
inline QString signInNeeded() {
  return QStringLiteral("Sign in under Settings → Account to use Sorvan Credits.");
}
inline QString otherAccount() {
  return QStringLiteral(
      "This request was made with another account. Sign in with that account to fetch its result.");
}
inline QString modelNotListed() {
  return QStringLiteral("This model is no longer in your model list. Add it again from More Models.");
}
inline QString lengthNeeded() {
  return QStringLiteral(
      "Choose a length for this video with the Length control under the prompt. Credits are charged by the second, so "
      "the length has to be set before it runs.");
}
inline QString queuedWithCredits() { return QStringLiteral("Queued with Sorvan Credits"); }
inline QString paidDownloading() { return QStringLiteral("Paid · downloading result"); }
inline QString gatewayNoOutputs() {
  return QStringLiteral(
      "The gateway returned no outputs. Contact support with the request ID; do not start a new paid request to "
      "recover it.");
}
inline QString paidWith(const QString& amount) {
  return amount == QStringLiteral("1") ? QStringLiteral("Paid with 1 Sorvan Credit.")
                                       : QStringLiteral("Paid with %1 Sorvan Credits.").arg(amount);
}
inline QString noHandleToCancel() {
  return QStringLiteral("This provider does not support remote cancellation.");
}
inline QString unexpectedMediaHost() { return QStringLiteral("Unexpected media download host."); }
inline QString paidDownloadFailed() {
  return QStringLiteral(
      "The paid result could not be downloaded. Retry reconnects to this same result.");
}

// Reference media
inline QString unreadableReference() { return QStringLiteral("Cannot read a reference image."); }
inline QString referenceNotEncoded() { return QStringLiteral("Cannot encode reference."); }
inline QString clipNotSendable() { return QStringLiteral("This clip cannot be sent."); }
inline QString clipTooLong() { return QStringLiteral("This clip is too long to send. Trim it first."); }
inline QString soundNotSendable() { return QStringLiteral("This sound cannot be sent."); }
inline QString soundTooLong() { return QStringLiteral("This sound is too long to send. Trim it first."); }
inline QString noSoundTrack() { return QStringLiteral("The sound of this clip could not be taken out."); }

}  // namespace sorvan::catalogue::texts
