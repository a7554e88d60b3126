#pragma once

#include "shell/room.h"

#include <QList>
#include <QMimeData>
#include <QUrl>
#include <QUuid>

#include <memory>
#include <vector>

namespace sorvan::shell {

// The program's own items among what is dragged or copied: their ids, uppercase, a line each.
inline const QString itemsFormat = QStringLiteral("application/x-sorvan-items");

struct TransferItem {
  QUuid id;
  QString path;  // absolute; the file stays where it is
  bool isPicture = false;
};

// Items as other programs take them: a list of files in place, the copy formats of the file managers, and for one
// picture the picture itself, which is decoded when somebody asks for it. Every format says copy.
std::unique_ptr<QMimeData> transferOf(const std::vector<TransferItem>& items);

// Local files that come from another program; empty when there are none or the items are the program's own.
QList<QUrl> filesFromOutside(const QMimeData& data);
// The program's own items, in their order.
std::vector<QUuid> itemsFromInside(const QMimeData& data);

}  // namespace sorvan::shell
