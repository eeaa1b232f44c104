// Delimited text and JSON to tables.

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <thread>
#include <vector>

#include "../Cases.h"
#include "Support.h"
#include "Values.h"

using namespace c_tests;
using Data::tests::Case;
using Data::tests::Cases;

namespace {

// -- Reading --

struct Result {
  Held<ld_table> table;
  Held<ld_read_report> report;
  std::string failure;
};

bool ReadAny(std::string_view text, const ld_csv_read_options* options, ld_table** table,
             ld_read_report** report, ld_error** error) {
  return ld_csv_read(text.data(), text.size(), options, table, report, error);
}
bool ReadAny(std::string_view text, const ld_json_read_options* options, ld_table** table,
             ld_read_report** report, ld_error** error) {
  return ld_json_read(text.data(), text.size(), options, table, report, error);
}

/// @param call  of the form of `ld_csv_read` behind its options
template <class Call>
Result Receive(Call&& call) {
  ld_table* table = nullptr;
  ld_read_report* report = nullptr;
  ld_error* error = nullptr;
  const bool isRead = call(&table, &report, &error);
  EXPECT_EQ(isRead, table && !error);
  EXPECT_TRUE(isRead || (!table && !report));
  Result result{Held<ld_table>(table), Held<ld_read_report>(report), ld_error_message(error)};
  EXPECT_EQ(ld_error_code(error), isRead ? 0u : 2u);
  ld_release(error);
  return result;
}

template <class Options>
Result Read(std::string_view text, const Options* options, bool wantsReport = true) {
  // A copy of its exact size lets the address sanitizer see reads past its end.
  const auto copy = std::make_unique<char[]>(text.size());
  std::ranges::copy(text, copy.get());
  return Receive([&](ld_table** table, ld_read_report** report, ld_error** error) {
    return ReadAny({copy.get(), text.size()}, options, table, wantsReport ? report : nullptr,
                   error);
  });
}

ld_csv_read_options Csv(std::uint32_t threads = 1) {
  ld_csv_read_options options{};
  options.size = sizeof options;
  options.thread_count = threads;
  return options;
}

ld_json_read_options Json(std::uint32_t threads = 1) {
  ld_json_read_options options{};
  options.size = sizeof options;
  options.thread_count = threads;
  return options;
}

// -- Showing --

std::string BytesOf(const ld_variant& value) {
  const auto text = Received<ld_string>(
      [&](ld_string** out, ld_error** error) { return ld_variant_to_text(&value, out, error); });
  const char* utf8 = nullptr;
  std::uint64_t length = 0;
  EXPECT_TRUE(ld_string_get_utf8(text.get(), &utf8, nullptr));
  EXPECT_TRUE(ld_string_get_length(text.get(), &length, nullptr));
  return {utf8, static_cast<std::size_t>(length)};
}

std::string Show(const ld_variant& value) {
  double real = 0;
  std::memcpy(&real, value.value, sizeof real);
  switch (ld_variant_type(&value)) {
    case LD_VALUE_TYPE_NULL:
      return "~";
    case LD_VALUE_TYPE_DOUBLE:
      return Shortest(real) + "f";
    case LD_VALUE_TYPE_DATE_TIME:
      return "@" + BytesOf(value);
    case LD_VALUE_TYPE_JSON_DOCUMENT:
      return "{" + BytesOf(value) + "}";
    case LD_VALUE_TYPE_INT64:
      return BytesOf(value);
    default:
      return "'" + BytesOf(value) + "'";
  }
}

/// @param showsNotes  adds what a table tells beside its cells: types and flags of the columns,
///                    indexes and flags of the rows
std::string Show(const Result& result, bool showsNotes = false) {
  if (!result.table) return "! " + result.failure;
  std::string all;
  std::int64_t columns = 0, rows = 0;
  EXPECT_TRUE(ld_table_get_column_count(result.table.get(), &columns, nullptr));
  EXPECT_TRUE(ld_table_get_row_count(result.table.get(), &rows, nullptr));
  for (std::int32_t i = 0; i < columns; ++i) {
    const auto column = Received<ld_column>([&](ld_column** out, ld_error** error) {
      return ld_table_get_column(result.table.get(), i, out, error);
    });
    const char* name = nullptr;
    ld_value_type type = 0;
    std::uint8_t hasSeenNull = 0;
    EXPECT_TRUE(ld_column_get_name(column.get(), &name, nullptr));
    EXPECT_TRUE(ld_column_get_type(column.get(), &type, nullptr));
    EXPECT_TRUE(ld_column_has_seen_null(column.get(), &hasSeenNull, nullptr));
    const bool isUnnamed = std::string_view(name).starts_with("Unnamed_");
    all.append(i == 0 ? "" : " / ").append(isUnnamed ? "Unnamed" : name);
    if (showsNotes) all += " " + std::to_string(type) + " " + std::to_string(hasSeenNull);
  }
  for (std::int64_t row = 0; row < rows; ++row) {
    const auto handle = Received<ld_row>([&](ld_row** out, ld_error** error) {
      return ld_table_get_row(result.table.get(), row, out, error);
    });
    all += "\n";
    std::int32_t index = -1;
    std::uint8_t modified = 0;
    EXPECT_TRUE(ld_row_get_index(handle.get(), &index, nullptr));
    EXPECT_TRUE(ld_row_is_modified(handle.get(), &modified, nullptr));
    EXPECT_EQ(index, row);
    const auto table = Received<ld_table>([&](ld_table** out, ld_error** error) {
      return ld_row_get_table(handle.get(), out, error);
    });
    EXPECT_EQ(table, result.table);
    if (showsNotes) all += std::to_string(modified) + ": ";
    for (std::int32_t i = 0; i < columns; ++i) {
      Value cell;
      EXPECT_TRUE(ld_row_get_cell(handle.get(), i, cell.out(), nullptr));
      all.append(i == 0 ? "" : " / ").append(Show(*cell.get()));
    }
  }
  return all;
}

std::string Everything(const Result& result) { return Show(result, true); }

std::vector<std::string> ProblemsOf(ld_read_report* report) {
  std::vector<std::string> problems;
  std::uint64_t count = 0;
  EXPECT_TRUE(ld_read_report_get_problem_count(report, &count, nullptr));
  for (std::uint64_t i = 0; i < count; ++i) {
    const auto problem = Received<ld_error>([&](ld_error** out, ld_error** error) {
      return ld_read_report_get_problem(report, i, out, error);
    });
    EXPECT_EQ(ld_error_code(problem.get()), 0u);
    problems.push_back(ld_error_message(problem.get()));
  }
  return problems;
}

std::string JoinedProblems(const Result& result) {
  std::string all;
  if (result.report)
    for (const std::string& problem : ProblemsOf(result.report.get()))
      all += (all.empty() ? "" : "\n") + problem;
  return all;
}

/// Options that are written as words; keeps the texts that they point to.
class OptionWords {
 public:
  explicit OptionWords(std::string_view words) {
    std::istringstream stream{std::string(words)};
    for (std::string word; stream >> word;) {
      const std::size_t sign = std::min(word.find('='), word.size());
      Set(word.substr(0, sign), sign < word.size() ? word.substr(sign + 1) : "");
    }
    for (const std::string& name : names_) pointers_.push_back(name.c_str());
    csv.text_columns = json.text_columns = pointers_.data();
    csv.text_column_count = json.text_column_count = pointers_.size();
    json.code_page = csv.code_page;
    json.max_rows = csv.max_rows;
    json.all_text = csv.all_text;
  }

