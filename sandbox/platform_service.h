// The platform API: the list of models and their prices.
#pragma once
#include "key_check.h"

namespace sandbox {

class PlatformService {
 public:
  explicit PlatformService(const KeyCheck& keys) : keys_(keys) {}
  // GET /v1/models: by "endpoint_id", "category" and "q", in pages of "limit" with a "cursor".
  HttpAnswer models(const HttpRequest& request) const;
  // GET /v1/models/pricing?endpoint_id=…: at most 50 ids, repeated or joined by commas. Ids that are not
  // known are left out.
  HttpAnswer pricing(const HttpRequest& request) const;

 private:
  const KeyCheck& keys_;
};

}  // namespace sandbox
