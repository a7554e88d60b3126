// A command on its way through the remote interpreter, and the user's review of what came back.
#pragma once

#include <QObject>
#include <QSet>
#include <QString>
#include <QUuid>

#include <functional>
#include <optional>

#include "base/task_scope.h"
#include "composer/interpreter.h"

namespace sorvan::composer {

/// Idle, interpreting, then reviewed or idle again with a message. Nothing that comes back is ever executed by itself,
/// and nothing is kept that was made for another text, project or selection. Main thread.
class CommandReview final : public QObject {
  Q_OBJECT

 public:
  /// What a reply must still find when it arrives.
  struct Situation {
    QString draft;
    std::optional<QUuid> project;
    QSet<QUuid> selection;
    CommandContext context;
  };
  struct Ports {
    CommandInterpreter& interpreter;
    InterpretationBooks& books;
    std::function<Situation()> situation;
    std::function<void(const QString& text, bool isError)> report;
    std::function<QUuid()> newKey;
  };
  explicit CommandReview(Ports ports, QObject* parent = nullptr);

  bool isInterpreting() const { return interpreting_; }
  const std::optional<RemoteAppAction>& action() const { return action_; }
  const std::optional<SorvanIntent>& intent() const { return intent_; }
  const QSet<QUuid>& selection() const { return selection_; }

  /// Sends the present text. Does nothing while an interpretation is under way.
  void interpret();
  /// The draft was edited: whatever was understood no longer holds.
  void draftEdited();
  /// The destination or the references changed.
  void contextChanged();
  /// The selection changed. A reviewed action stays, so that Run can say why it does not run.
  void selectionChanged();
  /// The reviewed action was run or dropped.
  void clear();

  /// Stops an interpretation and resumes when it has ended.
  Task<> drain();

 Q_SIGNALS:
  void changed();

 private:
  Task<> run(Situation situation, std::stop_token stop);
  Task<> ask(Situation situation, std::stop_token stop);
  Task<Interpretation> answerTo(Situation situation, QUuid key, std::stop_token stop);
  void take(const Situation& situation, quint64 revision, const Interpretation& answer);

  Ports ports_;
  bool interpreting_ = false;
  quint64 revision_ = 0;
  std::optional<RemoteAppAction> action_;
  std::optional<SorvanIntent> intent_;
  QSet<QUuid> selection_;
  TaskScope tasks_;
};

}  // namespace sorvan::composer
