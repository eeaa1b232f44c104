// The C interface as its callers use it: through layerdata.h alone.

#include <functional>
#include <stdexcept>
#include <thread>
#include <vector>

#include "Calls.h"
#include "Support.h"

using namespace c_tests;

namespace {

/// One object for all handles, and null or zero for all else.
struct OneObject {
  template <class T>
  T Next(const char*) const {
    if constexpr (IsHandle<T>) return static_cast<T>(object);
    return {};
  }
  void* object;
};

std::string FailureOf(const Function<OneObject>& function, void* object) {
  OneObject arguments{object};
  return Failure([&](ld_error** error) { return function.call(function, arguments, error); });
}

}  // namespace

TEST(C, EveryFunctionRefusesNull) {
  for (const auto& function : kFunctions<OneObject>) {
    const std::string failure = FailureOf(function, nullptr);
    EXPECT_TRUE(failure.find("null") != failure.npos && failure.ends_with(" 2"))
        << function.name << ": " << failure;
    OneObject arguments{};
    EXPECT_FALSE(function.call(function, arguments, nullptr)) << function.name;
  }
}

TEST(C, EveryOperationRefusesAnObjectOfAnotherKind) {
  const auto list = Received<ld_object_list>(ld_create_object_list);
  const auto text = Received<ld_string>(ld_create_string);
  for (const auto& function : kFunctions<OneObject>) {
    const std::string name = function.name;
    const bool takesAnyObject =
        name == "ld_object_lock" || name == "ld_object_try_lock" || name == "ld_object_unlock";
    if (!function.takesHandle || takesAnyObject) continue;
    const bool takesText = name.starts_with("ld_string_") || name == "ld_create_secure_string";
    const std::string failure =
        FailureOf(function, takesText ? static_cast<void*>(list.get()) : text.get());
    EXPECT_TRUE(failure.starts_with("Memory address") || failure.starts_with("The address of"))
        << name << ": " << failure;
  }
}

TEST(C, GivesReferencesThatOutliveTheirOwner) {
  auto table = Table("name,count\nAnn,1\nBob,2\n");
  const auto row = Received<ld_row>(
      [&](ld_row** out, ld_error** error) { return ld_table_get_row(table.get(), 1, out, error); });
  const auto column = Received<ld_column>([&](ld_column** out, ld_error** error) {
    return ld_table_get_column_by_name(table.get(), "count", out, error);
  });
  ld_retain(table.get());
  ld_release(table.get());
  table.reset();
  std::int64_t count = 0;
  EXPECT_TRUE(ld_row_get_cell_count(row.get(), &count, nullptr));
  EXPECT_EQ(count, 2);
  const char* name = nullptr;
  EXPECT_TRUE(ld_column_get_name(column.get(), &name, nullptr));
  EXPECT_STREQ(name, "count");
  ld_table* gone = nullptr;
  EXPECT_TRUE(ld_row_get_table(row.get(), &gone, nullptr));
  EXPECT_EQ(gone, nullptr);
}

TEST(C, FailsWhereTheLibraryThrowsAnswersNothingOrNeverReturns) {
  const auto table = Table("name,count\nAnn,1\n");
  ld_variant value{};
  ld_column* column = nullptr;
  const auto failure = [&](auto call) { return Failure(call); };
  EXPECT_EQ(failure([&](ld_error** e) { return ld_table_get_cell(table.get(), 5, 0, &value, e); }),
            "Row index out of range [5/1]! 2");
  EXPECT_EQ(failure([&](ld_error** e) { return ld_table_get_cell(table.get(), 0, 2, &value, e); }),
            "Column index out of range [2/2]! 2");
  EXPECT_EQ(failure([&](ld_error** e) {
              return ld_table_insert_column(table.get(), "new", 1, &column, e);
            }),
            "Columns can only be added at the end [1/2]! 2");
  EXPECT_TRUE(ld_table_insert_column(table.get(), "new", 2, &column, nullptr));
  const Held<ld_column> added(column);
  ld_uuid uuid{};
  EXPECT_EQ(failure([&](ld_error** e) { return ld_uuid_from_string("6b29fc40", &uuid, e); }),
            "The text is not a UUID! 2");
  EXPECT_TRUE(ld_uuid_from_string("6b29fc40-ca47-1067-b31d-00dd010662da", &uuid, nullptr));
  EXPECT_EQ(uuid.data1, 0x6B29FC40u);
  const auto settings = Received<ld_configuration>(ld_create_configuration);
  EXPECT_EQ(failure([&](ld_error** e) {
              return ld_configuration_get(settings.get(), "missing", &value, e);
            }),
            "There is nothing to return. 0");
  EXPECT_EQ(value.type, 0u);
  ld_error* first = nullptr;
  EXPECT_FALSE(ld_table_get_cell(table.get(), 5, 0, &value, &first));
  ld_error* const kept = first;
  EXPECT_FALSE(ld_table_get_cell(table.get(), 0, 5, &value, &first)) << "the first error stays";
  EXPECT_EQ(first, kept);
  ld_release(first);
}

