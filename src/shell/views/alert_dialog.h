// Questions and errors over the window.
#pragma once

#include <QDialog>
#include <QPointer>

#include "shell/alerts_presenter.h"
#include "shell/views/room.h"

namespace sorvan::views {

// One alert. It is opened, never executed: the answer comes as a signal, once.
class AlertDialog final : public QDialog {
  Q_OBJECT

 public:
  AlertDialog(const Alert& alert, QWidget* parent);
  quint64 id() const { return alert_.id; }

  // Closes without an answer.
  void withdraw();

 Q_SIGNALS:
  void answered(quint64 id, int button);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void reject() override;

 private:
  void answer(int button);

  Alert alert_;
  QWidget* first_ = nullptr;  // the button that has the keyboard at first
  bool done_ = false;
};

// Shows the presenter's alert over `window`, with the window dimmed, until it is answered.
class AlertHost final : public QObject {
  Q_OBJECT

 public:
  AlertHost(AlertsPresenter& alerts, QWidget* window);

 private:
  void refresh();

  AlertsPresenter& alerts_;
  QWidget* window_;
  QPointer<AlertDialog> dialog_;
  QPointer<QWidget> scrim_;
};

}  // namespace sorvan::views
