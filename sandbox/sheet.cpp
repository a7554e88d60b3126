#include "sheet.h"

namespace sandbox {

namespace {

Field fileNamed(const char* name, std::string_view type, const char* description) {
  return object(name, type).about(description).required();
}

Field seedUsed() {
  json::object schema;
  schema["type"] = "integer";
  return Field("seed", std::move(schema)).about("The seed that was used.").required();
}

Field pictures(std::string_view type) { return objects("images", type).about("The generated images.").required(); }

Field truthValues(const char* name) {
  json::object element;
  element["type"] = "boolean";
  return listOfTexts(name).with("items", std::move(element)).required();
}

// The only place where published documents speak of further properties.
Field timings() {
  json::object schema;
  json::object number;
  number["type"] = "number";
  schema["type"] = "object";
  schema["additionalProperties"] = std::move(number);
  return Field("timings", std::move(schema)).required();
}

}  // namespace

std::vector<Field> picturesOut(std::string_view type) {
  return {pictures(type), text("description").about("What the model says of the images.").startingWith("").required()};
}

std::vector<Field> fluxPicturesOut() {
  return {pictures("Image"), timings(), seedUsed(), truthValues("has_nsfw_concepts"), text("prompt").required()};
}

std::vector<Field> seededPicturesOut(std::string_view type) { return {pictures(type), seedUsed()}; }

std::vector<Field> pictureOut(std::string_view type) { return {fileNamed("image", type, "The generated image.")}; }

std::vector<Field> clipOut(std::string_view type) { return {fileNamed("video", type, "The generated video.")}; }

std::vector<Field> seededClipOut(std::string_view type) {
  return {fileNamed("video", type, "The generated video."), seedUsed()};
}

std::vector<Field> soundOut(const char* name, std::string_view type) {
  return {fileNamed(name, type, "The generated audio file.")};
}

}  // namespace sandbox
