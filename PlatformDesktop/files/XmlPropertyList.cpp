#include <QByteArray>
#include <QDateTime>
#include <QTimeZone>
#include <QXmlStreamReader>
#include <charconv>
#include <string>

#include "PlatformDesktop/files/PropertyListReader.h"

namespace qb {

namespace {

const QDateTime& referenceDate() {
  static const QDateTime date(QDate(2001, 1, 1), QTime(0, 0), Qt::UTC);
  return date;
}

std::string_view withoutBlanks(std::string_view text) {
  const std::size_t begin = text.find_first_not_of(" \t\r\n");
  if (begin == std::string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(" \t\r\n") - begin + 1);
}

std::optional<std::int64_t> integerOf(std::string_view text) {
  text = withoutBlanks(text);
  if (text.starts_with('+')) text.remove_prefix(1);
  const bool negative = text.starts_with('-');
  if (negative) text.remove_prefix(1);
  const bool hexadecimal = text.starts_with("0x") || text.starts_with("0X");
  if (hexadecimal) text.remove_prefix(2);
  std::uint64_t value = 0;
  const auto [end, error] =
      std::from_chars(text.data(), text.data() + text.size(), value, hexadecimal ? 16 : 10);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  // In two's complement, as values beyond the positive range are meant.
  return static_cast<std::int64_t>(negative ? 0 - value : value);
}

std::optional<double> realOf(std::string_view text) {
  text = withoutBlanks(text);
  if (text.starts_with('+')) text.remove_prefix(1);
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (end != text.data() + text.size() || text.empty()) return std::nullopt;
  if (error == std::errc::invalid_argument) return std::nullopt;
  return value;
}

class XmlReader {
 public:
  explicit XmlReader(std::string_view bytes)
      : xml_(QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size()))) {}

  std::optional<PropertyList> read() {
    if (!xml_.readNextStartElement() || xml_.name() != u"plist") return std::nullopt;
    if (!xml_.readNextStartElement()) return std::nullopt;
    auto result = readValue(0);
    if (!result) return std::nullopt;
    // The rest must be sound too: a file that ends early is no property list.
    while (!xml_.atEnd()) xml_.readNext();
    if (xml_.hasError()) return std::nullopt;
    return result;
  }

 private:
  std::optional<std::string> readText() {
    std::string text = xml_.readElementText().toStdString();
    if (xml_.hasError() || !budget_.take(text.size())) return std::nullopt;
    return text;
  }

  std::optional<PropertyList> readValue(int depth) {
    if (depth > PropertyListBudget::deepestNesting) return std::nullopt;
    const QString kind = xml_.name().toString();
    if (kind == u"dict") return readDictionary(depth);
    if (kind == u"array") return readArray(depth);
    const auto text = readText();
    if (!text) return std::nullopt;
    if (kind == u"true") return PropertyList(true);
    if (kind == u"false") return PropertyList(false);
    if (kind == u"string") return PropertyList(*text);
    if (kind == u"integer") return wrapped(integerOf(*text));
    if (kind == u"real") return wrapped(realOf(*text));
    if (kind == u"data") return readData(*text);
    if (kind == u"date") return readDate(*text);
    return std::nullopt;
  }

  template <class Value>
  static std::optional<PropertyList> wrapped(const std::optional<Value>& value) {
    if (!value) return std::nullopt;
    return PropertyList(*value);
  }

  static std::optional<PropertyList> readData(const std::string& text) {
    const QByteArray bytes = QByteArray::fromBase64(
        QByteArray::fromRawData(text.data(), static_cast<qsizetype>(text.size())));
    return PropertyList(PropertyList::Data(bytes.begin(), bytes.end()));
  }

  static std::optional<PropertyList> readDate(const std::string& text) {
    const std::string_view trimmed = withoutBlanks(text);
    const QDateTime date = QDateTime::fromString(
        QString::fromUtf8(trimmed.data(), static_cast<qsizetype>(trimmed.size())), Qt::ISODate);
    if (!date.isValid()) return std::nullopt;
    return PropertyList(
        PropertyList::Date{static_cast<double>(referenceDate().msecsTo(date)) / 1000});
  }

  std::optional<PropertyList> readDictionary(int depth) {
    PropertyList dictionary = PropertyList::dictionary();
    while (xml_.readNextStartElement()) {
      if (xml_.name() != u"key") return std::nullopt;
      const auto key = readText();
      if (!key || !xml_.readNextStartElement()) return std::nullopt;
      auto value = readValue(depth + 1);
      if (!value) return std::nullopt;
      dictionary.setObject(std::move(*value), *key);
    }
    return dictionary;
  }

  std::optional<PropertyList> readArray(int depth) {
    PropertyList array = PropertyList::array();
    while (xml_.readNextStartElement()) {
      auto value = readValue(depth + 1);
      if (!value) return std::nullopt;
      array.append(std::move(*value));
    }
    return array;
  }

  QXmlStreamReader xml_;
  PropertyListBudget budget_;
};

}  // namespace

std::optional<PropertyList> readXmlPropertyList(std::string_view bytes) {
  return XmlReader(bytes).read();
}

}  // namespace qb
