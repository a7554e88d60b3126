// The cell of a job: what was asked for, how it goes, and what can be done about it.
#pragma once

#include "shell/views/media_cell.h"

namespace sorvan::views {

void paintJobCell(QPainter& painter, const QRect& area, const JobDisplay& job, const CellLook& look);
CellPart jobPartAt(const QRect& area, const JobDisplay& job, QPoint point);

// The shape of a job's cell on the wall: never so narrow that its words do not fit.
double jobCellAspect(double outputAspect);

// Something turns in this job's cell.
inline bool isMoving(const JobDisplay& job) {
  return job.state == JobState::running || job.state == JobState::salvaging;
}

// The icon of a job's state, turning where work goes on.
// `side` pixels across; 0 is the size of the icons in running text.
void paintJobIcon(QPainter& painter, const QRectF& area, JobState state, int side = 0);

}  // namespace sorvan::views
