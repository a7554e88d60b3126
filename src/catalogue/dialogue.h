// A speaker script as the dialogue voice takes it.
#pragma once

#include <QJsonArray>
#include <QString>

namespace sorvan::catalogue {

/// One object with `text` and `voice` for each speech. A line starts with a voice's name and a colon; a line without
/// one goes on with the speech before it. Throws SorvanError when the first line names nobody, when a name is no voice
/// of the model, or when nothing is said.
QJsonArray dialogueInputs(const QString& script);

}  // namespace sorvan::catalogue
