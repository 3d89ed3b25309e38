#pragma once

#include <memory>
#include <vector>

namespace qb {

/// A list that does not keep its members alive (`arrayWithWeakReferences`). Members that have gone
/// are passed over.
template <class T>
class WeakList {
 public:
  void add(const std::shared_ptr<T>& member) { members_.push_back(member); }
  void remove(const T* member) {
    std::erase_if(members_, [member](const std::weak_ptr<T>& entry) {
      const auto held = entry.lock();
      return !held || held.get() == member;
    });
  }
  /// Drops the members that have gone; whether there were any.
  bool forgetGone() {
    return std::erase_if(members_, [](const auto& entry) { return entry.expired(); }) > 0;
  }
  bool isEmpty() const { return members_.empty(); }
  /// The members that live, in order; changes to the list do not disturb a walk over the answer.
  std::vector<std::shared_ptr<T>> members() const {
    std::vector<std::shared_ptr<T>> live;
    live.reserve(members_.size());
    for (const auto& entry : members_) {
      if (auto held = entry.lock()) live.push_back(std::move(held));
    }
    return live;
  }

 private:
  std::vector<std::weak_ptr<T>> members_;
};

/// What `arrayWithWeakReferences` answers.
template <class T>
WeakList<T> arrayWithWeakReferences() {
  return {};
}

}  // namespace qb
