// What a drop or a paste brings that can become a reference.
#pragma once

#include <QImage>
#include <QStringList>

#include "shell/references_presenter.h"
#include "shell/views/room.h"

class QMimeData;

namespace sorvan::views {

// The files on this machine, in their order.
QStringList localFiles(const QMimeData& data);
// Whether it holds items of the library, a picture's file, or a picture.
bool holdsMedia(const QMimeData& data);
// The same for a paste, where a picture beside words, as spreadsheets copy them, is no picture.
bool pastesMedia(const QMimeData& data);
// Hands it on: items first, then files, then a picture as such. False: there was nothing to attach.
bool attachMedia(const QMimeData& data, ReferencesPresenter& references);

}  // namespace sorvan::views