  ld_csv_read_options csv = Csv();
  ld_json_read_options json = Json();

 private:
  void Set(const std::string& name, const std::string& value) {
    const auto pick = [&](std::initializer_list<const char*> values) {
      const auto found = std::ranges::find(values, value);
      EXPECT_NE(found, values.end()) << value;
      return static_cast<std::uint32_t>(found - values.begin());
    };
    if (name == "header") {
      csv.header = pick({"detect", "yes", "no"});
    } else if (name == "long") {
      csv.long_lines = pick({"fail", "skip", "keep"});
    } else if (name == "form") {
      json.form = pick({"detect", "document", "lines"});
    } else if (name == "separator") {
      csv.separator = (separator_ = value).c_str();
    } else if (name == "page") {
      csv.code_page = static_cast<std::uint32_t>(std::stoul(value));
    } else if (name == "rows") {
      csv.max_rows = std::stoul(value);
    } else if (name == "text") {
      std::istringstream list(value);
      for (std::string column; std::getline(list, column, ',');) names_.push_back(column);
    } else {
      (name == "all_text" ? csv.all_text : csv.unquote_names) = true;
    }
  }

  std::string separator_;
  std::vector<std::string> names_;
  std::vector<const char*> pointers_;
};

template <class Options>
void CheckCase(const Case& c, const Options& options) {
  const auto result = Read(c[1], &options);
  EXPECT_EQ(Show(result), c[2]) << c.where;
  EXPECT_EQ(JoinedProblems(result), c[3]) << c.where;
  EXPECT_EQ(Everything(Read(c[1], &options, false)), Everything(result)) << c.where;
}

// -- Threads --

/// Few of the many counts in each round of a test: a thread takes the emulator 10 ms.
std::vector<std::uint32_t> ThreadCounts(int round) {
  if (round % 16 == 0) return {2, 40};
  return {2, 3 + static_cast<std::uint32_t>(round % 5)};
}

std::uint32_t Below(std::mt19937& random, std::size_t end) {
  return static_cast<std::uint32_t>(random() % end);
}

std::string RandomText(std::mt19937& random, const std::vector<std::string>& pieces,
                       std::size_t count) {
  std::string text;
  for (std::size_t i = 0; i < count; ++i) text += pieces[Below(random, pieces.size())];
  return text;
}

}  // namespace

