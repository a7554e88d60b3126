// How a folder becomes the open workspace, and how what an earlier run left behind becomes an honest state.
#pragma once

#include <QString>

#include "core/library_store.h"

namespace sorvan::core {

enum class Remember { no, yes };

/// Opens what is to be open at start: the forced workspace without remembering it, else the remembered one, else
/// nothing. A failure becomes the store's `error`.
void restoreLastWorkspace(LibraryStore& store);

/// Whether `restoreLastWorkspace` has a folder to open.
bool hasWorkspaceToRestore(const LibraryStore& store);

/// Opens and remembers the folder that the user chose; refuses one that the system clears. A failure becomes `error`.
void chooseWorkspace(LibraryStore& store, const QString& folder);

/// Opens a workspace folder, making its library when it has none. Throws SorvanError: up to the moment of the swap the
/// previous workspace stays open and unchanged; a save that fails after it is reported while the new one stays open.
/// Jobs that the last exit cut off become "failed", "Interrupted"; no request leaves the machine. Opening the folder
/// that is open only remembers it.
void openWorkspace(LibraryStore& store, const QString& folder, Remember remember);

/// Whether the system clears this folder by itself, so that a library there would be lost.
bool isTemporary(const QString& folder);
/// Whether the open workspace lies in such a folder and was not forced: the shell warns.
bool workspaceIsTemporary(const LibraryStore& store);

/// The folder where the chooser starts: the parent of the open workspace, or of the default one.
QString chooserFolder(const LibraryStore& store);

/// The pictures folder of the user plus "Sorvan", or the home folder plus "Sorvan" when there is none.
QString defaultWorkspacePath();

}  // namespace sorvan::core
