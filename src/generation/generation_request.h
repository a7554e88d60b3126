// What a generation request can say of itself: whether it may be sent, what is sent, how outputs descend from it.
#pragma once

#include <QByteArray>
#include <QString>
#include <QUuid>

#include <vector>

#include "core/request_values.h"
#include "generation/model_facts.h"
#include "generation/provider.h"

namespace sorvan::generation {

/// Checks a request against the models that its provider lists. Throws SorvanError with the first sentence that
/// applies, in a fixed order; changes nothing.
void validate(const GenerationRequest& request, const std::vector<ModelOption>& models);

/// One binding for each reference, in the order of upload: the stored one, or one named "Reference{n}".
std::vector<ReferenceBinding> orderedReferences(const GenerationRequest& request);

/// The references whose role is "End frame".
std::vector<QUuid> endFrameIDs(const GenerationRequest& request);

/// The text that is sent: mentions resolved, and the instruction for marked areas unless the prompt is to go plainly.
/// Throws SorvanError when a name or a mention is wrong.
QString submittedPrompt(const GenerationRequest& request);

/// How an output of the request descends from one of its references.
RelationshipType relationshipFor(const GenerationRequest& request, const QUuid& reference);

/// The settings of a request as UTF-8 text of a JSON object, indented and with sorted keys, for a generation's record.
/// A nested value that cannot be written is left out.
QByteArray parametersJSON(const GenerationRequest& request, const ModelFacts& models);

/// Whether any marked area carries words of its own.
bool hasNotedMarks(const GenerationRequest& request);

/// The role that says that an output is an edited copy of the reference.
inline constexpr QStringView editSourceRole = u"Edit source";
/// The role of a clip's last picture.
inline constexpr QStringView endFrameRole = u"End frame";

}  // namespace sorvan::generation
