// Filtering, selecting, sorting, joining and grouping: cases from Tests/Data/Rows.txt, and random
// tables compared with simple models of the same rules.

#include <algorithm>
#include <cmath>
#include <map>
#include <numeric>
#include <random>

#include "../Cases.h"
#include "Values.h"

using namespace c_tests;

namespace {

std::vector<std::string> Split(std::string_view text, char separator) {
  std::vector<std::string> parts(1);
  for (const char c : text) {
    if (c == separator) {
      parts.emplace_back();
    } else {
      parts.back() += c;
    }
  }
  return parts;
}

Held<ld_table> TableOf(std::string_view text) {
  const auto lines = Split(text, ';');
  std::vector<Row> rows;
  for (std::size_t i = 1; i < lines.size(); ++i)
    if (Row row = Words(lines[i]); !row.empty()) rows.push_back(std::move(row));
  return MakeTable(Words(lines[0]), rows);
}

std::string Joined(const std::vector<Row>& content) {
  std::string text;
  for (const Row& row : content) {
    text += text.empty() ? "" : ";";
    for (const std::string& cell : row) text += (&cell == row.data() ? "" : " ") + cell;
  }
  return text;
}

/// The table that a call gives, or the failure.
template <class Call>
std::string ResultOf(Call&& call) {
  ld_table* table = nullptr;
  ld_error* error = nullptr;
  if (call(&table, &error)) return Joined(Content(Held<ld_table>(table).get()));
  EXPECT_EQ(table, nullptr);
  return ld_error_message(Held<ld_error>(error).get());
}

std::vector<const char*> Pointers(const Row& names) {
  std::vector<const char*> pointers;
  for (const std::string& name : names) pointers.push_back(name.c_str());
  return pointers;
}

std::string Filtered(ld_table* table, std::string_view bits) {
  std::vector<std::uint8_t> bitmap(bits.size() / 8 + 1);
  for (std::size_t i = 0; i < bits.size(); ++i)
    bitmap[i / 8] |= static_cast<std::uint8_t>((bits[i] == '1') << i % 8);
  return ResultOf([&](ld_table** out, ld_error** error) {
    return ld_table_filter(table, bitmap.data(), bits.size(), out, error);
  });
}

std::string Selected(ld_table* table, std::string_view names) {
  const Row words = Words(std::string(names));
  return ResultOf([&](ld_table** out, ld_error** error) {
    return ld_table_select(table, Pointers(words).data(), words.size(), out, error);
  });
}

std::string Sorted(ld_table* table, std::string_view keys) {
  Row words = Words(std::string(keys));
  std::vector<ld_sort_key> sortKeys;
  for (std::string& word : words) {
    ld_sort_order order = 0;
    for (; word[0] == '^' || word[0] == '-'; word.erase(0, 1)) order |= word[0] == '^' ? 2 : 1;
    sortKeys.push_back({word.c_str(), order});
  }
  return ResultOf([&](ld_table** out, ld_error** error) {
    return ld_table_sort(table, sortKeys.data(), sortKeys.size(), out, error);
  });
}

std::string Joined(ld_table* left, ld_table* right, std::string_view kindAndKeys) {
  static const std::map<std::string, ld_join_kind> kinds = {{"inner", LD_JOIN_KIND_INNER},
                                                            {"left", LD_JOIN_KIND_LEFT},
                                                            {"right", LD_JOIN_KIND_RIGHT},
                                                            {"full", LD_JOIN_KIND_FULL}};
  const Row words = Words(std::string(kindAndKeys));
  Row leftKeys, rightKeys;
  for (std::size_t i = 1; i < words.size(); ++i) {
    const auto names = Split(words[i], '=');
    leftKeys.push_back(names.front());
    rightKeys.push_back(names.back());
  }
  return ResultOf([&](ld_table** out, ld_error** error) {
    return ld_table_join(left, right, Pointers(leftKeys).data(),
                         leftKeys == rightKeys ? nullptr : Pointers(rightKeys).data(),
                         leftKeys.size(), kinds.at(words[0]), out, error);
  });
}

std::string Grouped(ld_table* table, std::string_view keys, std::string_view functions) {
  static const std::map<std::string, ld_aggregate_function> kFunctions = {
      {"count", LD_AGGREGATE_FUNCTION_COUNT}, {"values", LD_AGGREGATE_FUNCTION_COUNT_VALUES},
      {"sum", LD_AGGREGATE_FUNCTION_SUM},     {"mean", LD_AGGREGATE_FUNCTION_MEAN},
      {"min", LD_AGGREGATE_FUNCTION_MIN},     {"max", LD_AGGREGATE_FUNCTION_MAX}};
  const Row keyNames = Words(std::string(keys));
  std::vector<std::vector<std::string>> parts;
  for (const std::string& word : Words(std::string(functions))) parts.push_back(Split(word, ':'));
  std::vector<ld_aggregate> aggregates;
  for (const auto& part : parts)
    aggregates.push_back(
        {kFunctions.at(part[0]), part[1] == "-" ? nullptr : part[1].c_str(), part[2].c_str()});
  return ResultOf([&](ld_table** out, ld_error** error) {
    return ld_table_group(table, Pointers(keyNames).data(), keyNames.size(), aggregates.data(),
                          aggregates.size(), out, error);
  });
}

std::string Expected(std::string_view text) {
  const bool isFailure = text.find('!') != text.npos || text.find("does not") != text.npos;
  return isFailure ? std::string(text) : Joined(Content(TableOf(text).get()));
}

template <class Run>
void CheckCases(const char* section, std::size_t answer, Run&& run) {
  for (const auto& c : Data::tests::Cases("Rows.txt", section)) {
    const auto table = TableOf(c[0]);
    EXPECT_EQ(run(table.get(), c), Expected(c[answer])) << c.where << ": " << c[answer + 1];
    EXPECT_EQ(Joined(Content(table.get())), Joined(Content(TableOf(c[0]).get()))) << c.where;
  }
}

TEST(Rows, AreFiltered) {
  CheckCases("filter", 2, [](ld_table* table, const auto& c) { return Filtered(table, c[1]); });
}
TEST(Rows, GiveSomeColumns) {
  CheckCases("select", 2, [](ld_table* table, const auto& c) { return Selected(table, c[1]); });
}
TEST(Rows, AreSorted) {
  CheckCases("sort", 2, [](ld_table* table, const auto& c) { return Sorted(table, c[1]); });
}
TEST(Rows, AreJoined) {
  CheckCases("join", 3, [](ld_table* table, const auto& c) {
    return Joined(table, TableOf(c[1]).get(), c[2]);
  });
}
TEST(Rows, AreGrouped) {
  CheckCases("group", 3, [](ld_table* table, const auto& c) { return Grouped(table, c[1], c[2]); });
}

// -- Models --

/// The place of a value's kind in the order of values; 0 for Null.
int KindOf(const std::string& literal) {
  if (literal == "null") return 0;
  if (literal == "true" || literal == "false") return 1;
  return literal[0] == '\'' ? 3 : literal.back() == '@' ? 4 : 2;
}

/// The stated order, with numbers of 64 bits in a type that holds them all.
int ModelCompare(const std::string& left, const std::string& right) {
  const auto order = [](auto a, auto b) { return a < b ? -1 : b < a ? 1 : 0; };
  const int kind = KindOf(left);
  if (kind != KindOf(right)) return order(kind, KindOf(right));
  switch (kind) {
    case 1:
      return order(left == "true", right == "true");
    case 2: {
      const long double a = std::stold(left), b = std::stold(right);
      if (std::isnan(a) || std::isnan(b)) return order(std::isnan(a), std::isnan(b));
      return order(a, b);
    }
    case 3:
      return order(left.substr(1, left.size() - 2), right.substr(1, right.size() - 2));
    case 4:
      return order(std::stoll(left), std::stoll(right));
    default:
      return 0;
  }
}

std::string RandomValue(std::mt19937& random, unsigned kind) {
  static const std::vector<std::vector<const char*>> kinds = {
      {"1", "2", "3", "-9223372036854775808", "9223372036854775807", "9007199254740993"},
      {"0.5", "-0.0", "0.0", "nan", "inf", "1e+300", "-1.25", "3.0"},
      {"1", "1.0", "1u", "9007199254740993", "9007199254740992.0", "9007199254740992",
       "9007199254740994.0", "-9007199254740993", "-9007199254740992.0", "9223372036854775807",
       "9223372036854775808.0", "9223372036854775808u", "18446744073709551615u", "0.5f"},
      {"'a'", "'A'", "''", "'abcdefg'", "'abcdefgh'", "'abcdefgi'", "'longer_than_sixteen_bytes'",
       "'longer_than_sixteen_byteS'", "'abcdefgh2'"},
      {"0@", "-5@", "116444736000000000@"},
      {"1", "0.5", "true", "false", "'1'", "'a'", "0@", "nan", "18446744073709551615u"},
      {"true", "false"},
  };
  if (random() % 6 == 0) return "null";
  const auto& values = kinds[kind % kinds.size()];
  return values[random() % values.size()];
}

/// Rows of two random columns and the number of the row.
std::vector<Row> RandomRows(std::mt19937& random, std::size_t count) {
  const unsigned kinds[] = {static_cast<unsigned>(random()), static_cast<unsigned>(random())};
  std::vector<Row> rows;
  for (std::size_t i = 0; i < count; ++i)
    rows.push_back(
        {RandomValue(random, kinds[0]), RandomValue(random, kinds[1]), std::to_string(i)});
  return rows;
}

std::string WithHeader(const Row& names, std::vector<Row> rows) {
  rows.insert(rows.begin(), names);
  return Joined(rows);
}

TEST(Rows, AreSortedAsTheModelSays) {
  std::mt19937 random(23);
  const Row names = {"a", "b", "i"};
  for (const std::size_t count : {0u, 1u, 7u, 8u, 9u, 64u, 100u, 300u}) {
    for (int repeat = 0; repeat < 15; ++repeat) {
      std::vector<Row> rows = RandomRows(random, count);
      const auto table = MakeTable(names, rows);
      const bool descends[] = {random() % 2 == 0, random() % 2 == 0};
      const bool nullsFirst[] = {random() % 2 == 0, random() % 2 == 0};
      std::string keys;
      for (std::size_t i = 0; i < 2; ++i)
        keys += std::string(nullsFirst[i] ? "^" : "") + (descends[i] ? "-" : "") + names[i] + " ";
      std::stable_sort(rows.begin(), rows.end(), [&](const Row& left, const Row& right) {
        for (std::size_t i = 0; i < 2; ++i) {
          const bool isLeftNull = left[i] == "null", isRightNull = right[i] == "null";
          if (isLeftNull != isRightNull) return isLeftNull == nullsFirst[i];
          const int order = ModelCompare(left[i], right[i]);
          if (order != 0) return (order < 0) != descends[i];
        }
        return false;
      });
      ASSERT_EQ(Sorted(table.get(), keys), WithHeader(names, rows)) << keys;
    }
  }
}

bool AreEqualKeys(const Row& left, const Row& right, std::size_t keyCount) {
  for (std::size_t i = 0; i < keyCount; ++i)
    if (left[i] == "null" || right[i] == "null" || ModelCompare(left[i], right[i]) != 0)
      return false;
  return true;
}

TEST(Rows, AreJoinedAsNestedLoopsDo) {
  std::mt19937 random(24);
  const char* const kinds[] = {"inner", "left", "right", "full"};
  for (int repeat = 0; repeat < 200; ++repeat) {
    const auto left = RandomRows(random, random() % 30), right = RandomRows(random, random() % 30);
    const std::size_t keyCount = 1 + random() % 2;
    const unsigned kind = random() % 4;
    std::vector<Row> expected;
    std::vector<bool> hasPartner(right.size());
    const auto addRight = [&](Row& row, const Row& partner) {
      row.insert(row.end(), partner.begin() + static_cast<std::ptrdiff_t>(keyCount), partner.end());
    };
    for (const Row& row : left) {
      bool isMatched = false;
      for (std::size_t i = 0; i < right.size(); ++i) {
        if (!AreEqualKeys(row, right[i], keyCount)) continue;
        isMatched = hasPartner[i] = true;
        addRight(expected.emplace_back(row), right[i]);
      }
      if (!isMatched && (kind & LD_JOIN_KIND_LEFT) != 0)
        addRight(expected.emplace_back(row), Row(3, "null"));
    }
    for (std::size_t i = 0; i < right.size(); ++i) {
      if (hasPartner[i] || (kind & LD_JOIN_KIND_RIGHT) == 0) continue;
      Row row(3, "null");
      std::copy_n(right[i].begin(), keyCount, row.begin());
      addRight(expected.emplace_back(row), right[i]);
    }
    Row names = {"a", "b", "i"};
    const auto leftTable = MakeTable(names, left), rightTable = MakeTable(names, right);
    if (keyCount == 1) names.push_back("b_right");
    names.push_back("i_right");
    ASSERT_EQ(Joined(leftTable.get(), rightTable.get(),
                     std::string(kinds[kind]) + (keyCount == 1 ? " a" : " a b")),
              WithHeader(names, expected));
  }
}

TEST(Rows, AreGroupedAsTheModelSays) {
  std::mt19937 random(25);
  for (int repeat = 0; repeat < 200; ++repeat) {
    std::vector<Row> rows = RandomRows(random, random() % 100);
    const std::size_t keyCount = 1 + random() % 2;
    std::vector<std::vector<Row>> groups;
    for (const Row& row : rows) {
      const auto isSame = [&](const std::vector<Row>& group) {
        for (std::size_t i = 0; i < keyCount; ++i)
          if (ModelCompare(group[0][i], row[i]) != 0) return false;
        return true;
      };
      const auto group = std::find_if(groups.begin(), groups.end(), isSame);
      (group == groups.end() ? groups.emplace_back() : *group).push_back(row);
    }
    std::vector<Row> expected;
    for (const auto& group : groups) {
      Row& row = expected.emplace_back(group[0].begin(),
                                       group[0].begin() + static_cast<std::ptrdiff_t>(keyCount));
      std::int64_t sum = 0, values = 0;
      std::string least = "null", greatest = "null";
      for (const Row& each : group) {
        sum += std::stoll(each[2]);
        if (each[1] == "null") continue;
        ++values;
        if (least == "null" || ModelCompare(each[1], least) < 0) least = each[1];
        if (greatest == "null" || ModelCompare(each[1], greatest) > 0) greatest = each[1];
      }
      row.insert(row.end(), {std::to_string(group.size()), std::to_string(values),
                             std::to_string(sum), least, greatest});
    }
    Row names = keyCount == 1 ? Row{"a"} : Row{"a", "b"};
    const std::string keys = keyCount == 1 ? "a" : "a b";
    names.insert(names.end(), {"n", "c", "s", "low", "high"});
    const auto table = MakeTable({"a", "b", "i"}, rows);
    ASSERT_EQ(Grouped(table.get(), keys, "count:-:n values:b:c sum:i:s min:b:low max:b:high"),
              WithHeader(names, expected));
  }
}

TEST(Rows, RefuseWrongEnumeratorsAndMissingNames) {
  const auto table = TableOf("a; 1");
  ld_table* out = nullptr;
  const ld_sort_key order{"a", 4}, unnamed{nullptr, 0};
  const auto sort = [&](const ld_sort_key* keys) {
    return Failure([&](ld_error** e) { return ld_table_sort(table.get(), keys, 1, &out, e); });
  };
  EXPECT_EQ(sort(&order), "Invalid value 4 of ld_sort_order! 2");
  EXPECT_EQ(sort(&unnamed), "Pointer of char must not be null! 2");
  const char* const names[] = {"a", nullptr};
  EXPECT_EQ(Failure([&](ld_error** e) {
              return ld_table_join(table.get(), table.get(), names, nullptr, 1, 4, &out, e);
            }),
            "Invalid value 4 of ld_join_kind! 2");
  EXPECT_EQ(Failure([&](ld_error** e) { return ld_table_select(table.get(), names, 2, &out, e); }),
            "The names of columns must not be null! 2");
  const ld_aggregate wrong{6, "a", "n"}, column{2, nullptr, "n"}, name{0, "a", nullptr};
  const auto group = [&](const ld_aggregate* aggregate) {
    return Failure([&](ld_error** error) {
      return ld_table_group(table.get(), names, 1, aggregate, 1, &out, error);
    });
  };
  EXPECT_EQ(group(&wrong), "Invalid value 6 of ld_aggregate_function! 2");
  EXPECT_EQ(group(&column), "Pointer of char must not be null! 2");
  EXPECT_EQ(group(&name), "Pointer of char must not be null! 2");
  EXPECT_EQ(out, nullptr);
}

}  // namespace

