// The resident program with one more row, below the applications: three grey items, "Item 0" to
// "Item 2" by name and identity, as a user could have made them. Says "invoked NAME", by a
// notification of the desktop too. Their menus have an entry besides, by which the user chooses one
// of three such items: says "chose NAME".
#include <memory>
#include <string>
#include <vector>

#include "Platform/Graphics.h"
#include "Quillbox/Item/CustomItem.h"
#include "Quillbox/activation/AppDelegate.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/providers/TabRowProvider.h"
#include "Quillbox/rows/HostView.h"
#include "QuillboxCommon/Log.h"
#include "QuillboxCommon/views/Canvas.h"
#include "ResidentProgram.h"

namespace {

constexpr qb::Size pictureSize{128, 128};
constexpr qb::Color grey = qb::Color::colorWithCalibratedRed(0.5, 0.5, 0.5, 1);
constexpr int greyItemCount = 3;
constexpr qb::Size chooserItemSize{96, 96};

class GreyItem : public qb::CustomItem {
 public:
  static std::shared_ptr<GreyItem> create(const qb::Rect& frame, const std::string& name) {
    std::shared_ptr<GreyItem> item(new GreyItem(frame, name));
    item->setRemovable(true);
    item->setImage(item->getBaseIconImage());
    return item;
  }
  bool configurable() const override { return true; }
  bool decorateable() const override { return true; }
  qb::Image getBaseIconImage() const override {
    return qb::quillbox->platform().graphics().imageWithSize(pictureSize, [](qb::Canvas& canvas) {
      canvas.fill(qb::Rect{{0, 0}, pictureSize}, grey);
    });
  }
  void invoke() override {
    qb::log("invoked " + name());
    qb::quillbox->displaySystemNotificationWithTitle("Item Invoked", "It was <" + name() + ">.");
  }
  MenuItems configureMenuItems() override {
    MenuItems items = CustomItem::configureMenuItems();
    items.insert(items.begin() + 2,
                 qb::MenuItem::create("Choose...", menuAction("choose", &GreyItem::choose)));
    return items;
  }

 private:
  void choose(qb::MenuItem& /*menuItem*/) {
    std::vector<std::shared_ptr<Item>> items;
    for (const char* name : {"First", "Second", "Third"}) {
      items.push_back(create({{0, 0}, chooserItemSize}, name));
    }
    qb::quillbox->presentItemChooserWithTitle(
        "Choose an Item", items, chooserItemSize, [](const std::shared_ptr<Item>& item) {
          qb::log("chose " + (item ? item->name() : "nothing"));
        });
  }
  GreyItem(const qb::Rect& frame, const std::string& name)
      : CustomItem(frame,
                   qb::PropertyList::dictionary({{"Item Name", name}, {"Item Unique ID", name}})) {}
};

class GreyProvider : public qb::TabRowProvider {
 public:
  GreyProvider() {
    for (int number = 0; number < greyItemCount; ++number) {
      names_.push_back("Item " + std::to_string(number));
    }
  }
  std::string name() const override { return "Grey Items"; }
  std::int64_t numberOfItems() override { return static_cast<std::int64_t>(names_.size()); }
  void createItemsWithSize(qb::Size size) override {
    for (const std::string& name : names_) addItem(GreyItem::create({{0, 0}, size}, name));
  }
  bool removeItemFromTabRow(qb::Item& item, bool /*confirmation*/) override {
    std::erase(names_, item.name());
    return true;
  }

 private:
  std::vector<std::string> names_;
};

}  // namespace

int main(int argc, char* argv[]) {
  return qb::test::runResidentProgram(argc, argv, [](qb::AppDelegate& delegate) {
    // The program's own row comes a moment later, and on top.
    delegate.hostView()->createTabRowAtIndex(0, std::make_shared<GreyProvider>(), true);
    qb::log("Quillbox is ready");
  });
}
