#include "Support.h"

using namespace c_tests;

namespace {

struct ReadResult {
  Held<ld_table> table;
  Held<ld_read_report> report;
};

ReadResult Read(std::string_view text, const ld_csv_read_options& options) {
  ld_table* table = nullptr;
  ld_read_report* report = nullptr;
  ld_error* error = nullptr;
  EXPECT_TRUE(ld_csv_read(text.data(), text.size(), &options, &table, &report, &error))
      << ld_error_message(error);
  ld_release(error);
  return {Held<ld_table>(table), Held<ld_read_report>(report)};
}

}  // namespace

TEST(CReading, Smoke) {
  ld_csv_read_options o = {};
  o.size = sizeof o;
  const auto read = Read("title\nzip,b\n00501,2024-01-31\n\"x \"\"y\"\"\",1.10", o);
  EXPECT_EQ(Cell(read.table.get(), 0, 0), "501");
  uint64_t count = 0;
  EXPECT_TRUE(ld_read_report_get_problem_count(read.report.get(), &count, nullptr));
  for (uint64_t i = 0; i < count; ++i) {
    ld_error* problem = nullptr;
    EXPECT_TRUE(ld_read_report_get_problem(read.report.get(), i, &problem, nullptr));
    puts(ld_error_message(problem));
    ld_release(problem);
  }
}
