// One model in the picker.
#pragma once

#include <QAbstractButton>

#include "shell/composer_presenter.h"
#include "shell/views/room.h"

namespace sorvan::views {

// What a row of a model shows, whether it may be chosen or only added.
struct ModelRowLook {
  QString name;
  QString badge;
  QString licence;
  QString summary;
  bool warns = false;  // the summary says why the model will not do
  std::vector<ModelAbility> abilities;
  QString price;
  QString priceDate;
  int actionWidth = 0;  // kept free at the right end
  bool shaded = false;  // the pointer or the keyboard shades the row: its quiet words are stronger
};

// The part at the left of a row that adds the model instead of choosing it alone, in pixels.
inline constexpr int modelBoxColumn = 40;
inline constexpr int modelRowHeight = 48;

// “{name}, {badge}, {summary}, {price}”
QString accessibleModelName(const ModelRowLook& look);
// Everything but the box, in the colours of a row that is dimmed or not.
void paintModelRow(QPainter& painter, const QRect& row, const ModelRowLook& look, bool dimmed);
void paintModelBox(QPainter& painter, const QRect& row, bool several, bool chosen);

class ModelRow final : public QAbstractButton {
  Q_OBJECT

 public:
  ModelRow(const ModelChoice& model, bool severalAllowed, QWidget* parent = nullptr);

  const QString& key() const { return model_.key; }
  const ModelChoice& model() const { return model_; }
  // Another state of the same model.
  void setModel(const ModelChoice& model);
  bool matches(const QString& text) const;
  QSize sizeHint() const override { return {400, modelRowHeight}; }

 Q_SIGNALS:
  void onlyRequested(const QString& key);
  void toggleRequested(const QString& key, bool chosen);
  // The model is to be taken out of the list.
  void removeRequested(const QString& id);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  ModelRowLook look() const;

  ModelChoice model_;
  bool severalAllowed_;
};

}  // namespace sorvan::views
