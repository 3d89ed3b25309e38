#include "PlatformSimulated/SimulatedDistributedNotifications.h"

#include <utility>

namespace qb {

void SimulatedDistributedNotifications::post(const std::string& name, const std::string& object) {
  posted_.push_back({name, object});
  postFromAnotherProgram(name, object);
}

void SimulatedDistributedNotifications::postFromAnotherProgram(const std::string& name,
                                                               const std::string& object) {
  if (!busIsPresent_) return;
  host_.schedule(0, [this, notification = Notification{name, object}] { deliver(notification); });
}

Subscription SimulatedDistributedNotifications::addObserver(const std::string& name,
                                                            const std::string& object,
                                                            std::function<void()> handler) {
  const int number = nextObserver_++;
  observers_[number] = {{name, object}, std::move(handler)};
  return Subscription([this, number] { observers_.erase(number); });
}

void SimulatedDistributedNotifications::deliver(const Notification& notification) {
  std::vector<int> numbers;
  for (const auto& [number, observer] : observers_) numbers.push_back(number);
  for (const int number : numbers) {
    const auto found = observers_.find(number);
    if (found == observers_.end()) continue;
    const Notification& wanted = found->second.wanted;
    if (wanted.name != notification.name) continue;
    if (!wanted.object.empty() && wanted.object != notification.object) continue;
    // The handler may end its own observation.
    const auto handler = found->second.handler;
    handler();
  }
}

}  // namespace qb
