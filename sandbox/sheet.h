// What the service publishes about one endpoint: its input, its output and the habits of its document.
#pragma once
#include <optional>

#include "field.h"

namespace sandbox {

struct Sheet {
  std::vector<Field> input;
  std::vector<Field> output;
  // Documents differ in more than their fields.
  bool saysOrder = true;         // the input names the order of its properties
  bool inputInParts = false;     // the input is allOf of two types
  bool inputByTwoSteps = false;  // its type refers to another one
  bool dangling = false;         // input and output refer to types that are nowhere
  bool circular = false;         // the input's type refers to itself
  bool withoutProperties = false;
  bool closed = false;          // the input takes no other fields
  std::string aboutInput = {};  // a description of the input as a whole
  // A field that is required though no property describes it.
  std::optional<std::string> undescribed = {};
};

// The outputs that endpoints share.
std::vector<Field> picturesOut(std::string_view type = "ImageFile");  // images and description
std::vector<Field> fluxPicturesOut();                                 // with timings, seed, concepts and prompt
std::vector<Field> seededPicturesOut(std::string_view type = "ImageFile");
std::vector<Field> pictureOut(std::string_view type = "Image");  // one, under "image"
std::vector<Field> clipOut(std::string_view type = "File");
std::vector<Field> seededClipOut(std::string_view type = "File");
std::vector<Field> soundOut(const char* name = "audio", std::string_view type = "File");

}  // namespace sandbox
