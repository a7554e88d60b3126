// The files of the media hosts: what jobs made and what clients uploaded, kept in one folder.
#pragma once
#include <QByteArray>
#include <QString>
#include <QUrl>
#include <optional>

namespace sandbox {

struct ShelvedMedia {
  QByteArray bytes;
  QByteArray contentType;  // by the extension of the address
};

// Reading is safe from every thread; a file appears whole or not at all.
class MediaShelf {
 public:
  // The folder is created when it is not there.
  explicit MediaShelf(QString folder);

  // Keeps bytes under a path such as "/files/b/0a8c3187/name.png". Throws std::runtime_error when they cannot be
  // written.
  void put(const QString& path, const QByteArray& bytes) const;
  std::optional<ShelvedMedia> get(const QString& path) const;
  // What a job's input names: a data URI, or an address at one of the media hosts.
  std::optional<QByteArray> read(const QUrl& url) const;

 private:
  QString fileOf(const QString& path) const;
  QString folder_;
};

// "image/png" for "png", and so on; "application/octet-stream" for what is not known.
QByteArray contentTypeOf(const QString& extension);

}  // namespace sandbox
