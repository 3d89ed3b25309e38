#include "PlatformDesktop/processes/DesktopEntry.h"

#include <algorithm>

namespace qb {

namespace {

std::string_view trimmed(std::string_view text) {
  const std::size_t begin = text.find_first_not_of(" \t\r");
  if (begin == std::string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(" \t\r") - begin + 1);
}

/// Undoes the escapes of string values.
std::string unescaped(std::string_view text) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\\' || i + 1 == text.size()) {
      result += text[i];
      continue;
    }
    switch (text[++i]) {
      case 's':
        result += ' ';
        break;
      case 'n':
        result += '\n';
        break;
      case 't':
        result += '\t';
        break;
      case 'r':
        result += '\r';
        break;
      case '\\':
        result += '\\';
        break;
      default:
        // Meant for whoever reads the value: a list's separator, a quoted word.
        result += '\\';
        result += text[i];
    }
  }
  return result;
}

/// The forms of a locale to look for, the most exact first: "de_CH.UTF-8@euro" gives "de_CH@euro",
/// "de_CH", "de@euro" and "de".
std::vector<std::string> localeForms(std::string_view locale) {
  const std::size_t at = locale.find('@');
  const std::string modifier(at == std::string_view::npos ? "" : locale.substr(at));
  const std::string_view base = locale.substr(0, std::min(at, locale.find('.')));
  const std::string language(base.substr(0, base.find('_')));
  std::vector<std::string> forms;
  for (const std::string& stem : {std::string(base), language}) {
    if (stem.empty() || stem == "C" || stem == "POSIX") continue;
    if (!modifier.empty()) forms.push_back(stem + modifier);
    forms.push_back(stem);
  }
  return forms;
}

std::string localizedValue(const KeyFileGroup& group, const std::string& key,
                           std::string_view locale) {
  for (const std::string& form : localeForms(locale)) {
    const std::string_view value = keyFileValue(group, key + '[' + form + ']');
    if (!value.empty()) return unescaped(value);
  }
  return unescaped(keyFileValue(group, key));
}

bool isTrue(const KeyFileGroup& group, std::string_view key) {
  return keyFileValue(group, key) == "true";
}

struct Word {
  std::string text;
  bool quoted = false;
};

/// Splits an Exec line into words; none when a quote is left open.
std::optional<std::vector<Word>> wordsOfExec(std::string_view line) {
  std::vector<Word> words;
  bool inWord = false, inQuotes = false;
  for (std::size_t i = 0; i < line.size(); ++i) {
    const char c = line[i];
    if (!inQuotes && (c == ' ' || c == '\t')) {
      inWord = false;
      continue;
    }
    if (!inWord) {
      words.emplace_back();
      inWord = true;
    }
    if (c == '"') {
      inQuotes = !inQuotes;
      words.back().quoted = true;
    } else if (c == '\\' && inQuotes && i + 1 < line.size()) {
      words.back().text += line[++i];
    } else {
      words.back().text += c;
    }
  }
  if (inQuotes) return std::nullopt;
  return words;
}

}  // namespace

KeyFileGroup keyFileGroup(std::string_view text, std::string_view group) {
  KeyFileGroup values;
  bool inGroup = false;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    const std::string_view line = trimmed(text.substr(0, end));
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    if (line.empty() || line.front() == '#') continue;
    if (line.front() == '[') {
      inGroup = line.size() == group.size() + 2 && line.substr(1, group.size()) == group &&
                line.back() == ']';
      continue;
    }
    const std::size_t equals = line.find('=');
    if (!inGroup || equals == std::string_view::npos) continue;
    values.emplace_back(trimmed(line.substr(0, equals)), trimmed(line.substr(equals + 1)));
  }
  return values;
}

std::string_view keyFileValue(const KeyFileGroup& group, std::string_view key) {
  const auto found = std::find_if(group.begin(), group.end(),
                                  [key](const auto& entry) { return entry.first == key; });
  return found == group.end() ? std::string_view() : std::string_view(found->second);
}

std::vector<std::string> splitList(std::string_view text, char separator) {
  std::vector<std::string> parts;
  while (!text.empty()) {
    const std::size_t end = text.find(separator);
    if (end != 0) parts.emplace_back(text.substr(0, end));
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  }
  return parts;
}

std::optional<DesktopEntry> DesktopEntry::parse(std::string_view text, std::string id,
                                                std::string path, std::string_view locale) {
  const KeyFileGroup group = keyFileGroup(text, "Desktop Entry");
  DesktopEntry entry;
  entry.id = std::move(id);
  entry.path = std::move(path);
  entry.hidden = isTrue(group, "Hidden");
  if (keyFileValue(group, "Type") != "Application" && !entry.hidden) return std::nullopt;
  entry.name = localizedValue(group, "Name", locale);
  if (entry.name.empty()) entry.name = entry.id;
  entry.exec = unescaped(keyFileValue(group, "Exec"));
  entry.icon = localizedValue(group, "Icon", locale);
  entry.startupWmClass = unescaped(keyFileValue(group, "StartupWMClass"));
  entry.workingFolder = unescaped(keyFileValue(group, "Path"));
  entry.runsInTerminal = isTrue(group, "Terminal");
  const auto categories = splitList(keyFileValue(group, "Categories"), ';');
  entry.isTerminalEmulator =
      std::find(categories.begin(), categories.end(), "TerminalEmulator") != categories.end();
  entry.noDisplay = isTrue(group, "NoDisplay");
  return entry;
}

std::string DesktopEntry::programName() const {
  const auto words = wordsOfExec(exec);
  if (!words) return {};
  for (const Word& word : *words) {
    const std::string program = word.text.substr(word.text.rfind('/') + 1);
    // "env NAME=value program" runs the program.
    if (program == "env" || (!word.quoted && program.find('=') != std::string::npos)) continue;
    return program;
  }
  return {};
}

std::vector<std::string> DesktopEntry::commandLine(const std::string& url) const {
  const auto words = wordsOfExec(exec);
  if (!words) return {};
  std::vector<std::string> result;
  bool urlIsIn = url.empty();
  for (const Word& word : *words) {
    if (word.text == "%i" && !word.quoted) {
      if (!icon.empty()) result.insert(result.end(), {"--icon", icon});
      continue;
    }
    std::string filled;
    bool hadCode = false;
    for (std::size_t i = 0; i < word.text.size(); ++i) {
      if (word.text[i] != '%' || i + 1 == word.text.size()) {
        filled += word.text[i];
        continue;
      }
      const char code = word.text[++i];
      if (code == '%') {
        filled += '%';
        continue;
      }
      hadCode = true;
      if (code == 'c') filled += name;
      if (code == 'k') filled += path;
      if (!urlIsIn && (code == 'u' || code == 'U')) {
        filled += url;
        urlIsIn = true;
      }
    }
    if (!filled.empty() || !hadCode) result.push_back(filled);
  }
  if (!urlIsIn && !result.empty()) result.push_back(url);
  return result;
}

}  // namespace qb
