#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "Platform/DistributedNotifications.h"
#include "PlatformSimulated/SimulatedRunLoopHost.h"

namespace qb {

/// The session's news, carried in the next `runPending`.
class SimulatedDistributedNotifications : public DistributedNotifications {
 public:
  explicit SimulatedDistributedNotifications(SimulatedRunLoopHost& host) : host_(host) {}

  void post(const std::string& name, const std::string& object) override;
  Subscription addObserver(const std::string& name, const std::string& object,
                           std::function<void()> handler) override;

  struct Notification {
    std::string name;
    std::string object;
    friend bool operator==(const Notification&, const Notification&) = default;
  };
  /// Another program posts: the same as `post`, but not counted as this program's.
  void postFromAnotherProgram(const std::string& name, const std::string& object);
  /// Everything that this program has posted.
  const std::vector<Notification>& posted() const { return posted_; }
  std::size_t numberOfObservers() const { return observers_.size(); }
  /// A session without a bus carries nothing.
  void setBusIsPresent(bool present) { busIsPresent_ = present; }

 private:
  struct Observer {
    Notification wanted;
    std::function<void()> handler;
  };
  void deliver(const Notification& notification);

  SimulatedRunLoopHost& host_;
  bool busIsPresent_ = true;
  std::vector<Notification> posted_;
  std::map<int, Observer> observers_;
  int nextObserver_ = 0;
};

}  // namespace qb
