// The bench: `tools/bench [--list] [--only ROW]`.
#include <cstdio>
#include <exception>

#include <QApplication>

#include "bench/measuring.h"

namespace {

using namespace sorvan::bench;

void print(const QString& text) {
  std::puts(text.toUtf8().constData());
  std::fflush(stdout);
}

int complain(const QString& text) {
  std::fputs((QStringLiteral("bench: ") + text + QLatin1Char('\n')).toUtf8().constData(), stderr);
  return 2;
}

const Row* rowNamed(const QString& name) {
  for (const Row& row : allRows())
    if (row.name == name) return &row;
  return nullptr;
}

int run(const QStringList& arguments) {
  const QString order = arguments.value(0);
  if (const Order special = orderNamed(order)) return special(arguments.mid(1));
  if (order == QStringLiteral("--list")) {
    for (const Row& row : allRows()) print(row.name);
    return 0;
  }
  const Row* only = rowNamed(arguments.value(1));
  if (!order.isEmpty() && only == nullptr) return complain(QStringLiteral("usage: bench [--list] [--only ROW]"));
  if (order == QStringLiteral("--make")) {
    only->make(QDir(arguments.value(2)));
    return 0;
  }
  print(header());
  for (const Row& row : allRows())
    if (only == nullptr || row.name == only->name) print(line(row.name, measured(row)));
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  try {
    return run(QCoreApplication::arguments().mid(1));
  } catch (const std::exception& error) {
    return complain(QString::fromUtf8(error.what()));
  }
}
