// The platform: the list of models, their published documents and their prices.
#pragma once
#include "key_check.h"

namespace sandbox {

class PlatformService {
 public:
  explicit PlatformService(const KeyCheck& keys) : keys_(keys) {}
  // GET /v1/models: by "endpoint_id" (at most 50), "category", "status" and the words of "q", in pages of "limit" with
  // a "cursor"; with "expand=openapi-3.0" each row holds its document. Ids that are not known are left out.
  HttpAnswer models(const HttpRequest& request) const;
  // GET /v1/models/pricing?endpoint_id=…: at most 50 ids, repeated or joined by commas, in pages. One id that is not
  // known makes the whole question a 404.
  HttpAnswer pricing(const HttpRequest& request) const;
  // GET /api/openapi/queue/openapi.json?endpoint_id=…, without a key.
  HttpAnswer document(const HttpRequest& request) const;

 private:
  const KeyCheck& keys_;
};

}  // namespace sandbox
