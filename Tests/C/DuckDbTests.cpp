// Tables to DuckDB and back through Arrow streams. Built and run by Tools/check-duckdb.sh.

#include <duckdb.h>

#include <map>
#include <string>
#include <vector>

#include "Support.h"

using namespace c_tests;

namespace {

/// A database in memory.
class Database {
 public:
  Database() {
    EXPECT_EQ(duckdb_open(nullptr, &database_), DuckDBSuccess);
    EXPECT_EQ(duckdb_connect(database_, &connection_), DuckDBSuccess);
  }
  ~Database() {
    duckdb_disconnect(&connection_);
    duckdb_close(&database_);
  }

  /// Copies a table into the database. A stream can be read once, and DuckDB reads it rightly only
  /// as a whole: it leaves the choice of columns to a producer who is not told.
  void Take(ld_table* table, const std::string& name, std::uint64_t batchRows = 0) {
    ld_arrow_options options{};
    options.size = sizeof options;
    options.batch_rows = batchRows;
    ArrowArrayStream stream{};
    ld_error* error = nullptr;
    ASSERT_TRUE(ld_table_to_arrow_stream(table, &options, &stream, &error))
        << ld_error_message(error);
    const std::string view = name + "_arrow";
    EXPECT_EQ(duckdb_arrow_scan(connection_, view.c_str(),
                                reinterpret_cast<duckdb_arrow_stream>(&stream)),
              DuckDBSuccess);
    Run("CREATE TABLE " + name + " AS SELECT * FROM " + view);
    stream.release(&stream);
  }

  void Run(const std::string& query) { Result(connection_, query); }

  /// The result of a query as a table.
  Held<ld_table> Query(const std::string& query) {
    Result result(connection_, query);
    ArrowArrayStream stream = result.Stream();
    auto table = Received<ld_table>([&](ld_table** out, ld_error** error) {
      return ld_table_from_arrow_stream(&stream, nullptr, out, error);
    });
    EXPECT_EQ(stream.release, nullptr);
    EXPECT_TRUE(result.isReleased);
    return table;
  }

 private:
  /// The result of a query as an Arrow stream, which refers to it.
  struct Result {
    Result(duckdb_connection connection, const std::string& query) {
      EXPECT_EQ(duckdb_query(connection, query.c_str(), &result), DuckDBSuccess)
          << duckdb_result_error(&result);
      options = duckdb_result_get_arrow_options(&result);
    }
    ~Result() {
      duckdb_destroy_arrow_options(&options);
      duckdb_destroy_result(&result);
    }

    int Check(duckdb_error_data data) {
      const bool isWrong = data && duckdb_error_data_has_error(data);
      if (isWrong) message = duckdb_error_data_message(data);
      if (data) duckdb_destroy_error_data(&data);
      return isWrong ? 5 : 0;
    }
    int Schema(ArrowSchema* out) {
      std::vector<duckdb_logical_type> types;
      std::vector<const char*> names;
      for (idx_t i = 0; i < duckdb_column_count(&result); ++i) {
        types.push_back(duckdb_column_logical_type(&result, i));
        names.push_back(duckdb_column_name(&result, i));
      }
      const int code =
          Check(duckdb_to_arrow_schema(options, types.data(), names.data(), types.size(), out));
      for (duckdb_logical_type& type : types) duckdb_destroy_logical_type(&type);
      return code;
    }
    int Next(ArrowArray* out) {
      *out = {};
      duckdb_data_chunk chunk = duckdb_fetch_chunk(result);
      if (!chunk) return 0;
      const int code = Check(duckdb_data_chunk_to_arrow(options, chunk, out));
      duckdb_destroy_data_chunk(&chunk);
      return code;
    }
    static Result& Of(ArrowArrayStream* stream) {
      return *static_cast<Result*>(stream->private_data);
    }
    ArrowArrayStream Stream() {
      ArrowArrayStream stream{};
      stream.private_data = this;
      stream.get_schema = [](ArrowArrayStream* s, ArrowSchema* out) { return Of(s).Schema(out); };
      stream.get_next = [](ArrowArrayStream* s, ArrowArray* out) { return Of(s).Next(out); };
      stream.get_last_error = [](ArrowArrayStream* s) { return Of(s).message.c_str(); };
      stream.release = [](ArrowArrayStream* s) {
        Of(s).isReleased = true;
        s->release = nullptr;
      };
      return stream;
    }

    duckdb_result result{};
    duckdb_arrow_options options = nullptr;
    std::string message;
    bool isReleased = false;
  };