TEST(C, ValuesOwnTheirObjects) {
  ld_variant text{}, copy{};
  const std::string longText = "longer than sixteen bytes";
  ASSERT_TRUE(ld_variant_from_text(longText.data(), longText.size(), &text, nullptr));
  ASSERT_TRUE(ld_variant_copy(&text, &copy, nullptr));
  ld_variant_clear(&text);
  EXPECT_EQ(text.type, 0u);
  EXPECT_EQ(TextOf(copy), longText);
  ld_object* object = nullptr;
  ASSERT_TRUE(ld_variant_to_object(&copy, &object, nullptr));
  ASSERT_TRUE(ld_variant_from_object(object, &copy, nullptr)) << "its own object again";
  ld_release(object);
  EXPECT_EQ(ld_variant_type(&copy), LD_VALUE_TYPE_STRING);
  ld_variant_clear(&copy);
  ld_variant_clear(nullptr);

  ld_variant number{}, real{}, truth{}, id{};
  const ld_uuid uuid{1, 2, 3, {4}};
  ASSERT_TRUE(ld_variant_from_int64(-7, &number, nullptr));
  ASSERT_TRUE(ld_variant_from_double(-7.75, &real, nullptr));
  ASSERT_TRUE(ld_variant_from_bool(true, &truth, nullptr));
  ASSERT_TRUE(ld_variant_from_uuid(&uuid, &id, nullptr));
  EXPECT_EQ(TextOf(number) + " " + TextOf(real) + " " + TextOf(truth) + " " + TextOf(id),
            "-7 -7.750000 true 00000001-0002-0003-0400-000000000000");
  std::int64_t whole = 0;
  double fraction = 0;
  std::int32_t order = 0;
  EXPECT_TRUE(ld_variant_to_int64(&real, &whole, nullptr));
  EXPECT_TRUE(ld_variant_to_double(&number, &fraction, nullptr));
  EXPECT_TRUE(ld_variant_compare(&real, &real, &order, nullptr));
  EXPECT_EQ(whole, -7);
  EXPECT_EQ(fraction, -7.0);
  EXPECT_EQ(order, 0);
  EXPECT_EQ(Failure([&](ld_error** e) { return ld_variant_to_object(&real, &object, e); }),
            "There is nothing to return. 0");
}

TEST(C, MergesOnSeveralKeys) {
  const auto left = Table("a,b,c\n1,1,x\n1,2,y\n"), right = Table("a,b,d\n1,2,z\n");
  const char* const keys[] = {"a", "b"};
  const auto merged = Received<ld_table>([&](ld_table** out, ld_error** error) {
    return ld_table_merge_on_columns(left.get(), right.get(), keys, 2, LD_MERGE_MODE_MATCHING, out,
                                     error);
  });
  EXPECT_EQ(Cell(merged.get(), 0, 2) + Cell(merged.get(), 0, 3), "yz");
  ld_table* none = nullptr;
  EXPECT_EQ(Failure([&](ld_error** e) {
              return ld_table_merge_on_columns(left.get(), right.get(), keys, 17, 0, &none, e);
            }),
            "At most 16 key columns! 2");
  EXPECT_EQ(Failure([&](ld_error** e) {
              return ld_table_merge_on_columns(left.get(), right.get(), keys, 0, 0, &none, e);
            }),
            "Invalid column! 2");
}

