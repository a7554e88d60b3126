// How the pictures of a saved reference are named when they are attached: pure functions.
#pragma once

#include <QString>
#include <QStringList>
#include <QUuid>

#include <vector>

#include "composer/room.h"
#include "core/records.h"

namespace sorvan::composer {

/// The names of `count` pictures under a base: the base alone for one, base1, base2 and so on for several.
QStringList picturesNames(const QString& base, std::size_t count);

/// One binding for each picture. Several are a group of the base's name.
std::vector<ReferenceBinding> bindingsOf(const QString& base, const QString& kind, const QString& subject,
                                         const std::vector<QUuid>& images);

/// The first of "{base}", "{base}_2", "{base}_3" … whose names are all free.
QString freeBaseName(const QString& base, std::size_t count, const std::vector<ReferenceBinding>& present);

/// What attaching a saved reference makes of the names: those present, then the new ones. `live` are its pictures that
/// can be sent, `attached` those of the prompt with their names `present`. Throws SorvanError with what is in the way.
std::vector<ReferenceBinding> attachedBindings(const SavedReference& reference, const std::vector<QUuid>& live,
                                               const std::vector<QUuid>& attached,
                                               const std::vector<ReferenceBinding>& present);

}  // namespace sorvan::composer
