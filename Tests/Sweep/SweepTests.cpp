#include <openssl/err.h>

#include "Sweep/Operation.h"

namespace Data::tests {
namespace {

std::string DescribeAll(const Objects& objects) {
  std::string text;
  for (const auto& object : objects) text += Describe(object.Get()) + "\n";
  return text;
}

/// Whether an outcome reports a lack of memory; cryptographic operations report it with their own
/// messages.
bool IsLackOfMemory(const std::string& outcome, bool isGuarded, bool mayLackReport) {
  if (!isGuarded) return outcome == "throws std::bad_alloc";
  for (const auto* report :
       {"std::bad_alloc", "Failed to ", "SecureString: ", "The Arrow stream failed: "})
    if (outcome.starts_with("0 error 2 "s + report)) return true;
  return outcome == "0" && mayLackReport;
}

/// When any one of its allocations fails, an operation either fails as a whole and reports it, or
/// has the same outcome as with memory; it leaks nothing, leaves the errors that the program has in
/// the cryptography library alone, and works afterwards. Beyond 400 allocations only a sample of
/// them fails.
class Sweep : public testing::TestWithParam<Operation> {};

TEST_P(Sweep, FailsAsAWhole) {
  const Operation& operation = GetParam();
  ERR_raise(ERR_LIB_USER, 7);
  const auto outcomeWithMemory = [&](const Objects& objects) {
    Call call;
    return operation.outcome(call, objects, 0, false);
  };
  const std::string before = DescribeAll(operation.make());
  const Objects used = operation.make();
  const std::string expected = outcomeWithMemory(used), after = DescribeAll(used);
  const bool isFailure = expected.find(" error ") != expected.npos;
  for (const bool onlyOne : {true, false}) {
    std::uint64_t n = 0;
    bool hasFailed = false;
    do {
      n += 1 + n / 400;
      SCOPED_TRACE("allocation " + std::to_string(n) + (onlyOne ? "" : " and on"));
      const std::int64_t blocks = FailingMemory::liveBlocks;
      {
        Call call;
        const Objects objects = operation.make();
        const std::string outcome = operation.outcome(call, objects, n, onlyOne);
        hasFailed = FailingMemory::hasFailed;
        if (outcome != expected) {
          EXPECT_TRUE(IsLackOfMemory(outcome, call.isGuarded, isFailure || !onlyOne)) << outcome;
          EXPECT_EQ(onlyOne ? DescribeAll(objects) : before, before);
          EXPECT_EQ(outcomeWithMemory(objects), expected) << "when there is memory again";
        }
        EXPECT_EQ(DescribeAll(objects), after);
      }
      EXPECT_EQ(FailingMemory::liveBlocks, blocks);
    } while (hasFailed && !HasFailure());
    EXPECT_TRUE(n > 1 || operation.mayNeedNoMemory) << "allocates nothing";
  }
  EXPECT_EQ(ERR_GET_REASON(ERR_get_error()), 7);
  EXPECT_EQ(ERR_get_error(), 0u);
  ERR_clear_error();  // which frees what popped errors still hold
}

constexpr auto kName = [](const auto& info) { return info.param.name; };
INSTANTIATE_TEST_SUITE_P(, Sweep, testing::ValuesIn(Operations()), kName);
INSTANTIATE_TEST_SUITE_P(C, Sweep, testing::ValuesIn(CFunctions()), kName);

}  // namespace
}  // namespace Data::tests
