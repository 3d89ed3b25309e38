#include "QuillboxCommon/Log.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/RecordingLog.h"

namespace qb {
namespace {

TEST(LogTest, GoesToTheSinkThatIsSet) {
  test::RecordingLog sink;
  EXPECT_EQ(logSink(), &sink);
  log("one");
  log("two\r\nlines");
  EXPECT_EQ(sink.entries, (std::vector<std::string>{"one", "two\r\nlines"}));
}

TEST(LogTest, WithoutASinkNothingHappens) {
  { const test::RecordingLog sink; }
  EXPECT_EQ(logSink(), nullptr);
  log("nobody hears this");
}

}  // namespace
}  // namespace qb
