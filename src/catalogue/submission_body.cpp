#include "catalogue/submission_body.h"

#include "catalogue/request_body.h"
#include "generation/generation_request.h"

namespace sorvan::catalogue {

using namespace Qt::StringLiterals;

namespace {

/// The indexes of a request's references: which are sent as inputs, and which is the end frame.
struct SortedReferences {
  std::vector<std::size_t> inputs;
  std::optional<std::size_t> endFrame;
};

SortedReferences sortedReferences(const GenerationRequest& request) {
  SortedReferences sorted;
  const std::vector<ReferenceBinding> bindings = orderedReferences(request);
  for (std::size_t index = 0; index < bindings.size(); ++index) {
    const bool isEndFrame = bindings[index].role.value_or(QString()) == endFrameRole;
    if (isEndFrame && !sorted.endFrame) {
      sorted.endFrame = index;
    } else {
      sorted.inputs.push_back(index);
    }
  }
  return sorted;
}

}  // namespace

QJsonObject submissionBody(const FalModel& model, const GenerationRequest& request, const QStringList& addresses) {
  const SortedReferences sorted = sortedReferences(request);
  BodyParts parts;
  parts.prompt = submittedPrompt(request);
  parts.size = request.size;
  parts.count = request.count;
  parts.seed = request.seed;
  parts.keepImageShape = !request.shapeChosen.value_or(false);
  parts.options = request.options.value_or(TextByKey());
  for (const std::size_t index : sorted.inputs) parts.inputs << addresses.value(static_cast<qsizetype>(index));
  if (sorted.endFrame) parts.endImage = addresses.value(static_cast<qsizetype>(*sorted.endFrame));
  return requestBody(model, parts);
}

QStringList pendingAddresses(const GenerationRequest& request) {
  return QStringList(static_cast<qsizetype>(request.referenceIDs.size()), u"pending"_s);
}

}  // namespace sorvan::catalogue
