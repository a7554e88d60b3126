// What every desktop of the tour has of its own: a home, and processes that end with it.
#pragma once

#include <QProcess>
#include <QString>

namespace tour {

// Makes a home with the usual folders and answers its path; the caller removes it. It stands beside the build, because a
// workspace in a temporary folder is warned of, and its name is short, because the path of a socket in it must be.
QString makePrivateHome(const QString& prefix);

// Asks the process to end, and ends it after three seconds.
void stop(QProcess& process);

}  // namespace tour
