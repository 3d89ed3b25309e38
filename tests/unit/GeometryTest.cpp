#include "QuillboxCommon/Geometry.h"

#include <gtest/gtest.h>

#include "support/PrintGeometry.h"

namespace qb {
namespace {

const Rect unit = Rect::make(0, 0, 10, 10);

TEST(GeometryTest, ARectKnowsItsEdgesAndCentre) {
  const Rect rect = Rect::make(1, 2, 10, 20);
  EXPECT_EQ(rect.maxX(), 11);
  EXPECT_EQ(rect.maxY(), 22);
  EXPECT_EQ(rect.center(), (Point{6, 12}));
}

TEST(GeometryTest, ARectWithoutAreaIsEmpty) {
  EXPECT_TRUE(Rect{}.isEmpty());
  EXPECT_TRUE(Rect::make(1, 1, 5, 0).isEmpty());
  EXPECT_TRUE(Rect::make(1, 1, 0, 5).isEmpty());
  EXPECT_TRUE(Rect::make(1, 1, -5, 5).isEmpty());
  EXPECT_FALSE(Rect::make(1, 1, 0.1, 0.1).isEmpty());
}

TEST(GeometryTest, OffsetMovesAndInsetShrinksOrGrows) {
  EXPECT_EQ(offset(unit, 3, -4), Rect::make(3, -4, 10, 10));
  EXPECT_EQ(inset(unit, 1, 2), Rect::make(1, 2, 8, 6));
  EXPECT_EQ(inset(unit, -1, -2), Rect::make(-1, -2, 12, 14));
}

TEST(GeometryTest, NearEdgesBelongToARectAndFarOnesDoNot) {
  EXPECT_TRUE(contains(unit, Point{0, 0}));
  EXPECT_TRUE(contains(unit, Point{9.99, 9.99}));
  EXPECT_FALSE(contains(unit, Point{10, 5}));
  EXPECT_FALSE(contains(unit, Point{5, 10}));
  EXPECT_FALSE(contains(unit, Point{-0.01, 5}));
  EXPECT_FALSE(contains(Rect{}, Point{0, 0}));
}

TEST(GeometryTest, ARectContainsOneThatSharesItsEdges) {
  EXPECT_TRUE(contains(unit, unit));
  EXPECT_TRUE(contains(unit, Rect::make(0, 5, 10, 5)));
  EXPECT_FALSE(contains(unit, Rect::make(0, 5, 10, 5.1)));
  EXPECT_FALSE(contains(unit, Rect::make(-1, 0, 5, 5)));
}

TEST(GeometryTest, IntersectionsOfPairs) {
  const struct {
    Rect a;
    Rect b;
    Rect common;
  } pairs[] = {
      {unit, Rect::make(5, 6, 10, 10), Rect::make(5, 6, 5, 4)},
      {unit, Rect::make(2, 3, 4, 4), Rect::make(2, 3, 4, 4)},
      {unit, Rect::make(-5, -5, 100, 100), unit},
      {unit, Rect::make(10, 0, 10, 10), {}},
      {unit, Rect::make(0, 10, 10, 10), {}},
      {unit, Rect::make(20, 20, 5, 5), {}},
      {unit, Rect::make(5, 5, 0, 3), {}},
      {Rect{}, Rect{}, {}},
  };
  for (const auto& pair : pairs) {
    EXPECT_EQ(intersection(pair.a, pair.b), pair.common);
    EXPECT_EQ(intersection(pair.b, pair.a), pair.common);
    EXPECT_EQ(intersects(pair.a, pair.b), pair.common != Rect{});
    EXPECT_EQ(intersects(pair.b, pair.a), pair.common != Rect{});
  }
}

TEST(GeometryTest, AUnionGoesAroundBothAndEmptyOnesAddNothing) {
  EXPECT_EQ(unionOf(unit, Rect::make(20, -5, 10, 10)), Rect::make(0, -5, 30, 15));
  EXPECT_EQ(unionOf(unit, Rect::make(2, 2, 2, 2)), unit);
  EXPECT_EQ(unionOf(unit, Rect::make(50, 50, 0, 0)), unit);
  EXPECT_EQ(unionOf(Rect::make(50, 50, 0, 9), unit), unit);
  EXPECT_EQ(unionOf(Rect::make(50, 50, 0, 0), Rect::make(1, 1, 0, 0)), Rect{});
}

TEST(GeometryTest, IntegralRoundsOutward) {
  EXPECT_EQ(integral(Rect::make(0.2, 0.8, 1, 1)), Rect::make(0, 0, 2, 2));
  EXPECT_EQ(integral(Rect::make(-0.5, -1.5, 1, 1)), Rect::make(-1, -2, 2, 2));
  EXPECT_EQ(integral(Rect::make(3, 4, 5, 6)), Rect::make(3, 4, 5, 6));
  EXPECT_EQ(integral(Rect::make(3, 4, 0, 0)), Rect::make(3, 4, 0, 0));
}

TEST(GeometryTest, CenteredKeepsTheCentre) {
  EXPECT_EQ(centered({4, 6}, Rect::make(10, 10, 10, 10)), Rect::make(13, 12, 4, 6));
  EXPECT_EQ(centered({20, 20}, unit), Rect::make(-5, -5, 20, 20));
}

}  // namespace
}  // namespace qb
