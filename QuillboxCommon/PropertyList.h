#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace qb {

/// A value of the kinds that a property list can hold. A plain value: copies are deep.
///
/// Numbers keep what they were made from: an integer, or a floating-point number in double or
/// single precision. Equality is exact by kind and value; dictionaries compare without regard to
/// order. A dictionary never holds none.
class PropertyList {
 public:
  struct Entry;
  using Array = std::vector<PropertyList>;
  /// In the order in which the keys were first set: files are written in that order.
  using Dictionary = std::vector<Entry>;
  using Data = std::vector<std::uint8_t>;
  /// Seconds since 2001-01-01T00:00:00Z.
  struct Date {
    double seconds = 0;
    friend bool operator==(const Date&, const Date&) = default;
  };
  enum class Kind { None, Boolean, Integer, Real, String, DateTime, Data, Array, Dictionary };

  // All of them are defined where Entry is complete.
  PropertyList();
  ~PropertyList();
  PropertyList(const PropertyList& other);
  PropertyList(PropertyList&& other) noexcept;
  PropertyList& operator=(const PropertyList& other);
  PropertyList& operator=(PropertyList&& other) noexcept;
  PropertyList(bool value);
  PropertyList(int value);
  PropertyList(long value);
  PropertyList(long long value);
  PropertyList(double value);
  PropertyList(const char* value);
  PropertyList(std::string value);
  PropertyList(std::string_view value);
  PropertyList(Date value);
  PropertyList(Data value);
  PropertyList(Array value);
  static PropertyList dictionary();
  static PropertyList dictionary(
      std::initializer_list<std::pair<std::string, PropertyList>> entries);
  static PropertyList array();

  Kind kind() const { return static_cast<Kind>(value_.index()); }
  bool isNone() const { return kind() == Kind::None; }
  bool isDictionary() const { return kind() == Kind::Dictionary; }
  bool isArray() const { return kind() == Kind::Array; }
  bool isString() const { return kind() == Kind::String; }

  /// The ordinary coercions, none of which fails: a boolean is 0 or 1; a real loses its fraction
  /// as an integer; a string reads as the number it begins with ("12ab" is 12), and as a boolean
  /// is true when it begins, after blanks, a sign and zeros, with one of "YyTt1-9"; anything else
  /// is false or 0. What is out of range saturates. A real that is not a number is 0 and false,
  /// and stays what it is only as another real.
  bool boolValue() const;
  std::int64_t longValue() const;
  float floatValue() const;
  double doubleValue() const;
  /// The string, or the empty string for any other kind.
  const std::string& stringValue() const;
  /// The bytes; none for any other kind.
  const Data& dataValue() const;
  /// The date, or 2001-01-01T00:00:00Z for any other kind.
  Date dateValue() const;
  /// The members; none for any other kind.
  const Array& arrayValue() const;
  const Dictionary& dictionaryValue() const;
  /// Appends, and turns anything but an array into one first.
  void append(PropertyList value);

  /// The value under `key`, or none; none also for anything but a dictionary.
  const PropertyList& objectForKey(std::string_view key) const;
  bool hasKey(std::string_view key) const;
  /// Sets, and turns anything but a dictionary into one first. Setting none removes the key.
  void setObject(PropertyList value, std::string_view key);
  /// Harmless for a key that is absent, and for anything but a dictionary.
  void removeObjectForKey(std::string_view key);

  /// Conveniences over dictionaries: an absent key reads as false or 0.
  bool boolForKey(std::string_view key) const { return objectForKey(key).boolValue(); }
  std::int64_t longForKey(std::string_view key) const { return objectForKey(key).longValue(); }
  float floatForKey(std::string_view key) const { return objectForKey(key).floatValue(); }
  void setBool(bool value, std::string_view key) { setObject(value, key); }
  void setLong(std::int64_t value, std::string_view key) {
    setObject(static_cast<long long>(value), key);
  }
  /// Stores a single-precision number: what is read back has been rounded to 32 bits.
  void setFloat(float value, std::string_view key) { setObject(static_cast<double>(value), key); }

  friend bool operator==(const PropertyList& a, const PropertyList& b);

 private:
  std::variant<std::monostate, bool, std::int64_t, double, std::string, Date, Data, Array,
               Dictionary>
      value_;
};

struct PropertyList::Entry {
  std::string key;
  PropertyList value;

  friend bool operator==(const Entry&, const Entry&) = default;
};

}  // namespace qb
