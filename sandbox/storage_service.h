// Uploads: a signed address is asked for, the bytes are put there, and jobs read them.
#pragma once
#include <QMap>

#include "key_check.h"
#include "media_shelf.h"

namespace sandbox {

class StorageService {
 public:
  StorageService(const KeyCheck& keys, const MediaShelf& shelf) : keys_(keys), shelf_(shelf) {}
  // POST /storage/upload/initiate: gives "upload_url" and "file_url".
  HttpAnswer start(const HttpRequest& request);
  // PUT of the bytes. The address is the permission: a request that shows a key is refused, as signed addresses do.
  HttpAnswer put(const HttpRequest& request);
  // GET of any media file.
  HttpAnswer download(const HttpRequest& request) const;

 private:
  const KeyCheck& keys_;
  const MediaShelf& shelf_;
  QMap<QString, QString> signatures_;  // by path
};

}  // namespace sandbox
