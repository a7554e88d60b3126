// Makes what a job asked for. Pure work on values, for the thread pool.
#pragma once
#include <QByteArray>
#include <QJsonArray>
#include <QJsonObject>
#include <QList>
#include <QString>

#include "endpoints.h"
#include "media_shelf.h"

namespace sandbox {

struct WorkOrder {
  QString endpoint;
  Product product;
  QJsonObject input;
  qint64 seed = 0;      // of the input, or picked for the job
  int longestSide = 0;  // in pixels; 0 for as large as the input asks
};

struct MadeFile {
  QString field;  // of the result body
  bool inArray = false;
  QByteArray bytes;
  QString extension;
  QJsonObject facts;  // width, height, duration: what stands beside the address
};

struct Made {
  QList<MadeFile> files;
  QJsonObject beside;  // what stands in the result body beside the files
};

// The model refuses its input: the result answers `status` with the list of details.
struct ModelRefusal {
  int status;
  QJsonArray details;
};
ModelRefusal refusal(const QString& type, const QString& field, const QString& message);

// The same order always makes the same bytes. Throws ModelRefusal, or std::runtime_error when a coder fails.
Made make(const WorkOrder& order, const MediaShelf& shelf);

}  // namespace sandbox
