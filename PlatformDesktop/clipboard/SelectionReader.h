#pragma once

#include <optional>
#include <string>
#include <vector>

#include "PlatformDesktop/clipboard/SelectionConnection.h"
#include "QuillboxCommon/PropertyList.h"

namespace qb {

/// Asks the program that has the clipboard for what is on it. Waits for 2 seconds without progress,
/// and for 10 seconds in all; takes 64 MiB at most. Main thread.
class SelectionReader {
 public:
  explicit SelectionReader(SelectionConnection& connection) : connection_(connection) {}

  /// The names by which its owner offers the content; empty when there is none, or no answer.
  std::vector<std::string> targets();
  std::optional<PropertyList::Data> data(const std::string& target);
  /// Whether the last question was answered, be it with a no.
  bool wasAnswered() const { return wasAnswered_; }

 private:
  struct Property {
    xcb_atom_t type = XCB_ATOM_NONE;
    std::uint8_t format = 0;
    PropertyList::Data bytes;
  };

  /// In a window of its own, so that an answer that comes too late cannot be taken for another.
  std::optional<Property> convert(xcb_atom_t target);
  std::optional<Property> answer(xcb_window_t window, xcb_atom_t target, xcb_atom_t property);
  std::optional<Property> incrementally(xcb_window_t window, xcb_atom_t property);
  /// Takes the property away, which asks for the next part of a long one.
  std::optional<Property> take(xcb_window_t window, xcb_atom_t property);

  SelectionConnection& connection_;
  bool wasAnswered_ = true;
};

}  // namespace qb
