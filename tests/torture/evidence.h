// What one trial left behind, as the invariants look at it.
#pragma once

#include <QHash>
#include <QJsonArray>
#include <QJsonObject>
#include <QSet>
#include <QString>
#include <QStringList>
#include <vector>

#include "torture/station.h"

namespace sorvan::torture {

// One line of the service's ledger, with what was made for it.
struct Purchase {
  QString handle;
  QString prompt;
  bool cancelled = false;   // stopped at the service on the user's word, which takes nothing for it
  QStringList checksums;    // of the files that were made, SHA-256
};

// The purchases of these runs of the sandbox.
std::vector<Purchase> purchasesOf(const sorvan::test::SandboxProcess& sandbox, const QStringList& runs);

using Files = QHash<QString, QByteArray>;  // path below the folder, and SHA-256 of the bytes

// Every file below the folder, hidden ones too, but for a library's database with its log, and its lock.
Files filesBelow(const QString& folder);

struct Evidence {
  Grounds grounds;
  QJsonObject report;            // of the last recovery that did something
  QJsonObject secondReport;      // of the start after it
  Files before;                  // the workspace before the trial
  Files after;                   // when all had come to rest
  Files second;                  // after the start after that
  std::vector<Purchase> purchases;
  QList<QJsonObject> acknowledged;
  QJsonObject opened;            // what the first start after the fault found
  bool leftUnsaved = false;      // it was told to save again after a single failure, and did not
  QString damagedSidecar;        // below the workspace: a file that nobody could read before the trial, or empty
  int oldVersion = 0;            // the form of the database before the trial, where that was an old one
  QJsonObject gateway;           // its books and operations, when all had come to rest
  int mostPosts = 0;             // of one body in one run of the driver
  QStringList unended;           // runs that did not end by themselves, or crashed
  QByteArray secret;             // planted in the key
  bool secretShownElsewhere = false;
};

// What the acknowledgements' file holds.
QList<QJsonObject> acknowledgedIn(const Grounds& grounds);

}  // namespace sorvan::torture
