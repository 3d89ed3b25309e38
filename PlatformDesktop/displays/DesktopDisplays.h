#pragma once

#include <QObject>
#include <functional>
#include <vector>

#include "Platform/Displays.h"
#include "PlatformDesktop/displays/DisplayMap.h"

class QScreen;

namespace qb {

/// The screens as Qt knows them. Main thread.
class DesktopDisplays : public QObject, public Displays {
 public:
  DesktopDisplays();

  std::vector<Screen> screens() const override;
  [[nodiscard]] Subscription registerReconfigurationCallback(
      std::function<void()> callback) override;

  /// Between pixels and points, as of now.
  const DisplayMap& map() const { return map_; }

 private:
  struct Callback {
    std::uint64_t id;
    std::function<void()> call;
  };

  void watch(QScreen* screen);
  void noteChange();
  void update();

  DisplayMap map_;
  std::vector<Screen> screens_;
  std::vector<Callback> callbacks_;
  std::uint64_t lastCallback_ = 0;
  bool changePending_ = false;
};

}  // namespace qb
