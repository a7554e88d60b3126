#pragma once

#include "shell/room.h"

#include <QObject>
#include <QString>
#include <QUuid>

#include <optional>
#include <utility>
#include <vector>

#include "shell/alerts_presenter.h"
#include "shell/pay_with_display.h"

namespace sorvan::shell {

class ModelBrowserPresenter;
class ReferencesPresenter;

// Something that a model takes or makes beyond words and a picture: an icon and what it stands for.
struct ModelAbility {
  QString iconName;
  QString number;  // beside the icon, or empty
  QString text;    // “Takes up to 8 reference images”
  bool operator==(const ModelAbility&) const = default;
};

// What a model of the picker looks like. `key` chooses it.
struct ModelChoice {
  QString key;
  QString id;
  QString name;
  QString kindText;  // “Image”, “Video”, “Voice”, “Music”, “Sound effect”
  QString summary;
  QString badge;  // “Top rated”, “New”, or empty
  bool chosen = false;
  std::vector<ModelAbility> abilities = {};
  QString price = {};      // “$0.04 / image”, “Price unavailable”, or empty while it is not known
  QString priceDate = {};  // “as of 21 Nov 2026”, or empty
  QString unsuitable = {};  // why it cannot take what is attached: drawn dimmed with this in the summary's place
  bool removable = false;
};

// A tab of the picker with its models. Those that allow several combine with one another, the rest stand alone.
struct ModelSection {
  QString title;
  bool severalAllowed = false;
  std::vector<ModelChoice> models;
  // What stands in the place of models, when there are none.
  QString emptyTitle = {};
  QString emptyText = {};
  int browserCategory = -1;  // of the browser, where more of them are found; -1: nowhere
};

struct RatioChoice {
  QString size;   // the key that `chooseSize` takes
  QString ratio;  // “16:9”
  QString name;   // “Landscape”
  int width = 1;
  int height = 1;
  bool offered = true;  // false: drawn dimmed, some chosen model refuses it
  bool chosen = false;
};

struct LengthChoice {
  QString value;  // what `chooseLength` takes
  QString label;  // “5 s”, “Auto”
  bool chosen = false;
};

// A picture that goes along with the prompt.
struct AttachedReference {
  QUuid id;
  QString name;           // “@Tin”
  QString role;           // “Product”
  QString thumbnailPath;  // may be empty or name a file that is missing
  QString filePath;
  int marks = 0;          // areas that are marked on it
  QString marksLabel;     // “2 marks”; empty without any
  bool operator==(const AttachedReference&) const = default;
};

// The lengths of one of several models.
struct LengthRow {
  QString modelId;  // what `chooseLengthOf` takes
  QString modelName;
  std::vector<LengthChoice> lengths;
};

// A setting that the chosen models have in common, beyond shape, count, length and seed.
struct SettingChoices {
  QString field;  // what `chooseSetting` takes
  QString label;  // “Resolution”
  std::vector<LengthChoice> values;
};

// A line above the controls, with what can be done about it.
struct ComposerNotice {
  ComposerNotice(QString words, std::vector<QString> titles = {}, AlertTone howGrave = AlertTone::warning)
      : text(std::move(words)), buttons(std::move(titles)), tone(howGrave) {}
  QString text;
  std::vector<QString> buttons;
  AlertTone tone = AlertTone::warning;
  bool operator==(const ComposerNotice&) const = default;
};

// A place for what is made.
struct ComposerDestination {
  std::optional<QUuid> project;  // none: the Inbox
  QString name;
  bool chosen = false;
};

// A prompt that was saved, or used lately.
struct PastPrompt {
  QUuid saved;  // null: not saved, only used
  QString title;
  QString text;
};

// Everything that the dock draws beside the prompt.
struct ComposerDisplay {
  QString placeholder;
  QString modelLabel;  // “Select Model”, the name, “{n} models”
  QString ratioLabel;  // “16:9”, or “set by model”
  QString ratioTooltip;
  bool ratioShown = true;
  bool ratioFixed = false;  // the chip opens nothing
  bool ratioRefused = false;  // some chosen model does not make it
  std::vector<RatioChoice> ratios;
  QString countLabel;   // “1 image”
  QString countSuffix;  // “per model”, or empty
  QString countTooltip;
  bool countShown = true;
  int count = 1;
  int countMaximum = 4;
  bool lengthShown = false;
  QString lengthLabel;  // “5 s”
  QString lengthTooltip;
  QString lengthTitle;  // “Video Length”, or “Length” for a sound
  QString lengthFoot;
  QString lengthValue = {};  // beside the label, when the models differ: “5 s, 6 s”
  std::vector<LengthChoice> lengths;  // for the model, or for all of several models
  QString sharedLength = {};          // what all of several models have, or “Different lengths”
  QString lengthNote = {};            // why there is no length for all of them
  std::vector<LengthRow> lengthRows;  // each of several models; empty with one
  std::vector<SettingChoices> settings = {};
  bool settingsOffered = false;  // there is something to show in the settings strip
  bool settingsShown = false;    // and it is open
  bool seedShown = true;
  QString seedText;
  QString seedTooltip;
  QString seedDetail;
  QString destination;  // the project, or “Inbox”
  QString payer = {};   // “Pay with Credits”; empty where there is nothing to choose or to say
  PayWithDisplay payWith = {};
  bool ownKeyPays = true;
  bool command = false;       // the text is a command to the library
  QString commandLabel = {};  // what it is understood as: “Find media”
  QString review = {};        // “Review: …”: what an interpreter made of the command, until it is run
  bool interpretOffered = false;  // commands that are not understood can be sent to an interpreter
  bool interprets = false;        // and are
  bool audio = false;   // the composer of sounds
  QString estimate;     // “≈ $0.060” beside the button that spends it, or empty: no figure rather than a false one
  QString estimateSpoken = {};  // for those who do not see it
  QString estimateTooltip;
  QString submitTitle;  // “Generate”, “Generate & Compare”
  QString submitTooltip;
  bool submitEmphasised = false;  // false with an empty prompt: drawn as secondary, pressing does nothing
  bool submitBusy = false;        // an answer is awaited: pressing does nothing
  std::vector<AttachedReference> references;  // in the order in which they are sent
  std::vector<ComposerNotice> notices;  // above the controls, top to bottom
  bool expanded = false;
};

// Characters of a prompt after which nothing more can be pasted or dropped: each key lays its line out anew.
constexpr qsizetype longestPastedPrompt = 32'000;

// The line at the foot of the dock. Errors stay until replaced; notes leave after five seconds.
struct MessageLine {
  QString text;  // empty: nothing is shown
  bool isError = false;
};

// What the dock asks for. The draft itself belongs to the text field: it is told here at each keystroke and comes back
// only when code replaced it. Main thread.
class ComposerPresenter : public QObject {
  Q_OBJECT