  duckdb_database database_ = nullptr;
  duckdb_connection connection_ = nullptr;
};

std::int64_t RowCount(ld_table* table) {
  std::int64_t count = 0;
  EXPECT_TRUE(ld_table_get_row_count(table, &count, nullptr));
  return count;
}

/// All cells of a table: ";" between cells, and a line for each row.
std::string Cells(ld_table* table) {
  std::int64_t columns = 0;
  EXPECT_TRUE(ld_table_get_column_count(table, &columns, nullptr));
  std::string text;
  for (std::int64_t row = 0; row < RowCount(table); ++row)
    for (std::int32_t i = 0; i < columns; ++i)
      text.append(Cell(table, row, i)).append(i + 1 < columns ? ";" : "\n");
  return text;
}

/// A table of made-up sales: many rows, so that a stream has several batches.
std::string Sales(int rows) {
  std::string csv = "id,city,amount,day,note\n";
  for (int i = 0; i < rows; ++i)
    csv +=
        std::to_string(i) + "," + std::to_string(i % 7) + "," +
        (i % 5 == 0 ? "" : std::to_string(i % 100) + ".25") + ",2024-0" +
        std::to_string(i % 9 + 1) + "-15," +
        (i % 3 == 0 ? "short" : "a note of more than sixteen bytes \xC3\xBC " + std::to_string(i)) +
        "\n";
  return csv;
}

}  // namespace

TEST(DuckDb, KnowsTheTypesOfColumns) {
  const auto table = Table(
      "whole,real,mixed,day,stamp,text,nothing\n"
      "1,1.5,1,2024-11-14,2024-11-14T10:20:30.5Z,caf\xC3\xA9,\n"
      "-9007199254740993,-0.25,0.5,1969-12-31,1969-12-31,\"a text, longer than sixteen bytes\",\n"
      ",,,,,,\n");
  Database database;
  database.Take(table.get(), "t");
  EXPECT_EQ(Cells(database
                      .Query("SELECT DISTINCT typeof(whole), typeof(real), typeof(mixed), "
                             "typeof(day), typeof(stamp), typeof(text) FROM t")
                      .get()),
            "BIGINT;DOUBLE;DOUBLE;DATE;TIMESTAMP WITH TIME ZONE;VARCHAR\n");
  EXPECT_EQ(
      Cells(database
                .Query("SELECT count(*), count(whole), min(whole), sum(mixed), max(day)::TEXT, "
                       "epoch_ms(min(stamp)), max(length(text)), count(nothing) FROM t")
                .get()),
      "3;2;-9007199254740993;1.500000;2024-11-14;-43200000;33;0\n");
  EXPECT_EQ(Cells(database
                      .Query("SELECT text FROM t WHERE stamp = TIMESTAMPTZ "
                             "'2024-11-14 10:20:30.5+00'")
                      .get()),
            "caf\xC3\xA9\n");
}

