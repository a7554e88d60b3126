// Runs one row: makes its data, lets the contestants run in turn, and takes medians.
#pragma once

#include "bench/row.h"

namespace sorvan::bench {

struct Result {
  std::optional<double> ours;   ///< seconds, median
  std::optional<double> peer;   ///< seconds, median
  std::optional<double> limit;  ///< seconds, median
  double peakMiB = 0;           ///< of this process while ours ran
  QString note;
};

/// Makes the data in a process of its own, which is this program with "--make".
Result measured(const Row& row);

QString header();
QString line(const QString& name, const Result& result);

}  // namespace sorvan::bench