TEST(CReading, ReadsDelimitedTextAsAsked) {
  for (const Case& c : Cases("Reading.txt", "csv")) CheckCase(c, OptionWords(c[0]).csv);
}

TEST(CReading, ReadsJsonAsAsked) {
  for (const Case& c : Cases("Reading.txt", "json")) CheckCase(c, OptionWords(c[0]).json);
}

TEST(CReading, TellsWhichTextsDoNotComeBack) {
  for (const Case& c : Cases("Reading.txt", "csv changes")) {
    const OptionWords words("header=yes separator=;");
    const auto& options = words.csv;
    const auto result = Read("a;b\n" + std::string(c[0]) + ";x", &options);
    const std::string problem =
        c[1].empty() ? "" : "Column a: 1 " + std::string(c[1]) + ", at line 1: " + c.fields[0];
    EXPECT_EQ(JoinedProblems(result), problem) << c.where;
  }
}

TEST(CReading, CountsChangesInEveryPart) {
  std::string text = "note\nzip,day\n";
  for (int i = 0; i < 100; ++i) text += i % 3 == 2 ? "007,2024-01-31\n\n" : "5,\"a\nb\"\n";
  for (const std::uint32_t threads : {1u, 2u, 7u}) {
    const auto options = Csv(threads);
    const auto result = Read(text, &options);
    EXPECT_EQ(JoinedProblems(result),
              "Line 0 was dropped: note\n"
              "Column zip: 33 values lost leading zeros, first at line 4: 007\n"
              "Column day: 33 dates were read as noon of their days, first at line 4: 2024-01-31");
  }
}

