#include "Quillbox/managers/DecorationManager.h"

#include <gmock/gmock.h>

#include "Quillbox/Item/Item.h"
#include "support/QuillboxFixture.h"

namespace qb::test {
namespace {

using ::testing::ElementsAre;

constexpr char path[] = "/home/user/Library/Preferences/com.vorlane.quillbox.decorations";

class KeyedItem : public Item {
 public:
  explicit KeyedItem(std::string key)
      : Item(Rect::make(0, 0, 40, 40), std::string("Keyed")), key_(std::move(key)) {}
  std::string decorationKey() const override { return key_; }

 private:
  std::string key_;
};

class DecorationManagerTest : public QuillboxFixture {
 protected:
  DecorationManager& manager() { return quillbox->decorationManager(); }
  SimulatedFileSystem& files() { return platform.fileSystem(); }
  std::string badgeName(const Item& decorated) {
    return simulatedImageName(manager().badgeImageForItem(decorated));
  }
  static PropertyList file(const PropertyList& tints, const PropertyList& badges) {
    return PropertyList::dictionary({{"TintNames", tints}, {"BadgeNames", badges}});
  }
  static PropertyList none() { return PropertyList::dictionary(); }

  const KeyedItem item{"one"}, other{"two"};
};

struct TintCase {
  std::string name;
  double red, green, blue;
};

TEST_F(DecorationManagerTest, TheTintsAreThese) {
  const std::vector<TintCase> expected = {{"Red", 1.0, 0.5, 0.5},
                                          {"Green", 0.5, 1.0, 0.5},
                                          {"Blue", 0.5, 0.5, 1.0},
                                          {"Yellow", 1.0, 1.0, 0.5},
                                          {"Black", 0.25, 0.25, 0.25}};
  const auto& tints = DecorationManager::tints();
  ASSERT_EQ(tints.size(), expected.size());
  for (std::size_t i = 0; i < expected.size(); ++i) {
    EXPECT_EQ(tints[i].first, expected[i].name);
    EXPECT_EQ(tints[i].second, Color::colorWithCalibratedRed(expected[i].red, expected[i].green,
                                                             expected[i].blue, 0.33))
        << expected[i].name;
  }
}

TEST_F(DecorationManagerTest, AnItemIsPlainAtFirst) {
  EXPECT_FALSE(manager().tintColorForItem(item));
  EXPECT_FALSE(manager().badgeImageForItem(item));
  EXPECT_FALSE(files().fileExistsAtPath(path));
}

TEST_F(DecorationManagerTest, ATintIsKeptAndSavedByTheItemsKey) {
  manager().setTintName("Blue", item);
  EXPECT_EQ(manager().tintColorForItem(item), Color::colorWithCalibratedRed(0.5, 0.5, 1, 0.33));
  EXPECT_FALSE(manager().tintColorForItem(other));
  EXPECT_FALSE(manager().badgeImageForItem(item));
  EXPECT_EQ(files().propertyList(path), file(PropertyList::dictionary({{"one", "Blue"}}), none()));
}

TEST_F(DecorationManagerTest, ABadgeIsKeptAndSavedByTheItemsKey) {
  manager().setBadgeName("BadgeStar.png", item);
  EXPECT_EQ(badgeName(item), "BadgeStar");
  EXPECT_FALSE(manager().badgeImageForItem(other));
  EXPECT_FALSE(manager().tintColorForItem(item));
  EXPECT_EQ(files().propertyList(path),
            file(none(), PropertyList::dictionary({{"one", "BadgeStar.png"}})));
}

TEST_F(DecorationManagerTest, TheNameForNoneTakesEitherOff) {
  manager().setTintName("Blue", item);
  manager().setBadgeName("BadgeStar.png", item);
  manager().setTintName("BadgeZNone.png", item);
  EXPECT_FALSE(manager().tintColorForItem(item));
  EXPECT_EQ(badgeName(item), "BadgeStar");
  manager().setBadgeName("BadgeZNone.png", item);
  EXPECT_FALSE(manager().badgeImageForItem(item));
  EXPECT_EQ(files().propertyList(path), file(none(), none()));
}

TEST_F(DecorationManagerTest, NoNameTakesEitherOff) {
  manager().setTintName("Blue", item);
  manager().setBadgeName("BadgeStar.png", item);
  manager().setTintName("", item);
  manager().setBadgeName("", item);
  EXPECT_EQ(files().propertyList(path), file(none(), none()));
}

TEST_F(DecorationManagerTest, TakingOffABadgeThatIsNotThereRewritesTheFileAndChangesNothingElse) {
  manager().setTintName("Red", item);
  manager().setBadgeName("BadgeStar.png", other);
  const auto before = files().propertyList(path);
  const int writes = files().numberOfWrites(path);
  manager().setBadgeName("BadgeZNone.png", item);
  EXPECT_EQ(files().numberOfWrites(path), writes + 1);
  EXPECT_EQ(files().propertyList(path), before);
}

TEST_F(DecorationManagerTest, AnItemWithoutAKeyCannotBeDecorated) {
  const KeyedItem keyless{""};
  manager().setTintName("Red", keyless);
  manager().setBadgeName("BadgeStar.png", keyless);
  EXPECT_FALSE(files().fileExistsAtPath(path));
  EXPECT_FALSE(manager().tintColorForItem(keyless));
  EXPECT_FALSE(manager().badgeImageForItem(keyless));
}

TEST_F(DecorationManagerTest, WhatIsSavedIsLoadedInPlaceOfWhatIsKnown) {
  manager().setTintName("Red", other);
  files().putPropertyList(path, file(PropertyList::dictionary({{"one", "Black"}}),
                                     PropertyList::dictionary({{"one", "BadgeHeart.png"}})));
  manager().loadDecorations();
  EXPECT_EQ(manager().tintColorForItem(item),
            Color::colorWithCalibratedRed(0.25, 0.25, 0.25, 0.33));
  EXPECT_EQ(badgeName(item), "BadgeHeart");
  EXPECT_FALSE(manager().tintColorForItem(other));
}

TEST_F(DecorationManagerTest, AFileOfAnotherShapeCountsAsNoDecorations) {
  const std::vector<PropertyList> shapes = {
      PropertyList::dictionary(),
      PropertyList::dictionary({{"TintNames", "Red"}, {"BadgeNames", 7}}),
      file(PropertyList::dictionary({{"one", 12}}), PropertyList::dictionary({{"one", none()}}))};
  for (const PropertyList& shape : shapes) {
    files().putPropertyList(path, shape);
    manager().loadDecorations();
    EXPECT_FALSE(manager().tintColorForItem(item));
    EXPECT_FALSE(manager().badgeImageForItem(item));
  }
}

TEST_F(DecorationManagerTest, NamesThatAreNotKnownShowNothingAndStayInTheFile) {
  platform.graphics().setImageMissing("BadgeOfOld");
  files().putPropertyList(path, file(PropertyList::dictionary({{"one", "Mauve"}}),
                                     PropertyList::dictionary({{"one", "BadgeOfOld.png"}})));
  manager().loadDecorations();
  EXPECT_FALSE(manager().tintColorForItem(item));
  EXPECT_FALSE(manager().badgeImageForItem(item));
  manager().setTintName("Red", other);
  EXPECT_EQ(files().propertyList(path),
            file(PropertyList::dictionary({{"one", "Mauve"}, {"two", "Red"}}),
                 PropertyList::dictionary({{"one", "BadgeOfOld.png"}})));
}

TEST_F(DecorationManagerTest, ADecorationHoldsThoughItCannotBeSaved) {
  files().setWritesFail(true);
  manager().setTintName("Yellow", item);
  EXPECT_EQ(manager().tintColorForItem(item), Color::colorWithCalibratedRed(1, 1, 0.5, 0.33));
}

TEST_F(DecorationManagerTest, BadgesAreTheImagesWhoseNamesBeginSo) {
  platform.graphics().setImageNames(
      {"UnknownFile", "BadgeZNone", "BadgeBell", "BadgeArrow", "bad"});
  EXPECT_THAT(manager().badgeNames(),
              ElementsAre("BadgeArrow.png", "BadgeBell.png", "BadgeZNone.png"));
  EXPECT_EQ(simulatedImageName(manager().badgeImageNamed("BadgeBell.png")), "BadgeBell");
  EXPECT_EQ(simulatedImageName(manager().badgeImageNamed("BadgeBell")), "BadgeBell");
}

TEST_F(DecorationManagerTest, AnItemShowsItsDecorationsAtTheSizeThatBadgesAreMadeFor) {
  platform.graphics().setImageSize("BadgeStar", {64, 64});
  manager().setTintName("Red", item);
  manager().setBadgeName("BadgeStar.png", item);
  KeyedItem decorated{"one"};
  const Image base = platform.graphics().imageNamed("Base");
  ASSERT_TRUE(decorated.setImage(base));
  const Image shown = decorated.image();
  EXPECT_EQ(shown.size(), (Size{40, 40})) << "the view's";
  EXPECT_EQ(shown.source()->naturalSize(), (Size{128, 128}));
  const auto drawn = simulatedImageOperations(shown);
  ASSERT_EQ(drawn.size(), 3U);
  EXPECT_EQ(drawn[0].image.source(), base.source());
  EXPECT_EQ(drawn[0].rect, Rect::make(0, 0, 128, 128));
  EXPECT_EQ(drawn[1].color, Color::colorWithCalibratedRed(1, 0.5, 0.5, 0.33));
  EXPECT_EQ(simulatedImageName(drawn[2].image), "BadgeStar");
  EXPECT_EQ(drawn[2].rect, Rect::make(64, 64, 64, 64));
}

TEST_F(DecorationManagerTest, AnItemWithoutDecorationsShowsTheImageItself) {
  KeyedItem plain{"one"};
  const Image base = platform.graphics().imageNamed("Base");
  plain.setImage(base);
  EXPECT_EQ(plain.image().source(), base.source());
}

}  // namespace
}  // namespace qb::test
