#pragma once

#include "shell/room.h"

#include <QSize>
#include <QString>
#include <QUuid>

#include <vector>

namespace sorvan::core {
class LibraryStore;
}

namespace sorvan::shell {

class JobDisplays;

// A picture that is compared with others, as its pane shows it. Texts are final.
struct ComparedPicture {
  QUuid id;
  QString title;          // the model that made it, else the file's name
  QString detail;         // file name and size in pixels
  QString path;           // absolute; empty for what is no picture
  QString thumbnailPath;  // stands in until the picture is read
  QSize size;             // pixels, as the library knows it
  int rating = 0;
  bool favorite = false;
  QString statusText;  // empty for a draft
  QString statusToken;
  bool operator==(const ComparedPicture&) const = default;
};

// The first eight pictures among these items, in their order; what is no picture, in Trash or gone is left out.
std::vector<ComparedPicture> comparedPictures(const core::LibraryStore& store, const JobDisplays& displays,
                                              const std::vector<QUuid>& items);

inline constexpr int fewestCompared = 2;
inline constexpr int mostCompared = 8;

}  // namespace sorvan::shell