TEST(CReading, ReportsWhatItFound) {
  const OptionWords words("long=skip page=1252");
  const auto& options = words.csv;
  const auto read = Read("\xE4\na;b\n1;007\n2;3;4\n5;6;7;8\n09;1\n", &options);
  ld_read_report* report = read.report.get();
  const char *separator = nullptr, *text = nullptr, *column = nullptr;
  bool hasHeader = true, isWellFormed = false;
  std::uint32_t codePage = 0;
  std::uint64_t lines = 0, rows = 0, dropped = 0, longLines = 0, changes = 0, line = 0, values = 0;
  EXPECT_TRUE(ld_read_report_get_separator(report, &separator, nullptr));
  EXPECT_TRUE(ld_read_report_has_header(report, &hasHeader, nullptr));
  EXPECT_TRUE(ld_read_report_is_well_formed(report, &isWellFormed, nullptr));
  EXPECT_TRUE(ld_read_report_get_code_page(report, &codePage, nullptr));
  EXPECT_TRUE(ld_read_report_get_line_count(report, &lines, nullptr));
  EXPECT_TRUE(ld_read_report_get_row_count(report, &rows, nullptr));
  EXPECT_TRUE(ld_read_report_get_dropped_line_count(report, &dropped, nullptr));
  EXPECT_TRUE(ld_read_report_get_long_line_count(report, &longLines, nullptr));
  EXPECT_TRUE(ld_read_report_get_change_count(report, &changes, nullptr));
  EXPECT_STREQ(separator, ";");
  EXPECT_FALSE(hasHeader) << "the widest line, 5;6;7;8, is data";
  EXPECT_EQ(codePage, 1252u);
  EXPECT_TRUE(isWellFormed) << "it was converted";
  EXPECT_EQ(std::vector({lines, rows, dropped, longLines, changes}),
            (std::vector<std::uint64_t>{6, 2, 4, 0, 1}));
  EXPECT_TRUE(ld_read_report_get_dropped_line(report, 0, &line, &text, nullptr));
  EXPECT_STREQ(text, "\xC3\xA4");
  EXPECT_TRUE(ld_read_report_get_dropped_line(report, 3, &line, &text, nullptr));
  EXPECT_STREQ(text, "2;3;4");
  EXPECT_EQ(line, 3u);
  ld_text_change kind = 9;
  std::uint64_t count = 0;
  EXPECT_TRUE(ld_read_report_get_change(report, 0, &column, &kind, &count, &line, &text, nullptr));
  EXPECT_EQ(std::string(column) + " " + text, "Column 1 09");
  EXPECT_EQ(kind, LD_TEXT_CHANGE_LEADING_ZEROS);
  EXPECT_EQ(std::pair(count, line), std::pair(std::uint64_t{1}, std::uint64_t{5}));
  for (const auto& failure :
       {Failure(
            [&](auto e) { return ld_read_report_get_dropped_line(report, 4, &line, &text, e); }),
        Failure([&](auto e) {
          return ld_read_report_get_dropped_line(report, ~0ull, &line, &text, e);
        })})
    EXPECT_TRUE(failure.starts_with("Index out of range [")) << failure;
  EXPECT_EQ(
      Failure([&](auto e) { return ld_read_report_get_long_line(report, 0, &line, &values, e); }),
      "Index out of range [0/0]! 2");
  ld_error* problem = nullptr;
  EXPECT_EQ(Failure([&](auto e) { return ld_read_report_get_problem(report, 5, &problem, e); }),
            "Index out of range [5/5]! 2");

  const OptionWords yesWords("long=keep header=yes");
  const auto& yes = yesWords.csv;
  const auto kept = Read("a,b\n1,2,3\n\n4,5,6,7\n", &yes);
  EXPECT_TRUE(ld_read_report_get_long_line(kept.report.get(), 1, &line, &values, nullptr));
  EXPECT_EQ(std::pair(line, values), std::pair(std::uint64_t{2}, std::uint64_t{4}));
  EXPECT_TRUE(ld_read_report_has_header(kept.report.get(), &hasHeader, nullptr));
  EXPECT_TRUE(hasHeader);

  const ld_json_read_options* const none = nullptr;
  const auto json = Read("{\"a\":1}\n\n{\"a\":2}\n \n", none);
  EXPECT_TRUE(ld_read_report_get_line_count(json.report.get(), &lines, nullptr));
  EXPECT_TRUE(ld_read_report_get_row_count(json.report.get(), &rows, nullptr));
  EXPECT_TRUE(ld_read_report_get_separator(json.report.get(), &separator, nullptr));
  EXPECT_EQ(std::to_string(lines) + std::to_string(rows) + separator, "22");
}

