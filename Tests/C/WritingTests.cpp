// Tables to delimited text, to JSON and to files.

#include <algorithm>
#include <bit>
#include <filesystem>
#include <fstream>
#include <functional>
#include <limits>
#include <random>
#include <thread>
#include <vector>

#include "../CallersText.h"
#include "Core/Ptr.h"
#include "Support.h"
#include "Values.h"

using namespace c_tests;

namespace {

using Random = std::mt19937;

std::uint32_t Below(Random& random, std::uint32_t end) {
  return static_cast<std::uint32_t>(random() % end);
}

std::string Pick(Random& random, const std::vector<std::string>& from) {
  return from[random() % from.size()];
}

// -- Calls --

ld_csv_write_options Csv(const char* separator = nullptr, std::uint32_t threads = 1) {
  ld_csv_write_options options{};
  options.size = sizeof options;
  options.separator = separator;
  options.thread_count = threads;
  return options;
}

ld_json_write_options Json(ld_json_layout layout = LD_JSON_LAYOUT_ARRAY, std::uint32_t indent = 0) {
  ld_json_write_options options{};
  options.size = sizeof options;
  options.layout = layout;
  options.indentation = indent;
  options.thread_count = 1;
  return options;
}

bool WriteTable(ld_table* table, const ld_csv_write_options* options, ld_string** out,
                ld_error** error) {
  return ld_csv_write(table, options, out, error);
}
bool WriteTable(ld_table* table, const ld_json_write_options* options, ld_string** out,
                ld_error** error) {
  return ld_json_write(table, options, out, error);
}

std::string StringOf(ld_string* text) {
  const char* utf8 = nullptr;
  std::uint64_t length = 0;
  EXPECT_TRUE(ld_string_get_utf8(text, &utf8, nullptr));
  EXPECT_TRUE(ld_string_get_length(text, &length, nullptr));
  return {utf8, static_cast<std::size_t>(length)};
}

template <class Options>
std::string Written(ld_table* table, const Options& options) {
  const auto text = Received<ld_string>(
      [&](ld_string** out, ld_error** error) { return WriteTable(table, &options, out, error); });
  return text ? StringOf(text.get()) : "";
}

Held<ld_table> Read(const std::string& text, const ld_csv_read_options& options) {
  return Received<ld_table>([&](ld_table** out, ld_error** error) {
    return ld_csv_read(text.data(), text.size(), &options, out, nullptr, error);
  });
}

Held<ld_table> Read(const std::string& text, const char* separator,
                    ld_header_line header = LD_HEADER_LINE_DETECT) {
  ld_csv_read_options options{};
  options.size = sizeof options;
  options.separator = separator;
  options.header = header;
  return Read(text, options);
}

Held<ld_table> ReadJson(const std::string& text) {
  const auto document = Received<ld_json_document>(ld_create_json_document);
  EXPECT_TRUE(ld_json_document_set_content(document.get(), text.data(), text.size(), nullptr));
  return Received<ld_table>([&](ld_table** out, ld_error** error) {
    return ld_json_to_table(document.get(), out, error);
  });
}

// -- Tables --

std::int64_t RowCount(ld_table* table) {
  std::int64_t count = 0;
  EXPECT_TRUE(ld_table_get_row_count(table, &count, nullptr));
  return count;
}

/// Everything that two equal tables have in common: names, types and values to the last bit.
std::string Contents(ld_table* table) {
  std::int64_t columns = 0;
  EXPECT_TRUE(ld_table_get_column_count(table, &columns, nullptr));
  std::string all;
  for (std::int32_t i = 0; i < columns; ++i) {
    const auto column = Received<ld_column>([&](ld_column** out, ld_error** error) {
      return ld_table_get_column(table, i, out, error);
    });
    const char* name = nullptr;
    EXPECT_TRUE(ld_column_get_name(column.get(), &name, nullptr));
    all.append("<").append(name).append(">");
  }
  for (std::int64_t row = 0; row < RowCount(table); ++row) {
    all += "\n";
    for (std::int32_t i = 0; i < columns; ++i) {
      Value cell;
      EXPECT_TRUE(ld_table_get_cell(table, row, i, cell.out(), nullptr));
      const ld_value_type type = ld_variant_type(cell.get());
      all.append("<").append(std::to_string(type)).append(" ");
      if (type == LD_VALUE_TYPE_DATE_TIME) {
        ld_object* date = nullptr;
        std::uint64_t ticks = 0;
        EXPECT_TRUE(ld_variant_to_object(cell.get(), &date, nullptr));
        const Held<ld_object> held(date);
        EXPECT_TRUE(
            ld_date_time_get_file_time(reinterpret_cast<ld_date_time*>(date), &ticks, nullptr));
        all.append(std::to_string(ticks)).append(" ");
      }
      const bool isNumber = type == LD_VALUE_TYPE_DOUBLE || type == LD_VALUE_TYPE_INT64;
      all.append(isNumber ? std::to_string(cell.get()->value[0]) : TextOf(*cell.get())).append(">");
    }
  }
  return all;
}

Held<ld_table> TableOf(const std::vector<std::string>& names,
                       const std::vector<std::vector<Value>>& rows) {
  auto table = Received<ld_table>(ld_create_table);
  for (const std::string& name : names)
    Received<ld_column>([&](ld_column** out, ld_error** error) {
      return ld_table_add_column(table.get(), name.c_str(), out, error);
    });
  for (const auto& row : rows) {
    std::vector<ld_variant> records;
    for (const Value& value : row) records.push_back(*value.get());
    Received<ld_row>([&](ld_row** out, ld_error** error) {
      return ld_table_add_row(table.get(), records.data(), records.size(), out, error);
    });
  }
  return table;
}

/// A text that a program might have written, well-formed but in every way that is allowed.
std::string MessyText(Random& random, const std::string& separator, const char* oneName = "") {
  const std::vector<std::string> names = {"a",
                                          "b c",
                                          "\"x" + separator + "y\"",
                                          "\"q \"\"r\"\" s\"",
                                          "\"two\nlines\"",
                                          oneName,
                                          " padded ",
                                          "\xC3\xA9",
                                          "-"};
  const std::vector<std::string> values = {"",
                                           "",
                                           "5",
                                           "-7",
                                           "00501",
                                           "1.10",
                                           "-0.0",
                                           "1e5",
                                           "1e-300",
                                           "4.9e-324",
                                           "1e999",
                                           ".5",
                                           "5.",
                                           "9223372036854775807",
                                           "-9223372036854775808",
                                           "123456789012345678901234567890",
                                           "nan",
                                           "1e",
                                           "2024-01-31",
                                           "2024-01-31",
                                           "2024-02-30T10:20:30Z",
                                           "2024-01-31 10:20:30.5",
                                           "T08:15",
                                           "2024-1-2",
                                           "2024-13-45T99:99:99.987Z",
                                           "text",
                                           " padded ",
                                           "\"" + separator + "\"",
                                           "\"two\nlines\"",
                                           "\"a \"\"b\"\" c\"",
                                           "a \"\"b\"\" c",
                                           "\"\"",
                                           "\" x \"",
                                           "\"5\"",
                                           "\"00501\"",
                                           "\"2024-01-31\"",
                                           "\"1e999\"",
                                           "\"\r\"",
                                           "-",
                                           "-x",
                                           "T",
                                           "\xC3\xA9t\xC3\xA9",
                                           "it's",
                                           "\"a\"b"
                                           "\"c\"",
                                           "{\"\"a\"\":1}",
                                           "true",
                                           "a longer text than a cell can hold",
                                           "\"#\""};
  std::string text;
  std::vector<std::string> header = names;
  std::shuffle(header.begin(), header.end(), random);
  const std::size_t width = 2 + random() % 5;
  std::uniform_real_distribution<double> real(-1e6, 1e6);
  for (std::size_t row = 0, rows = random() % 30; row <= rows; ++row) {
    for (std::size_t i = 0; i < width; ++i) {
      if (i != 0) text += separator;
      if (row == 0) {
        text += header[i];
      } else {
        text += random() % 4 == 0 ? Shortest(real(random)) : Pick(random, values);
      }
    }
    text += random() % 2 ? "\n" : "\r\n";
    if (random() % 8 == 0) text += " \n";
  }
  return text;
}

/// About 5 MB of text with numbers, texts, dates and Nulls.
const std::string& LargeText() {
  static const std::string text = [] {
    Random random(5);
    std::uniform_real_distribution<double> real(-1000, 1000);
    std::string made = "id,name,value,day,at\n";
    for (int i = 0; i < 60'000; ++i) {
      made += std::to_string(i) + ",\"the name, of " + std::to_string(random() % 1000) + "\"," +
              (i % 7 ? Shortest(real(random)) : "") + ",2024-01-0" + std::to_string(i % 9 + 1) +
              ",2024-01-01T00:00:" + std::to_string(i % 50 + 10) + ".25Z\n";
    }
    return made;
  }();
  return text;
}

std::string ReadFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

/// An empty folder, whose name needs more than ASCII where the system allows it.
class Folder {
 public:
  Folder() {
    const auto parent = std::filesystem::temp_directory_path();
    const std::string name = "layerdata " + std::to_string(std::random_device()());
    path_ = parent / name;
    path_ += u8" \u00E9\u4E16";
    std::error_code failure;
    if (std::filesystem::create_directory(path_, failure)) return;
    path_ = parent / name;
    std::filesystem::create_directory(path_);
  }
  ~Folder() { std::filesystem::remove_all(path_); }

