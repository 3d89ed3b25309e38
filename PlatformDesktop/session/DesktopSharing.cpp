#include "PlatformDesktop/session/DesktopSharing.h"

#include <stdlib.h>
#include <sys/stat.h>

#include <algorithm>
#include <cctype>
#include <chrono>
#include <cmath>
#include <filesystem>
#include <memory>
#include <utility>

#include "PlatformDesktop/graphics/DesktopImage.h"
#include "PlatformDesktop/processes/DesktopFolders.h"
#include "PlatformDesktop/processes/Launcher.h"
#include "QuillboxCommon/Log.h"

namespace qb {

namespace {

namespace fs = std::filesystem;

constexpr const char* mailRole = "com.apple.mail";
constexpr std::chrono::hours keptFor{24};

const DesktopEntry* mailProgram(const ApplicationIndex& index) {
  const auto& entries = index.entries();
  const auto found = std::find_if(entries.begin(), entries.end(), [&index](const auto& entry) {
    return index.identifierOf(entry) == mailRole;
  });
  return found == entries.end() ? nullptr : &*found;
}

bool isThunderbird(const DesktopEntry& entry) {
  std::string id = entry.id;
  std::transform(id.begin(), id.end(), id.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return id.find("thunderbird") != std::string::npos;
}

bool open(const DesktopEntry& program, const MailDraft& draft) {
  if (isThunderbird(program)) {
    std::vector<std::string> words = program.commandLine();
    // Marks around files to open, of those that run in a sandbox.
    std::erase_if(words, [](const std::string& word) { return word.starts_with("@@"); });
    for (std::string& word : argumentsForThunderbird(draft)) words.push_back(std::move(word));
    return startDetached(words, program.workingFolder);
  }
  // It knows how some programs want to be told of attachments.
  std::vector<std::string> words{"xdg-email"};
  for (std::string& word : argumentsForXdgEmail(draft)) words.push_back(std::move(word));
  return startDetached(words, {}) ||
         startDetached(program.commandLine(mailtoUrl(draft)), program.workingFolder);
}

}  // namespace

DesktopSharing::DesktopSharing(const ApplicationCatalogue& catalogue, std::string folder)
    : catalogue_(catalogue), folder_(std::move(folder)) {}

std::string DesktopSharing::folderForImages() { return DesktopFolders::cache() + "/quillbox/mail"; }

bool DesktopSharing::composeEmail(const EmailMessage& message) {
  const DesktopEntry* const program = mailProgram(catalogue_.index());
  if (program == nullptr) {
    log("There is no program that opens mail addresses.");
    return false;
  }
  const auto draft = draftOf(message);
  if (draft && open(*program, *draft)) return true;
  log("A message could not be opened in " + program->name + ".");
  return false;
}

std::optional<MailDraft> DesktopSharing::draftOf(const EmailMessage& message) const {
  MailDraft draft{.subject = message.subject, .body = {}, .attachments = {}};
  for (const SharedItem& item : message.items) {
    if (const auto* const text = std::get_if<AttributedString>(&item)) {
      draft.body += withPlainLineEnds(text->string());
    } else if (const auto* const file = std::get_if<SharedFile>(&item)) {
      draft.attachments.push_back(file->path);
    } else {
      auto path = writeImage(std::get<Image>(item));
      if (!path) return std::nullopt;
      draft.attachments.push_back(std::move(*path));
    }
  }
  return draft;
}

std::optional<std::string> DesktopSharing::writeImage(const Image& image) const {
  const auto picture = std::dynamic_pointer_cast<const DesktopImage>(image.source());
  if (!picture) return std::nullopt;
  std::error_code error;
  fs::create_directories(folder_, error);
  removeOldImages();
  // A folder for each, so that the file has a name to show.
  std::string folder = folder_ + "/XXXXXX";
  if (mkdtemp(folder.data()) == nullptr) return std::nullopt;
  const std::string path = folder + "/Image.png";
  const QSize pixels(static_cast<int>(std::ceil(image.size().width)),
                     static_cast<int>(std::ceil(image.size().height)));
  const bool isWritten = picture->scaled(pixels).save(QString::fromStdString(path), "PNG");
  return isWritten ? std::optional(path) : std::nullopt;
}

void DesktopSharing::removeOldImages() const {
  std::error_code error;
  fs::directory_iterator each(folder_, error);
  for (; !error && each != fs::directory_iterator(); each.increment(error)) {
    std::error_code ignored;
    const auto age = fs::file_time_type::clock::now() - fs::last_write_time(each->path(), ignored);
    if (!ignored && age > keptFor) fs::remove_all(each->path(), ignored);
  }
}

}  // namespace qb
