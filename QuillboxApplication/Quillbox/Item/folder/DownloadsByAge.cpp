#include "Quillbox/Item/folder/DownloadsByAge.h"

#include <cstdint>

#include "Platform/FileSystem.h"
#include "Platform/Graphics.h"
#include "Quillbox/activation/Quillbox.h"
#include "QuillboxCommon/RunLoop.h"
#include "QuillboxCommon/views/LabelView.h"

namespace qb {

namespace {

constexpr double secondsOfHour = 3600;
constexpr std::int64_t hoursOfDay = 24;
constexpr Rect labelFrame = Rect::make(0, 0, 160, 16);
constexpr double labelTextSize = 13;

/// In whole hours and whole days; what is left over does not count.
struct Age {
  std::int64_t hours = 0, days = 0;
};

struct AgeLimit {
  const char* title;
  Age limit;
  int group;
};
constexpr AgeLimit ageLimits[] = {
    {"1 Hour", {.hours = 1}, 1},  {"3 Hours", {.hours = 3}, 1},  {"8 Hours", {.hours = 8}, 1},
    {"1 Day", {.days = 1}, 2},    {"2 Days", {.days = 2}, 2},    {"3 Days", {.days = 3}, 2},
    {"1 Week", {.days = 7}, 3},   {"2 Weeks", {.days = 14}, 3},  {"3 Weeks", {.days = 21}, 3},
    {"1 Month", {.days = 30}, 4}, {"3 Months", {.days = 90}, 4}, {"6 Months", {.days = 180}, 4},
};

Age ageOfItemAtPath(const std::string& path) {
  const auto attributes = quillbox->platform().fileSystem().attributesOfItemAtPath(path);
  if (!attributes) return {};
  const double seconds = RunLoop::main().date() - attributes->creationDate;
  const auto hours = static_cast<std::int64_t>(seconds / secondsOfHour);
  return {hours, hours / hoursOfDay};
}

std::shared_ptr<LabelView> createLabel(const std::string& text) {
  auto label = std::make_shared<LabelView>(quillbox->platform().graphics(), labelFrame);
  label->setRenderBackground(false);
  label->setFont(Font::systemFontOfSize(labelTextSize));
  label->setTextColor(Color::gray());
  label->setText(text);
  return label;
}

}  // namespace

std::shared_ptr<Menu> menuForMoveDownloadItemsToTrash(const FolderMenuPaths& contents,
                                                      const MenuItem::Action& trashContents,
                                                      const MenuItem::Action& dummy) {
  auto menu = Menu::create("Move to Trash");
  menu->setAutoenablesItems(false);
  const auto add = [&](const char* title, const FolderMenuPaths& paths) {
    auto entry = MenuItem::create(title, trashContents);
    entry->setRepresentedObject(paths);
    entry->setEnabled(!paths.empty());
    menu->addItem(std::move(entry));
  };
  add("All Items", contents);
  menu->addItem(MenuItem::separatorItem());
  auto label = MenuItem::create("Older Than", dummy);
  label->setView(createLabel("Older Than:"));
  label->setEnabled(false);
  menu->addItem(std::move(label));

  std::vector<Age> ages;
  for (const std::string& path : contents) ages.push_back(ageOfItemAtPath(path));
  int group = ageLimits[0].group;
  for (const AgeLimit& each : ageLimits) {
    if (each.group != group) menu->addItem(MenuItem::separatorItem());
    group = each.group;
    FolderMenuPaths older;
    for (std::size_t at = 0; at < contents.size(); ++at) {
      if (ages[at].hours >= each.limit.hours && ages[at].days >= each.limit.days) {
        older.push_back(contents[at]);
      }
    }
    add(each.title, older);
  }
  return menu;
}

}  // namespace qb
