#pragma once

#include "shell/actions.h"
#include "shell/room.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace sorvan::shell {

// What a start was given to open, as an address that another process understands: links of the program's own scheme
// and addresses of files as they are, a path of something that exists as its address, “--action=history” as
// “action:history”. Empty for anything else.
QString addressOfArgument(const QString& argument, const QString& currentFolder);
// The first argument of a start that is to be opened, or empty.
QString firstAddress(const QStringList& arguments, const QString& currentFolder);

// The workspace that the first fitting address lies in: the folder itself, or the nearest one above it. Absolute;
// nothing when none of them is in a workspace. Other addresses are ignored. Looks at the disk.
std::optional<QString> workspaceAmong(const QStringList& addresses);

// The first link of the program's own scheme, whatever it is for, or nothing.
std::optional<QString> ownLinkAmong(const QStringList& addresses);

// What stands for an action among addresses.
QString actionAddress(const QString& name);
// The first address that stands for an action, or nothing.
std::optional<ActionId> actionAmong(const QStringList& addresses);
// What the desktop's launcher offers beside starting the program; nothing for an unknown name.
std::optional<ActionId> desktopAction(const QString& name);

}  // namespace sorvan::shell
