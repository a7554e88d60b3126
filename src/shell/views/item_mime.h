// How items of the library travel in a drag inside the program. A drag out of it adds the files' addresses.
#pragma once

#include <QMimeData>
#include <QString>
#include <QUuid>

#include <vector>

#include "base/ids.h"
#include "shell/views/room.h"

namespace sorvan::views {

inline const QString itemMimeType = QStringLiteral("application/x-sorvan-items");

inline void setItems(QMimeData& data, const std::vector<QUuid>& items) {
  QStringList lines;
  for (const QUuid& item : items) lines << uuidText(item);
  data.setData(itemMimeType, lines.join(u'\n').toLatin1());
}

// Empty when the drag holds none.
inline std::vector<QUuid> itemsOf(const QMimeData& data) {
  std::vector<QUuid> items;
  for (const QByteArray& line : data.data(itemMimeType).split('\n')) {
    const QUuid id = uuidFromText(QString::fromLatin1(line));
    if (!id.isNull()) items.push_back(id);
  }
  return items;
}

}  // namespace sorvan::views
