// Whether a request shows the key that the sandbox accepts.
#pragma once
#include "call_book.h"
#include "http_message.h"

namespace sandbox {

class KeyCheck {
 public:
  // `key` has the form "<key id>:<secret>".
  explicit KeyCheck(QString key) : key_(std::move(key)) {}
  const QString& key() const { return key_; }
  ShownKey shown(const HttpRequest& request) const;
  // The refusal of a request without the good key, as the queue gives it, or nothing.
  std::optional<HttpAnswer> queueRefusal(const HttpRequest& request, const QString& application) const;
  // As the storage host gives it.
  std::optional<HttpAnswer> storageRefusal(const HttpRequest& request) const;
  // As the platform gives it.
  std::optional<HttpAnswer> platformRefusal(const HttpRequest& request) const;

 private:
  HttpAnswer wrongKey(const HttpRequest& request) const;
  QString key_;
};

// A new key of the usual form: a UUID, a colon and 32 hexadecimal digits.
QString makeKey();

}  // namespace sandbox
