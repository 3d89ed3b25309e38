#include "Quillbox/providers/FolderOrder.h"

#include <gmock/gmock.h>

#include <limits>
#include <string>

namespace qb::test {
namespace {

using ::testing::ElementsAre;

FileOrFolder file(const std::string& name, std::uint64_t size = 0,
                  std::optional<Date> creationDate = 0, std::optional<Date> modificationDate = 0) {
  return {name, "/" + name, creationDate, modificationDate, size, true, false};
}
FileOrFolder folder(const std::string& name, std::optional<Date> creationDate = 0,
                    std::optional<Date> modificationDate = 0) {
  return {name, "/" + name, creationDate, modificationDate, 0, false, true};
}

std::vector<std::string> sorted(const FolderOrder& order, const std::vector<FileOrFolder>& all) {
  std::vector<std::shared_ptr<FileOrFolder>> entries;
  for (const FileOrFolder& each : all) entries.push_back(std::make_shared<FileOrFolder>(each));
  order.sort(entries);
  std::vector<std::string> names;
  for (const auto& entry : entries) names.push_back(entry->name);
  return names;
}

struct Comparison {
  FolderOrder order;
  FileOrFolder a, b;
  std::int64_t result, reverse;
};

TEST(FolderOrderTest, TwoEntriesAreComparedByTheOrder) {
  const FolderOrder byName{FolderSortByName}, bySize{FolderSortBySize},
      byCreation{FolderSortByCreationDate}, byModification{FolderSortByModificationDate};
  constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max(), least = -most - 1;
  const auto ascending = [](FolderOrder order) {
    order.sortOrder = -1;
    return order;
  };
  const auto with = [](FolderOrder order, FolderSegregation segregation) {
    order.sortSegregation = segregation;
    return order;
  };
  const Comparison table[] = {
      // The later name, the larger file and the younger one come first with the order 1.
      {byName, file("b"), file("a"), -1, 1},
      {byName, file("B"), file("a"), -1, 1},
      {byName, file("a"), file("A"), 0, 0},
      {byName, file("b"), folder("a"), -1, 1},
      {ascending(byName), file("b"), file("a"), 1, -1},
      {bySize, file("a", 2), file("b", 1), -1, 1},
      {ascending(bySize), file("a", 2), file("b", 1), 1, -1},
      {bySize, file("a", 1), folder("b"), -1, 1},
      {byCreation, file("a", 0, 20, 1), file("b", 0, 10, 2), -1, 1},
      {byCreation, file("a", 0, 20), file("b", 0, 20), 0, 0},
      {ascending(byCreation), file("a", 0, 20, 1), folder("b", 10, 2), 1, -1},
      {byModification, file("a", 0, 1, 20), file("b", 0, 2, 10), -1, 1},
      {ascending(byModification), file("a", 0, 1, 20), file("b", 0, 2, 10), 1, -1},
      {byModification, folder("a", 1, 20), file("b", 0, 2, 20), 0, 0},
      // Without a date it is the oldest.
      {byCreation, file("a", 0, 1), file("b", 0, std::nullopt), -1, 1},
      {byModification, file("a", 0, 1, std::nullopt), file("b", 0, 1, std::nullopt), 0, 0},
      // Equal sizes: each comes behind the other, or each before.
      {bySize, file("a", 5), file("b", 5), 1, 1},
      {ascending(bySize), file("a", 5), file("b", 5), -1, -1},
      {bySize, folder("a"), folder("b"), 1, 1},
      // The kinds come first, and only between two of one kind the rest counts.
      {with(byName, FolderSegregationFilesFirst), file("a"), folder("b"), -1, 1},
      {with(ascending(byName), FolderSegregationFilesFirst), file("b"), folder("a"), -1, 1},
      {with(byName, FolderSegregationFilesFirst), file("b"), file("a"), -1, 1},
      {with(byName, FolderSegregationFoldersFirst), file("b"), folder("a"), 1, -1},
      {with(bySize, FolderSegregationFoldersFirst), file("a", 9), folder("b"), 1, -1},
      {with(byName, FolderSegregationFoldersFirst), folder("a"), folder("b"), 1, -1},
      {with(byName, static_cast<FolderSegregation>(7)), file("b"), folder("a"), -1, 1},
      // A method that nobody knows, in whatever order.
      {{4, 1}, file("a"), file("b"), -1, -1},
      {{-1, -1}, file("a"), file("b"), -1, -1},
      {{4, -1, FolderSegregationFoldersFirst}, file("a"), folder("b"), 1, -1},
      // A saved order may be anything.
      {{FolderSortByName, 0}, file("a"), file("b"), 0, 0},
      {{FolderSortByName, -3}, file("a"), file("b"), -3, 3},
      {{FolderSortByName, least}, file("a"), file("b"), -most, most},
      {{FolderSortBySize, least}, file("a", 2), file("b", 1), most, -most},
  };
  int number = 0;
  for (const Comparison& each : table) {
    EXPECT_EQ(each.order.compare(each.a, each.b), each.result) << number;
    EXPECT_EQ(each.order.compare(each.b, each.a), each.reverse) << number;
    ++number;
  }
}

TEST(FolderOrderTest, NamesGoFromTheLastToTheFirstUnlessSetOtherwise) {
  EXPECT_THAT(sorted({}, {file("b"), file("C"), folder("a"), file("d")}),
              ElementsAre("d", "C", "b", "a"));
}

TEST(FolderOrderTest, FoldersGatherAtOneEndOfTheSizes) {
  const std::vector<FileOrFolder> all = {file("small", 1), folder("x"), file("large", 9),
                                         folder("y")};
  const auto largestFirst = sorted({FolderSortBySize}, all);
  EXPECT_EQ(largestFirst[0], "large");
  EXPECT_EQ(largestFirst[1], "small");
  const auto smallestFirst = sorted({FolderSortBySize, -1}, all);
  EXPECT_EQ(smallestFirst[2], "small");
  EXPECT_EQ(smallestFirst[3], "large");
}

TEST(FolderOrderTest, ThousandsOfEqualSizesAreAllKept) {
  std::vector<FileOrFolder> all;
  for (int i = 0; i < 3000; ++i) all.push_back(file(std::to_string(i), i % 3 == 0 ? 7 : 8));
  for (const std::int64_t sortOrder : {1, -1}) {
    for (const std::int32_t method : {FolderSortBySize + 0, 99}) {
      auto names = sorted({method, sortOrder}, all);
      std::sort(names.begin(), names.end());
      EXPECT_EQ(std::unique(names.begin(), names.end()) - names.begin(), 3000);
    }
  }
}

TEST(FolderOrderTest, NothingAndOneEntryAreInOrder) {
  EXPECT_TRUE(sorted({}, {}).empty());
  EXPECT_THAT(sorted({}, {file("a")}), ElementsAre("a"));
}

}  // namespace
}  // namespace qb::test
