#pragma once

#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "QuillboxCommon/views/Window.h"
#include "support/PrintGeometry.h"

namespace qb::test {

/// What a window did to its peer. It outlives both.
struct PeerRecord {
  /// Calls with their values, requests to paint aside.
  std::vector<std::string> calls;
  /// The requests to paint, each as it came.
  std::vector<Rect> dirty;
  double contentAlpha = 1;
};

class RecordingPeer : public WindowPeer {
 public:
  explicit RecordingPeer(PeerRecord& record) : record_(record) {}

  void setFrame(const Rect& frame) override {
    note("setFrame", frame.x(), frame.y(), frame.width(), frame.height());
  }
  void setLevel(std::int64_t level) override { note("setLevel", level); }
  void setCollectionBehavior(std::uint64_t behavior) override {
    note("setCollectionBehavior", behavior);
  }
  void setStyleMask(std::uint64_t mask) override { note("setStyleMask", mask); }
  void setHasShadow(bool hasShadow) override { note("setHasShadow", hasShadow); }
  void setOpaque(bool opaque) override { note("setOpaque", opaque); }
  void setTitle(const std::string& title) override { note("setTitle", title); }
  void setBackgroundColor(const Color& color) override {
    note("setBackgroundColor", color.red(), color.green(), color.blue(), color.alpha());
  }
  void setBackgroundBlurRadius(std::int64_t radius) override {
    note("setBackgroundBlurRadius", radius);
  }
  void setContentAlphaValue(double alpha) override {
    record_.contentAlpha = alpha;
    note("setContentAlphaValue", alpha);
  }
  void orderFront() override { note("orderFront"); }
  void makeKeyAndOrderFront() override { note("makeKeyAndOrderFront"); }
  void orderOut() override { note("orderOut"); }
  void setNeedsDisplay(const Rect& rect) override { record_.dirty.push_back(rect); }

 private:
  template <class... Values>
  void note(const char* name, const Values&... values) {
    std::ostringstream line;
    line << name;
    ((line << " " << values), ...);
    record_.calls.push_back(line.str());
  }

  PeerRecord& record_;
};

/// Makes recording peers; `record` is the one record of all of them.
class RecordingPeerFactory : public WindowPeerFactory {
 public:
  std::unique_ptr<WindowPeer> createWindowPeer(WindowPeerClient&) override {
    return std::make_unique<RecordingPeer>(record);
  }
  PeerRecord record;
};

}  // namespace qb::test
