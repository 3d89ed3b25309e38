#include "Quillbox/rows/ProviderMenus.h"

#include "Platform/MenuPresenter.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/providers/TabRowProvider.h"
#include "Quillbox/rows/HostView.h"
#include "Quillbox/rows/MenuGroup.h"
#include "Quillbox/rows/ProviderSelector.h"
#include "Quillbox/rows/TabRow.h"

namespace qb {

namespace {

/// Between the selector and the menus below it.
constexpr double selectorGap = 6;

double widthOf(const Menu& menu) {
  return quillbox->platform().menuPresenter().menuSize(menu).width;
}

}  // namespace

void ProviderMenus::popUpProviderSelectorMenuWithEvent(const Event& event) {
  const auto row = sharedFrom(row_);
  const auto menu = Menu::create("Selector");
  const auto host = row->hostView();
  if (host) {
    for (const auto& information : host->tabRowProviderInformations()) {
      if (!information->shouldAppearInProviderSelector()) continue;
      const auto item = MenuItem::create(
          information->name(),
          {"providerSelected", [weakRow = std::weak_ptr<TabRow>(row)](const MenuItem& sender) {
             if (const auto target = weakRow.lock()) target->providerSelected(sender);
           }});
      item->setTag(MenuItemTagProvider);
      item->setRepresentedObject(information);
      menu->addItem(item);
    }
  }
  if (row->provider()) addMenuGroup(*menu, row->provider()->menuItemsForProviderMenu());
  if (host) host->augmentProviderSelectorMenu(*menu, *row, event);
  ProviderSelector& selector = row->providerSelector();
  quillbox->popUpMenu(
      menu, nullptr,
      {selector.frame().width() / 2 - widthOf(*menu) / 2, selector.frame().height() + selectorGap},
      &selector, nullptr);
}

void ProviderMenus::providerSelected(const MenuItem& sender) {
  const auto* const information =
      std::any_cast<std::shared_ptr<TabRowProviderInformation>>(&sender.representedObject());
  const auto row = sharedFrom(row_);
  const auto host = row->hostView();
  if (!information || !host) return;
  const auto held = *information;
  if (row->provider() && !row->provider()->confirmProviderChange()) return;
  row->setProvider(host->createTabRowProviderWithInformation(*held));
}

std::shared_ptr<Menu> ProviderMenus::createProviderConfigureMenu() {
  auto menu = Menu::create("Selector");
  menu->setAutoenablesItems(false);
  const auto& provider = row_.provider();
  if (!provider) return menu;
  if (provider->canInvokeAllItems()) {
    menu->addItem(MenuItem::create(
        "Invoke All Items",
        {"invokeAllItems", [weakRow = std::weak_ptr<TabRow>(sharedFrom(row_))](MenuItem&) {
           if (const auto row = weakRow.lock()) row->invokeAllItems();
         }}));
  }
  addMenuGroup(*menu, provider->menuItemsForConfigure());
  return menu;
}

void ProviderMenus::popUpProviderConfigureMenu() {
  const auto row = sharedFrom(row_);
  const auto menu = createProviderConfigureMenu();
  const Rect selector = row->providerSelector().frame();
  quillbox->popUpMenu(menu, nullptr,
                      {selector.center().x - widthOf(*menu) / 2, selector.maxY() + selectorGap},
                      row.get(), nullptr);
}

void ProviderMenus::popUpProviderConfigureMenuAtLocation(Point location) {
  const auto row = sharedFrom(row_);
  quillbox->popUpMenu(createProviderConfigureMenu(), nullptr,
                      row->convertPointFromView(location, nullptr), row.get(), nullptr);
}

}  // namespace qb
