#include "shell/cost_texts.h"
#include "shell/costs_presenter.h"
#include "shell/views/cost_table.h"

namespace sorvan::views {

namespace {

constexpr int kDateWidth = 124;
constexpr int kModelWidth = 156;
constexpr int kPayerWidth = 122;
constexpr int kCostWidth = 164;
constexpr int kValueWidth = 112;
constexpr int kMostValues = 5;  // four kinds of work and their total
constexpr int kRoomForPayer = 720;
constexpr int kRoomForModel = 600;

enum ChargeSection { date, charge, model, payer, cost, sections };

QString cellOf(const CostRow& row, int section) {
  switch (section) {
    case date:
      return row.date;
    case charge:
      return row.charge;
    case model:
      return row.model;
    case payer:
      return row.paidWith;
    default:
      return row.cost;
  }
}

}  // namespace

std::vector<CostTableColumn> chargeColumns() {
  return {{kDateWidth, false, true},
          {},
          {kModelWidth, false, true, kRoomForModel},
          {kPayerWidth, false, true, kRoomForPayer},
          {kCostWidth, true}};
}

std::vector<CostTableColumn> chartValueColumns() {
  std::vector<CostTableColumn> columns{{}};
  columns.insert(columns.end(), kMostValues, {kValueWidth, true});
  return columns;
}

ChargeModel::ChargeModel(CostsPresenter& costs, QObject* parent) : QAbstractTableModel(parent), costs_(costs) {}

void ChargeModel::reload() {
  beginResetModel();
  rows_ = costs_.rowCount();
  endResetModel();
}

int ChargeModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : std::min(rows_, costs_.rowCount());
}
int ChargeModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : sections; }

QVariant ChargeModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= costs_.rowCount()) return {};
  if (role == Qt::DisplayRole) return cellOf(costs_.row(index.row()), index.column());
  if (role == Qt::AccessibleTextRole) {
    const QString cell = cellOf(costs_.row(index.row()), index.column());
    return cell.isEmpty() ? headerData(index.column(), Qt::Horizontal, Qt::DisplayRole) : QVariant(cell);
  }
  if (role == Qt::ToolTipRole || role == Qt::AccessibleDescriptionRole) return costs_.row(index.row()).detail;
  return {};
}

QVariant ChargeModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || (role != Qt::DisplayRole && role != Qt::AccessibleTextRole)) return {};
  const QString titles[] = {shell::texts::costDate, shell::texts::costCharge, shell::texts::costModel,
                            shell::texts::costPayment, shell::texts::costAmount};
  return section >= 0 && section < sections ? titles[section] : QVariant();
}

ChartValuesModel::ChartValuesModel(QObject* parent) : QAbstractTableModel(parent) {}

void ChartValuesModel::setChart(const CostChart& chart) {
  beginResetModel();
  chart_ = chart;
  std::erase_if(chart_.columns, [](const CostColumn& column) { return column.total <= 0; });
  endResetModel();
}

int ChartValuesModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(chart_.columns.size());
}
int ChartValuesModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(chart_.kinds.size()) + 2;
}

QString ChartValuesModel::text(const CostColumn& column, int section) const {
  if (section == 0) return column.title;
  const auto kind = static_cast<std::size_t>(section - 1);
  return kind < column.texts.size() ? column.texts[kind] : column.totalText;
}

QVariant ChartValuesModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::AccessibleTextRole)) return {};
  return text(chart_.columns[static_cast<std::size_t>(index.row())], index.column());
}

QVariant ChartValuesModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || (role != Qt::DisplayRole && role != Qt::AccessibleTextRole)) return {};
  if (section == 0) return shell::texts::costDate;
  const auto kind = static_cast<std::size_t>(section - 1);
  return kind < chart_.kinds.size() ? chart_.kinds[kind].name : shell::texts::costTotal;
}

}  // namespace sorvan::views
