// What the fault shim wrote down of one run: every step that was done, in order.
#pragma once

#include <QByteArray>
#include <QString>
#include <optional>
#include <vector>

namespace sorvan::torture {

struct Step {
  quint64 number = 0;
  QString call;    // "open", "opentrunc", "write", "truncate", "fsync", "rename", "link", "unlink", "rmdir", "mkdir",
                   // "connect", "send", "recv"; "died" or "failed" where a fault of the shim struck, "refused" where the
                   // system would not do it
  QString path;    // absolute; empty for the network
  QString other;   // where a rename or a link comes from; the call that was struck or refused
  qint64 offset = 0;
  QByteArray bytes;
};

// The steps of a journal. A last line that was cut off is left out. Throws std::runtime_error when there is no journal.
std::vector<Step> readJournal(const QString& file);

// The step that a fault of the shim struck, or nothing.
std::optional<Step> struckIn(const std::vector<Step>& steps);

// What a step is, the same in every run: the call and the path below `root` with every name of chance replaced.
QString placeOf(const QString& call, const QString& path, const QString& root);
// The same as the shim is told it: "CALL GLOB".
QString globOf(const QString& call, const QString& path, const QString& root);

}  // namespace sorvan::torture
