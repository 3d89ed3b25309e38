#include "QuillboxCommon/PropertyList.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <locale>
#include <sstream>

namespace qb {

namespace {

bool isBlank(char character) {
  return character == ' ' || (character >= '\t' && character <= '\r');
}

bool isDigit(char character) { return character >= '0' && character <= '9'; }

/// A number in front of a text, without its blanks and its sign.
struct LeadingNumber {
  explicit LeadingNumber(std::string_view text) {
    while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
      isNegative = text.front() == '-';
      text.remove_prefix(1);
    }
    digits = text;
  }
  bool isNegative = false;
  std::string_view digits;
};

bool stringAsBool(std::string_view text) {
  text = LeadingNumber(text).digits;
  text.remove_prefix(std::min(text.find_first_not_of('0'), text.size()));
  return !text.empty() && std::string_view("YyTt123456789").find(text.front()) != text.npos;
}

std::int64_t stringAsLong(std::string_view text) {
  using Limits = std::numeric_limits<std::int64_t>;
  const LeadingNumber number(text);
  std::uint64_t magnitude = 0;
  const auto [end, error] =
      std::from_chars(number.digits.data(), number.digits.data() + number.digits.size(), magnitude);
  const bool overflows = error == std::errc::result_out_of_range ||
                         magnitude > static_cast<std::uint64_t>(Limits::max());
  if (overflows) return number.isNegative ? Limits::min() : Limits::max();
  const auto value = static_cast<std::int64_t>(magnitude);
  return number.isNegative ? -value : value;
}

double stringAsDouble(std::string_view text) {
  const LeadingNumber number(text);
  // The words for infinity and for no number are not numbers here.
  const std::string_view digits = number.digits;
  if (digits.empty() || !(isDigit(digits.front()) || digits.front() == '.')) return 0;
  double magnitude = 0;
  const auto [end, error] =
      std::from_chars(digits.data(), digits.data() + digits.size(), magnitude);
  if (error == std::errc::result_out_of_range) {
    // Too great or too near 0: the stream tells them apart, and answers the nearest number.
    std::istringstream stream(std::string(digits.data(), end));
    stream.imbue(std::locale::classic());
    stream >> magnitude;
  }
  return number.isNegative ? -magnitude : magnitude;
}

std::int64_t realAsLong(double value) {
  using Limits = std::numeric_limits<std::int64_t>;
  constexpr double beyondRange = 9223372036854775808.0;
  if (std::isnan(value)) return 0;
  if (value >= beyondRange) return Limits::max();
  if (value < -beyondRange) return Limits::min();
  return static_cast<std::int64_t>(value);
}

}  // namespace

PropertyList::PropertyList() = default;
PropertyList::~PropertyList() = default;
PropertyList::PropertyList(const PropertyList& other) = default;
PropertyList::PropertyList(PropertyList&& other) noexcept = default;
PropertyList& PropertyList::operator=(const PropertyList& other) = default;
PropertyList& PropertyList::operator=(PropertyList&& other) noexcept = default;

PropertyList::PropertyList(bool value) : value_(value) {}
PropertyList::PropertyList(int value) : value_(std::int64_t{value}) {}
PropertyList::PropertyList(long value) : value_(std::int64_t{value}) {}
PropertyList::PropertyList(long long value) : value_(static_cast<std::int64_t>(value)) {}
PropertyList::PropertyList(double value) : value_(value) {}
PropertyList::PropertyList(const char* value) : value_(std::string(value)) {}
PropertyList::PropertyList(std::string value) : value_(std::move(value)) {}
PropertyList::PropertyList(std::string_view value) : value_(std::string(value)) {}
PropertyList::PropertyList(Date value) : value_(value) {}
PropertyList::PropertyList(Data value) : value_(std::move(value)) {}
PropertyList::PropertyList(Array value) : value_(std::move(value)) {}

PropertyList PropertyList::dictionary() {
  PropertyList list;
  list.value_ = Dictionary();
  return list;
}

PropertyList PropertyList::dictionary(
    std::initializer_list<std::pair<std::string, PropertyList>> entries) {
  PropertyList list = dictionary();
  for (const auto& [key, value] : entries) list.setObject(value, key);
  return list;
}

