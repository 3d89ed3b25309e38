#include <QString>
#include <bit>
#include <string>
#include <vector>

#include "PlatformDesktop/files/PropertyListReader.h"

namespace qb {

namespace {

constexpr std::string_view signature = "bplist00";
constexpr std::size_t trailerSize = 32;

/// The kinds of objects: the high half of their first byte.
enum Marker : std::uint8_t {
  MarkerSimple = 0x0,
  MarkerInteger = 0x1,
  MarkerReal = 0x2,
  MarkerDate = 0x3,
  MarkerData = 0x4,
  MarkerAscii = 0x5,
  MarkerUtf16 = 0x6,
  MarkerUid = 0x8,
  MarkerArray = 0xA,
  MarkerDictionary = 0xD,
};

class BinaryReader {
 public:
  explicit BinaryReader(std::string_view bytes) : bytes_(bytes) {}

  std::optional<PropertyList> read() {
    if (!bytes_.starts_with(signature) || bytes_.size() < signature.size() + trailerSize) {
      return std::nullopt;
    }
    const std::size_t trailer = bytes_.size() - trailerSize;
    offsetSize_ = static_cast<std::uint8_t>(bytes_[trailer + 6]);
    referenceSize_ = static_cast<std::uint8_t>(bytes_[trailer + 7]);
    objects_ = *number(trailer + 8, 8);
    const std::uint64_t top = *number(trailer + 16, 8);
    table_ = *number(trailer + 24, 8);
    const bool sizesAreSound =
        offsetSize_ >= 1 && offsetSize_ <= 8 && referenceSize_ >= 1 && referenceSize_ <= 8;
    if (!sizesAreSound || objects_ > bytes_.size() || table_ > trailer ||
        objects_ * offsetSize_ > trailer - table_) {
      return std::nullopt;
    }
    return object(top, 0);
  }

 private:
  /// Where an object's content stands, and how much there is.
  struct Span {
    std::size_t at = 0;
    std::size_t count = 0;
  };

  std::optional<std::uint64_t> number(std::size_t at, std::size_t size) const {
    if (at > bytes_.size() || size > bytes_.size() - at) return std::nullopt;
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < size; ++i) {
      value = value << 8 | static_cast<std::uint8_t>(bytes_[at + i]);
    }
    return value;
  }

  /// A count that does not fit in the first byte follows as an integer object.
  std::optional<Span> span(std::size_t at, std::uint8_t low, std::size_t unit) const {
    Span result{at + 1, low};
    if (low == 0xF) {
      const auto marker = number(at + 1, 1);
      if (!marker || *marker >> 4 != MarkerInteger || (*marker & 0xF) > 3) return std::nullopt;
      const std::size_t size = std::size_t{1} << (*marker & 0xF);
      const auto count = number(at + 2, size);
      if (!count) return std::nullopt;
      result = {at + 2 + size, *count};
    }
    if (result.at > bytes_.size() || result.count > (bytes_.size() - result.at) / unit) {
      return std::nullopt;
    }
    return result;
  }

  std::optional<PropertyList> object(std::uint64_t reference, int depth) {
    if (reference >= objects_ || depth > PropertyListBudget::deepestNesting) return std::nullopt;
    const auto at = number(table_ + reference * offsetSize_, offsetSize_);
    if (!at || *at >= table_ || !budget_.take(0)) return std::nullopt;
    const auto marker = static_cast<std::uint8_t>(bytes_[*at]);
    const auto low = static_cast<std::uint8_t>(marker & 0xF);
    switch (marker >> 4) {
      case MarkerSimple:
        if (low == 8 || low == 9) return PropertyList(low == 9);
        return std::nullopt;
      case MarkerInteger:
        return integer(*at + 1, low);
      case MarkerReal:
        return real(*at + 1, low);
      case MarkerDate:
        return date(*at + 1);
      case MarkerUid:
        return uid(*at + 1, low);
      case MarkerData:
      case MarkerAscii:
      case MarkerUtf16:
        return bytesObject(static_cast<Marker>(marker >> 4), *at, low);
      case MarkerArray:
        return array(*at, low, depth);
      case MarkerDictionary:
        return dictionary(*at, low, depth);
      default:
        return std::nullopt;
    }
  }

