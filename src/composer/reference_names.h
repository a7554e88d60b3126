// The names of attached pictures while pictures come, go and are renamed: pure functions.
#pragma once

#include <QString>
#include <QUuid>

#include <optional>
#include <vector>

#include "composer/room.h"
#include "core/request_values.h"

namespace sorvan::composer {

/// Names, and the draft that mentions them.
struct NamedReferences {
  std::vector<ReferenceBinding> bindings;
  QString draft;
  bool operator==(const NamedReferences&) const = default;
};

/// A name for each attached picture: those there are, and "Reference{n}" for the others. While the draft holds words
/// the names of removed pictures stay, so that a picture that comes back is called as before.
std::vector<ReferenceBinding> synchronizedNames(std::vector<ReferenceBinding> bindings,
                                                const std::vector<QUuid>& references, const QString& draft);

/// Numbers the automatic names of a reused prompt from 1 again, around the names that the user gave, and has the draft
/// say the new ones. `ordered` has one binding for each reference, in the order of upload.
NamedReferences namesForNewPrompt(std::vector<ReferenceBinding> ordered, const QString& draft);

/// Gives a picture another name and part; "Generic" is no part. The draft follows. Without a binding of the asset
/// nothing changes. Throws SorvanError for a name that is unfit or taken.
NamedReferences renamedReference(const NamedReferences& names, const QUuid& asset, const QString& label,
                                 const std::optional<QString>& role);

/// Whether marks have lost the picture that they were drawn on, which is the first of the references.
bool marksAreStray(const std::optional<QUuid>& markedAsset, const std::vector<QUuid>& references);

/// The kind that is stored as no role at all.
inline constexpr QStringView genericKind = u"Generic";

}  // namespace sorvan::composer
