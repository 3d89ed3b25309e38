#include "PlatformDesktop/files/PropertyListWriter.h"

#include <QByteArray>
#include <QDateTime>
#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string_view>

namespace qb {

namespace {

constexpr std::string_view head =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
    "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
    "<plist version=\"1.0\">\n";

/// Broken UTF-8, or one of the two characters beyond the blanks that XML leaves out, would make the
/// whole file unreadable.
std::string wellFormed(const std::string& text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()))
      .remove(QChar(0xFFFE))
      .remove(QChar(0xFFFF))
      .toStdString();
}

std::string escaped(const std::string& text) {
  std::string result;
  for (const char c : wellFormed(text)) {
    switch (c) {
      case '&':
        result += "&amp;";
        break;
      case '<':
        result += "&lt;";
        break;
      case '>':
        result += "&gt;";
        break;
      case '\r':
        // As it is, a reader would turn it into a newline.
        result += "&#13;";
        break;
      default:
        if (static_cast<unsigned char>(c) >= 0x20 || c == '\t' || c == '\n') result += c;
    }
  }
  return result;
}

std::string realText(double value) {
  if (std::isnan(value)) return "nan";
  if (std::isinf(value)) return value > 0 ? "+infinity" : "-infinity";
  std::array<char, 32> digits;
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
  return {digits.data(), end};
}

std::string dateText(PropertyList::Date date) {
  constexpr qint64 secondsBeforeReferenceDate = 978307200;
  // The years 1 to 9999: the form has four digits for them.
  constexpr double earliest = -63113904000, latest = 252423993599;
  const double held = std::isnan(date.seconds) ? 0 : std::clamp(date.seconds, earliest, latest);
  const auto seconds = static_cast<qint64>(std::llround(held));
  return QDateTime::fromSecsSinceEpoch(seconds + secondsBeforeReferenceDate, Qt::UTC)
      .toString(Qt::ISODate)
      .toStdString();
}

void write(std::string& out, const PropertyList& value, int depth);

void writeElement(std::string& out, std::string_view name, std::string_view text) {
  out.append("<").append(name).append(">").append(text).append("</").append(name).append(">\n");
}

void writeData(std::string& out, const PropertyList::Data& data) {
  const QByteArray text = QByteArray::fromRawData(reinterpret_cast<const char*>(data.data()),
                                                  static_cast<qsizetype>(data.size()))
                              .toBase64();
  writeElement(out, "data", {text.constData(), static_cast<std::size_t>(text.size())});
}

void writeIndent(std::string& out, int depth) { out.append(static_cast<std::size_t>(depth), '\t'); }

void writeDictionary(std::string& out, const PropertyList& value, int depth) {
  if (value.dictionaryValue().empty()) {
    out += "<dict/>\n";
    return;
  }
  out += "<dict>\n";
  for (const PropertyList::Entry& entry : value.dictionaryValue()) {
    // Nothing is no value that a file could hold.
    if (entry.value.isNone()) continue;
    writeIndent(out, depth + 1);
    writeElement(out, "key", escaped(entry.key));
    write(out, entry.value, depth + 1);
  }
  writeIndent(out, depth);
  out += "</dict>\n";
}

void writeArray(std::string& out, const PropertyList& value, int depth) {
  if (value.arrayValue().empty()) {
    out += "<array/>\n";
    return;
  }
  out += "<array>\n";
  for (const PropertyList& member : value.arrayValue()) {
    if (!member.isNone()) write(out, member, depth + 1);
  }
  writeIndent(out, depth);
  out += "</array>\n";
}

void write(std::string& out, const PropertyList& value, int depth) {
  writeIndent(out, depth);
  switch (value.kind()) {
    case PropertyList::Kind::None:
      break;
    case PropertyList::Kind::Boolean:
      out += value.boolValue() ? "<true/>\n" : "<false/>\n";
      break;
    case PropertyList::Kind::Integer:
      writeElement(out, "integer", std::to_string(value.longValue()));
      break;
    case PropertyList::Kind::Real:
      writeElement(out, "real", realText(value.doubleValue()));
      break;
    case PropertyList::Kind::String:
      writeElement(out, "string", escaped(value.stringValue()));
      break;
    case PropertyList::Kind::DateTime:
      writeElement(out, "date", dateText(value.dateValue()));
      break;
    case PropertyList::Kind::Data:
      writeData(out, value.dataValue());
      break;
    case PropertyList::Kind::Array:
      writeArray(out, value, depth);
      break;
    case PropertyList::Kind::Dictionary:
      writeDictionary(out, value, depth);
      break;
  }
}

}  // namespace

std::string xmlPropertyList(const PropertyList& value) {
  std::string out(head);
  write(out, value, 0);
  out += "</plist>\n";
  return out;
}

}  // namespace qb
