#pragma once

#include "shell/room.h"

namespace sorvan::core {
class LibraryStore;
}

namespace sorvan::shell {

class AlertsPresenter;
struct Toast;

// Tells of the step that was just taken, with Undo while that very step is the next one to take back: the card goes as
// soon as it is not, so that it never takes back another one. While nothing can be taken back, it only tells. Both
// outlive the card. Main thread.
void showStepCard(core::LibraryStore& store, AlertsPresenter& alerts, Toast toast);

}  // namespace sorvan::shell
