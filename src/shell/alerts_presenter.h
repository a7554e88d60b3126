#pragma once

#include "shell/room.h"

#include <QObject>
#include <QString>

#include <deque>
#include <functional>
#include <optional>
#include <vector>

namespace sorvan::shell {

enum class AlertTone { information, success, warning, error };
enum class AlertButtonRole { primary, plain, destructive };

struct AlertButton {
  QString title;
  AlertButtonRole role = AlertButtonRole::plain;
  bool isEscape = false;  // Escape answers with this one
};

// A question or an error over the window. The first button has the focus and stands at the right end.
struct Alert {
  quint64 id = 0;
  AlertTone tone = AlertTone::information;
  QString title;
  QString text;
  std::vector<AlertButton> buttons;
};

// A card at the foot of the window.
struct Toast {
  quint64 id = 0;
  AlertTone tone = AlertTone::information;
  QString text;
  QString secondLine;
  QString actionTitle;  // empty: no button
  bool stays = false;   // until it is closed
  bool leaves = false;  // in spite of its action, which remains possible elsewhere

  // Good news leaves after five seconds, unless hovered or focused; what warns or offers something waits to be read.
  bool leavesByItself() const {
    if (stays || tone == AlertTone::warning || tone == AlertTone::error) return false;
    return leaves || actionTitle.isEmpty();
  }
};

// One alert at a time, the rest wait; nothing here runs an event loop. Main thread.
class AlertsPresenter : public QObject {
  Q_OBJECT

 public:
  using Answer = std::function<void(int button)>;

  explicit AlertsPresenter(QObject* parent = nullptr);

  const std::optional<Alert>& current() const { return current_; }
  const std::vector<Toast>& toasts() const { return toasts_; }

  // Shows the alert now or after those before it. `answered` runs once with the index of the button.
  quint64 ask(Alert alert, Answer answered);
  void showError(const QString& text);
  void showInformation(const QString& title, const QString& text);
  // Takes an alert back that is no longer true; its answer is never called.
  void withdraw(quint64 id);
  quint64 showToast(Toast toast, std::function<void()> action = {});

  // By the view.
  void answer(quint64 id, int button);
  void performToastAction(quint64 id);
  void dismissToast(quint64 id);

 Q_SIGNALS:
  void currentChanged();
  void toastsChanged();
  // The person closed the card, used its button, or its time was over.
  void toastDismissed(quint64 id);

 private:
  struct Waiting {
    Alert alert;
    Answer answered;
  };
  void advance();
  quint64 firstToLeave() const;

  std::deque<Waiting> waiting_;  // its front is `current_`
  std::optional<Alert> current_;
  std::vector<Toast> toasts_;
  std::vector<std::pair<quint64, std::function<void()>>> toastActions_;
  quint64 nextId_ = 1;
};

}  // namespace sorvan::shell