  std::filesystem::path operator/(const char* name) const { return path_ / name; }
  std::size_t FileCount() const {
    return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(path_), {}));
  }

 private:
  std::filesystem::path path_;
};

std::string Utf8(const std::filesystem::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

}  // namespace

// -- Exactness --

TEST(CWriting, WritesValuesExactly) {
  const struct {
    const char* values;  ///< of one column
    const char* csv;
    const char* json;
  } cases[] = {
      {"0.1 1e0 -0.0 1e-7 1e30 123456789.125 4.9e-324",
       "0.1 1.0 -0.0 1e-7 1e30 123456789.125 5e-324",
       "0.1 1.0 -0.0 1e-7 1e30 123456789.125 5e-324"},
      {"31.95376472 0.5f 0.1f 5 -9223372036854775808",
       "31.95376472 0.5 0.10000000149011612 5 -9223372036854775808",
       "31.95376472 0.5 0.10000000149011612 5 -9223372036854775808"},
      {"5u 18446744073709551615u -7w 123456789012345678901234567890w",
       "5 18446744073709551615 -7 123456789012345678901234567890",
       "5 \"18446744073709551615\" -7 \"123456789012345678901234567890\""},
      {"true false null 'text'", "true false  text", "true false null \"text\""},
      {"nan inf -inf", "nan inf -inf", nullptr},
      {"'5' '2024-01-31' '1e999' '-' '.' 'T8:15' '' ',' ';' '\"' '-a' '+5'",
       "\"5\" \"2024-01-31\" \"1e999\" - . \"T8:15\" \"\" \",\" \";\" \"\"\"\" -a +5",
       "\"5\" \"2024-01-31\" \"1e999\" \"-\" \".\" \"T8:15\" \"\" \",\" \";\" \"\\\"\" \"-a\" \"+5\""},
      // 2023-11-14 at noon, all of them; then with a midnight, a millisecond, a tick.
      {"133444368000000000@ 133445232000000000@ null", "2023-11-14 2023-11-15 ",
       "\"2023-11-14\" \"2023-11-15\" null"},
      {"133444368000000000@ 133444800000000000@", "2023-11-14T12:00:00Z 2023-11-15T00:00:00Z",
       "\"2023-11-14T12:00:00Z\" \"2023-11-15T00:00:00Z\""},
      {"133444368001230000@ 133444368000500000@",
       "2023-11-14T12:00:00.123Z 2023-11-14T12:00:00.050Z",
       "\"2023-11-14T12:00:00.123Z\" \"2023-11-14T12:00:00.050Z\""},
      {"133444368001230004@ -504910799999999999@",
       "2023-11-14T12:00:00.1230004Z 0001-01-01T12:00:00.0000001Z",
       "\"2023-11-14T12:00:00.1230004Z\" \"0001-01-01T12:00:00.0000001Z\""},
  };
  for (const auto& c : cases) {
    const auto table = OneColumn(c.values);
    const auto lines = [](const char* values) {
      std::string text(values);
      std::replace(text.begin(), text.end(), ' ', '\n');
      return text + "\n";
    };
    EXPECT_EQ(Written(table.get(), Csv()), "c\n" + lines(c.csv)) << c.values;
    if (!c.json) continue;
    std::string objects;
    std::istringstream words(c.json);
    for (std::string word; words >> word;) objects += "{\"c\":" + word + "}\n";
    EXPECT_EQ(Written(table.get(), Json(LD_JSON_LAYOUT_LINES)), objects) << c.values;
  }
}