 public:
  explicit ComposerPresenter(QObject* parent = nullptr) : QObject(parent) {}

  virtual ComposerDisplay display() const = 0;
  // The tabs of what is being composed: pictures and clips, or sounds.
  virtual std::vector<ModelSection> modelSections() const = 0;
  // Where more models are found; null where they cannot be added.
  virtual ModelBrowserPresenter* browser() { return nullptr; }
  // Where pictures come from and what they are called; null where none can be attached.
  virtual ReferencesPresenter* references() { return nullptr; }
  virtual MessageLine message() const = 0;
  virtual QString draft() const = 0;

  virtual void editDraft(const QString& text) = 0;
  // A text was not taken into the prompt, which would have had so many characters with it.
  virtual void refusePaste(qsizetype characters) { Q_UNUSED(characters) }
  virtual void chooseOnlyModel(const QString& key) = 0;
  virtual void setModelChosen(const QString& key, bool chosen) = 0;
  // The picker opens: prices are brought up to date.
  virtual void showModels() {}
  virtual void chooseSize(const QString& size) = 0;
  virtual void chooseCount(int count) = 0;
  virtual void chooseLength(const QString& value) = 0;
  // The length of one of several models, by its id.
  virtual void chooseLengthOf(const QString& model, const QString& value) { Q_UNUSED(model) Q_UNUSED(value) }
  // An empty value leaves the setting to the model.
  virtual void chooseSetting(const QString& field, const QString& value) { Q_UNUSED(field) Q_UNUSED(value) }
  virtual void setSettingsShown(bool shown) { Q_UNUSED(shown) }
  virtual void editSeed(const QString& text) = 0;
  virtual void rollSeed() = 0;
  virtual void setExpanded(bool expanded) = 0;
  virtual void focus() = 0;
  // Chooses the first sound model and asks for the focus.
  virtual void startAudio() = 0;
  // Back to the pictures and clips: the models that were chosen for them last.
  virtual void startImages() = 0;
  virtual void submit() = 0;
  // Turns the text field to commands to the library, and back to the prompt, which waits meanwhile.
  virtual void setCommandMode(bool command) { Q_UNUSED(command) }
  // Whether commands that are not understood go to the interpreter.
  virtual void setInterprets(bool interprets) { Q_UNUSED(interprets) }
  // A button of a notice was pressed; one that is not shown any more does nothing.
  virtual void performNotice(const QString& text, int button) { Q_UNUSED(text) Q_UNUSED(button) }
  // The Inbox and the projects.
  virtual std::vector<ComposerDestination> destinations() const { return {}; }
  virtual void payWithOwnKey(bool ownKey) { Q_UNUSED(ownKey) }
  // Where credits are bought.
  virtual void showAccount() {}
  virtual void chooseDestination(std::optional<QUuid> project) { Q_UNUSED(project) }
  // The user turned to something else: what was typed goes to the disk now.
  virtual void keyboardLeft() {}
  // Saved prompts before those that were used lately, each text once.
  virtual std::vector<PastPrompt> pastPrompts() const { return {}; }
  // Puts the prompt in place of the draft, which comes back with Undo.
  virtual void usePastPrompt(const QString& text) { Q_UNUSED(text) }
  virtual void savePrompt() {}
  virtual void forgetSavedPrompt(QUuid saved) { Q_UNUSED(saved) }
  virtual void clear() = 0;
  // Takes the recipe of this item or job over: prompt, model, settings and references, without the seed. What stood in
  // the composer comes back with Undo.
  virtual void reusePrompt(QUuid itemOrJob) = 0;
  // Takes over the seed alone; nothing happens where none is known.
  virtual void useSeed(QUuid itemOrJob) { Q_UNUSED(itemOrJob) }
  virtual void copyPrompt(QUuid itemOrJob) { Q_UNUSED(itemOrJob) }
  // Makes this picture the first reference, and chooses a model that takes pictures where none is chosen.
  virtual void useAsReference(QUuid item) = 0;
  // The same for one picture; several are attached behind what is there, in their order.
  virtual void useAsReferences(const std::vector<QUuid>& items) {
    for (const QUuid& item : items) useAsReference(item);
  }
  virtual void detachReference(QUuid item) = 0;
  // Takes the marks away; their picture stays attached.
  virtual void removeMarks() = 0;
  // Asks for the view in which the marks of this picture are drawn.
  virtual void openMarks(QUuid item) = 0;

 Q_SIGNALS:
  void changed();
  void messageChanged();
  // Code replaced the draft: the field takes this text over.
  void draftReplaced(const QString& text);
  void focusRequested();
  void marksRequested(QUuid item);
  // The lengths of several models are to be chosen.
  void lengthsRequested();
};

}  // namespace sorvan::shell
