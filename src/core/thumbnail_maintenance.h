// What earlier versions left undrawn or drawn badly, put right in the background after a workspace opened.
#pragma once

#include <memory>
#include <stop_token>

#include "base/task_scope.h"
#include "core/library_store.h"

namespace sorvan::core {

/// The two passes over thumbnails and the task that runs them. Made once beside the store, it adds itself to the
/// store's `afterOpen` and `beforeClose`; nothing else has to be called but `drain` at the end. A drawing that fails is
/// passed over and told to nobody. Main thread; the pool draws, one file at a time. Borrows the store, which must
/// outlive the last drawing; no workspace is opened or closed after this object is gone.
class ThumbnailMaintenance {
 public:
  explicit ThumbnailMaintenance(LibraryStore& store);

  /// Draws the thumbnails of see-through pictures again, on squares. Once in a workspace's life: when the list is done
  /// an empty `.sorvan/thumbnails-squares` says so. A pass that was cut short leaves no such file.
  void redrawSeeThroughThumbnails();
  /// Draws the waveform of each sound outside Trash that has none, and saves all of them at once at the end. A failing
  /// save becomes the store's `error`.
  void drawMissingWaveforms();

  /// Ends both passes after the drawing in progress.
  void stop();
  int running() const { return tasks_.running(); }
  Task<> drain();

 private:
  struct Drawing;
  static Drawing redrawing(const LibraryStore& store, const QUuid& picture);
  static Task<> redraw(LibraryStore* store, std::vector<QUuid> pictures, std::stop_token stop);
  static Task<> drawWaveforms(LibraryStore* store, std::vector<Drawing> list, std::stop_token stop);

  LibraryStore& store_;
  std::stop_source stopping_;
  TaskScope tasks_;
};

}  // namespace sorvan::core
