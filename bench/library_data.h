// Libraries of any size for the rows, the same ones for the same seed.
#pragma once

#include <QString>

namespace sorvan::bench {

/// How many records of each kind a library has.
struct LibrarySize {
  int items = 0;
  int jobs = 0;
  int edges = 0;
};

/// A library of this many items, each with its generation; a fifth as many jobs and half as many edges.
LibrarySize libraryOf(int items);

/// Makes a workspace folder with such a library. The folder must not exist.
void makeLibrary(const QString& folder, const LibrarySize& size, unsigned seed);

}  // namespace sorvan::bench
