// What the text would do if it were submitted now, shortly after the last keystroke.
#pragma once

#include <QObject>
#include <QString>

#include <optional>

#include "base/clock.h"
#include "base/task_scope.h"
#include "composer/intent.h"

namespace sorvan::composer {

/// Says what is shown, never what runs: a submission reads the text again. Main thread.
class ComposerIntentPreview final : public QObject {
  Q_OBJECT

 public:
  static constexpr std::chrono::milliseconds delay{180};

  explicit ComposerIntentPreview(std::shared_ptr<const Clock> clock, QObject* parent = nullptr);
  ~ComposerIntentPreview() override;

  const SorvanIntent& intent() const { return intent_; }
  bool isEmpty() const { return isEmpty_; }
  /// The length that the text speaks of, in seconds.
  std::optional<int> mentionedSeconds() const { return mentionedSeconds_; }

  /// Reads the text once nothing more was typed for `delay`; what was scheduled before is dropped.
  void schedule(const QString& text, ComposerMode mode);

 Q_SIGNALS:
  /// Something that is shown changed: typing inside a prompt is silent.
  void changed();
  /// The text was read again, whether or not that changed anything here: for what follows its length.
  void textRead();

 private:
  Task<> readLater(QString text, ComposerMode mode, std::stop_token stop);
  void read(const QString& text, ComposerMode mode);

  std::shared_ptr<const Clock> clock_;
  SorvanIntent intent_ = GenerationInstruction{};
  bool isEmpty_ = true;
  std::optional<int> mentionedSeconds_;
  std::stop_source pending_;
  TaskScope tasks_;
};

}  // namespace sorvan::composer
