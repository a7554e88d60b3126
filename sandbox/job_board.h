// The jobs of the queue and how they move: waiting, running, completed.
#pragma once
#include <QMap>
#include <QObject>
#include <QThreadPool>

#include "job.h"
#include "maker.h"

namespace sandbox {

// Jobs move by time, or by steps when the pace is manual. Their media are made on a pool of two threads, so the main
// thread always answers. Every job has a file in the folder: a new board takes up what an old one left.
class JobBoard : public QObject {
  Q_OBJECT
 public:
  struct Work {
    int delayMilliseconds = 0;  // what a job takes at least from its arrival to its end
    int longestSide = 0;        // of pictures and clips, in pixels; 0 for as large as is asked
  };
  // `shelf` outlives the board.
  JobBoard(QString folder, const MediaShelf& shelf, Work work);
  ~JobBoard() override;

  // Takes a new job up, with its file written. `body` is kept as it came.
  const Job& add(const QString& endpoint, const QByteArray& body);
  const Job* find(const QString& id) const;
  // How many arrived before this one and still wait.
  int positionOf(const Job& job) const;
  void cancel(const QString& id);

  // With a manual pace a job stays where it is until step() lets every job move on by one state.
  void setManual(bool manual);
  void step();

 private:
  void letReach(const QString& id, JobState state);
  void startMaking(Job& job);
  void finishMaking(const QString& id, const Job& result);
  void schedule(const Job& job);
  void keep(const Job& job) const;
  void takeUp();

  QString folder_;
  const MediaShelf& shelf_;
  Work work_;
  bool manual_ = false;
  qint64 lastNumber_ = 0;
  QMap<QString, Job> jobs_;
  QThreadPool makers_;
};

}  // namespace sandbox
