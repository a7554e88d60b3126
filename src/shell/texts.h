#pragma once

#include "shell/room.h"

#include <QString>

// Every text of the shell that a person reads stands here, so that wording changes in one place.
namespace sorvan::shell::texts {

inline const QString applicationName = QStringLiteral("Sorvan Studio");
inline const QString sandboxSuffix = QStringLiteral(" (sandbox)");

// Menus
inline const QString fileMenu = QStringLiteral("File");
inline const QString editMenu = QStringLiteral("Edit");
inline const QString viewMenu = QStringLiteral("View");
inline const QString itemMenu = QStringLiteral("Item");
inline const QString generateMenu = QStringLiteral("Generate");
inline const QString helpMenu = QStringLiteral("Help");
inline const QString newAudio = QStringLiteral("New Audio");
inline const QString openAnotherWorkspace = QStringLiteral("Open Another Workspace…");
inline const QString settingsItem = QStringLiteral("Settings…");
inline const QString quit = QStringLiteral("Quit");
inline const QString undo = QStringLiteral("Undo");
inline const QString redo = QStringLiteral("Redo");
inline QString undoNamed(const QString& name) { return QStringLiteral("Undo %1").arg(name); }
inline QString redoNamed(const QString& name) { return QStringLiteral("Redo %1").arg(name); }
inline const QString aboutUndoItem = QStringLiteral("About Undo and Redo…");
inline const QString aboutUndoTitle = QStringLiteral("About Undo and Redo");
inline const QString aboutUndo = QStringLiteral(
    "Text fields use their own editing history. Library Undo covers local edits, imports, copies, moves, curation, "
    "references, contact sheets and project changes. Imported/copied items go to Trash on Undo. History is kept for "
    "this session and workspace, up to 100 actions and 16 MB. It pauses during generation, import, export and backup. "
    "Purchases, provider generations and Empty Trash cannot be undone.");
inline const QString cut = QStringLiteral("Cut");
inline const QString copy = QStringLiteral("Copy");
inline const QString paste = QStringLiteral("Paste");
inline const QString selectAll = QStringLiteral("Select All");
inline const QString gallery = QStringLiteral("Gallery");
inline const QString history = QStringLiteral("History");
inline const QString back = QStringLiteral("Back");
inline const QString focusGenerationInput = QStringLiteral("Focus Generation Input");
inline const QString sidebar = QStringLiteral("Sidebar");
inline const QString inspector = QStringLiteral("Inspector");
inline const QString larger = QStringLiteral("Larger");
inline const QString smaller = QStringLiteral("Smaller");
inline const QString fullScreen = QStringLiteral("Full Screen");
inline const QString favorite = QStringLiteral("Favorite");
inline const QString reusePrompt = QStringLiteral("Reuse Prompt");
inline const QString useAsReference = QStringLiteral("Use as Reference");
inline const QString saveAsReference = QStringLiteral("Save as Reference…");
inline const QString markAreas = QStringLiteral("Mark Areas");
inline const QString showInFiles = QStringLiteral("Show in Files");
inline const QString retry = QStringLiteral("Retry");
inline const QString cancel = QStringLiteral("Cancel");
inline const QString show = QStringLiteral("Show");
inline const QString saveResult = QStringLiteral("Save Result");
inline const QString saveRawResult = QStringLiteral("Save Raw Result");
inline const QString submitAgain = QStringLiteral("Submit Again…");
inline const QString copyDetails = QStringLiteral("Copy Details");
inline const QString generate = QStringLiteral("Generate");
inline const QString chooseModels = QStringLiteral("Choose Models");
inline const QString clearTheComposer = QStringLiteral("Clear the Composer");
inline const QString keyboardShortcuts = QStringLiteral("Keyboard Shortcuts");
inline const QString about = QStringLiteral("About Sorvan Studio");
inline const QString moveToTrash = QStringLiteral("Move to Trash");
inline const QString restore = QStringLiteral("Restore");
inline const QString renameItem = QStringLiteral("Rename…");
inline const QString editNotes = QStringLiteral("Edit Notes…");
inline const QString moveToProject = QStringLiteral("Move to Project…");
inline const QString stepOnAfterMark = QStringLiteral("Step On After Rating");
inline QString status(const QString& name) { return QStringLiteral("Status: %1").arg(name); }
inline QString rating(int stars) {
  if (stars == 0) return QStringLiteral("No Rating");
  return stars == 1 ? QStringLiteral("1 Star") : QStringLiteral("%1 Stars").arg(stars);
}
inline QString aboutText(const QString& version) {
  return QStringLiteral("Version %1\nA local workspace for your AI-generated images and videos.").arg(version);
}

// Modes
inline const QString contactSheetMode = QStringLiteral("Contact Sheet");
inline const QString sequenceMode = QStringLiteral("Sequence");
inline const QString assetMode = QStringLiteral("Asset Detail");
inline const QString generationMode = QStringLiteral("Generation");
inline const QString lineageMode = QStringLiteral("Lineage");
inline const QString referencesMode = QStringLiteral("References");
inline const QString globalReferencesMode = QStringLiteral("Global References");
inline const QString contactSheetsMode = QStringLiteral("Contact Sheets");
inline const QString sequencesMode = QStringLiteral("Sequences");
inline const QString searchResultsMode = QStringLiteral("Search Results");
inline const QString costReportMode = QStringLiteral("Cost Report");

// Filters and orders
inline const QString modelFilter = QStringLiteral("Model");
inline const QString providerFilter = QStringLiteral("Paid with");
inline const QString statusFilter = QStringLiteral("Status");
inline const QString ratingFilter = QStringLiteral("Rating");
inline const QString orientationFilter = QStringLiteral("Orientation");
inline const QString dateFilter = QStringLiteral("Date");
inline const QString typeImages = QStringLiteral("Images");
inline const QString typeVideo = QStringLiteral("Video");
inline const QString typeAudio = QStringLiteral("Audio");
inline const QString anyModel = QStringLiteral("Any Model");
inline const QString anyProvider = QStringLiteral("Any Payment");
inline const QString anyStatus = QStringLiteral("Any Status");
inline const QString anyRating = QStringLiteral("Any Rating");
inline const QString anyOrientation = QStringLiteral("Any Orientation");
inline const QString anyTime = QStringLiteral("Any Time");
inline QString starsOrMore(int stars) {
  return stars == 5   ? QStringLiteral("5 Stars")
         : stars == 1 ? QStringLiteral("1 Star or More")
                      : QStringLiteral("%1 Stars or More").arg(stars);
}
inline const QString portrait = QStringLiteral("Portrait");
inline const QString landscape = QStringLiteral("Landscape");
inline const QString square = QStringLiteral("Square");
inline QString lastDays(int days) {
  return days == 1 ? QStringLiteral("Last Day") : QStringLiteral("Last %1 Days").arg(days);
}
inline const QString sortNewest = QStringLiteral("Newest");
inline const QString sortOldest = QStringLiteral("Oldest");
inline const QString sortRating = QStringLiteral("Rating");
inline const QString sortCostHigh = QStringLiteral("Cost High");
inline const QString sortCostLow = QStringLiteral("Cost Low");
inline const QString sortName = QStringLiteral("Name");
inline const QString searchMedia = QStringLiteral("Search Media");
inline const QString filters = QStringLiteral("Filters");

// Contact sheets
inline const QString chooseWorkspaceFirst = QStringLiteral("Choose a workspace first.");
inline const QString selectToCompare = QStringLiteral("Select 2–8 assets to compare.");
inline QString comparisonOf(qsizetype count) { return QStringLiteral("Comparison of %1 assets").arg(count); }
inline const QString newContactSheet = QStringLiteral("New Contact Sheet");
inline const QString changeContactSheet = QStringLiteral("Change Contact Sheet");
inline const QString deleteContactSheet = QStringLiteral("Delete Contact Sheet");
inline const QString restoreContactSheet = QStringLiteral("Restore Contact Sheet");

// Lineage
inline const QString lineageOriginal = QStringLiteral("Original");
inline const QString lineageImported = QStringLiteral("Imported");
inline const QString lineageShotSet = QStringLiteral("Shot Set");
inline const QString lineageDeleted = QStringLiteral("Deleted");

// Locations
inline const QString allMedia = QStringLiteral("All Media");
inline const QString recent = QStringLiteral("Recent");
inline const QString favorites = QStringLiteral("Favorites");
inline const QString inbox = QStringLiteral("Inbox");
inline const QString projects = QStringLiteral("Projects");
inline const QString everywhere = QStringLiteral("Everywhere");
inline QString activeCount(int count) { return QStringLiteral("%1 active").arg(count); }
inline QString generatingCount(int count) { return QStringLiteral("%1 generating").arg(count); }
inline const QString emptyGalleryTitle = QStringLiteral("Nothing here yet");
inline const QString emptyGalleryText =
    QStringLiteral("Describe an image, a clip or a sound below and press Generate.");
inline const QString emptyTrashTitle = QStringLiteral("Trash is empty");
inline const QString emptyTrashText =
    QStringLiteral("Items that you move to Trash are kept here until you restore them.");
inline const QString generations = QStringLiteral("Generations");
inline const QString inTrash = QStringLiteral("in Trash");
inline const QString clearFilters = QStringLiteral("Clear Filters");
inline const QString noMatchTitle = QStringLiteral("No media match these filters");
inline const QString noMatchText = QStringLiteral("Clear the filters or search for something else.");
inline const QString emptyFavoritesText = QStringLiteral("Items that you mark with a heart gather here.");
inline QString itemCount(const QString& number, qsizetype count) {
  return count == 1 ? QStringLiteral("1 item") : QStringLiteral("%1 items").arg(number);
}

// Welcome
inline const QString welcomeLine = QStringLiteral("A local workspace for your AI-generated images and videos.");
inline QString useFolder(const QString& folder) { return QStringLiteral("Use %1").arg(folder); }
inline const QString welcomeDefaultHelp =
    QStringLiteral("Creates a Sorvan folder in Pictures, or opens the one already there");
inline const QString chooseAnotherFolder = QStringLiteral("Choose Another Folder…");
inline const QString welcomeNote = QStringLiteral(
    "Your library stays in this folder. Generating and AI analysis send the selected prompt and references to the "
    "model "
    "provider.\nOrganising existing files needs no account or API key.");
inline const QString openWorkspaceButton = QStringLiteral("Open Workspace");
inline const QString openWorkspaceMessage = QStringLiteral("Choose a folder for your media and its Sorvan library.");

// Quitting
inline const QString quitTitle = QStringLiteral("Work is still in progress");
inline const QString quitText = QStringLiteral(
    "Quitting stops files that are being imported, exported or downloaded. AI generations may continue online and "
    "still "
    "cost credits or money. You can find saved generation requests in History.");
inline const QString quitUnsavedText = QStringLiteral(
    "Some changes haven’t been saved. Choose Keep Working, then open Workspace Health and choose Try Saving Again "
    "before "
    "quitting.\n\n");
inline const QString keepWorking = QStringLiteral("Keep Working");

// Alerts
inline const QString ok = QStringLiteral("OK");
inline const QString errorTitle = QStringLiteral("Something went wrong");
inline const QString trySavingAgain = QStringLiteral("Try Saving Again");
inline const QString unsavedBanner = QStringLiteral("Some changes haven’t been saved.");
inline const QString temporaryWorkspaceBanner = QStringLiteral(
    "This workspace is in a folder that the system clears on its own. Keep your library in another folder.");
inline const QString submitAgainTitle = QStringLiteral("Submit this request again?");
inline const QString submitAgainText = QStringLiteral(
    "The answer to this request was lost. fal.ai may have accepted it. If it did, submitting again means paying twice. "
    "Check your fal.ai history first.");
inline const QString submitAgainButton = QStringLiteral("Submit Again");
inline const QString chargedRetryTitle = QStringLiteral("Generate again?");

inline const QString trash = QStringLiteral("Trash");

// Trash and large changes
inline QString movedToTrash(qsizetype count) {
  return count == 1 ? QStringLiteral("Moved to Trash") : QStringLiteral("%1 items moved to Trash").arg(count);
}
inline const QString trashKeepsFiles =
    QStringLiteral("Files and provenance are retained. Restore them from Trash at any time.");
inline QString movedTo(qsizetype count, const QString& place) {
  return count == 1 ? QStringLiteral("Moved to %1").arg(place)
                    : QStringLiteral("%1 items moved to %2").arg(QString::number(count), place);
}
inline QString restoreQuestionTitle(qsizetype count) {
  return count == 1 ? QStringLiteral("Restore this item?") : QStringLiteral("Restore these %1 items?").arg(count);
}
inline QString savedReferenceCount(int count) {
  return count == 1 ? QStringLiteral("1 saved reference") : QStringLiteral("%1 saved references").arg(count);
}
inline QString contactSheetCount(int count) {
  return count == 1 ? QStringLiteral("1 contact sheet") : QStringLiteral("%1 contact sheets").arg(count);
}
inline const QString andBetween = QStringLiteral(" and ");
inline QString restoreQuestion(qsizetype count, const QString& places) {
  const QString held = count == 1 ? QStringLiteral("this item was in ") + places
                                  : QStringLiteral("these %1 items were in ").arg(count) + places;
  const QString them = count == 1 ? QStringLiteral("it") : QStringLiteral("them");
  return QStringLiteral("Before going to Trash, ") + held + QStringLiteral(". Restore Everywhere puts ") + them +
         QStringLiteral(" back there too. Gallery Only takes ") + them +
         QStringLiteral(" out of those, and removes a reference left with no images.");
}
inline const QString restoreEverywhere = QStringLiteral("Restore Everywhere");
inline const QString restoreToGalleryOnly = QStringLiteral("Restore to Gallery Only");
inline const QString tooLargeToUndoTitle = QStringLiteral("This change is too large to undo");
inline QString tooLargeToUndo(qsizetype count) {
  return QStringLiteral(
             "It changes %1 items, which is more than the history can keep. Neither this change nor the steps before "
             "it can be undone afterwards.")
      .arg(count);
}
inline const QString continueAnyway = QStringLiteral("Continue");
inline QString nameAndPath(const QString& name, const QString& path) {
  return QStringLiteral("%1 (%2)").arg(name, path);
}

// Workspace Health
inline const QString workspaceHealth = QStringLiteral("Workspace Health");
inline const QString workspaceHealthItem = QStringLiteral("Workspace Health…");
inline const QString openWorkspaceHealth = QStringLiteral("Open Workspace Health");
inline const QString healthChecking = QStringLiteral("Checking this workspace…");
inline const QString healthCheckingLine =
    QStringLiteral("Looking for missing files and information that can be recovered.");
inline const QString healthFailed = QStringLiteral("The check couldn’t finish. Choose Check Again to retry.");
inline const QString healthNoRepairs = QStringLiteral("No repairs needed");
inline QString healthAreas(int count) {
  return count == 1 ? QStringLiteral("1 area to review") : QStringLiteral("%1 areas to review").arg(count);
}
inline const QString savedInformation = QStringLiteral("Saved workspace information");
inline const QString healthNoIssues = QStringLiteral("No issues");
inline const QString healthNeedsAttention = QStringLiteral("Needs attention");
inline QString savedCount(std::size_t count) {
  return count == 0 ? QStringLiteral("None saved") : QStringLiteral("%1 saved").arg(count);
}
inline const QString healthSaved = QStringLiteral("Your pending changes have been saved.");
inline const QString healthStillUnsaved =
    QStringLiteral("Some changes still couldn’t be saved. Check the details below before closing Sorvan.");
inline const QString healthFoot = QStringLiteral(
    "This checks files and information Sorvan knows about. It can’t always tell whether details were never saved or "
    "were removed. A workspace backup is still the best way to recover lost information.");
inline const QString checkAgain = QStringLiteral("Check Again");
inline const QString done = QStringLiteral("Done");

// Jobs
inline const QString waitingToStart = QStringLiteral("Waiting to start");
inline const QString noGenerations = QStringLiteral("No generations yet");
inline const QString segmentAll = QStringLiteral("All");
inline const QString segmentInProgress = QStringLiteral("In progress");
inline const QString segmentFailed = QStringLiteral("Failed");
inline const QString segmentCancelled = QStringLiteral("Cancelled");
inline const QString segmentComplete = QStringLiteral("Complete");
inline const QString groupToLookAt = QStringLiteral("To look at");
inline const QString today = QStringLiteral("Today");
inline const QString yesterday = QStringLiteral("Yesterday");
inline const QString generationFailed = QStringLiteral("Generation failed");
inline const QString generationCancelled = QStringLiteral("Generation cancelled");
inline const QString generationRunning = QStringLiteral("Generating");
inline const QString generationQueued = QStringLiteral("Waiting to start");
inline const QString generationComplete = QStringLiteral("Generation complete");
inline const QString detailsCopied = QStringLiteral("Details copied");

// Inspector
inline const QString promptSection = QStringLiteral("Prompt");
inline const QString madeWithSection = QStringLiteral("Made with");
inline const QString requestSection = QStringLiteral("Request");
inline const QString fileSection = QStringLiteral("File");
inline const QString modelLabel = QStringLiteral("Model");
inline const QString ratioLabel = QStringLiteral("Ratio");
inline const QString seedLabel = QStringLiteral("Seed");
inline const QString costLabel = QStringLiteral("Cost");
inline const QString tookLabel = QStringLiteral("Took");
inline const QString paidWithLabel = QStringLiteral("Paid with");
inline const QString savedToLabel = QStringLiteral("Saved to");
inline const QString requestLabel = QStringLiteral("Request");
inline const QString jobLabel = QStringLiteral("Job");
inline const QString pathLabel = QStringLiteral("Path");
inline const QString lengthLabel = QStringLiteral("Length");
inline QString severalItems(const QString& count) { return QStringLiteral("%1 items selected").arg(count); }
inline const QString nothingSelected = QStringLiteral("Nothing selected");

// Composer
inline const QString imagePlaceholder = QStringLiteral("Describe an image or a clip.");
inline const QString voicePlaceholder = QStringLiteral("Type what the voice should say, word for word.");
inline const QString musicPlaceholder = QStringLiteral(
    "Describe the music: mood, instruments, tempo. For example: warm acoustic guitar and soft piano, slow, hopeful.");
inline const QString effectPlaceholder =
    QStringLiteral("Describe the sound. For example: heavy rain on a tin roof, distant thunder.");
inline const QString selectModel = QStringLiteral("Select Model");
inline const QString generateAndCompare = QStringLiteral("Generate & Compare");
inline const QString waitingForKey = QStringLiteral("Waiting for the key store to answer.");
inline const QString emptyPromptTooltip = QStringLiteral("Enter a prompt first.");
inline const QString setByModel = QStringLiteral("set by model");
inline QString ratioTooltip(const QString& name) {
  return QStringLiteral("Aspect ratio: %1. Ratios must be supported by every selected model.").arg(name);
}
inline const QString noModelForThis =
    QStringLiteral("No model for this is available. Add one from the model picker in the composer.");
inline const QString markedItemGone = QStringLiteral("The marked picture is no longer in the library.");
inline QString marksCount(int count) {
  return count == 1 ? QStringLiteral("1 mark") : QStringLiteral("%1 marks").arg(count);
}
inline QString boxesCount(int count) {
  return count == 1 ? QStringLiteral("1 box") : QStringLiteral("%1 boxes").arg(count);
}
inline const QString markedAreas = QStringLiteral("Marked areas");
inline QString ratioNotice(const QString& name, const QString& ratio) {
  return QStringLiteral("%1 · %2 isn’t supported by every selected model. Choose a compatible ratio below.")
      .arg(name, ratio);
}
inline QString imageCount(int count) {
  return count == 1 ? QStringLiteral("1 image") : QStringLiteral("%1 images").arg(count);
}
inline QString clipCount(int count) {
  return count == 1 ? QStringLiteral("1 clip") : QStringLiteral("%1 clips").arg(count);
}
inline const QString perModel = QStringLiteral("per model");
inline QString countTooltip(const QString& count, bool several) {
  return QStringLiteral("%1%2. A count written in your prompt takes precedence.")
      .arg(count, several ? QStringLiteral(" per model") : QString());
}
inline const QString videoLength = QStringLiteral("Video Length");
inline const QString soundLength = QStringLiteral("Length");
inline const QString lengthFoot =
    QStringLiteral("A longer video costs more. The estimate beside Generate follows these choices.");
inline const QString lengthTooltip = QStringLiteral("Length: how long the video will be. A longer video costs more.");
inline const QString soundLengthTooltip = QStringLiteral("Length: how long the sound will be.");
inline const QString seedTooltip =
    QStringLiteral("Seed: makes a result repeatable. Leave it empty for a different result each time.");
inline const QString seedDetail = QStringLiteral(
    "The same seed, prompt and settings give the same result on models that support it. Leave empty for a new result "
    "each "
    "time.");
inline QString queued(const QString& destination) {
  return QStringLiteral("Queued · outputs will be saved in %1.").arg(destination);
}
inline QString makingSound(const QString& what, const QString& model, const QString& destination) {
  return QStringLiteral("Making %1 with %2. It will appear in %3 when it is ready.").arg(what, model, destination);
}
inline const QString differentLengths = QStringLiteral("Different lengths");
inline const QString destinationGone = QStringLiteral("Destination project is unavailable.");
inline const QString selectAvailableModel = QStringLiteral("Select at least one available model.");
inline QString promptTooLong(const QString& model, int limit) {
  return QStringLiteral("%1 takes up to %2 characters. Shorten the text, or make it in parts.").arg(model).arg(limit);
}
inline QString textMissing(const QString& model, const QString& field) {
  return QStringLiteral("%1 also needs “%2”, which cannot be entered here yet. Choose another model.")
      .arg(model, field);
}
inline const QString theVoice = QStringLiteral("the voice");
inline const QString theMusic = QStringLiteral("the music");
inline const QString theEffect = QStringLiteral("the sound effect");
inline const QString kindVoice = QStringLiteral("Voice");
inline const QString kindMusic = QStringLiteral("Music");
inline const QString kindEffect = QStringLiteral("Sound effect");
inline const QString kindImage = QStringLiteral("Image");
inline const QString kindVideo = QStringLiteral("Video");
inline const QString kindAudio = QStringLiteral("Audio");

// Models and their prices
inline const QString imageTab = QStringLiteral("Image");
inline const QString editTab = QStringLiteral("Edit");
inline const QString videoTab = QStringLiteral("Video");
inline const QString animateTab = QStringLiteral("Animate");
inline const QString voiceTab = QStringLiteral("Voice");
inline const QString musicTab = QStringLiteral("Music");
inline const QString effectTab = QStringLiteral("Sound Effects");
inline const QString noEditors = QStringLiteral("No model for editing yet");
inline const QString noEditorsText = QStringLiteral("Add one that changes an image by instruction.");
inline const QString noImageModels = QStringLiteral("No image model yet");
inline const QString noVideoModels = QStringLiteral("No video model yet");
inline const QString noVideoModelsText = QStringLiteral("Add one that makes a clip from words.");
inline const QString noAnimators = QStringLiteral("No model for animating yet");
inline const QString noAnimatorsText = QStringLiteral("Add one that makes a clip from an image.");
inline const QString takesTextOnly = QStringLiteral("Takes text only");
inline const QString needsImage = QStringLiteral("Needs a reference image");
inline const QString takesEndFrame = QStringLiteral("Takes an end frame");
inline const QString makesSound = QStringLiteral("Makes sound with the clip");
inline QString takesReferences(int most) {
  if (most == 1) return QStringLiteral("Takes 1 reference image");
  return most > 1 ? QStringLiteral("Takes up to %1 reference images").arg(most)
                  : QStringLiteral("Takes reference images");
}
inline const QString priceUnavailable = QStringLiteral("Price unavailable");
inline QString pricePerUnit(const QString& amount, const QString& unit) {
  return QStringLiteral("%1 / %2").arg(amount, unit);
}
inline QString priceAsOf(const QString& date) { return QStringLiteral("as of %1").arg(date); }
inline const QString estimateTooltip = QStringLiteral(
    "Paid by your own fal.ai key. Estimated from fal.ai's list prices; your actual charge may differ.");

// Browsing models
inline const QString textToImage = QStringLiteral("Text to image");
inline const QString imageToImage = QStringLiteral("Image to image");
inline const QString textToVideo = QStringLiteral("Text to video");
inline const QString imageToVideo = QStringLiteral("Image to video");
inline const QString recommended = QStringLiteral("Recommended");
inline const QString searching = QStringLiteral("Searching…");
inline QString modelsFound(std::size_t count, bool more) {
  const QString models = count == 1 ? QStringLiteral("1 model") : QStringLiteral("%1 models").arg(count);
  return more ? QStringLiteral("%1 and more").arg(models) : models;
}
inline const QString showWholeCatalogue = QStringLiteral("Show the Whole Catalog");
inline const QString catalogueFailed = QStringLiteral("The catalog could not be read");
inline const QString noModelFound = QStringLiteral("No model found");
inline QString noModelFoundFor(const QString& words) {
  return QStringLiteral("Nothing in this category matches “%1”. Try another category.").arg(words);
}
inline const QString builtIn = QStringLiteral("Built in");
inline const QString added = QStringLiteral("Added");
inline const QString readingSettings = QStringLiteral("Reading this model's settings…");
inline const QString researchOnly = QStringLiteral("Research use only");
inline QString modelRemoved(const QString& name) { return QStringLiteral("%1 was removed.").arg(name); }
inline const QString catalogueNote =
    QStringLiteral("The list and each model's settings come from the model provider's public catalog.");

// Settings
inline const QString keyPage = QStringLiteral("fal.ai Key");

// States of items
inline const QString statusDraft = QStringLiteral("Draft");
inline const QString statusShortlist = QStringLiteral("Shortlist");
inline const QString statusApproved = QStringLiteral("Approved");
inline const QString statusFinal = QStringLiteral("Final");
inline const QString statusRejected = QStringLiteral("Rejected");
inline QString stars(int count) {
  return count == 1 ? QStringLiteral("1 star") : QStringLiteral("%1 stars").arg(count);
}
inline const QString favourite = QStringLiteral("favourite");
inline const QString stateQueued = QStringLiteral("Queued");
inline const QString stateRunning = QStringLiteral("Generating");
inline const QString stateFailed = QStringLiteral("Failed");
inline const QString stateCancelled = QStringLiteral("Cancelled");
inline const QString stateComplete = QStringLiteral("Complete");

}  // namespace sorvan::shell::texts
