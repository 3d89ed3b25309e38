#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace qb {

/// A message as mail programs take it on their command lines.
struct MailDraft {
  std::string subject;
  /// Lines end in "\n".
  std::string body;
  /// Absolute paths.
  std::vector<std::string> attachments;
};

/// What follows the program's name, so that Thunderbird opens the message for writing.
std::vector<std::string> argumentsForThunderbird(const MailDraft& draft);
std::vector<std::string> argumentsForXdgEmail(const MailDraft& draft);
/// The message as an address. Attachments are the one part that not every program takes from it.
std::string mailtoUrl(const MailDraft& draft);

/// Each of "\r\n", "\r" and "\n" as "\n".
std::string withPlainLineEnds(std::string_view text);

}  // namespace qb
