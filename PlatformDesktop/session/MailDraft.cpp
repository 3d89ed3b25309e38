#include "PlatformDesktop/session/MailDraft.h"

#include "PlatformDesktop/files/FileUrl.h"

namespace qb {

namespace {

/// Lines of a message end so in an address.
std::string withNetworkLineEnds(std::string_view text) {
  std::string result;
  for (const char c : text) {
    if (c == '\n') result += '\r';
    result += c;
  }
  return result;
}

}  // namespace

std::vector<std::string> argumentsForThunderbird(const MailDraft& draft) {
  std::string attachments;
  for (const std::string& path : draft.attachments) {
    attachments += (attachments.empty() ? "" : ",") + fileUrl(path);
  }
  // It takes values without quotes as encoded, whatever is in them. The 2 asks for plain text, so
  // that lines stay lines.
  std::string message =
      "format=2,subject=" + percentEncoded(draft.subject) + ",body=" + percentEncoded(draft.body);
  if (!attachments.empty()) message += ",attachment=" + percentEncoded(attachments);
  return {"-compose", message};
}

std::vector<std::string> argumentsForXdgEmail(const MailDraft& draft) {
  std::vector<std::string> arguments{"--utf8", "--subject", draft.subject, "--body", draft.body};
  for (const std::string& path : draft.attachments) {
    arguments.insert(arguments.end(), {"--attach", path});
  }
  return arguments;
}

std::string mailtoUrl(const MailDraft& draft) {
  std::string url = "mailto:?subject=" + percentEncoded(draft.subject) +
                    "&body=" + percentEncoded(withNetworkLineEnds(draft.body));
  for (const std::string& path : draft.attachments) url += "&attach=" + percentEncoded(path, "/");
  return url;
}

std::string withPlainLineEnds(std::string_view text) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool isPair = text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n';
    if (!isPair) result += text[i] == '\r' ? '\n' : text[i];
  }
  return result;
}

}  // namespace qb
