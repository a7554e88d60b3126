#pragma once

#include "shell/room.h"

#include <QString>
#include <QUuid>

namespace sorvan::shell {

// How a job looks to a person. A salvage counts as cancelled with a spinner: it is invisible work.
enum class JobState { queued, running, failed, cancelled, salvaging, complete };

// The one thing to do about a job in its cell or row.
enum class JobAction { none, cancel, retry, saveResult, submitAgain, show };

// One job as cells, rows and the inspector show it. Texts are final; empty ones are not drawn.
struct JobDisplay {
  QUuid id;
  JobState state = JobState::queued;
  QString modelName;
  QString prompt;
  QString detail;          // “Waiting to start” while queued; the money line is never elided
  QString message;         // the error, in full
  QString destination;     // the project, or “Inbox”
  QString startedText;     // “10:14”, or “Yesterday”, or a date
  QString elapsedText;     // “0:14”; stands still once the job has ended
  QString costText;        // “≈ $0.060”, or empty
  QString thumbnailPath;   // of the first output, else of the first reference; may name a file that is missing
  double aspectRatio = 1;  // width by height of the expected output
  JobAction action = JobAction::none;
  QString actionTitle;  // “Retry”, “Save Result”, “Submit Again…”, “Cancel”, “Show”
  bool canSaveRawResult = false;
  bool canRetry = false;
  int outputs = 0;  // items of this job in the library
};

}  // namespace sorvan::shell
