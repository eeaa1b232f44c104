#include "Sweep/Operation.h"

namespace Data::tests {
namespace {

std::string DescribeAll(const Objects& objects) {
  std::string text;
  for (const auto& object : objects) text += Describe(object.Get()) + "\n";
  return text;
}

/// Every operation that allocates, with each of its allocations failing in turn: it fails as a
/// whole and says so, or gives the same as with memory; it leaks nothing and works afterwards.
class Sweep : public testing::TestWithParam<Operation> {};

TEST_P(Sweep, FailsAsAWhole) {
  const Operation& operation = GetParam();
  const std::string before = DescribeAll(operation.make());
  const Objects used = operation.make();
  const std::string expected = operation.Outcome(used), after = DescribeAll(used);
  for (const Mode mode : {Mode::OnlyOne, Mode::AllFromThere}) {
    const bool mayLackError =
        mode == Mode::AllFromThere || expected.find(" error ") != expected.npos;
    bool isLacking = true;
    for (std::uint64_t n = 1; isLacking && !HasFailure(); n += 1 + n / 400) {
      SCOPED_TRACE("allocation " + std::to_string(n) + (mode == Mode::OnlyOne ? "" : " and on"));
      const std::int64_t blocks = FailingMemory::LiveBlocks();
      {
        const Objects objects = operation.make();
        const std::string outcome = operation.Outcome(objects, n, mode);
        isLacking = FailingMemory::FailedCount() > 0;
        if (outcome != expected) {
          EXPECT_TRUE(isLacking);
          // There may be no memory for the error itself.
          EXPECT_TRUE(outcome == kLackOfMemory || (outcome == "0" && mayLackError)) << outcome;
          EXPECT_EQ(mode == Mode::OnlyOne ? DescribeAll(objects) : before, before);
          EXPECT_EQ(operation.Outcome(objects), expected) << "when there is memory again";
        }
        EXPECT_EQ(DescribeAll(objects), after);
      }
      EXPECT_EQ(FailingMemory::LiveBlocks(), blocks);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(, Sweep, testing::ValuesIn(Operations()),
                         [](const auto& info) { return info.param.name; });

}  // namespace
}  // namespace Data::tests
