#pragma once

#include "shell/room.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace sorvan::shell {

struct FolderQuestion {
  QString acceptLabel;  // the button: “Open Workspace”
  QString message;      // what the folder is for
  QString startFolder;  // absolute
};

// The port by which presenters ask for a folder. The views implement it: folders only, new ones may be made, without a
// nested event loop. Where the desktop offers neither portal nor platform theme, the toolkit's own dialog opens.
class FolderChooser {
 public:
  virtual ~FolderChooser() = default;
  // Calls `chosen` once on the main thread: with the absolute path, or with nothing when the person gave up.
  virtual void chooseFolder(const FolderQuestion& question, std::function<void(std::optional<QString>)> chosen) = 0;
  // The same for picture files, several at once; with none when the person gave up or nothing can ask for them.
  virtual void choosePictures(const FolderQuestion&, std::function<void(QStringList)> chosen) { chosen({}); }
  // The same for a file that is to be written, offered under `name`; what stands there already was agreed to.
  virtual void chooseFileToWrite(const FolderQuestion&, const QString& /*name*/,
                                 std::function<void(std::optional<QString>)> chosen) {
    chosen(std::nullopt);
  }
};

}  // namespace sorvan::shell