TEST(Rows, AreSortedByBytes) {
  const auto table = Received<ld_table>(ld_create_table);
  const auto column = Received<ld_column>([&](ld_column** out, ld_error** error) {
    return ld_table_add_column(table.get(), "c", out, error);
  });
  for (const char* bytes : {"b", "aa", "a"}) {
    const auto array = Received<ld_array>(ld_create_array);
    ASSERT_TRUE(ld_array_set_data(array.get(), bytes, std::strlen(bytes), 1, nullptr));
    ld_variant value{};
    ld_row* row = nullptr;
    ASSERT_TRUE(ld_variant_from_object(array.get(), &value, nullptr));
    ASSERT_TRUE(ld_table_add_row(table.get(), &value, 1, &row, nullptr));
    ld_release(row);
    ld_variant_clear(&value);
  }
  const ld_sort_key key = {"c", LD_SORT_ORDER_ASCENDING};
  const auto sorted = Received<ld_table>([&](ld_table** out, ld_error** error) {
    return ld_table_sort(table.get(), &key, 1, out, error);
  });
  const auto first = [](ld_table* from, std::int64_t row) {
    ld_variant value{};
    ld_object* object = nullptr;
    EXPECT_TRUE(ld_table_get_cell(from, row, 0, &value, nullptr));
    EXPECT_TRUE(ld_variant_to_object(&value, &object, nullptr));
    ld_variant_clear(&value);
    return Held<ld_object>(object);
  };
  EXPECT_EQ(first(sorted.get(), 0), first(table.get(), 2));
  EXPECT_EQ(first(sorted.get(), 1), first(table.get(), 1));
  EXPECT_EQ(first(sorted.get(), 2), first(table.get(), 0));
}
