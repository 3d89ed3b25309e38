#pragma once

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "Quillbox/managers/ClipboardManager.h"
#include "Quillbox/managers/Cubby.h"
#include "support/QuillboxFixture.h"

namespace qb::test {

inline PropertyList::Data dataOf(std::string_view bytes) { return {bytes.begin(), bytes.end()}; }

/// Writes down what it is told and asked. Wants the types whose bits are set.
class RecordingClipboardClient : public ClipboardManagerClient {
 public:
  explicit RecordingClipboardClient(std::uint32_t wanted = 0, std::int64_t maximum = 0)
      : wanted_(wanted), maximum_(maximum) {}
  bool clipboardCubbyShouldBeRecordedInClipboardHistory(const Cubby& cubby) override {
    asked.push_back(cubby.type());
    return (wanted_ & (cubby.isText() ? ClipTypeText : ClipTypeImage)) != 0;
  }
  void clipboardDidChangeWithTypesAdded(std::uint32_t types) override { added.push_back(types); }
  void clipboardHistoryChangedWithTypeRemoved(std::uint32_t types) override {
    removed.push_back(types);
  }
  std::int64_t theoreticalMaximumItemsNeededInClipboardHistory() override { return maximum_; }

  std::vector<std::string> asked;
  std::vector<std::uint32_t> added, removed;

 private:
  std::uint32_t wanted_;
  std::int64_t maximum_;
};

/// The launched program, which records everything, and others that copy.
class ClipboardFixture : public QuillboxFixture {
 protected:
  static PasteboardContents text(std::string_view text) {
    return {{"public.utf8-plain-text", dataOf(text)}};
  }
  static PasteboardContents picture(std::string_view name) {
    return {{"public.png", dataOf("image " + std::string(name))}};
  }

  ClipboardManager& manager() { return quillbox->clipboardManager(); }
  SimulatedPasteboard& clipboard() { return platform.pasteboards().general(); }
  SimulatedFileSystem& files() { return platform.fileSystem(); }

  /// By another program; until it has been noticed.
  void copy(const std::vector<PasteboardContents>& items) {
    clipboard().putByAnotherProgram(items);
    platform.runFor(1);
  }
  void copy(const PasteboardContents& item) { copy(std::vector<PasteboardContents>{item}); }

  std::string path(const std::string& name) { return folder + "/" + name; }
  std::vector<std::string> names() { return files().contentsOfDirectoryAtPath(folder); }
  std::int64_t numberOf(std::string_view extension) {
    const auto all = names();
    return std::count_if(all.begin(), all.end(),
                         [extension](const auto& name) { return name.ends_with(extension); });
  }
  /// A clipping with that text, copied so many seconds after the first day of 2001.
  std::string putTextClip(const std::string& name, Date date, std::string_view text = "text") {
    const std::string clip = path(name);
    files().putPropertyList(clip, Cubby("public.utf8-plain-text", dataOf(text)).state());
    files().setCreationDate(clip, date);
    return clip;
  }
  /// Text clippings "0000.textclip" and so on, from old to young.
  void putTextClips(int count) {
    for (int index = 0; index < count; ++index) {
      const std::string number = std::to_string(index);
      putTextClip(std::string(4 - number.size(), '0') + number + ".textclip", index);
    }
  }
  /// What the clippings hold, the newest first.
  std::vector<std::string> history(std::uint32_t types = everyClipType) {
    std::vector<std::string> contents;
    for (const std::string& clip : manager().pathsToClipFilesOfTypes(types, 1000)) {
      const auto cubby = manager().createCubbyFromClipFileAtPath(clip);
      contents.push_back(cubby ? std::string(cubby->data().begin(), cubby->data().end()) : "none");
    }
    return contents;
  }

  const std::string folder = "/home/user/.local/share/Quillbox/Clipboard History";
};

}  // namespace qb::test
