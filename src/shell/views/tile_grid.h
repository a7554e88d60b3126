// A grid of tiles that are painted, with the keyboard walking through them.
#pragma once

#include <QAbstractScrollArea>

#include "shell/views/painted_list.h"
#include "shell/views/room.h"

namespace sorvan::views {

// What a kind of tile looks like comes from the class that derives. One stop of the tab key; arrows, Home, End and Page
// keys walk. Main thread.
class TileGrid : public QAbstractScrollArea, public PaintedList {
  Q_OBJECT

 public:
  struct Tile {
    QUuid id;
    QString name;         // for assistive technology
    QString description;  // likewise
    bool chosen = false;
  };
  struct Shape {
    int leastWidth = 100;  // of a tile; the row is shared out among as many as fit
    int gap = 8;
    int margin = 8;
    std::function<int(int width)> height;
  };
  enum class Press { activates, selects };

  TileGrid(const QString& name, Shape shape, Press press, QWidget* parent = nullptr);

  // Tiles that stay keep the keyboard and the place that was scrolled to.
  void setTiles(std::vector<Tile> tiles);
  const std::vector<Tile>& tiles() const { return tiles_; }
  void setCurrent(QUuid id);

  QAbstractScrollArea& area() override { return *this; }
  int rowCount() const override { return static_cast<int>(tiles_.size()); }
  QUuid rowId(int index) const override { return tiles_.at(static_cast<std::size_t>(index)).id; }
  int rowIndex(QUuid id) const override;
  std::pair<int, int> visibleRange() const override;
  QRect cellRect(int index) const override;
  QString rowName(int index) const override { return tiles_.at(static_cast<std::size_t>(index)).name; }
  QString rowDescription(int index) const override { return tiles_.at(static_cast<std::size_t>(index)).description; }
  bool rowSelected(int index) const override;
  QUuid currentRow() const override { return current_; }
  QStringList rowActions(int) const override { return {selectRowAction, openRowAction}; }
  void performRowAction(int index, const QString& action) override;

 Q_SIGNALS:
  // Enter, Space, a press or a double press, as the grid was told.
  void activated(QUuid tile);
  void currentChanged(QUuid tile);
  void menuRequested(QUuid tile, QPoint globalPosition);
  // A key that the grid does not take, while a tile is current.
  void keyPressed(QUuid tile, int key);

 protected:
  struct Look {
    bool current = false;
    bool hovered = false;
    bool ring = false;  // the keyboard is here
  };
  virtual void paintTile(QPainter& painter, int index, const QRect& area, const Look& look) = 0;

  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  bool viewportEvent(QEvent* event) override;

 private:
  void relayout();
  void walk(int to);
  int columns() const;
  int tileWidth() const;
  int tileHeight() const { return shape_.height(tileWidth()); }

  Shape shape_;
  Press press_;
  std::vector<Tile> tiles_;
  QUuid current_;
  int hovered_ = -1;
};

}  // namespace sorvan::views
