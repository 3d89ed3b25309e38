#include "Quillbox/managers/ClipboardManager.h"

#include <algorithm>
#include <utility>

#include "Platform/FileSystem.h"
#include "Platform/Pasteboards.h"
#include "Quillbox/managers/Cubby.h"
#include "QuillboxCommon/Timer.h"

namespace qb {

namespace {

constexpr TimeInterval pollInterval = 1.0;
/// More are kept when a client could show more.
constexpr std::int64_t leastMaximumHistoryCount = 30;
/// A folder that is far too full takes several culls.
constexpr std::size_t mostRemovedByOneCull = 100;
constexpr std::size_t lengthOfTextPreview = 50;

}  // namespace

std::shared_ptr<ClipboardManager> ClipboardManager::create(FileSystem& fileSystem,
                                                           Pasteboards& pasteboards) {
  return std::shared_ptr<ClipboardManager>(new ClipboardManager(fileSystem, pasteboards));
}

ClipboardManager::ClipboardManager(FileSystem& fileSystem, Pasteboards& pasteboards)
    : fileSystem_(fileSystem),
      pasteboards_(pasteboards),
      clipboard_(pasteboards.generalPasteboard()),
      folder_(fileSystem),
      maximumHistoryCountPerClipType_(leastMaximumHistoryCount),
      previousPasteboardChangeCount_(clipboard_->changeCount()) {
  folder_.make();
  cullClipboardHistory();
}

ClipboardManager::~ClipboardManager() {
  if (clipboardPollTimer_) clipboardPollTimer_->done();
}

void ClipboardManager::addClient(std::shared_ptr<ClipboardManagerClient> client) {
  clients_.push_back(std::move(client));
  maintainClipboardCapture();
  maintainMaximumHistoryCountPerClipType();
}

void ClipboardManager::removeClient(const std::shared_ptr<ClipboardManagerClient>& client) {
  std::erase(clients_, client);
  maintainClipboardCapture();
  maintainMaximumHistoryCountPerClipType();
}

void ClipboardManager::setHistoryCaptureMode(std::int32_t mode) {
  historyCaptureMode_ = mode;
  maintainClipboardCapture();
}

// Intended: a timer that is there already goes on beside the new one. Whichever ticks first takes
// the change.
void ClipboardManager::maintainClipboardCapture() {
  if (clients_.empty() && historyCaptureMode_ == ClipboardCaptureForClients) {
    if (clipboardPollTimer_) clipboardPollTimer_ = clipboardPollTimer_->done();
    return;
  }
  const auto self = std::make_shared<std::weak_ptr<Timer>>();
  clipboardPollTimer_ =
      Timer::timerWithName("Clipboard Manager Pasteboard Poll", pollInterval,
                           [weakManager = weak_from_this(), self](const std::any&) {
                             const auto manager = weakManager.lock();
                             const auto timer = self->lock();
                             if (manager && timer) manager->pollClipboard(timer->runLoopTimer());
                           });
  clipboardPollTimer_->addToAdditionalRunLoops();
  *self = clipboardPollTimer_;
}

void ClipboardManager::maintainMaximumHistoryCountPerClipType() {
  maximumHistoryCountPerClipType_ = leastMaximumHistoryCount;
  for (const auto& client : clients_) {
    maximumHistoryCountPerClipType_ = std::max(
        maximumHistoryCountPerClipType_, client->theoreticalMaximumItemsNeededInClipboardHistory());
  }
}

void ClipboardManager::pollClipboard(RunLoopTimer& timer) {
  if (clipboardHistorySuppressionIsInEffect_ > 0) {
    timer.restUntilSignalled({&capturePermitted_});
    return;
  }
  // Ahead of the look: what changes during a capture is for the next tick.
  timer.restUntilSignalled({&pasteboards_.generalPasteboardChanged()});
  const std::int64_t changeCount = clipboard_->changeCount();
  if (changeCount == previousPasteboardChangeCount_) return;
  previousPasteboardChangeCount_ = changeCount;
  captureCurrentClipboardContents();
}

void ClipboardManager::captureCurrentClipboardContents() {
  // Nobody is asked for what nobody would want.
  if (clients_.empty() && historyCaptureMode_ == ClipboardCaptureForClients) return;
  std::uint32_t typesAdded = 0;
  bool somethingIsNew = false;
  for (const auto& cubby : createCubbiesFromClipboard()) {
    if (!shouldBeRecorded(*cubby)) continue;
    const ClipType clipType = cubby->isText() ? ClipTypeText : ClipTypeImage;
    typesAdded |= clipType;
    if (record(*cubby, clipType)) somethingIsNew = true;
  }
  if (!somethingIsNew) return;
  cullClipboardHistory();
  // They may come and go when they are told.
  const auto clients = clients_;
  for (const auto& client : clients) client->clipboardDidChangeWithTypesAdded(typesAdded);
}

bool ClipboardManager::shouldBeRecorded(const Cubby& cubby) const {
  if (historyCaptureMode_ != ClipboardCaptureForClients) return true;
  const auto clients = clients_;
  return std::any_of(clients.begin(), clients.end(), [&cubby](const auto& client) {
    return client->clipboardCubbyShouldBeRecordedInClipboardHistory(cubby);
  });
}

bool ClipboardManager::record(const Cubby& cubby, ClipType clipType) {
  const PropertyList state = cubby.state();
  if (!pathToLastCapturedClipboard_.empty() && clipTypeOfLastCapturedClipboard_ == clipType &&
      folder_.clipFileAtPathHas(pathToLastCapturedClipboard_, state)) {
    return false;
  }
  pathToLastCapturedClipboard_ = folder_.writeClip(state, clipType);
  clipTypeOfLastCapturedClipboard_ = clipType;
  return true;
}

void ClipboardManager::cullClipboardHistory() {
  for (const ClipType clipType : {ClipTypeText, ClipTypeImage, ClipTypeUnknown}) {
    for (const std::string& path : folder_.oldestPathsBeyond(maximumHistoryCountPerClipType_,
                                                             clipType, mostRemovedByOneCull)) {
      removeClipFileAtPathFromDisk(path);
    }
  }
}

void ClipboardManager::synchronizeWithClipboard() {
  previousPasteboardChangeCount_ = clipboard_->changeCount();
}

void ClipboardManager::permitClipboardHistoryCapture() {
  --clipboardHistorySuppressionIsInEffect_;
  capturePermitted_.signal();
}

void ClipboardManager::saveClipboardContents() {
  savedClipboardContents_ = createCubbiesFromClipboard();
}

void ClipboardManager::restoreClipboardContents() {
  clipboard_->clearContents();
  for (const auto& cubby : savedClipboardContents_) cubby->addToPasteboard(*clipboard_);
  synchronizeWithClipboard();
}

std::vector<std::shared_ptr<Cubby>> ClipboardManager::createCubbiesFromClipboard() const {
  std::vector<std::shared_ptr<Cubby>> cubbies;
  for (const auto& item : clipboard_->pasteboardItems()) {
    if (auto cubby = Cubby::cubbyWithPasteboardItem(*item)) cubbies.push_back(std::move(cubby));
  }
  return cubbies;
}

std::vector<std::string> ClipboardManager::pathsToClipFilesOfTypes(std::uint32_t clipTypes,
                                                                   std::int64_t maximum) const {
  return folder_.pathsToClipFilesOfTypes(clipTypes, maximum);
}

ClipType ClipboardManager::clipTypeFromFilePath(const std::string& path) {
  return ClipFolder::clipTypeFromFilePath(path);
}

std::shared_ptr<Cubby> ClipboardManager::createCubbyFromClipFileAtPath(
    const std::string& path) const {
  return folder_.createCubbyFromClipFileAtPath(path);
}

std::optional<AttributedString> ClipboardManager::textPreviewForClipFileAtPath(
    const std::string& path) const {
  const auto cubby = createCubbyFromClipFileAtPath(path);
  return cubby ? cubby->textContentsWithMaximumLength(lengthOfTextPreview) : std::nullopt;
}

Image ClipboardManager::iconImageForClipFileAtPath(const std::string& path) {
  return icons_.iconImageForClipFileAtPath(path);
}

void ClipboardManager::removeClipFileAtPathFromDisk(const std::string& path) {
  icons_.removeMetaDataForClipFileAtPath(path);
  fileSystem_.removeItemAtPath(path);
  if (path == pathToLastCapturedClipboard_) pathToLastCapturedClipboard_.clear();
}

void ClipboardManager::removeClipFileAtPathFromClipboardHistory(const std::string& path) {
  removeClipFileAtPathFromDisk(path);
  tellClientsOfTypesRemoved(clipTypeFromFilePath(path));
}

void ClipboardManager::removeFromClipboardHistoryAllClippingsWithTypes(std::uint32_t clipTypes) {
  for (const std::string& path : folder_.pathsWithEndingOfTypes(clipTypes)) {
    removeClipFileAtPathFromDisk(path);
  }
  tellClientsOfTypesRemoved(clipTypes);
}

void ClipboardManager::tellClientsOfTypesRemoved(std::uint32_t clipTypes) const {
  const auto clients = clients_;
  for (const auto& client : clients) client->clipboardHistoryChangedWithTypeRemoved(clipTypes);
}

}  // namespace qb
