// What a media file is and how large: the one answer for import, registration and checks.
#pragma once

#include <optional>

#include <QString>

#include "core/media_metadata.h"

namespace sorvan::core {

/// Measures a file. Runs on any thread, blocks, belongs on the pool. A table of extensions decides what is a clip; what
/// else opens as a picture is one, whatever its name; the table decides what is a sound. SorvanError "Choose a media
/// file, not a folder.", "Unsupported media: {file name}", "This image could not be read.", "This clip could not be
/// read." or "This sound could not be read.".
MediaMetadata inspectMedia(const QString& path);

/// What an extension, in any case and without its point, stands for by the table; nothing for any other, and the
/// system's own database is never asked.
std::optional<MediaType> mediaTypeForExtension(const QString& extension);

/// The MIME type that inspecting notes: knows every extension of the table, wider than `WorkspaceFiles::mimeType`.
/// "application/octet-stream" for any other.
QString mimeTypeForExtension(const QString& extension);

}  // namespace sorvan::core