TEST(DuckDb, JoinsAndAggregates) {
  const auto cities = Table("city,name\n0,Oslo\n1,Rome\n2,Lima\n3,Oslo\n9,Bonn\n");
  const int rows = 100'000;
  const auto sales = Table(Sales(rows).c_str());
  struct Total {
    int count = 0, amounts = 0;
    double sum = 0;
  };
  std::map<std::string, Total> totals;
  const char* const names[] = {"Oslo", "Rome", "Lima", "Oslo"};
  for (int i = 0; i < rows; ++i) {
    if (i % 7 > 3) continue;
    Total& total = totals[names[i % 7]];
    ++total.count;
    if (i % 5 == 0) continue;
    ++total.amounts;
    total.sum += i % 100 + 0.25;
  }
  std::string expected;
  for (const auto& [name, total] : totals)
    expected += name + ";" + std::to_string(total.count) + ";" + std::to_string(total.amounts) +
                ";" + std::to_string(total.sum) + "\n";
  for (const unsigned batchRows : {0u, 1000u, 2048u, 99'999u}) {
    Database database;
    database.Take(cities.get(), "cities");
    database.Take(sales.get(), "sales", batchRows);
    EXPECT_EQ(Cells(database
                        .Query("SELECT name, count(*), count(amount), sum(amount) FROM sales "
                               "JOIN cities USING (city) GROUP BY name ORDER BY name")
                        .get()),
              expected);
    EXPECT_EQ(
        Cells(database.Query("SELECT count(*) FROM sales ANTI JOIN cities USING (city)").get()),
        std::to_string(rows / 7 * 3 + (rows % 7 > 4 ? rows % 7 - 4 : 0)) + "\n");
    EXPECT_EQ(Cells(database
                        .Query("SELECT city, count(*) FILTER (note LIKE '%\xC3\xBC%') n FROM sales "
                               "WHERE day > DATE '2024-08-01' AND id < 18 GROUP BY city "
                               "ORDER BY city")
                        .get()),
              "0;1\n1;1\n2;1\n3;1\n");
  }
}

TEST(DuckDb, TablesComeBackEqual) {
  const auto sales = Table(Sales(20'000).c_str());
  Database database;
  database.Take(sales.get(), "sales", 4096);
  const auto back = database.Query("SELECT * FROM sales ORDER BY id");
  EXPECT_EQ(Cells(back.get()), Cells(sales.get()));
}

TEST(DuckDb, GivesTablesOfAllItsTypes) {
  const struct {
    const char* expression;
    ld_value_type type;
    const char* text;
  } cases[] = {
      {"true", LD_VALUE_TYPE_BOOL, "true"},
      {"(-128)::TINYINT", LD_VALUE_TYPE_SBYTE, "-128"},
      {"255::UTINYINT", LD_VALUE_TYPE_BYTE, "255"},
      {"(-300)::SMALLINT", LD_VALUE_TYPE_INT16, "-300"},
      {"65535::USMALLINT", LD_VALUE_TYPE_UINT16, "65535"},
      {"-7", LD_VALUE_TYPE_INT32, "-7"},
      {"4294967295::UINTEGER", LD_VALUE_TYPE_UINT32, "4294967295"},
      {"9223372036854775807", LD_VALUE_TYPE_INT64, "9223372036854775807"},
      {"18446744073709551615::UBIGINT", LD_VALUE_TYPE_UINT64, "18446744073709551615"},
      {"(-170141183460469231731687303715884105727)::HUGEINT", LD_VALUE_TYPE_STRING,
       "-170141183460469231731687303715884105727"},
      {"1.5::FLOAT", LD_VALUE_TYPE_FLOAT, "1.500000"},
      {"-2.25::DOUBLE", LD_VALUE_TYPE_DOUBLE, "-2.250000"},
      {"-0.50::DECIMAL(10,2)", LD_VALUE_TYPE_STRING, "-0.50"},
      {"'text that is longer than sixteen bytes'", LD_VALUE_TYPE_STRING,
       "text that is longer than sixteen bytes"},
      {"'b'::ENUM ('a', 'b')", LD_VALUE_TYPE_STRING, "b"},
      {"UUID '6b29fc40-ca47-1067-b31d-00dd010662da'", LD_VALUE_TYPE_STRING,
       "6b29fc40-ca47-1067-b31d-00dd010662da"},
      {"DATE '2024-11-14'", LD_VALUE_TYPE_DATE_TIME, "2024-11-14T12:00:00.000000000Z"},
      {"TIME '10:20:30.000125'", LD_VALUE_TYPE_STRING, "10:20:30.000125"},
      {"TIMESTAMP '2024-11-14 10:20:30.5'", LD_VALUE_TYPE_DATE_TIME,
       "2024-11-14T10:20:30.500000000Z"},
      {"TIMESTAMPTZ '2024-11-14 10:20:30.5+02'", LD_VALUE_TYPE_DATE_TIME,
       "2024-11-14T08:20:30.500000000Z"},
      {"TIMESTAMP_S '1969-12-31 23:59:59'", LD_VALUE_TYPE_DATE_TIME,
       "1969-12-31T23:59:59.000000000Z"},
      {"TIMESTAMP_MS '1969-12-31 23:59:59.999'", LD_VALUE_TYPE_DATE_TIME,
       "1969-12-31T23:59:59.999000000Z"},
      {"TIMESTAMP_NS '1969-12-31 23:59:59.999999999'", LD_VALUE_TYPE_DATE_TIME,
       "1969-12-31T23:59:59.999000000Z"},
      {"INTERVAL '14 months 3 days 5 seconds'", LD_VALUE_TYPE_STRING, "P14M3DT5.000000000S"},
      {"[1, NULL, 3]", LD_VALUE_TYPE_JSON_DOCUMENT, "[1,null,3]"},
      {"{'a': 1.5::DOUBLE, 'b': ['x', 'y\"']}", LD_VALUE_TYPE_JSON_DOCUMENT,
       "{\"a\":1.5,\"b\":[\"x\",\"y\\\"\"]}"},
      {"MAP {'k': 1}", LD_VALUE_TYPE_JSON_DOCUMENT, "[{\"key\":\"k\",\"value\":1}]"},
      {"NULL", LD_VALUE_TYPE_NULL, ""},
  };
  Database database;
  database.Run("SET TimeZone = 'Europe/Berlin'");
  for (const auto& c : cases) {
    const std::string expression = c.expression;
    const auto table = database.Query("SELECT CASE WHEN i <> 1 THEN " + expression +
                                      " END AS x FROM range(3) t(i) ORDER BY i");
    ASSERT_EQ(RowCount(table.get()), 3) << c.expression;
    for (const std::int64_t row : {0, 1, 2}) {
      ld_variant cell{};
      EXPECT_TRUE(ld_table_get_cell(table.get(), row, 0, &cell, nullptr));
      EXPECT_EQ(ld_variant_type(&cell), row == 1 ? ld_value_type{LD_VALUE_TYPE_NULL} : c.type)
          << c.expression;
      EXPECT_EQ(TextOf(cell), row == 1 ? "" : c.text) << c.expression;
      ld_variant_clear(&cell);
    }
  }
  const auto arrays = database.Query("SELECT [1, NULL]::INTEGER[2] UNION ALL SELECT NULL");
  EXPECT_EQ(Cells(arrays.get()), "[1,null]\n\n");
}