TEST(CWriting, QuotesTextsAndNamesWhereTheyWouldBeReadAsSomethingElse) {
  const auto table = TableOf({"a,b", "\"c,d\"", "2019", " e", "f\"g", "h;i"}, {});
  EXPECT_EQ(Written(table.get(), Csv()), "\"a,b\",\"c,d\",\"2019\",\" e\",\"f\"\"g\",h;i\n");
  auto options = Csv(";");
  options.quote_names = true;
  EXPECT_EQ(Written(table.get(), options),
            "a,b;\"\"\"c,d\"\"\";\"2019\";\" e\";\"f\"\"g\";\"h;i\"\n");
  options.quoting = LD_QUOTING_TEXTS;
  options.line_end = LD_LINE_END_CRLF;
  options.without_header = true;
  EXPECT_EQ(Written(Table("a,b,c\nx,5,\n").get(), options), "\"x\";5;\r\n");
}

TEST(CWriting, ReadsBackWhatWasRead) {
  Random random(11);
  for (int round = 0; round < 400; ++round) {
    const std::string separator = Pick(random, {",", ";", "\t", "|", "~", "||", "\xC2\xA6", "_/_"});
    const ld_header_line header = Below(random, 2);  // detected, or the first line
    const bool isDetected = header == LD_HEADER_LINE_DETECT;
    const std::string text = MessyText(random, separator, isDetected ? "" : "2019");
    const auto table = Read(text, separator.c_str(), header);
    auto options = Csv(separator.c_str(), 1 + Below(random, 4));
    options.quoting = Below(random, 2);
    options.line_end = Below(random, 2);
    options.quote_names = !isDetected;
    const std::string written = Written(table.get(), options);
    const auto again = Read(written, separator.c_str(), header);
    ASSERT_EQ(Contents(again.get()), Contents(table.get())) << text << "\n---\n" << written;
    ASSERT_EQ(Written(again.get(), options), written);
    const auto json = ReadJson(Written(table.get(), Json(LD_JSON_LAYOUT_ARRAY, Below(random, 3))));
    const std::string jsonOnce = Written(json.get(), Json());
    ASSERT_EQ(Written(ReadJson(jsonOnce).get(), Json()), jsonOnce);
  }
}

