#include "PlatformDesktop/session/RoutingTable.h"

#include <charconv>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace qb {

namespace {

constexpr std::uint32_t routeIsUp = 0x1;
/// The kernel keeps one such route of last resort: it says that there is no way.
constexpr std::uint32_t routeRejects = 0x200;

using Fields = std::vector<std::string_view>;

Fields fieldsOf(std::string_view line) {
  constexpr const char* blanks = " \t\r";
  Fields fields;
  for (;;) {
    const std::size_t first = line.find_first_not_of(blanks);
    if (first == std::string_view::npos) return fields;
    line.remove_prefix(first);
    const std::size_t end = std::min(line.find_first_of(blanks), line.size());
    fields.push_back(line.substr(0, end));
    line.remove_prefix(end);
  }
}

std::optional<std::uint32_t> hexadecimal(std::string_view text) {
  std::uint32_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, 16);
  return error == std::errc() && end == text.data() + text.size() ? std::optional(number)
                                                                  : std::nullopt;
}

bool isZero(std::string_view digits) {
  return !digits.empty() && digits.find_first_not_of('0') == std::string_view::npos;
}

bool leadsOut(std::string_view flags) {
  const auto bits = hexadecimal(flags);
  return bits && (*bits & routeIsUp) && !(*bits & routeRejects);
}

bool anyLine(std::string_view table, const std::function<bool(const Fields&)>& isWanted) {
  while (!table.empty()) {
    const std::size_t end = table.find('\n');
    if (isWanted(fieldsOf(table.substr(0, end)))) return true;
    table.remove_prefix(end == std::string_view::npos ? table.size() : end + 1);
  }
  return false;
}

}  // namespace

bool hasDefaultRoute(std::string_view table) {
  // Interface, destination, gateway, flags, three counters, mask.
  return anyLine(table, [](const Fields& fields) {
    return fields.size() >= 8 && isZero(fields[1]) && isZero(fields[7]) && leadsOut(fields[3]);
  });
}

bool hasDefaultRouteOfVersion6(std::string_view table) {
  // Destination and its length, source and its length, next hop, three counters, flags, interface.
  return anyLine(table, [](const Fields& fields) {
    return fields.size() >= 10 && isZero(fields[0]) && isZero(fields[1]) && leadsOut(fields[8]);
  });
}

}  // namespace qb
