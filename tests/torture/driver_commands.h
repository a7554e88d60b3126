// What the driver can be told to do, one after the other.
#pragma once

#include <QJsonObject>

#include "base/task.h"
#include "torture/headless_studio.h"

namespace sorvan::torture {

// Carries out one command: {"do": NAME, …}. The names:
//   enqueue    "model", "prompt", "seed"?, "count"?, "size"?, "references"? (numbers of items, newest first),
//              "marks"? (boxes [x, y, width, height], to which the result is kept)
//   place      "file": a picture is put into the workspace as an item, as a reference for later requests
//   import     "file", or a picture of "shade" from the clipboard: becomes a reference as the composer does it
//   run        waits until no job runs or waits
//   retry      Retry on every failed or cancelled job
//   submit-again, cancel (the newest active job), rate (the newest item gets "stars")
//   handle     waits until the newest active job has its remote handle on the disk, or until none is active
//   save-raw   Save Raw Result on every failed job
//   prompt ("text"), draft ("number"), review (of the newest item): what is kept beside the library
//   type ("number"): six drafts, numbered from there, as a typist gives them
//   trash (the newest item), restore (whatever is in Trash); "quietly": nothing is promised
//   sheet      "what" is done with a contact sheet: "make" (of the newest items), "order" (the oldest sheet's items the
//              other way round), "title" (the oldest sheet gets "number"), "restore" (the oldest sheet), "trash" (the
//              newest sheet); "quietly": nothing is promised
//   project    "what" is done with a project: "make" (called "number"), "name" (the oldest one becomes "number"),
//              "archive" (the oldest one)
//   retry-save tries again to write whatever is not on the disk
//   gateway    "pays": credits pay from now on; "away": nobody can ask for cancelled operations
//   settled    waits until the fate of cancelled operations is known, as far as it can be
// Throws SorvanError when a command is refused.
// What the library has acknowledged is appended to the file named by SORVAN_DRIVER_ACKS, if there is one, as one line of
// JSON: {"did": NAME, "id": what the record is called, …}.
base::Task<> carryOut(HeadlessStudio& studio, QJsonObject command);

// Waits until what an opening draws in the background is drawn.
base::Task<> untilMaintained(HeadlessStudio& studio);

}  // namespace sorvan::torture
