// The command line.
#pragma once
#include <QString>
#include <QStringList>

namespace sandbox {

struct Options {
  QString configurationFile;  // --write
  QString schemasFolder;      // --write-schemas: only that is done
  QString stateFolder;        // --state; empty for a temporary one
  QString faultsFile;         // --faults; may be empty
  QString key;                // --key; empty to make one
  int delayMilliseconds = 1500;
  int longestSide = 0;  // --longest-side; 0 for pictures and clips of the size that is asked for
};

// Prints help or what is wrong and ends the program when the command line asks for it.
Options readOptions(const QStringList& arguments);

}  // namespace sandbox
