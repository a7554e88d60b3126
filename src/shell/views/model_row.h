// One model in the picker.
#pragma once

#include <QAbstractButton>

#include "shell/composer_presenter.h"
#include "shell/views/room.h"

namespace sorvan::views {

class ModelRow final : public QAbstractButton {
  Q_OBJECT

 public:
  ModelRow(const ModelChoice& model, bool severalAllowed, QWidget* parent = nullptr);

  const QString& key() const { return model_.key; }
  void setChosen(bool chosen);
  bool matches(const QString& text) const;
  QSize sizeHint() const override { return {400, 48}; }

 Q_SIGNALS:
  void onlyRequested(const QString& key);
  void toggleRequested(const QString& key, bool chosen);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  ModelChoice model_;
  bool severalAllowed_;
};

}  // namespace sorvan::views
