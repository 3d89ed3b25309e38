#include "Quillbox/activation/ColorState.h"

#include <gtest/gtest.h>

namespace qb::test {
namespace {

TEST(ColorStateTest, KeepsTheFourComponents) {
  EXPECT_EQ(state(Color::colorWithCalibratedRed(0.25, 0.5, 0.75, 0.125)),
            PropertyList::dictionary({{"RedColorComponent", 0.25},
                                      {"GreenColorComponent", 0.5},
                                      {"BlueColorComponent", 0.75},
                                      {"AlphaComponent", 0.125}}));
}

TEST(ColorStateTest, GrayGivesItsWhiteThreeTimes) {
  EXPECT_EQ(state(Color::colorWithCalibratedWhite(0.5, 0.75)),
            PropertyList::dictionary({{"RedColorComponent", 0.5},
                                      {"GreenColorComponent", 0.5},
                                      {"BlueColorComponent", 0.5},
                                      {"AlphaComponent", 0.75}}));
}

TEST(ColorStateTest, ComesBackInSinglePrecision) {
  const Color color = Color::colorWithCalibratedRed(0.33, 0.5, 0.75, 1);
  EXPECT_EQ(colorFromState(state(color)),
            Color::colorWithCalibratedRed(static_cast<double>(0.33F), 0.5, 0.75, 1));
}

TEST(ColorStateTest, MissingComponentsAreZero) {
  EXPECT_EQ(colorFromState(PropertyList::dictionary({{"AlphaComponent", 1.0}})),
            Color::colorWithCalibratedRed(0, 0, 0, 1));
}

}  // namespace
}  // namespace qb::test