TEST(CWriting, ReadsBackRealFiles) {
  for (const char* const name : {"airports.csv", "seattle-weather.csv"}) {
    const std::string text = ReadFile(std::filesystem::path(LAYERDATA_EXAMPLE_DATA) / name);
    ASSERT_GT(text.size(), 40'000u) << name;
    const auto table = Read(text, ",", LD_HEADER_LINE_DETECT);
    const std::string written = Written(table.get(), Csv());
    EXPECT_EQ(Contents(Read(written, ",", LD_HEADER_LINE_DETECT).get()), Contents(table.get()));
    const std::string json = Written(table.get(), Json());
    EXPECT_EQ(Contents(ReadJson(json).get()), Contents(table.get())) << name;
  }
}

TEST(CWriting, ReadsBackAnyTableWithTheRightOptions) {
  Random random(12);
  const auto text = [&] {
    std::string made;
    for (std::size_t i = random() % 12; i > 0; --i) made += "\",;|\n\r \ta1-.TeZ"[random() % 16];
    return "'" + made + "'";
  };
  for (int round = 0; round < 300; ++round) {
    std::vector<std::vector<Value>> rows(1 + random() % 20);
    const bool isDates = random() % 2;
    for (auto& row : rows) {
      row.emplace_back("'" + std::to_string(random()) + "'");  // never Null
      const auto bits = std::uint64_t{random()} << 32 | random();
      const double real = std::bit_cast<double>(bits);
      row.emplace_back(std::isfinite(real) ? Shortest(real) : "null");
      const auto day = static_cast<std::int64_t>(random() % 3'000'000) * 864'000'000'000;
      const auto time = isDates ? std::int64_t{432'000'000'000}
                                : static_cast<std::int64_t>(random() % 86'400) * 10'000'000;
      row.emplace_back(std::to_string(day + time) + "@");
      row.emplace_back(random() % 8 == 0 ? "null" : text());
    }
    const auto table = TableOf({"id", "2019", "a\"b\"", "\"t,\""}, rows);
    auto options = Csv(nullptr, 1 + Below(random, 4));
    options.quote_names = true;
    const char* const texts[] = {"id", "\"t,\""};
    ld_csv_read_options reading{};
    reading.size = sizeof reading;
    reading.text_columns = texts;
    reading.text_column_count = 2;
    reading.unquote_names = true;
    const std::string written = Written(table.get(), options);
    ASSERT_EQ(Contents(Read(written, reading).get()), Contents(table.get())) << written;
  }
}

TEST(CWriting, LaysJsonOut) {
  const auto table = Table("a,b\n1,x\n2,\n");
  EXPECT_EQ(
      Written(table.get(), Json(LD_JSON_LAYOUT_ARRAY, 2)),
      "[\n  {\n    \"a\": 1,\n    \"b\": \"x\"\n  },\n  {\n    \"a\": 2,\n    \"b\": null\n  }\n]");
  EXPECT_EQ(Written(table.get(), Json(LD_JSON_LAYOUT_LINES)),
            "{\"a\":1,\"b\":\"x\"}\n{\"a\":2,\"b\":null}\n");
  const auto empty = Table("a,b\n");
  EXPECT_EQ(Written(empty.get(), Json(LD_JSON_LAYOUT_ARRAY, 2)), "[]");
  EXPECT_EQ(Written(empty.get(), Json(LD_JSON_LAYOUT_LINES)), "");
  const char* const nested = "[{\"a\":{\"b\":[1,2.50]},\"c\":[]},{\"a\":5,\"c\":\"x\"}]";
  EXPECT_EQ(Written(ReadJson(nested).get(), Json()),
            "[{\"a\":{\"b\":[1,2.5]},\"c\":[]},{\"a\":5,\"c\":\"x\"}]");
}

TEST(CWriting, KeepsTheFormOfTheLibraryOnRequest) {
  Random random(13);
  for (int round = 0; round < 50; ++round) {
    const auto table = Read(MessyText(random, ","), ",");
    auto csv = Csv();
    csv.form = LD_VALUE_FORM_DISPLAY;
    csv.quoting = Below(random, 2);
    const auto text = Received<ld_string>([&](ld_string** out, ld_error** error) {
      return ld_convert_table_to_csv(table.get(), ",", out, csv.quoting != 0, error);
    });
    EXPECT_EQ(Written(table.get(), csv), StringOf(text.get()));
    auto json = Json();
    json.form = LD_VALUE_FORM_DISPLAY;
    const auto document = Received<ld_json_document>([&](ld_json_document** out, ld_error** error) {
      return ld_table_to_json(table.get(), out, error);
    });
    const auto content = Received<ld_string>([&](ld_string** out, ld_error** error) {
      return ld_json_document_get_content(document.get(), out, error);
    });
    EXPECT_EQ(Written(table.get(), json), StringOf(content.get()));
  }
}

// -- Threads --

TEST(CWriting, WritesTheSameOnAnyNumberOfThreads) {
  const auto table = Read(LargeText(), nullptr);
  for (const ld_value_form form : {LD_VALUE_FORM_EXACT, LD_VALUE_FORM_DISPLAY}) {
    auto csv = Csv();
    auto json = Json();
    csv.form = json.form = form;
    const std::string oneCsv = Written(table.get(), csv), oneJson = Written(table.get(), json);
    EXPECT_GT(oneCsv.size(), 4u << 20);
    for (const std::uint32_t threads : {0u, 2u, 3u, 4u, 5u, 6u, 7u}) {
      csv.thread_count = json.thread_count = threads;
      EXPECT_TRUE(Written(table.get(), csv) == oneCsv) << threads;
      EXPECT_TRUE(Written(table.get(), json) == oneJson) << threads;
    }
  }
}

TEST(CWriting, ReadsTheCallersObjectsOnTheCallingThreadOnly) {
  const auto table = Read(LargeText(), nullptr);
  const auto caller = std::this_thread::get_id();
  std::string model;
  for (const std::uint32_t threads : {1u, 3u}) {
    int reads = 0;
    const auto text = Core::MakePtr<Data::tests::CallersText>("of the, caller");
    text->onRead = [&] {
      EXPECT_TRUE(std::this_thread::get_id() == caller);
      // Rows that leave meanwhile are not written.
      if (reads++ != 0) return;
      EXPECT_TRUE(ld_table_remove_row(table.get(), 50'000, nullptr));
    };
    Value cell;
    EXPECT_TRUE(ld_variant_from_object(text.Get(), cell.out(), nullptr));
    EXPECT_TRUE(ld_table_set_cell(table.get(), 30'000, 1, cell.get(), nullptr));
    const std::string written = Written(table.get(), Csv(nullptr, threads));
    EXPECT_EQ(std::count(written.begin(), written.end(), '\n'), 1 + RowCount(table.get()));
    EXPECT_NE(written.find("\n30000,\"of the, caller\","), written.npos);
    EXPECT_GT(reads, 0);
    EXPECT_TRUE(ld_table_set_cell(table.get(), 30'000, 1, Value("null").get(), nullptr));
  }
}

// -- Options --

TEST(CWriting, ChecksItsOptions) {
  const auto table = Table("a,b\n1,x\n");
  const auto failure = [&](auto options, auto change) {
    change(options);
    return Failure([&](ld_error** error) {
      ld_string* text = nullptr;
      const bool isDone = WriteTable(table.get(), &options, &text, error);
      EXPECT_EQ(text, nullptr);
      return isDone;
    });
  };
  EXPECT_EQ(failure(Csv(), [](auto& o) { o.size = 7; }), "The size of the options is wrong! 2");
  EXPECT_EQ(failure(Csv(), [](auto& o) { o.form = 2; }), "Invalid value 2 of ld_value_form! 2");
  EXPECT_EQ(failure(Csv(), [](auto& o) { o.quoting = 9; }), "Invalid value 9 of ld_quoting! 2");
  EXPECT_EQ(failure(Csv(), [](auto& o) { o.line_end = 2; }), "Invalid value 2 of ld_line_end! 2");
  for (const char* separator : {"\"", "\n", "e", "-", ".", "1", ":", ", ", "\t|"})
    EXPECT_EQ(failure(Csv(separator), [](auto&) {}),
              "The separator cannot be told from the values! 2");
  EXPECT_EQ(failure(Json(), [](auto& o) { o.layout = 2; }), "Invalid value 2 of ld_json_layout! 2");
  EXPECT_EQ(failure(Json(), [](auto& o) { o.indentation = 17; }),
            "The indentation is too large! 2");
  EXPECT_EQ(failure(Json(LD_JSON_LAYOUT_LINES, 1), [](auto&) {}),
            "JSON lines cannot be indented! 2");
  ld_csv_write_options older{};
  older.size = offsetof(ld_csv_write_options, form);
  older.separator = "|";
  EXPECT_EQ(Written(table.get(), older), "a|b\n1|x\n");
}

TEST(CWriting, TellsTheProgressAndCanBeCancelled) {
  struct Told {
    std::vector<std::uint64_t> done;
    std::size_t most;
  };
  const auto table = Read(LargeText(), nullptr);
  for (const std::uint32_t threads : {1u, 3u}) {
    Told told{{}, SIZE_MAX};
    auto options = Csv(nullptr, threads);
    options.progress = [](void* context, std::uint64_t done, std::uint64_t total) {
      auto& seen = *static_cast<Told*>(context);
      EXPECT_EQ(total, 60'000u);
      seen.done.push_back(done);
      return seen.done.size() < seen.most;
    };
    options.progress_context = &told;
    const std::string text = Written(table.get(), options);
    EXPECT_TRUE(std::is_sorted(told.done.begin(), told.done.end()));
    ASSERT_GE(told.done.size(), threads == 1 ? 2u : 1u);
    EXPECT_EQ(told.done.back(), 60'000u);
    for (const std::size_t most : {std::size_t{1}, told.done.size()}) {
      told = {{}, most};
      EXPECT_EQ(Failure([&](ld_error** error) {
                  ld_string* out = nullptr;
                  return ld_csv_write(table.get(), &options, &out, error);
                }),
                "The operation was cancelled! 2");
    }
  }
}

// -- Files --

TEST(CWriting, WritesFilesAndReplacesThem) {
  const Folder folder;
  const auto path = folder / "file.csv";
  const auto table = Read(LargeText(), nullptr);
  for (const std::uint32_t threads : {1u, 3u}) {
    const auto csv = Csv(nullptr, threads);
    EXPECT_TRUE(ld_csv_write_file(table.get(), Utf8(path).c_str(), &csv, nullptr));
    EXPECT_TRUE(ReadFile(path) == Written(table.get(), Csv()));
    auto json = Json();
    json.thread_count = threads;
    EXPECT_TRUE(ld_json_write_file(table.get(), Utf8(path).c_str(), &json, nullptr));
    EXPECT_TRUE(ReadFile(path) == Written(table.get(), Json()));
  }
  EXPECT_EQ(folder.FileCount(), 1u);
}

TEST(CWriting, KeepsPermissionsAndFollowsLinks) {
  const Folder folder;
  const auto path = folder / "file.csv", link = folder / "link.csv";
  const auto table = Table("a,b\n1,x\n");
  const auto write = [&](const std::filesystem::path& to) {
    return Failure([&](ld_error** error) {
      return ld_csv_write_file(table.get(), Utf8(to).c_str(), nullptr, error);
    });
  };
  std::error_code noLinks;
  std::filesystem::create_symlink("file.csv", link, noLinks);
  const auto& target = noLinks ? path : link;
  EXPECT_EQ(write(target), "did not fail") << "a link to a file that is not there yet";
  EXPECT_EQ(ReadFile(path), "a,b\n1,x\n");
  using std::filesystem::perms;
  std::filesystem::permissions(path, perms::owner_read | perms::owner_write | perms::others_read);
  const perms before = std::filesystem::status(path).permissions();
  EXPECT_EQ(write(target), "did not fail");
  EXPECT_EQ(std::filesystem::status(path).permissions(), before);
  EXPECT_TRUE(noLinks || std::filesystem::is_symlink(link));
  EXPECT_EQ(folder.FileCount(), noLinks ? 1u : 2u);
}

TEST(CWriting, LeavesTheOldFileAfterAFailure) {
  const Folder folder;
  const auto path = folder / "file.json";
  std::ofstream(path) << "old";
  const auto table = Read(LargeText(), nullptr);
  const auto failure = [&](const std::filesystem::path& to, ld_json_write_options options) {
    return Failure([&](ld_error** error) {
      return ld_json_write_file(table.get(), Utf8(to).c_str(), &options, error);
    });
  };
  auto cancelled = Json();
  cancelled.progress = [](void*, std::uint64_t done, std::uint64_t total) { return done != total; };
  EXPECT_EQ(failure(path, cancelled), "The operation was cancelled! 2");
  EXPECT_TRUE(ld_table_set_cell(table.get(), 59'999, 2, Value("nan").get(), nullptr));
  for (const std::uint32_t threads : {1u, 3u}) {
    auto options = Json();
    options.thread_count = threads;
    EXPECT_EQ(failure(path, options), "Column value holds a number that JSON cannot represent! 2");
  }
  EXPECT_EQ(ReadFile(path), "old");
  EXPECT_EQ(folder.FileCount(), 1u);

  std::filesystem::create_directory(folder / "folder");
  for (const auto& [to, reason] : {std::pair("folder", "Is a directory"), {"missing/file", ""}}) {
    const std::string message = failure(folder / to, Json());
    EXPECT_TRUE(message.starts_with("Cannot write \"" + Utf8(folder / to) + "\": ")) << message;
    EXPECT_NE(message.find(reason), message.npos) << message;
  }
  EXPECT_EQ(folder.FileCount(), 2u);
}

TEST(CWriting, WritesDatesOutsideTheCalendar) {
  const auto table = Received<ld_table>(ld_create_table);
  const auto column = Received<ld_column>([&](ld_column** out, ld_error** error) {
    return ld_table_add_column(table.get(), "c", out, error);
  });
  const auto add = [&](ld_date_time* date) {
    ld_variant value{};
    ld_row* row = nullptr;
    ASSERT_TRUE(ld_variant_from_object(date, &value, nullptr));
    ASSERT_TRUE(ld_table_add_row(table.get(), &value, 1, &row, nullptr));
    ld_release(row);
    ld_variant_clear(&value);
  };
  const auto month113 = Received<ld_date_time>([](ld_date_time** out, ld_error** error) {
    return ld_create_date_time_from_iso8601("2023-02-01T10:00:00Z", out, error);
  });
  ASSERT_TRUE(ld_date_time_set_month(month113.get(), 113, nullptr));
  add(month113.get());
  const auto beyond = Received<ld_date_time>([](ld_date_time** out, ld_error** error) {
    return ld_create_date_time_from_file_time(std::uint64_t{1} << 63, out, error);
  });
  add(beyond.get());
  const auto text = Received<ld_string>([&](ld_string** out, ld_error** error) {
    return ld_csv_write(table.get(), nullptr, out, error);
  });
  const char* utf8 = nullptr;
  ASSERT_TRUE(ld_string_get_utf8(text.get(), &utf8, nullptr));
  EXPECT_STREQ(utf8, "c\n2032-05-01T10:00:00Z\n0000-00-00T00:00:00.000000000Z\n");
}