  std::optional<PropertyList> integer(std::size_t at, std::uint8_t low) const {
    if (low > 4) return std::nullopt;
    // Of sixteen bytes the lower half counts: the upper one only extends the sign.
    const std::size_t skipped = low == 4 ? 8 : 0;
    const auto value = number(at + skipped, low == 4 ? 8 : std::size_t{1} << low);
    if (!value) return std::nullopt;
    return PropertyList(static_cast<long long>(*value));
  }

  std::optional<PropertyList> real(std::size_t at, std::uint8_t low) const {
    if (low != 2 && low != 3) return std::nullopt;
    const auto bits = number(at, std::size_t{1} << low);
    if (!bits) return std::nullopt;
    if (low == 3) return PropertyList(std::bit_cast<double>(*bits));
    return PropertyList(
        static_cast<double>(std::bit_cast<float>(static_cast<std::uint32_t>(*bits))));
  }

  std::optional<PropertyList> date(std::size_t at) const {
    const auto bits = number(at, 8);
    if (!bits) return std::nullopt;
    return PropertyList(PropertyList::Date{std::bit_cast<double>(*bits)});
  }

  /// As the XML form has them.
  std::optional<PropertyList> uid(std::size_t at, std::uint8_t low) const {
    const auto value = number(at, low + std::size_t{1});
    if (!value || low > 7) return std::nullopt;
    return PropertyList::dictionary({{"CF$UID", static_cast<long long>(*value)}});
  }

  std::optional<PropertyList> bytesObject(Marker marker, std::size_t at, std::uint8_t low) {
    const std::size_t unit = marker == MarkerUtf16 ? 2 : 1;
    const auto found = span(at, low, unit);
    if (!found || !budget_.take(found->count * unit)) return std::nullopt;
    const std::string_view content = bytes_.substr(found->at, found->count * unit);
    if (marker == MarkerData)
      return PropertyList(PropertyList::Data(content.begin(), content.end()));
    if (marker == MarkerAscii) return PropertyList(content);
    QString text;
    text.reserve(static_cast<qsizetype>(found->count));
    for (std::size_t i = 0; i < found->count; ++i) {
      text += QChar(static_cast<char16_t>(*number(found->at + 2 * i, 2)));
    }
    return PropertyList(text.toStdString());
  }

  std::optional<PropertyList> array(std::size_t at, std::uint8_t low, int depth) {
    const auto found = span(at, low, referenceSize_);
    if (!found) return std::nullopt;
    PropertyList result = PropertyList::array();
    for (std::size_t i = 0; i < found->count; ++i) {
      auto value = object(*number(found->at + i * referenceSize_, referenceSize_), depth + 1);
      if (!value) return std::nullopt;
      result.append(std::move(*value));
    }
    return result;
  }

  std::optional<PropertyList> dictionary(std::size_t at, std::uint8_t low, int depth) {
    const std::size_t unit = std::size_t{2} * referenceSize_;
    const auto found = span(at, low, unit);
    if (!found) return std::nullopt;
    PropertyList result = PropertyList::dictionary();
    for (std::size_t i = 0; i < found->count; ++i) {
      const std::size_t keyAt = found->at + i * referenceSize_;
      const auto key = object(*number(keyAt, referenceSize_), depth + 1);
      auto value =
          object(*number(keyAt + found->count * referenceSize_, referenceSize_), depth + 1);
      if (!key || !key->isString() || !value) return std::nullopt;
      result.setObject(std::move(*value), key->stringValue());
    }
    return result;
  }

  std::string_view bytes_;
  std::size_t offsetSize_ = 0, referenceSize_ = 0;
  std::uint64_t objects_ = 0, table_ = 0;
  PropertyListBudget budget_;
};

}  // namespace

std::optional<PropertyList> readBinaryPropertyList(std::string_view bytes) {
  return BinaryReader(bytes).read();
}

}  // namespace qb