PropertyList PropertyList::array() { return Array(); }

bool PropertyList::boolValue() const {
  if (const auto* text = std::get_if<std::string>(&value_)) return stringAsBool(*text);
  const double number = doubleValue();
  return number != 0 && !std::isnan(number);
}

std::int64_t PropertyList::longValue() const {
  switch (kind()) {
    case Kind::Boolean:
      return std::get<bool>(value_) ? 1 : 0;
    case Kind::Integer:
      return std::get<std::int64_t>(value_);
    case Kind::Real:
      return realAsLong(std::get<double>(value_));
    case Kind::String:
      return stringAsLong(std::get<std::string>(value_));
    default:
      return 0;
  }
}

double PropertyList::doubleValue() const {
  switch (kind()) {
    case Kind::Boolean:
      return std::get<bool>(value_) ? 1 : 0;
    case Kind::Integer:
      return static_cast<double>(std::get<std::int64_t>(value_));
    case Kind::Real:
      return std::get<double>(value_);
    case Kind::String:
      return stringAsDouble(std::get<std::string>(value_));
    default:
      return 0;
  }
}

float PropertyList::floatValue() const {
  constexpr double greatest = std::numeric_limits<float>::max();
  const double value = doubleValue();
  if (!std::isfinite(value)) return static_cast<float>(value);
  return static_cast<float>(std::clamp(value, -greatest, greatest));
}

const std::string& PropertyList::stringValue() const {
  static const std::string empty;
  const auto* text = std::get_if<std::string>(&value_);
  return text != nullptr ? *text : empty;
}

const PropertyList::Data& PropertyList::dataValue() const {
  static const Data empty;
  const auto* data = std::get_if<Data>(&value_);
  return data != nullptr ? *data : empty;
}

PropertyList::Date PropertyList::dateValue() const {
  const auto* date = std::get_if<Date>(&value_);
  return date != nullptr ? *date : Date{};
}

const PropertyList::Array& PropertyList::arrayValue() const {
  static const Array empty;
  const auto* members = std::get_if<Array>(&value_);
  return members != nullptr ? *members : empty;
}

const PropertyList::Dictionary& PropertyList::dictionaryValue() const {
  static const Dictionary empty;
  const auto* entries = std::get_if<Dictionary>(&value_);
  return entries != nullptr ? *entries : empty;
}

void PropertyList::append(PropertyList value) {
  if (!isArray()) value_ = Array();
  std::get<Array>(value_).push_back(std::move(value));
}

const PropertyList& PropertyList::objectForKey(std::string_view key) const {
  static const PropertyList none;
  for (const Entry& entry : dictionaryValue()) {
    if (entry.key == key) return entry.value;
  }
  return none;
}

bool PropertyList::hasKey(std::string_view key) const { return !objectForKey(key).isNone(); }

void PropertyList::setObject(PropertyList value, std::string_view key) {
  if (value.isNone()) {
    if (!isDictionary()) value_ = Dictionary();
    removeObjectForKey(key);
    return;
  }
  if (!isDictionary()) value_ = Dictionary();
  auto& entries = std::get<Dictionary>(value_);
  for (Entry& entry : entries) {
    if (entry.key != key) continue;
    entry.value = std::move(value);
    return;
  }
  entries.push_back({std::string(key), std::move(value)});
}

void PropertyList::removeObjectForKey(std::string_view key) {
  auto* entries = std::get_if<Dictionary>(&value_);
  if (entries == nullptr) return;
  // One at most, found before anything moves: the key may be a view of the entry's own.
  const auto found = std::find_if(entries->begin(), entries->end(),
                                  [key](const Entry& entry) { return entry.key == key; });
  if (found != entries->end()) entries->erase(found);
}

bool operator==(const PropertyList& a, const PropertyList& b) {
  if (!a.isDictionary() || !b.isDictionary()) return a.value_ == b.value_;
  const auto& entries = a.dictionaryValue();
  // Keys are unique and none is no value, so equal numbers of entries leave no room for others.
  return entries.size() == b.dictionaryValue().size() &&
         std::all_of(entries.begin(), entries.end(), [&b](const PropertyList::Entry& entry) {
           return b.objectForKey(entry.key) == entry.value;
         });
}

}  // namespace qb
