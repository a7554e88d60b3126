#include "shell/start_order.h"

#include "base/sorvan_error.h"

#include <algorithm>

namespace sorvan::shell {

void StartOrder::add(const QString& name, Step step) { entries_.push_back({name, std::move(step)}); }

void StartOrder::addBefore(const QString& other, const QString& name, Step step) {
  const auto isOther = [&other](const Entry& entry) { return entry.name == other; };
  const auto place = std::find_if(entries_.begin(), entries_.end(), isOther);
  entries_.insert(place, {name, std::move(step)});
}

std::vector<QString> StartOrder::names() const {
  std::vector<QString> names;
  for (const Entry& entry : entries_) names.push_back(entry.name);
  return names;
}

void StartOrder::run(const std::function<void(const QString&)>& report) const {
  for (const Entry& entry : entries_) {
    try {
      entry.step();
    } catch (const std::exception& failure) {
      report(describe(failure));
    }
  }
}

}  // namespace sorvan::shell