TEST(CReading, ReadsAsTheExportsDo) {
  const std::vector<std::string> pieces = {
      ",",       ",",    ",",   "\n",   "\n",         "\n", "a",
      "bc",      "1",    "007", "1.50", "2024-01-31", "\"", "\"x,\ny\"",
      "\"\"",    "\r\n", " ",   "\t",   ";",          "|",  std::string(1, '\0'),
      "\xC3\xA9"};
  std::mt19937 random(20);
  for (int round = 0; round < 200; ++round) {
    const std::string text =
        RandomText(random, pieces, 1 + Below(random, round % 8 == 0 ? 600 : 60));
    const auto expected = Receive([&](ld_table** table, ld_read_report**, ld_error** error) {
      return ld_parse_csv(text.data(), text.size(), table, error);
    });
    const ld_csv_read_options* const none = nullptr;
    ASSERT_EQ(Everything(Read(text, none)), Everything(expected)) << text;
    for (const std::uint32_t threads : ThreadCounts(round)) {
      const auto options = Csv(threads);
      ASSERT_EQ(Everything(Read(text, &options, Below(random, 2) == 0)), Everything(expected))
          << threads << " threads:\n"
          << text;
    }
    for (const ld_long_lines longLines : {LD_LONG_LINES_SKIP, LD_LONG_LINES_KEEP}) {
      ld_object_list* list = nullptr;
      const auto parsed = Receive([&](ld_table** table, ld_read_report**, ld_error** error) {
        return ld_parse_csv_with_errors(text.data(), table, &list, text.size(),
                                        longLines == LD_LONG_LINES_KEEP, error);
      });
      const Held<ld_object_list> held(list);
      auto options = Csv(1 + Below(random, 7));
      options.long_lines = longLines;
      const auto read = Read(text, &options);
      ASSERT_EQ(Everything(read), Everything(parsed)) << text;
      if (!list) continue;
      std::vector<std::string> messages;
      std::uint64_t count = 0, dropped = 0;
      ASSERT_TRUE(ld_object_list_get_count(list, &count, nullptr));
      ASSERT_TRUE(ld_read_report_get_dropped_line_count(read.report.get(), &dropped, nullptr));
      auto problems = ProblemsOf(read.report.get());
      problems.erase(problems.begin(), problems.begin() + static_cast<std::ptrdiff_t>(dropped));
      ASSERT_GE(problems.size(), count);
      for (std::uint64_t i = 0; i < count; ++i) {
        const auto message = Received<ld_object>([&](ld_object** out, ld_error** error) {
          return ld_object_list_get_at(list, i, out, error);
        });
        const char* utf8 = nullptr;
        ASSERT_TRUE(
            ld_string_get_utf8(reinterpret_cast<ld_string*>(message.get()), &utf8, nullptr));
        ASSERT_EQ(problems[i], utf8);
      }
    }
  }
}

TEST(CReading, ReadsEverySeparatorInParts) {
  std::mt19937 random(21);
  for (const char* const separator : {"::", ";\"", "\"", " ", "\n", "ab"}) {
    const std::vector<std::string> pieces = {separator, separator, "\n",   "\n", "x",
                                             "1",       "\"",      "\"\"", ":",  "a"};
    for (int round = 0; round < 60; ++round) {
      const std::string text = RandomText(random, pieces, 1 + Below(random, 80));
      const auto expected = Receive([&](ld_table** table, ld_read_report**, ld_error** error) {
        return ld_parse_csv_with_separator(text.data(), separator, table, text.size(), error);
      });
      for (const std::uint32_t threads : {1u, 2u, 5u}) {
        auto options = Csv(threads);
        options.separator = separator;
        ASSERT_EQ(Everything(Read(text, &options)), Everything(expected)) << text;
      }
    }
  }
}

/// A large text whose parts have everything in them, for as many threads as there are by default.
TEST(CReading, ReadsLargeTextsOnAllProcessors) {
  std::string text = "id,name,remark\n";
  for (int i = 0; text.size() < (std::size_t{4} << 20) + 1000; ++i) {
    text += std::to_string(i) + (i % 7 == 0 ? ",\"a\n\"\"b\"\", \n" : ",\"x");
    text += std::string(static_cast<std::size_t>(i % 900), 'y') + "\"," +
            (i % 5 == 0 ? "\r\n" : "2.5\n");
  }
  const auto one = Csv(1), byDefault = Csv(0);
  const std::string expected = Everything(Read(text, &one));
  EXPECT_EQ(Everything(Read(text, &byDefault)), expected);
  // A quote that is never closed makes the rest of the text one line.
  text.insert(text.size() / 4 * 3, "\"");
  auto kept = one;
  kept.long_lines = LD_LONG_LINES_KEEP;
  const std::string unbalanced = Everything(Read(text, &kept));
  kept.thread_count = 0;
  EXPECT_EQ(Everything(Read(text, &kept)), unbalanced);
}

TEST(CReading, FailsAsOnOneThread) {
  for (const int first : {3, 40, 77}) {
    std::string text = "a,b\n";
    for (int i = 1; i < 120; ++i) text += i == first || i == 110 || i == 90 ? "1,2,3\n\n" : "1,2\n";
    for (const std::uint32_t threads : {1u, 2u, 3u, 7u}) {
      auto options = Csv(threads);
      options.header = LD_HEADER_LINE_YES;
      EXPECT_EQ(Read(text, &options).failure,
                "Csv file does not have consistent usage of column separator between lines!, "
                "Columns 2 vs Values 3 at line " +
                    std::to_string(first));
    }
  }
}

