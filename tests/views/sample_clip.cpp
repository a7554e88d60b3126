#include "views/sample_clip.h"

#include <QFile>
#include <QTemporaryDir>

#include "support/made_clips.h"

namespace sorvan::views {

QString sampleClip() {
  static const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("clip.mp4"));
  if (!QFile::exists(path))
    test::makeClip(path, {.size = {320, 200}, .frames = 40, .framesPerSecond = 10, .sound = true});
  return path;
}

}  // namespace sorvan::views
