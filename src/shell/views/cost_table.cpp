#include "shell/views/cost_table.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyledItemDelegate>

#include "shell/costs_presenter.h"
#include "shell/views/focus_ring.h"
#include "shell/views/painting.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kHeader = 30;
constexpr int kCellPadding = 8;

const CostTableColumn& columnOf(const CostTable& table, int column) {
  static const CostTableColumn plain;
  const auto at = static_cast<std::size_t>(column);
  return at < table.columns().size() ? table.columns()[at] : plain;
}

Qt::Alignment alignmentOf(const CostTableColumn& column) {
  return (column.number ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter;
}

class CostDelegate final : public QStyledItemDelegate {
 public:
  explicit CostDelegate(CostTable* table) : QStyledItemDelegate(table), table_(*table) {}

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    const Colors& c = colors();
    const bool selected = table_.selectionModel() && table_.selectionModel()->isRowSelected(index.row(), {});
    if (selected)
      painter->fillRect(option.rect, table_.hasFocus() ? c.stateSelected : c.stateSelectedInactive);
    else if (index.row() == table_.hoveredRow())
      painter->fillRect(option.rect, c.stateHover);
    painter->fillRect(QRect(option.rect.left(), option.rect.bottom(), option.rect.width(), 1), c.lineSubtle);
    const CostTableColumn& column = columnOf(table_, index.column());
    const QFont font = column.number ? fontFor(Type::mono) : fontFor(Type::body);
    paintText(*painter, option.rect.adjusted(kCellPadding, 0, -kCellPadding, 0),
              {index.data().toString(), font, column.faint ? c.textSecondary : c.textPrimary, alignmentOf(column)});
  }
  QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override {
    return {60, metrics().tableRow};
  }

 private:
  CostTable& table_;
};

class CostHeader final : public QHeaderView {
 public:
  explicit CostHeader(CostTable* table) : QHeaderView(Qt::Horizontal, table), table_(*table) {
    setFixedHeight(kHeader);
    setSectionsClickable(false);
    setHighlightSections(false);
    setMinimumSectionSize(40);
    setSectionResizeMode(QHeaderView::Fixed);
    viewport()->setAutoFillBackground(false);
  }

 protected:
  void paintSection(QPainter* painter, const QRect& area, int section) const override {
    const QString title = model() ? model()->headerData(section, Qt::Horizontal, Qt::DisplayRole).toString() : QString();
    paintText(*painter, area.adjusted(kCellPadding, 0, -kCellPadding, 0),
              {title, fontFor(Type::caption, Weight::semibold), colors().textTertiary,
               alignmentOf(columnOf(table_, section))});
    painter->fillRect(QRect(area.left(), area.bottom(), area.width(), 1), colors().lineSubtle);
  }

 private:
  CostTable& table_;
};

}  // namespace

CostTable::CostTable(const QString& name, std::vector<CostTableColumn> columns, QWidget* parent)
    : QTableView(parent), columns_(std::move(columns)) {
  setAccessibleName(name);
  setProperty(ownFocusProperty, true);
  setHorizontalHeader(new CostHeader(this));
  setItemDelegate(new CostDelegate(this));
  verticalHeader()->hide();
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  verticalHeader()->setDefaultSectionSize(metrics().tableRow);
  setFrameShape(QFrame::NoFrame);
  setShowGrid(false);
  setWordWrap(false);
  setCornerButtonEnabled(false);
  setTabKeyNavigation(false);
  setEditTriggers(NoEditTriggers);
  setSelectionBehavior(SelectRows);
  setSelectionMode(SingleSelection);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollMode(ScrollPerPixel);
  setMouseTracking(true);
  viewport()->setMouseTracking(true);
  viewport()->setAutoFillBackground(false);
  // The delegate fills a selected row with the theme's own colour; the style's would lie under the words as well.
  QPalette without;
  without.setColor(QPalette::Highlight, Qt::transparent);
  setPalette(without);
}

// The widths are fixed but for one column, which takes what is left; what has no room in a narrow table is away.
void CostTable::fit() {
  if (!model()) return;
  const int width = viewport()->width();
  int taken = 0;
  int flexible = -1;
  for (int column = 0; column < model()->columnCount(); ++column) {
    const CostTableColumn& look = columnOf(*this, column);
    setColumnHidden(column, width < look.leastTable);
    if (isColumnHidden(column)) continue;
    if (look.width == 0)
      flexible = column;
    else
      setColumnWidth(column, look.width), taken += look.width;
  }
  if (flexible >= 0) setColumnWidth(flexible, std::max(60, width - taken));
}

void CostTable::resizeEvent(QResizeEvent* event) {
  QTableView::resizeEvent(event);
  fit();
}

void CostTable::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (enter && currentIndex().isValid()) return Q_EMIT opened(currentIndex().row());
  // What the table has no use for belongs to the window.
  if (event->key() == Qt::Key_Escape) return event->ignore();
  QTableView::keyPressEvent(event);
}

void CostTable::mouseDoubleClickEvent(QMouseEvent* event) {
  const QModelIndex index = indexAt(event->position().toPoint());
  if (index.isValid()) Q_EMIT opened(index.row());
}

void CostTable::mouseMoveEvent(QMouseEvent* event) {
  QTableView::mouseMoveEvent(event);
  hovered_ = rowAt(static_cast<int>(event->position().y()));
  viewport()->update();
}

bool CostTable::viewportEvent(QEvent* event) {
  if (event->type() == QEvent::Leave) hovered_ = -1, viewport()->update();
  return QTableView::viewportEvent(event);
}

// The keyboard needs a row to stand on.
void CostTable::focusInEvent(QFocusEvent* event) {
  QTableView::focusInEvent(event);
  if (!currentIndex().isValid() && model() && model()->rowCount() > 0) setCurrentIndex(model()->index(0, 0));
  viewport()->update();
}

void CostTable::paintEvent(QPaintEvent* event) {
  QTableView::paintEvent(event);
  if (!hasFocus() || !FocusRing::keyboardInUse()) return;
  QPainter painter(viewport());
  painter.setRenderHint(QPainter::Antialiasing);
  QRect row = viewport()->rect();
  if (currentIndex().isValid())
    row = QRect(0, rowViewportPosition(currentIndex().row()), viewport()->width(), rowHeight(currentIndex().row()));
  paintRing(painter, QRectF(row).adjusted(2, 2, -2, -2), metrics().radiusSmall, 2, colors().accentRing);
}

}  // namespace sorvan::views
