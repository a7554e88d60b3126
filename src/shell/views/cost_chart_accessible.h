// What assistive technology sees of the bars: a chart with a summary, and an entry for each column.
#pragma once

#include "shell/views/room.h"

namespace sorvan::views {

class CostChartView;

// Called at the end of the chart's constructor.
void describeCostChart(CostChartView& chart);
// The keyboard has moved to this column.
void announceCostColumn(CostChartView& chart, int column);

}  // namespace sorvan::views
