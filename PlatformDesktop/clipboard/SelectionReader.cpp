#include "PlatformDesktop/clipboard/SelectionReader.h"

#include <algorithm>
#include <cstring>

namespace qb {

namespace {

using Clock = std::chrono::steady_clock;
constexpr std::chrono::seconds longestPause{2};
constexpr std::chrono::seconds longestTransfer{10};
constexpr std::size_t mostBytes = 64 << 20;
constexpr std::size_t mostTargets = 1000;

}  // namespace

std::vector<std::string> SelectionReader::targets() {
  const auto property = convert(connection_.atom("TARGETS"));
  if (!property || property->format != 32) return {};
  std::vector<xcb_atom_t> atoms(property->bytes.size() / sizeof(xcb_atom_t));
  std::memcpy(atoms.data(), property->bytes.data(), atoms.size() * sizeof(xcb_atom_t));
  atoms.resize(std::min(atoms.size(), mostTargets));
  std::vector<std::string> names;
  for (const xcb_atom_t atom : atoms) names.push_back(connection_.nameOfAtom(atom));
  connection_.drain();
  return names;
}

std::optional<PropertyList::Data> SelectionReader::data(const std::string& target) {
  auto property = convert(connection_.atom(target));
  if (!property || property->format != 8) return std::nullopt;
  return std::move(property->bytes);
}

std::optional<SelectionReader::Property> SelectionReader::convert(xcb_atom_t target) {
  if (!connection_.isUsable()) return std::nullopt;
  const xcb_atom_t property = connection_.atom("QUILLBOX_SELECTION");
  const xcb_window_t window = connection_.makeWindow();
  xcb_convert_selection(connection_.get(), window, connection_.atom("CLIPBOARD"), target, property,
                        XCB_CURRENT_TIME);
  auto result = answer(window, target, property);
  xcb_destroy_window(connection_.get(), window);
  connection_.drain();
  return result;
}

std::optional<SelectionReader::Property> SelectionReader::answer(xcb_window_t window,
                                                                 xcb_atom_t target,
                                                                 xcb_atom_t property) {
  bool hasData = false;
  wasAnswered_ = connection_.waitFor(
      [&](const SelectionConnection::Event& event) {
        if ((event.response_type & 0x7F) != XCB_SELECTION_NOTIFY) return false;
        const auto& notice = reinterpret_cast<const xcb_selection_notify_event_t&>(event);
        if (notice.requestor != window || notice.target != target) return false;
        hasData = notice.property == property;
        return true;
      },
      Clock::now() + longestPause);
  if (!wasAnswered_ || !hasData) return std::nullopt;
  auto result = take(window, property);
  const bool isLong = result && result->type == connection_.atom("INCR");
  return isLong ? incrementally(window, property) : std::move(result);
}

std::optional<SelectionReader::Property> SelectionReader::incrementally(xcb_window_t window,
                                                                        xcb_atom_t property) {
  const auto end = Clock::now() + longestTransfer;
  Property all;
  while (true) {
    const bool hasCome = connection_.waitFor(
        [&](const SelectionConnection::Event& event) {
          if ((event.response_type & 0x7F) != XCB_PROPERTY_NOTIFY) return false;
          const auto& notice = reinterpret_cast<const xcb_property_notify_event_t&>(event);
          return notice.window == window && notice.atom == property &&
                 notice.state == XCB_PROPERTY_NEW_VALUE;
        },
        std::min(end, Clock::now() + longestPause));
    wasAnswered_ = hasCome;
    if (!hasCome) return std::nullopt;
    auto part = take(window, property);
    if (!part) return std::nullopt;
    // An empty part is the end.
    if (part->bytes.empty()) return all;
    all.format = part->format;
    all.bytes.insert(all.bytes.end(), part->bytes.begin(), part->bytes.end());
    if (all.bytes.size() > mostBytes) return std::nullopt;
  }
}

std::optional<SelectionReader::Property> SelectionReader::take(xcb_window_t window,
                                                               xcb_atom_t property) {
  xcb_connection_t* const x = connection_.get();
  const auto cookie = xcb_get_property(x, 1, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0,
                                       mostBytes / sizeof(std::uint32_t));
  const XReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(x, cookie, nullptr));
  if (!reply || reply->type == XCB_ATOM_NONE || reply->bytes_after != 0) return std::nullopt;
  const auto* const bytes = static_cast<const std::uint8_t*>(xcb_get_property_value(reply.get()));
  const auto length = static_cast<std::size_t>(xcb_get_property_value_length(reply.get()));
  return Property{reply->type, reply->format, PropertyList::Data(bytes, bytes + length)};
}

}  // namespace qb
