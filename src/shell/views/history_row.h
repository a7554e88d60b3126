// One row of the history.
#pragma once

#include <QPainter>

#include "shell/job_display.h"
#include "shell/views/thumbnail_store.h"

namespace sorvan::views {

inline constexpr int historyRowHeight = 72;

// Where the columns of the history begin and end, for a list of that width.
struct HistoryColumns {
  explicit HistoryColumns(int width);
  int icon, thumbnail, words, wordsEnd, model, modelEnd, startedEnd, costEnd, action;
};

struct HistoryRowLook {
  bool selected = false;
  bool hovered = false;
  bool buttonHovered = false;
  bool keyboardCurrent = false;  // the keyboard stands here
  ThumbnailStore::Answer thumbnail;
};

void paintHistoryRow(QPainter& painter, const QRect& area, const JobDisplay& job, const HistoryRowLook& look);
// Empty when the row has no button.
QRect historyButton(const QRect& row, const JobDisplay& job);

}  // namespace sorvan::views
