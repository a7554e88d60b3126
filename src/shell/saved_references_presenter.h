#pragma once

#include "shell/references_presenter.h"

#include "composer/saved_references.h"

namespace sorvan::shell {

// A saved reference on its page.
struct ReferenceCard {
  QUuid id;
  QString handle;    // “@Maya”
  QString kind;      // “Character”; empty for the kind that means nothing
  QString line;      // “a young woman in a long red coat · 4 images”
  QString problem;   // why it cannot be attached; empty when it can
  std::vector<std::pair<QString, QString>> pictures;  // thumbnail and file of the first four
  QString accessibleName;
  bool operator==(const ReferenceCard&) const = default;
};

enum class ReferenceScope { project, global };

struct ReferencePage {
  QString title;      // “Global References”
  QString countText;  // “9 references”
  QString hint;
  QStringList kinds;  // “All”, “Character”…
  std::vector<ReferenceCard> cards;
  QString emptyTitle;
  QString emptyText;
};

// The field of the editor that a failure concerns.
enum class ReferenceField { none, name, scope, subject, images };
struct ReferenceProblem {
  ReferenceField field = ReferenceField::none;
  QString text;
};

// A place to which a reference can be moved.
struct ReferencePlace {
  std::optional<QUuid> project;  // none: global
  QString name;
};

// The saved references of the library: their pages and their editor. Main thread.
class SavedReferencesPresenter : public QObject {
  Q_OBJECT

 public:
  explicit SavedReferencesPresenter(QObject* parent = nullptr) : QObject(parent) {}

  // `kind` is one of the page's kinds, “All” or empty for every one.
  virtual ReferencePage page(ReferenceScope scope, const QString& kind, const QString& search) const = 0;

  // Attaches it to the prompt and turns to the prompt.
  virtual void attach(QUuid reference) = 0;
  virtual void remove(QUuid reference) = 0;
  virtual std::vector<ReferencePlace> places(QUuid reference) const = 0;
  virtual void moveTo(QUuid reference, std::optional<QUuid> project) = 0;

  // ---- The editor
  virtual SavedReferenceDraft newDraft(ReferenceScope scope, const std::vector<QUuid>& items) const = 0;
  // Nothing when the reference is gone.
  virtual std::optional<SavedReferenceDraft> draftOf(QUuid reference) const = 0;
  // The project that a draft can belong to beside being global: its own, or the one that is open.
  virtual std::optional<ReferencePlace> projectFor(const SavedReferenceDraft& draft) const = 0;
  // What must be typed in a prompt for that name; empty for a name that gives none.
  virtual QString handleOf(const QString& name) const = 0;
  virtual ReferenceTile tileOf(QUuid item) const = 0;
  virtual std::vector<ReferenceTile> pictures(const QString& search) const = 0;
  // Nothing: it is saved. Else what is wrong, and nothing has changed.
  virtual std::optional<ReferenceProblem> save(const SavedReferenceDraft& draft) = 0;
  // Pictures of the selection that a new reference can be made from.
  virtual std::vector<QUuid> usableSelection() const = 0;
  // Asks for the editor of a new reference with the selected pictures.
  virtual void saveSelection() = 0;

 Q_SIGNALS:
  void changed();
  // The editor is to open with this.
  void editorRequested(const sorvan::composer::SavedReferenceDraft& draft);
};

}  // namespace sorvan::shell
