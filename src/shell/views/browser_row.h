// One model of the catalogue: what it is, and the button that adds it.
#pragma once

#include <QAbstractButton>

#include "shell/model_browser.h"
#include "shell/views/room.h"

namespace sorvan::views {

class Button;
class IconButton;
class Paragraph;
class Spinner;
struct ModelRowLook;

// Enter adds a model that is offered and chooses one that is added; Space does the same but adds to what is chosen;
// Delete removes. Why a model could not be added stands under it.
class BrowserRowView final : public QAbstractButton {
  Q_OBJECT

 public:
  explicit BrowserRowView(const BrowserRow& row, QWidget* parent = nullptr);

  const QString& id() const { return row_.id; }
  void setRow(const BrowserRow& row);
  void setChosen(bool chosen);
  QSize sizeHint() const override;

 Q_SIGNALS:
  void addRequested(const QString& id);
  void cancelRequested(const QString& id);
  void removeRequested(const QString& id);
  void onlyRequested(const QString& key);
  void toggleRequested(const QString& key, bool chosen);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  bool isUsable() const;
  ModelRowLook look() const;
  void arrange();
  void tellState(const BrowserRow& before);

  BrowserRow row_;
  bool chosen_ = false;
  Button* add_;
  IconButton* cancel_;
  IconButton* remove_;
  Spinner* spinner_;
  Paragraph* problem_;
};

}  // namespace sorvan::views
