#pragma once

#include "shell/room.h"

#include <QString>

#include <functional>
#include <vector>

namespace sorvan::shell {

// What happens when the program starts, in order. Later parts of the program add their steps where they belong; a step
// that fails is told and does not keep the next ones from happening. No step waits for anything.
class StartOrder {
 public:
  using Step = std::function<void()>;

  // Adds a step at the end, or before the step of that name.
  void add(const QString& name, Step step);
  void addBefore(const QString& other, const QString& name, Step step);
  std::vector<QString> names() const;
  // Runs every step once. `report` gets a sentence for each that failed.
  void run(const std::function<void(const QString&)>& report) const;

 private:
  struct Entry {
    QString name;
    Step step;
  };
  std::vector<Entry> entries_;
};

}  // namespace sorvan::shell