TEST(C, RefusesNumbersThatAreNoEnumerators) {
  const auto table = Table("id\n1\n");
  const auto column = Received<ld_column>([&](ld_column** out, ld_error** error) {
    return ld_table_get_column(table.get(), 0, out, error);
  });
  const auto date = Received<ld_date_time>(ld_create_minimum_date_time);
  const auto properties = Received<ld_properties>(ld_create_properties);
  const ld_uuid uuid{1, 2, 3, {4}};
  const auto schema = Received<ld_schema>([&](ld_schema** out, ld_error** error) {
    return ld_create_schema(&uuid, "a", "b", out, error);
  });
  const char* const key = "id";
  const ld_variant value{};
  ld_table* merged = nullptr;
  ld_allowed_value* allowed = nullptr;
  std::int32_t order = 0;
  std::uint64_t ticks = 0;
  const std::function<bool(ld_error**)> calls[] = {
      [&](auto e) { return ld_column_set_type(column.get(), 28, e); },
      [&](auto e) { return ld_column_set_type(column.get(), ~0u, e); },
      [&](auto e) { return ld_schema_set_type(schema.get(), "c", 28, e); },
      [&](auto e) { return ld_schema_add_column(schema.get(), "c", 28, 1, 1, e); },
      [&](auto e) { return ld_properties_register(properties.get(), "p", 28, true, &value, e); },
      [&](auto e) { return ld_table_merge(table.get(), table.get(), key, 3, &merged, e); },
      [&](auto e) { return ld_table_merge_on(table.get(), table.get(), key, key, -1, &merged, e); },
      [&](auto e) {
        return ld_table_merge_on_columns(table.get(), table.get(), &key, 1, 3, &merged, e);
      },
      [&](auto e) { return ld_date_time_compare_by_unit(date.get(), date.get(), 8, &order, e); },
      [&](auto e) { return ld_date_time_get_start_of(date.get(), -1, &ticks, e); },
      [&](auto e) { return ld_create_allowed_value(&value, 9, "", "", "", "", &allowed, e); },
  };
  std::string failures;
  for (const auto& call : calls) failures += Failure(call) + "\n";
  EXPECT_EQ(failures,
            "Invalid value 28 of ld_value_type! 2\nInvalid value 4294967295 of ld_value_type! 2\n"
            "Invalid value 28 of ld_value_type! 2\nInvalid value 28 of ld_value_type! 2\n"
            "Invalid value 28 of ld_value_type! 2\nInvalid value 3 of ld_merge_mode! 2\n"
            "Invalid value -1 of ld_merge_mode! 2\nInvalid value 3 of ld_merge_mode! 2\n"
            "Invalid value 8 of ld_date_time_unit! 2\nInvalid value -1 of ld_date_time_unit! 2\n"
            "Invalid value 9 of ld_comparison_operator! 2\n");
}

TEST(C, RefusesLengthsBeyondAllMemory) {
  ld_table* table = nullptr;
  ld_value_type type = 0;
  ld_variant value{};
  const auto json = Received<ld_json_document>(ld_create_json_document);
  const auto array = Received<ld_array>(ld_create_array);
  const auto hashing = Received<ld_hashing>(ld_create_hashing_instance_md5);
  const auto rows = Table("id\n1\n");
  const ld_sort_key key{"id", LD_SORT_ORDER_ASCENDING};
  const ld_aggregate aggregate{LD_AGGREGATE_FUNCTION_COUNT, "id", "n"};
  ld_array* bytes = nullptr;
  std::uint64_t written = 0;
  constexpr auto negative = static_cast<std::uint64_t>(-1);
  const std::function<bool(ld_error**)> calls[] = {
      [&](auto e) { return ld_parse_csv("a,b\n1,2\n", negative, &table, e); },
      [&](auto e) { return ld_detect_value_type("1", std::uint64_t{1} << 63, &type, e); },
      [&](auto e) { return ld_variant_from_text("1", negative, &value, e); },
      [&](auto e) { return ld_json_document_set_content(json.get(), "{}", negative, e); },
      [&](auto e) { return ld_array_append(array.get(), "1", negative, &written, e); },
      [&](auto e) { return ld_hashing_hash(hashing.get(), "1", negative, &bytes, e); },
      [&](auto e) { return ld_csv_read("a", negative, nullptr, &table, nullptr, e); },
      [&](auto e) { return ld_table_sort(rows.get(), &key, negative, &table, e); },
      [&](auto e) { return ld_table_select(rows.get(), &key.column, negative, &table, e); },
      [&](auto e) {
        return ld_table_group(rows.get(), &key.column, 1, &aggregate, negative, &table, e);
      },
  };
  for (const auto& call : calls) EXPECT_EQ(Failure(call), "The length is too large! 2");
}

