#include "support/HostViewFixture.h"

namespace qb::test {
namespace {

/// Writes down every call of a display, of a run of the same call the first only.
class RecordingProvider : public TabRowProvider {
 public:
  bool changed = false;
  CallLog log;

  CallLog takeLog() { return std::exchange(log, {}); }

  std::string name() const override { return "Recording"; }
  void noteEnvironment(const PropertyList&) override { note("noteEnvironment"); }
  std::int64_t numberOfItems() override {
    note("numberOfItems");
    return 2;
  }
  void createItemsWithSize(Size size) override {
    note("createItemsWithSize");
    for (const char* itemName : {"one", "two"}) {
      addItem(TestItem::create({{0, 0}, size}, itemName, std::make_shared<CallLog>()));
    }
  }
  void deleteItems() override {
    note("deleteItems");
    TabRowProvider::deleteItems();
  }
  void assignTabRowToAllItems() override {
    note("assignTabRowToAllItems");
    TabRowProvider::assignTabRowToAllItems();
  }
  bool haveItemsChanged() override {
    note("haveItemsChanged");
    return changed;
  }
  std::shared_ptr<Item> itemForIndex(std::uint64_t index) override {
    note("itemForIndex");
    return TabRowProvider::itemForIndex(index);
  }
  void setItem(Item& item, const Rect& viewFrame, bool animate) override {
    note("setItem");
    TabRowProvider::setItem(item, viewFrame, animate);
  }
  void itemsWillBeDisplayed() override {
    note("itemsWillBeDisplayed");
    TabRowProvider::itemsWillBeDisplayed();
  }
  void itemsWillBeDismissed() override {
    note("itemsWillBeDismissed");
    TabRowProvider::itemsWillBeDismissed();
  }
  void owningTabRowWasDismissed() override { note("owningTabRowWasDismissed"); }
  void gainActiveStatus() override {
    note("gainActiveStatus");
    TabRowProvider::gainActiveStatus();
  }
  void relinquishActiveStatus() override {
    note("relinquishActiveStatus");
    TabRowProvider::relinquishActiveStatus();
  }
  std::shared_ptr<Item> initiallySelectedItem() override {
    note("initiallySelectedItem");
    return items().empty() ? nullptr : items().front();
  }
  void itemWasSelected(const std::shared_ptr<Item>& item) override {
    note("itemWasSelected");
    TabRowProvider::itemWasSelected(item);
  }
  void itemWasDeselected(const std::shared_ptr<Item>& item) override {
    note("itemWasDeselected");
    TabRowProvider::itemWasDeselected(item);
  }

 private:
  void note(const char* call) {
    if (log.empty() || log.back() != call) log.emplace_back(call);
  }
};

class ProviderDisplayTest : public HostViewFixture {
 protected:
  ProviderDisplayTest() {
    const auto row = host().createTabRowAtIndex(0, provider, false);
    rows.push_back(row);
    makeDefaults(0, 0);
    provider->log.clear();
  }

  std::shared_ptr<RecordingProvider> provider = std::make_shared<RecordingProvider>();
};

TEST_F(ProviderDisplayTest, TheFirstOpeningHasTheItemsMade) {
  present(ActivationMethodCommandTab);
  EXPECT_EQ(provider->takeLog(),
            (CallLog{"noteEnvironment", "numberOfItems", "createItemsWithSize",
                     "assignTabRowToAllItems", "itemForIndex", "setItem", "itemsWillBeDisplayed",
                     "gainActiveStatus", "initiallySelectedItem", "itemWasSelected"}));
}

TEST_F(ProviderDisplayTest, ClosingKeepsTheItems) {
  present(ActivationMethodCommandTab);
  provider->log.clear();
  dismiss();
  EXPECT_EQ(provider->takeLog(), (CallLog{"itemsWillBeDismissed", "itemWasDeselected",
                                          "owningTabRowWasDismissed", "relinquishActiveStatus"}));
  EXPECT_EQ(provider->items().size(), 2U);
}

TEST_F(ProviderDisplayTest, TheNextOpeningShowsTheSameItems) {
  present(ActivationMethodCommandTab);
  const auto before = provider->items();
  dismiss();
  provider->log.clear();
  present(ActivationMethodCommandTab);
  EXPECT_EQ(provider->items(), before);
  EXPECT_EQ(provider->takeLog(),
            (CallLog{"noteEnvironment", "numberOfItems", "haveItemsChanged", "itemForIndex",
                     "setItem", "itemsWillBeDisplayed", "gainActiveStatus", "initiallySelectedItem",
                     "itemWasSelected"}));
}

TEST_F(ProviderDisplayTest, ItemsThatHaveChangedAreMadeAnew) {
  present(ActivationMethodCommandTab);
  dismiss();
  provider->log.clear();
  provider->changed = true;
  present(ActivationMethodCommandTab);
  EXPECT_EQ(provider->takeLog(),
            (CallLog{"noteEnvironment", "numberOfItems", "haveItemsChanged", "deleteItems",
                     "createItemsWithSize", "assignTabRowToAllItems", "itemForIndex", "setItem",
                     "itemsWillBeDisplayed", "gainActiveStatus", "initiallySelectedItem",
                     "itemWasSelected"}));
}

}  // namespace
}  // namespace qb::test
