#pragma once

#include "shell/room.h"

#include <QImage>
#include <QObject>
#include <QSet>
#include <QStringList>
#include <QUuid>

#include "composer/mention_completion.h"

#include <optional>
#include <vector>

namespace sorvan::shell {

// Where the attach panel looks for pictures.
enum class ReferenceSource { gallery, project, global };

// A picture or a saved reference that can be attached.
struct ReferenceTile {
  QUuid id;
  bool isSaved = false;  // a saved reference, attached as a whole
  QString title;         // file name, or “@Tin”
  QString detail;        // “Product · 3 images”; empty for a picture
  QString thumbnailPath;
  QString filePath;
  bool attached = false;
  QString problem;  // why it cannot be attached; empty when it can
  bool operator==(const ReferenceTile&) const = default;
};

struct AttachPanel {
  QString countText;               // “2 of 8 attached”
  QStringList sources;             // in the order of ReferenceSource
  std::vector<ReferenceTile> tiles;
  QString emptyText;               // what to say without tiles
  QString inertText;               // why nothing can be attached now; empty when it can
  bool canSaveAttached = false;    // two or more, or one: there is something to keep under a name
  bool importing = false;
};

// One line of the list that opens after an @.
struct MentionChoice {
  QString handle;
  QString detail;  // “Product”, “Location · 3 images”, or empty
  QString thumbnailPath;
  QString filePath;
  std::optional<QUuid> saved;  // to be attached first
  bool operator==(const MentionChoice&) const = default;
};
struct MentionGroup {
  QString heading;  // empty for what is attached
  std::vector<MentionChoice> choices;
  bool operator==(const MentionGroup&) const = default;
};
struct MentionOffer {
  TypedMention typed;
  std::vector<MentionGroup> groups;
  QString hint;  // stands in their place when there is nothing to offer at all
};

// The references of the prompt: where they come from, what they are called, and the names that are offered while one
// is typed. Failures are told in the composer's message line. Main thread.
class ReferencesPresenter : public QObject {
  Q_OBJECT

 public:
  explicit ReferencesPresenter(QObject* parent = nullptr) : QObject(parent) {}

  // ---- The panel
  // “2 of 8 attached”.
  virtual QString countText() const = 0;
  // Why no model that is chosen takes pictures; empty when they do.
  virtual QString inertText() const = 0;
  virtual AttachPanel attachPanel(ReferenceSource source, const QString& search) const = 0;
  // The source to open the panel with.
  virtual ReferenceSource firstSource() const = 0;

  // ---- Coming and going
  // Attaches the picture, or takes it off again.
  virtual void toggleItem(QUuid item) = 0;
  // Attaches pictures of the library; others among them are passed over. False: none of them can be.
  virtual bool attachItems(const std::vector<QUuid>& items) = 0;
  virtual void attachSaved(QUuid reference) = 0;
  // Imports the pictures among these files and attaches them.
  virtual void importFiles(const QStringList& paths) = 0;
  virtual void importPicture(const QImage& picture) = 0;
  virtual bool isImporting() const = 0;
  virtual void cancelImport() = 0;
  virtual void detach(QUuid item) = 0;
  // Place in the order of upload, from 0.
  virtual void move(QUuid item, int place) = 0;
  // False after a failure; then nothing has changed.
  virtual bool rename(QUuid item, const QString& label) = 0;
  // The parts that a picture can have now, “Generic” last.
  virtual QStringList roles() const = 0;
  virtual QString roleOf(QUuid item) const = 0;
  virtual void setRole(QUuid item, const QString& role) = 0;

  // ---- Mentions
  // What to offer for the mention that ends at the cursor; nothing when there is none, or no name begins like it.
  virtual std::optional<MentionOffer> mentionOffer(const QString& text, qsizetype cursor) const = 0;
  // Makes the choice mentionable: attaches a saved reference. The name to insert, or nothing after a failure.
  virtual std::optional<QString> takeMention(const MentionChoice& choice) = 0;
  // The keys of the names that the prompt may mention.
  virtual QSet<QString> mentionableNames() const = 0;

  // ---- Keeping what is attached under a name
  virtual void saveAttached() = 0;
  virtual void openSaved(bool ofProject) = 0;

 Q_SIGNALS:
  // References, their names, what can be attached, or whether an import runs.
  void changed();
  void importingChanged();
  // An editor for a new saved reference is to open with these pictures.
  void saveRequested(const std::vector<QUuid>& items);
};

}  // namespace sorvan::shell
