// The service's whole public catalogue.
#pragma once
#include <QByteArray>

#include "entry.h"

namespace sandbox {

// Every model, in the order of the list.
const Entries& catalogue();
// The model of this id, or null.
const Entry* entryOf(const QString& id);

// The document of a model as a tree, made at its first use and kept; null when it has none. Safe from every thread.
const json::object* publishedDocument(const QString& id);

// Writes the document of every model into the folder, as "owner__app__path.json". Throws std::runtime_error.
void writeDocuments(const QString& folder);

}  // namespace sandbox
