// Where the media of a finished request lie, read from the model's own result.
#pragma once

#include <QJsonObject>
#include <QString>
#include <QUrl>

#include <optional>
#include <vector>

namespace sorvan::catalogue {

struct OutputAddress {
  QUrl url;                              ///< https
  QString ext;                           ///< file extension without a point, as announced
  std::optional<QString> label;          ///< the part's name when a sound was split
  std::optional<qint64> announcedBytes;  ///< what the result says the file's size is

  bool operator==(const OutputAddress&) const = default;
};

enum class NamedParts { no, yes };

/// Throws SorvanError when there are none, or when an address is not https. With `NamedParts::yes`, for tools on a
/// sound, each object under a name of its own counts when no usual place holds any.
std::vector<OutputAddress> outputAddresses(const QJsonObject& result, NamedParts parts = NamedParts::no);

/// The extension of a content type, if it is one of a known picture, clip or sound.
std::optional<QString> extensionOfContentType(const QString& contentType);
/// The content type of a file extension that may be sent as a reference.
std::optional<QString> contentTypeOfExtension(const QString& extension);

}  // namespace sorvan::catalogue