/// Rows of one value in a table of as many columns as rows: the limit is reached, then exceeded.
TEST(CReading, DoesNotFillTheMemoryWithEmptyCells) {
  constexpr int kCount = 4096;
  std::string csv = "c0", array = "[", lines = "{\"c0\":1";
  for (int i = 1; i < kCount; ++i) {
    csv += ",c" + std::to_string(i);
    lines += ",\"c" + std::to_string(i) + "\":1";
  }
  lines += "}\n";
  for (int i = 0; i < kCount; ++i) {
    csv += "\n1";
    array += "{\"c" + std::to_string(i) + "\":1},\n";  // each adds a column
    lines += "{\"c7\":1}\n";
  }
  const auto failure = [](const std::string& text) {
    return "A text of " + std::to_string(text.size()) +
           " bytes cannot become a table of more than 16777216 cells!";
  };
  EXPECT_EQ(Read(csv, static_cast<const ld_csv_read_options*>(nullptr)).failure, "");
  csv += "\n1";
  array += "{\"c0\":1}]";
  for (const std::uint32_t threads : {1u, 3u}) {
    const auto csvOptions = Csv(threads);
    EXPECT_EQ(Read(csv, &csvOptions).failure, failure(csv));
    const auto options = Json(threads);
    EXPECT_EQ(Read(lines, &options).failure.substr(0, failure(lines).size()), failure(lines));
  }
  const auto options = Json();
  EXPECT_EQ(Read(array, &options).failure, failure(array) + " (line 4097)");
}

TEST(CReading, ReadsJsonAsTheExportsDo) {
  const std::vector<std::string> values = {
      "1",    "-2.50",         "\"x\"",          "\"2024-01-31\"", "null",
      "true", "{\"n\":[1,2]}", "\"\\u00e9\\n\"", "1e400",          "18446744073709551615",
      "[]"};
  std::mt19937 random(22);
  for (int round = 0; round < 400; ++round) {
    const auto object = [&] {
      std::string members;
      for (std::uint32_t i = Below(random, 4); i <= 3; ++i)
        members += (members.empty() ? "\"" : ",\"") + std::string(1, "abca"[i]) +
                   "\":" + values[Below(random, round % 4 == 0 ? values.size() : 7)];
      return "{" + (Below(random, 100) == 0 ? "" : members) + "}";
    };
    std::string array, lines;
    for (std::uint32_t i = Below(random, round % 8 == 0 ? 300 : 20); i > 0; --i) {
      const std::string row = Below(random, 200) == 0 ? "7" : object();
      array += (array.empty() ? "[" : ",") + row;
      lines += row + (Below(random, 5) == 0 ? "\n\n" : "\n");
    }
    array += array.empty() ? "[]" : "]";
    const bool isDamaged = Below(random, 20) == 0;
    if (isDamaged) array.erase(Below(random, array.size()), 1);

    const auto document = Received<ld_json_document>(ld_create_json_document);
    ld_json_document_set_content(document.get(), array.data(), array.size(), nullptr);
    const auto expected = Receive([&](ld_table** table, ld_read_report**, ld_error** error) {
      return ld_json_to_table(document.get(), table, error);
    });
    const ld_json_read_options* const none = nullptr;
    const auto read = Read(array, none);
    // The line is behind the message.
    ASSERT_TRUE(Everything(read).starts_with(Everything(expected))) << array;
    ASSERT_EQ(read.failure.empty(), expected.failure.empty()) << array;

    auto options = Json(1);
    options.form = LD_JSON_FORM_LINES;
    if (lines.empty()) continue;
    const auto sequential = Read(lines, &options);
    if (sequential.table && expected.table && !isDamaged) {
      ASSERT_EQ(Everything(sequential), Everything(expected)) << lines;
    }
    for (const std::uint32_t threads : ThreadCounts(round)) {
      options.thread_count = threads;
      const auto parted = Read(lines, &options);
      ASSERT_EQ(Everything(parted), Everything(sequential)) << threads << " threads:\n" << lines;
      ASSERT_EQ(JoinedProblems(parted), JoinedProblems(sequential)) << lines;
    }
  }
}

