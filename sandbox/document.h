// Writes the document that the service publishes for an endpoint.
#pragma once
#include <string>

#include "sheet.h"

namespace sandbox {

struct Titles {
  std::string id;
  std::string category;
  std::string about;
};

// The document in the published form: keys in order, four paths, and every type that it refers to.
json::object documentOf(const Titles& titles, const Sheet& sheet);

// "BytedanceSeedreamV4TextToImage" of fal-ai/bytedance/seedream/v4/text-to-image: the owner is dropped, the rest is cut
// at / - . and blanks, and each part begins with a capital letter.
std::string typeNameOf(std::string_view id);

}  // namespace sandbox
