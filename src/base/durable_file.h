// The one writer of durable data. What it has written is on the disk when it returns, and a failure at any step leaves
// the old file as it was and no temporary file behind.
#pragma once

#include <stop_token>

#include <QByteArray>
#include <QString>

#include "base/file_layer.h"
#include "base/sorvan_error.h"

namespace sorvan::base {

// Who may read the file: sidecars are 0600, media that a record owns 0666 narrowed by the umask.
enum class DurableMode { Sidecar, Media };
// NoReplace fails with a FileError of EEXIST when the target exists, without a gap in which another could make it.
enum class Replacing { Replace, NoReplace };

// Every function throws FileError. When only the last step, the sync of the folder, fails, a replaced file holds the
// whole new bytes that a power cut may still take back; without replacement the target is removed again.

// Temporary file in the same folder, all bytes, sync, close, rename, sync of the folder. The folder must exist.
void writeDurably(const QString& path, const QByteArray& bytes, DurableMode mode,
                  Replacing replacing = Replacing::Replace);

// Makes the folder and its missing parents, each synced in its parent. A folder that exists is left as it is.
void ensureFolderDurably(const QString& path, mode_t mode = 0777);

// Renames within one file system and syncs both folders. The file's own bytes must have been synced before.
// FileError of EXDEV when the file systems differ.
void renameDurably(const QString& from, const QString& to, Replacing replacing);

// Like renameDurably; between file systems it copies, and removes the source only when the copy is on the disk.
void moveDurably(const QString& from, const QString& to, DurableMode mode, Replacing replacing,
                 const std::stop_token& stop = {});

// Writes a copy, never a link, in pieces of 1 MiB. Throws Cancelled between two pieces.
void copyDurably(const QString& from, const QString& to, DurableMode mode, Replacing replacing,
                 const std::stop_token& stop = {});

// Gives the file a second name, on the disk when it returns, or a copy where the file system has no second names. The
// new name must be free: FileError of EEXIST. On failure there is no new name.
void linkOrCopyDurably(const QString& from, const QString& to, DurableMode mode);

// Syncs the bytes of a file that something else wrote.
void syncFile(const QString& path);
void syncFolder(const QString& path);

// A file that is absent counts as removed. Returns when the removal is on the disk.
void removeDurably(const QString& path);
// Removes the folder and all it holds, following no link. An absent folder counts as removed.
void removeFolderDurably(const QString& path);

// Whether a file name is that of a temporary file of this writer, which only a crash leaves behind.
bool isDurableTemporary(const QString& fileName);

}  // namespace sorvan::base