namespace {

struct Calls {
  std::vector<std::uint64_t> done;
  std::uint64_t total = 0;
  std::size_t cancelledAt = SIZE_MAX;
  std::thread::id thread = std::this_thread::get_id();
};

bool NoteProgress(void* context, std::uint64_t done, std::uint64_t total) {
  auto& calls = *static_cast<Calls*>(context);
  EXPECT_EQ(calls.thread, std::this_thread::get_id());
  EXPECT_TRUE(Table("it,may\ncall,back\n"));
  calls.done.push_back(done);
  calls.total = total;
  return calls.done.size() <= calls.cancelledAt;
}

template <class Options>
void CheckProgress(const std::string& text, Options options) {
  for (const std::uint32_t threads : {1u, 3u}) {
    Calls calls;
    options.thread_count = threads;
    options.progress = NoteProgress;
    options.progress_context = &calls;
    ASSERT_EQ(Read(text, &options).failure, "");
    EXPECT_EQ(calls.total, text.size());
    ASSERT_FALSE(calls.done.empty());
    EXPECT_EQ(calls.done.back(), calls.total);
    EXPECT_TRUE(std::ranges::is_sorted(calls.done));
    EXPECT_TRUE(threads != 1 || calls.done.size() >= 4) << calls.done.size();
    for (std::size_t at = 0; threads == 1 && at < calls.done.size(); ++at) {
      Calls cancelled;
      cancelled.cancelledAt = at;
      options.progress_context = &cancelled;
      EXPECT_EQ(Read(text, &options).failure, "The operation was cancelled!");
      EXPECT_EQ(cancelled.done.size(), at + 1) << "never called again";
    }
  }
}

}  // namespace

TEST(CReading, TellsItsProgressAndStops) {
  std::string csv = "a,b\n", json, lines;
  while (csv.size() < 1'200'000) csv += "123456789,some text in a cell that is longer\n";
  while (json.size() < 1'200'000)
    json += (json.empty() ? "[" : ",\n") + std::string(R"({"a":1,"b":"some text in a cell"})");
  while (lines.size() < 1'200'000)
    lines += R"({"a":1,"b":"some text in a cell"})"
             "\n";
  CheckProgress(csv, Csv());
  CheckProgress(json + "]", Json());
  CheckProgress(lines, Json());
}

TEST(CReading, TakesOptionsOfOtherVersions) {
  const std::string text = "a,b\n1,2,3\n";
  ld_csv_read_options options{};
  options.header = LD_HEADER_LINE_YES;
  options.size = offsetof(ld_csv_read_options, code_page);
  EXPECT_EQ(Show(Read(text, &options)), "Column 1 / Column 2 / Column 3\n1 / 2 / 3")
      << "an older version has only a separator";
  for (const std::uint64_t size : {0ull, 7ull, 5000ull, ~0ull}) {
    options.size = size;
    EXPECT_EQ(Read(text, &options).failure, "The size of the options is wrong!");
  }
  struct {
    ld_json_read_options known = Json();
    char rest[16] = {};
  } newer;
  newer.known.size = sizeof newer;
  EXPECT_EQ(Show(Read("[{\"a\":1}]", &newer.known)), "a\n1");
  newer.rest[15] = 1;
  EXPECT_EQ(Read("[]", &newer.known).failure,
            "The options ask for something that this version does not know!");
}

TEST(CReading, RefusesWrongOptions) {
  const auto failure = [](auto options, auto member, auto value) {
    options.*member = value;
    return Read("a,b\n1,2", &options).failure;
  };
  const char* const names[] = {"a", nullptr};
  auto withNull = Csv();
  withNull.text_columns = names;
  EXPECT_EQ(failure(Csv(), &ld_csv_read_options::header, 3u), "Invalid value 3 of ld_header_line!");
  EXPECT_EQ(failure(Csv(), &ld_csv_read_options::long_lines, ~0u),
            "Invalid value 4294967295 of ld_long_lines!");
  EXPECT_EQ(failure(Json(), &ld_json_read_options::form, 3u), "Invalid value 3 of ld_json_form!");
  EXPECT_EQ(failure(Csv(), &ld_csv_read_options::text_column_count, 1u),
            "The names of columns must not be null!");
  EXPECT_EQ(failure(withNull, &ld_csv_read_options::text_column_count, 2u),
            "The names of columns must not be null!");
  EXPECT_EQ(failure(withNull, &ld_csv_read_options::text_column_count, ~0ull),
            "The length is too large!");
  ld_table* table = nullptr;
  const ld_csv_read_options* const none = nullptr;
  EXPECT_EQ(Failure([&](auto e) { return ld_csv_read("x", ~0ull, none, &table, nullptr, e); }),
            "The length is too large! 2");
}

