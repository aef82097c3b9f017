#include "gui/command_line.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "sim/sim_system.h"

namespace kx {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(SplitCommandLine, EmptyLineGivesNoTokens) {
  EXPECT_THAT(SplitCommandLine(""), IsEmpty());
}

TEST(SplitCommandLine, PlainLineSplitsAtEverySingleBlank) {
  EXPECT_THAT(SplitCommandLine("a.ksx /m"), ElementsAre("a.ksx", "/m"));
  EXPECT_THAT(SplitCommandLine("a  b"), ElementsAre("a", "", "b"));
  EXPECT_THAT(SplitCommandLine("C:\\My Macros\\x.ksx"), ElementsAre("C:\\My", "Macros\\x.ksx"));
}

TEST(SplitCommandLine, QuotedPathKeepsItsBlanks) {
  EXPECT_THAT(SplitCommandLine("\"C:\\My Macros\\x.ksx\""), ElementsAre("C:\\My Macros\\x.ksx"));
}

TEST(SplitCommandLine, QuotedTokensSplitAtQuoteBlankQuote) {
  EXPECT_THAT(SplitCommandLine("\"C:\\a b\\x.ksx\" \"/m\""), ElementsAre("C:\\a b\\x.ksx", "/m"));
}

TEST(SplitCommandLine, DoubleBlankSeparatorWinsOverSingle) {
  // With quote-blank-blank-quote present the single form is not tried, so a
  // quote-blank-quote inside a piece stays.
  EXPECT_THAT(SplitCommandLine("\"a\" \"b\"  \"c\""), ElementsAre("a\" \"b", "c"));
}

TEST(SplitCommandLine, QuotedFormDropsFirstAndLastCharacterBlindly) {
  EXPECT_THAT(SplitCommandLine("\"x.ksx\" /m"), ElementsAre("x.ksx\" /"));
  EXPECT_THAT(SplitCommandLine("\""), ElementsAre(""));
}

TEST(FirstExistingFile, SkipsTokensThatAreNotFiles) {
  sim::SimSystem sim;
  sim.AddFile("/macros/b.ksx", "b");
  sim.AddFile("/macros/c.ksx", "c");
  auto files = sim.Ports();
  EXPECT_EQ(
      FirstExistingFile({"/m", "", "/macros/a.ksx", "/macros/b.ksx", "/macros/c.ksx"}, files.files),
      "/macros/b.ksx");
  EXPECT_EQ(FirstExistingFile({"/m", "/h"}, files.files), std::nullopt);
}

TEST(ParseSwitches, ComparesWithoutRegardToCase) {
  const auto s = ParseSwitches({"/REC", "x", "/M"});
  EXPECT_TRUE(s.record);
  EXPECT_TRUE(s.minimized);
  EXPECT_FALSE(s.hidden);
  const auto none = ParseSwitches({"/mm", "m", "/hide"});
  EXPECT_FALSE(none.minimized || none.hidden || none.record);
}

}  // namespace
}  // namespace kx
