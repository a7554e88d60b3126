// Items that are dragged from a wall to other programs.
#pragma once

#include <QDrag>
#include <functional>

#include "shell/transfer_presenter.h"
#include "shell/views/room.h"

namespace sorvan::views {

// Runs a drag until it is over. Answers what the other side says that it did.
using DragRunner = std::function<Qt::DropAction(QDrag& drag, Qt::DropActions offered)>;

// Drags the selected items out of `source`. Copy is all that is offered, and the answer of the other side changes
// nothing here: a program that asks for Move gets a copy, and the file stays. False when there is no file to drag; a
// card tells of files that are gone.
// Events go on while it runs, so that `source` may be gone afterwards. Main thread.
bool dragSelectedItems(QWidget& source, TransferPresenter& transfer, const QPixmap& picture,
                       const DragRunner& run = {});

// What hangs at the pointer: a small picture, and how many there are when there are several.
QPixmap dragPicture(const QPixmap& thumbnail, qsizetype items, double pixelRatio);

}  // namespace sorvan::views
