#include "generation/marked_areas_run.h"

#include <QFile>

#include "base/json.h"
#include "generation/marked_areas_pictures.h"
#include "generation/texts.h"
#include "platform/pictures.h"

namespace sorvan::generation {
namespace {

void writePicture(const QString& path, const QByteArray& png) {
  QFile file(path);
  const bool written = file.open(QIODevice::WriteOnly) &&  // not durable: a temporary file
                       file.write(png) == png.size() && file.flush();
  if (!written) throw SorvanError(texts::marksCannotBePrepared());
}

/// Throws SorvanError "Cannot read the image to mark up.".
QSize sizeToMark(const QString& path) {
  std::optional<PictureFacts> facts;
  try {
    facts = probePicture(path);
  } catch (const SorvanError&) {
    facts.reset();
  }
  if (!facts) throw SorvanError(texts::markedImageUnreadable());
  return facts->size;
}

/// No sum is made of the numbers, since those of a damaged note could overflow.
bool liesIn(const MarkedPatch& patch, const MarkedRoute& route) {
  const bool fits = patch.width >= 1 && patch.height >= 1 && patch.width <= route.width && patch.height <= route.height;
  return fits && patch.x >= 0 && patch.y >= 0 && patch.x <= route.width - patch.width &&
         patch.y <= route.height - patch.height;
}

}  // namespace

bool hasMarks(const GenerationRequest& request) { return request.markup && !request.markup->empty(); }

MarkedRoute chosenRoute(const GenerationRequest& request, QSize picture, const QStringList& sizes) {
  MarkedRoute route{picture.width(), picture.height(), std::nullopt};
  if (hasMarks(request) && request.confineToMarks.value_or(true))
    route.patch = planPatch(*request.markup, picture, sizes);
  return route;
}

PreparedMarks preparedMarks(const MarksWork& work) {
  const MarkedRoute route = chosenRoute(work.request, sizeToMark(work.original), work.sizes);
  PreparedMarks prepared{work.markupFile, work.request, route};
  if (!route.patch) {
    writePicture(work.markupFile, annotatedPicture(work.original, *work.request.markup));
    return prepared;
  }
  writePicture(work.pieceFile, croppedPicture(work.original, route.target()));
  prepared.file = work.pieceFile;
  prepared.request.markup.reset();
  prepared.request.size = route.patch->size;
  return prepared;
}

QByteArray encodedRoute(const MarkedRoute& route) { return encodeJson(route); }

std::optional<MarkedRoute> decodedRoute(const QByteArray& bytes) {
  try {
    const auto route = decodeJson<MarkedRoute>(bytes);
    if (route.width < 1 || route.height < 1) return std::nullopt;
    return !route.patch || liesIn(*route.patch, route) ? std::optional(route) : std::nullopt;
  } catch (const SorvanError&) {
    return std::nullopt;
  }
}

std::optional<QByteArray> confinedResult(const ConfineWork& work) {
  if (!hasMarks(work.request)) return std::nullopt;
  std::optional<MarkedRoute> route = work.route;
  try {
    if (!route) route = chosenRoute(work.request, sizeToMark(work.original), work.sizes);
  } catch (const SorvanError&) {
    return std::nullopt;
  }
  return confinedPicture(work.result, work.original, *work.request.markup, route);
}

}  // namespace sorvan::generation