TEST(C, RefusesToUnlockWhatIsNotLocked) {
  const auto list = Received<ld_object_list>(ld_create_object_list);
  auto* const object = reinterpret_cast<ld_object*>(list.get());
  bool isLocked = false;
  EXPECT_EQ(Failure([&](ld_error** e) { return ld_object_unlock(object, e); }),
            "The object is not locked! 2");
  EXPECT_TRUE(ld_object_try_lock(object, &isLocked, nullptr) && isLocked) << "it is still free";
  EXPECT_TRUE(ld_object_unlock(object, nullptr));
}

TEST(C, TellsItsVersion) {
  EXPECT_EQ(ld_version(), std::uint32_t{LD_VERSION});
  EXPECT_EQ(ld_version_text(), std::to_string(LD_VERSION_MAJOR) + "." +
                                   std::to_string(LD_VERSION_MINOR) + "." +
                                   std::to_string(LD_VERSION_PATCH));
}

TEST(C, RefusesOptionsThatEndInsideAMember) {
  const auto table = Table("id\n1\n");
  const auto failure = [&](std::uint64_t size) {
    ld_csv_write_options options{};
    options.size = size;
    ld_string* text = nullptr;
    return Failure([&](ld_error** e) { return ld_csv_write(table.get(), &options, &text, e); });
  };
  const std::string wrong = "The size of the options is wrong! 2";
  for (const std::uint64_t size : {0u, 4u, 12u, 20u, 4104u})
    EXPECT_EQ(failure(size), wrong) << size;
}

TEST(C, CallbacksMayThrowAndCallBack) {
  const auto table = Table("id,name\n1,x\n2,y\n");
  const auto write = [&](ld_progress progress, ld_error** error) {
    ld_csv_write_options options{};
    options.size = sizeof options;
    options.thread_count = 2;
    options.progress = progress;
    options.progress_context = table.get();
    ld_string* text = nullptr;
    const bool isDone = ld_csv_write(table.get(), &options, &text, error);
    EXPECT_EQ(isDone, text != nullptr);
    ld_release(text);
    return isDone;
  };
  EXPECT_EQ(Failure([&](ld_error** e) {
              return write(
                  [](void*, std::uint64_t, std::uint64_t) -> bool {
                    throw std::runtime_error("thrown by a callback");
                  },
                  e);
            }),
            "thrown by a callback 2");
  EXPECT_EQ(Failure([&](ld_error** e) {
              return write([](void*, std::uint64_t, std::uint64_t) -> bool { throw 7; }, e);
            }),
            "Uncaught exception 1");
  EXPECT_TRUE(write(
      [](void* context, std::uint64_t, std::uint64_t) {
        auto* const self = static_cast<ld_table*>(context);
        return Cell(self, 1, 1) == "y" &&
               ld_table_merge(self, self, "id", 9, nullptr, nullptr) == false;
      },
      nullptr));
}

TEST(C, ThreadsCallAtOnce) {
  const auto shared = Table("id,name\n1,x\n2,y\n");
  const auto work = [&shared] {
    for (int i = 0; i < 50; ++i) {
      const auto own = Table("id,count\n1,7\n2,8\n3,9\n");
      ld_retain(shared.get());
      const Held<ld_table> held(shared.get());
      const auto merged = Received<ld_table>([&](ld_table** out, ld_error** error) {
        return ld_table_merge(own.get(), held.get(), "id", LD_MERGE_MODE_MATCHING, out, error);
      });
      EXPECT_EQ(Cell(merged.get(), 1, 2), "y");
      ld_variant value{};
      EXPECT_EQ(
          Failure([&](ld_error** e) { return ld_table_get_cell(own.get(), 7, 0, &value, e); }),
          "Row index out of range [7/3]! 2");
    }
  };
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) threads.emplace_back(work);
  for (std::thread& thread : threads) thread.join();
}
