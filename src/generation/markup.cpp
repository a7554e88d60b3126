#include "generation/markup.h"

#include <algorithm>

namespace sorvan::generation {

QString Markup::prompt(const QString& prompt, const std::vector<MarkupBox>& boxes) {
  QStringList lines;
  if (!prompt.trimmed().isEmpty()) lines.append(prompt.trimmed());
  for (const MarkupBox& box : boxes) {
    const QString note = box.note.trimmed();
    const bool known = std::any_of(lines.cbegin(), lines.cend(),
                                   [&](const QString& line) { return line.contains(note, Qt::CaseInsensitive); });
    if (!note.isEmpty() && !known) lines.append(note);
  }
  for (QString& line : lines)
    if (line.endsWith(u'.')) line.chop(1);
  return lines.join(QStringLiteral(". "));
}

QString Markup::instruction(const std::vector<MarkupBox>& boxes) {
  if (boxes.empty()) return QString();
  QStringList lines;
  for (std::size_t i = 0; i < boxes.size(); ++i) {
    const QString note = boxes[i].note.trimmed();
    lines.append(
        QStringLiteral("Box %1: %2")
            .arg(QString::number(i + 1), note.isEmpty() ? QStringLiteral("apply the instruction here") : note));
  }
  return QStringLiteral("\n\nThe first image has red numbered boxes marking where to make changes:\n") +
         lines.join(u'\n') +
         QStringLiteral(
             "\nChange only what is inside the boxes, and do not show the red boxes or numbers in the result.");
}

}  // namespace sorvan::generation
