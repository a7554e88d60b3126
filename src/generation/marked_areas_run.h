// The part that marks play in a run: what is sent instead of the first reference, and where the answer goes.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

#include "generation/marked_areas_plan.h"

namespace sorvan::generation {

/// A request whose areas are marked, and where the picture that is sent may be written.
struct MarksWork {
  GenerationRequest request;
  QString original;    ///< absolute path of the first reference
  QStringList sizes;   ///< the size texts at which the model edits
  QString pieceFile;   ///< absolute path for a piece cut around the marks
  QString markupFile;  ///< absolute path for a copy with the boxes drawn on it
};

/// The picture and the request that a provider gets instead of the user's.
struct PreparedMarks {
  QString file;  ///< absolute path of the picture that replaces the first reference
  GenerationRequest request;
  MarkedRoute route;
};

/// Whether a request has marked areas.
bool hasMarks(const GenerationRequest& request);

/// How a request's marks are sent: as a patch, if the result is kept to the marks and the model can edit one.
MarkedRoute chosenRoute(const GenerationRequest& request, QSize picture, const QStringList& sizes);

/// Writes the piece or the annotated picture. With a piece the request that is handed on has no marks, since no boxes
/// are to be seen on it, and asks for the piece's size. Throws SorvanError; nothing was sent by then. For the pool.
PreparedMarks preparedMarks(const MarksWork& work);

/// The note of a route as it is kept beside a result.
QByteArray encodedRoute(const MarkedRoute& route);
/// None for bytes that are no such note or name a patch that is not in its picture.
std::optional<MarkedRoute> decodedRoute(const QByteArray& bytes);

/// A provider's picture that answers a request with marked areas.
struct ConfineWork {
  GenerationRequest request;
  QString original;                  ///< absolute path of the first reference
  QString result;                    ///< absolute path of the provider's picture
  std::optional<MarkedRoute> route;  ///< as it was noted when the picture was sent; computed again when it is lost
  QStringList sizes;                 ///< as in MarksWork
};

/// The finished picture as PNG data; none when the result cannot be laid over the original. Never throws. For the pool.
std::optional<QByteArray> confinedResult(const ConfineWork& work);

}  // namespace sorvan::generation