TEST(CReading, ReadsFiles) {
  const auto folder = std::filesystem::temp_directory_path();
  auto path = folder / std::filesystem::path(u8"layerdata-\u00e9\u65e5.csv");
  if (!std::ofstream(path))
    path = folder / "layerdata-ascii.csv";  // where the locale has no others
  const std::u8string utf8 = path.u8string();
  const std::string name(utf8.begin(), utf8.end());
  const auto readFile = [](const std::string& file) {
    return Receive([&](ld_table** table, ld_read_report** report, ld_error** error) {
      return ld_csv_read_file(file.c_str(), nullptr, table, report, error);
    });
  };
  const auto write = [&](const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
  };

  std::string text = "a,b\n";
  for (int i = 0; i < 20'000; ++i) text += std::to_string(i) + ",\"x\r\n\"\n";
  const ld_csv_read_options* const none = nullptr;
  write(text);
  EXPECT_EQ(Everything(readFile(name)), Everything(Read(text, none)));
  write("");
  EXPECT_EQ(readFile(name).failure, "No lines detected in the csv content");
  write("{\"a\":1}\n{\"a\":2}");
  const auto json = Receive([&](ld_table** table, ld_read_report** report, ld_error** error) {
    return ld_json_read_file(name.c_str(), nullptr, table, report, error);
  });
  EXPECT_EQ(Show(json), "a\n1\n2");
  std::filesystem::remove(path);
  for (const std::string& wrong : {name, folder.string(), std::string()}) {
    const std::string failure = readFile(wrong).failure;
    EXPECT_TRUE(failure.starts_with("Cannot read \"" + wrong + "\": ")) << failure;
    EXPECT_GT(failure.size(), wrong.size() + 16) << "the reason";
  }
}

// The pieces in which texts are converted end inside characters and lines.
TEST(CReading, DecodesLongTexts) {
  std::u16string wide = u"a,b\n";
  std::string utf8 = "a,b\n", latin = utf8, shiftJis = utf8, japanese = utf8;
  const auto addCells = [](auto& text, auto cell, auto end) {
    for (int i = 0; i < 31; ++i) text += cell;
    text += end;
  };
  for (int i = 0; utf8.size() < 1'000'000; ++i) {
    addCells(utf8, i % 3 == 0 ? "\xF0\x9F\x98\x80" : "\xC3\xA9x", ",1\n");
    addCells(wide, i % 3 == 0 ? u"\U0001F600" : u"\u00E9x", u",1\n");
    addCells(latin, "\xE9", ",\n");
    addCells(japanese, "\xE3\x82\xBD", ",\n");
    addCells(shiftJis, "\x83\x5C", ",\n");
  }
  const auto options = Csv(1);
  const std::string expected = Everything(Read(utf8, &options));
  std::string little, big;
  for (const char16_t unit : wide) {
    little += {static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8)};
    big += {static_cast<char>(unit >> 8), static_cast<char>(unit & 0xFF)};
  }
  const auto read = [&](const std::string& text, std::uint32_t codePage) {
    auto paged = options;
    paged.code_page = codePage;
    return Everything(Read(text, &paged));
  };
  EXPECT_EQ(read(little, 1200), expected);
  EXPECT_EQ(read(big, 1201), expected);
  EXPECT_EQ(read(shiftJis, 932), read(japanese, 0));
  EXPECT_NE(read(latin, 1252).find("\n0: '\xC3\xA9\xC3\xA9"), std::string::npos);
}

// Whatever the size of the pieces in which UTF-16 is converted, one of the two has a pair at an
// end.
TEST(CReading, KeepsPairsOfUtf16Together) {
  for (const char16_t* name : {u"\uFEFFa", u"\uFEFFab"}) {
    std::u16string wide = name;
    wide += u'\n';
    for (int i = 0; i < 300'000; ++i) wide += u"\U0001F600";
    ld_table* out = nullptr;
    ASSERT_TRUE(ld_csv_read(wide.data(), 2 * wide.size(), nullptr, &out, nullptr, nullptr));
    const Held<ld_table> table(out);
    const std::string cell = Cell(table.get(), 0, 0);
    std::string expected;
    for (int i = 0; i < 300'000; ++i) expected += "\U0001F600";
    EXPECT_TRUE(cell == expected);
  }
}
