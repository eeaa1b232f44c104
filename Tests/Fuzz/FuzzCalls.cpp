// A sequence of calls of the C interface: any function with any arguments that a caller can give
// without lying about its memory. Each succeeds or gives an error object.

#include <array>
#include <map>
#include <memory>
#include <vector>

#include "C/Calls.h"
#include "Fuzz.h"

using namespace c_tests;
using Data::fuzz::Input;
using Data::fuzz::Require;

namespace {

constexpr const char* kTexts[] = {
    "id",
    "name",
    "",
    "a name of more than sixteen bytes",
    "id,name,date\n1,x,2024-11-14\n2,,\n3,\"a \"\"q\"\"\",2024-11-15T10:00:00Z\n",
    R"([{"id":1,"name":"\u20ac"},{"id":2.5,"list":[1,[true,null]]}])",
    "<r a='1'><x>t &#8364;</x><y/></r>",
    "2024-11-14T10:20:30.5Z",
    "QUJDREVG",
    "6b29fc40-ca47-1067-b31d-00dd010662da",
    ";",
    "\xC3\x28 \xFF \xE2\x82",
};
constexpr std::uint64_t kHuge[] = {~std::uint64_t{0}, std::uint64_t{1} << 63};

/// The functions by a hash of their names. A choice means the next one, so that an input keeps its
/// meaning when functions are added.
template <class Arguments>
const Function<Arguments>& Chosen(std::uint16_t choice) {
  static const auto functions = [] {
    std::map<std::uint16_t, const Function<Arguments>*> byHash;
    for (const auto& function : kFunctions<Arguments>) {
      std::uint32_t hash = 2166136261;
      for (const char letter : std::string_view(function.name))
        hash = (hash ^ static_cast<std::uint8_t>(letter)) * 16777619;
      auto key = static_cast<std::uint16_t>(hash >> 16);
      while (!byHash.emplace(key, &function).second) ++key;
    }
    return byHash;
  }();
  const auto found = functions.lower_bound(choice);
  return *(found == functions.end() ? functions.begin() : found)->second;
}

using Kind = const void*;
template <class Handle>
constexpr char kKind = 0;

/// A caller with objects and values, who chooses functions and arguments by the bytes of an input.
class Session {
 public:
  explicit Session(Input& input) : input_(input) {
    results_.reserve(16), texts_.reserve(16);  // their elements must not move
    for (int i = 0; i < 2; ++i) {
      Create(ld_create_string), Create(ld_create_array), Create(ld_create_object_list);
      Create(ld_create_variant_list), Create(ld_create_json_document);
      Create(ld_create_minimum_date_time), Create(ld_create_variant_dictionary);
      const std::string_view csv = kTexts[4];
      Create([&](ld_table** out, ld_error** e) {
        return ld_parse_csv(csv.data(), csv.size(), out, e);
      });
    }
    Require(ld_variant_from_text("id", 2, &values_[0], nullptr));
    Require(ld_variant_from_double(2.5, &values_[1], nullptr));
    values_[7].type = 99;  // of no type
  }
  Session(const Session&) = delete;

  /// Objects may refer to one another in circles, which always go through a container.
  ~Session() {
    ReleaseArrow();
    for (auto& value : values_) ld_variant_clear(&value);
    for (const auto& object : objects_) Clear(object);
    for (const auto& object : objects_) ld_release(object.address);
  }

  void Step() {
    const auto choice = static_cast<std::uint16_t>(input_.Byte() * 256 + input_.Byte());
    if (choice % 16 == 0) return Forget(input_.Byte());
    const auto& function = Chosen<Session>(choice);
    const std::string_view name = function.name;
    if (name == "ld_object_lock") return;  // would wait for ever for a second lock
    const auto has = [&](std::string_view wanted) {
      return std::ranges::any_of(function.parameters,
                                 [&](const char* each) { return each && each == wanted; });
    };
    if (name.starts_with("ld_table_to_arrow")) ReleaseArrow();
    hasLength_ = has("length") || has("size") || has("count");
    hasData_ = has("names") || has("text") || has("content") || has("source") || has("data") ||
               has("values");
    length_ = 0;
    ld_error* error = nullptr;
    const bool isDone = function.call(function, *this, &error);
    Require(isDone == (error == nullptr));
    if (error) Require(ld_error_message(error)[0] && ld_error_code(error) % 2 == 0);
    ld_release(error);
    TakeResults(isDone);
    memory_.clear();
  }

  template <class T>
  T Next(const char* name) {
    if constexpr (IsHandle<T>) {
      return static_cast<T>(AnyObject(&kKind<std::remove_pointer_t<T>>));
    } else if constexpr (std::is_pointer_v<T>) {
      return Address<T>(name);
    } else if constexpr (std::is_same_v<T, bool>) {
      return input_.Flag();
    } else if constexpr (std::is_floating_point_v<T>) {
      return input_.Flag() ? std::bit_cast<T>(input_.Word()) : static_cast<T>(input_.Byte());
    } else {
      return static_cast<T>(Number(name));
    }
  }

 private:
  struct Object {
    void* address;
    Kind kind;
  };
  template <class Handle>
  void Create(bool (*create)(Handle**, ld_error**)) {
    Create<Handle>([&](Handle** out, ld_error** error) { return create(out, error); });
  }
  template <class Handle = ld_table, class Function>
  void Create(Function create) {
    Handle* handle = nullptr;
    Require(create(&handle, nullptr));
    objects_.push_back({handle, &kKind<Handle>});
  }

  template <class Handle>
  static bool Is(const Object& object) {
    return object.kind == &kKind<Handle>;
  }
  static bool IsContainer(const Object& object) {
    return Is<ld_object_list>(object) || Is<ld_variant_list>(object) ||
           Is<ld_variant_pair_list>(object) || Is<ld_variant_dictionary>(object) ||
           Is<ld_table>(object);
  }
  static void Clear(const Object& object) {
    if (Is<ld_object_list>(object))
      ld_object_list_clear(static_cast<ld_object_list*>(object.address), nullptr);
    if (Is<ld_variant_list>(object))
      ld_variant_list_clear(static_cast<ld_variant_list*>(object.address), nullptr);
    if (Is<ld_variant_pair_list>(object))
      ld_variant_pair_list_clear(static_cast<ld_variant_pair_list*>(object.address), nullptr);
    if (Is<ld_variant_dictionary>(object))
      ld_variant_dictionary_clear(static_cast<ld_variant_dictionary*>(object.address), nullptr);
    if (Is<ld_table>(object)) ld_table_clear_rows(static_cast<ld_table*>(object.address), nullptr);
  }

  void Forget(std::size_t choice) {
    if (choice < values_.size()) return ld_variant_clear(&values_[choice]);
    const std::size_t i = choice % objects_.size();
    if (IsContainer(objects_[i])) return;
    ld_release(objects_[i].address);
    objects_.erase(objects_.begin() + static_cast<std::ptrdiff_t>(i));
  }

  /// Mostly one of the right kind.
  void* AnyObject(Kind kind) {
    const std::size_t choice = input_.Byte();
    if (choice < 8) return nullptr;
    if (choice < 16) return objects_[choice % objects_.size()].address;
    const auto isRight = [&](const Object& object) { return object.kind == kind; };
    const auto count = static_cast<std::size_t>(std::ranges::count_if(objects_, isRight));
    if (count == 0) return nullptr;
    std::size_t left = choice % count;
    return std::ranges::find_if(
               objects_, [&](const Object& object) { return isRight(object) && left-- == 0; })
        ->address;
  }
  /// One that a value may refer to, so that a container is part of each circle.
  void* AnyValueObject() {
    const Object& object = objects_[input_.Byte() % objects_.size()];
    const bool isSimple = Is<ld_string>(object) || Is<ld_array>(object) ||
                          Is<ld_date_time>(object) || Is<ld_json_document>(object);
    return isSimple || (IsContainer(object) && !Is<ld_table>(object)) ? object.address : nullptr;
  }

  template <class T>
  T Address(std::string_view name) {
    using Target = std::remove_pointer_t<T>;
    const std::uint8_t choice = std::is_same_v<Target, const char> ? 255 : input_.Byte();
    if (choice < 8) return nullptr;
    if constexpr (std::is_same_v<Target, ld_variant>) {
      return &values_[choice % 7];
    } else if constexpr (std::is_same_v<Target, const ld_variant>) {
      const std::size_t first = choice % values_.size();
      length_ = values_.size() - first;
      return &values_[first];
    } else if constexpr (std::is_same_v<Target, const char> || std::is_same_v<T, const void*>) {
      return Text(name);
    } else if constexpr (std::is_same_v<T, const char* const*>) {
      length_ = std::size(names_);
      for (const char*& each : names_) each = Name();
      return names_;
    } else if constexpr (std::is_same_v<Target, const ld_sort_key>) {
      for (auto& key : sortKeys_) key = {Name(), input_.Below(5)};
      return sortKeys_;
    } else if constexpr (std::is_same_v<Target, const ld_aggregate>) {
      for (auto& each : aggregates_) each = {input_.Below(7), Name(), Name()};
      return aggregates_;
    } else if constexpr (std::is_same_v<Target, const std::uint8_t>) {
      return reinterpret_cast<T>(Copy(input_.Text(2) + "x"));
    } else if constexpr (std::is_same_v<T, void*>) {
      return AnyValueObject();
    } else if constexpr (std::is_pointer_v<Target> && IsHandle<Target>) {
      results_.push_back({nullptr, &kKind<std::remove_pointer_t<Target>>});
      return reinterpret_cast<T>(&results_.back().address);
    } else if constexpr (std::is_same_v<Target, const ld_uuid> || std::is_same_v<Target, ld_uuid>) {
      return &uuid_;
    } else if constexpr (std::is_same_v<Target, const std::uint16_t>) {
      length_ = choice % 8u;
      return reinterpret_cast<T>(Copy(input_.Text(16).append(16, 'x').substr(0, 2 * length_)));
    } else if constexpr (std::is_same_v<T, const char**>) {
      texts_.push_back(nullptr);
      return &texts_.back();
    } else if constexpr (std::is_same_v<Target, const ld_csv_read_options>) {
      return choice % 2 ? nullptr : CsvOptions();
    } else if constexpr (std::is_same_v<Target, const ld_csv_write_options>) {
      csvWriteOptions_ = {};
      csvWriteOptions_.separator = kTexts[input_.Byte() % std::size(kTexts)];
      csvWriteOptions_.quoting = input_.Below(3);
      csvWriteOptions_.line_end = input_.Below(3);
      csvWriteOptions_.quote_names = input_.Flag();
      csvWriteOptions_.without_header = input_.Flag();
      return CommonOptions(csvWriteOptions_);
    } else if constexpr (std::is_same_v<Target, const ld_json_read_options>) {
      jsonOptions_ = {};
      jsonOptions_.size = sizeof jsonOptions_;
      jsonOptions_.code_page = static_cast<std::uint32_t>(Number("code_page"));
      jsonOptions_.text_columns = kTexts;
      jsonOptions_.text_column_count = input_.Below(3);
      jsonOptions_.max_rows = input_.Below(4);
      jsonOptions_.thread_count = input_.Below(4);
      jsonOptions_.all_text = input_.Flag();
      return choice % 2 ? nullptr : &jsonOptions_;
    } else if constexpr (std::is_same_v<Target, const ld_json_write_options>) {
      jsonWriteOptions_ = {};
      jsonWriteOptions_.layout = input_.Below(3);
      jsonWriteOptions_.indentation = input_.Below(20);
      return CommonOptions(jsonWriteOptions_);
    } else if constexpr (std::is_same_v<Target, ArrowArrayStream>) {
      return &stream_;
    } else if constexpr (std::is_same_v<Target, ArrowSchema>) {
      return &schema_;
    } else if constexpr (std::is_same_v<Target, ArrowArray>) {
      return &array_;
    } else if constexpr (std::is_same_v<Target, const ld_arrow_options>) {
      arrowOptions_ = {};
      arrowOptions_.size = sizeof arrowOptions_;
      arrowOptions_.batch_rows = choice % 3u;
      arrowOptions_.lossy = choice > 128;
      return &arrowOptions_;
    } else if constexpr (std::is_same_v<Target, const ld_column_options>) {
      columnOptions_ = {sizeof columnOptions_, choice % 9u, choice > 128};
      return &columnOptions_;
    } else if constexpr (std::is_same_v<Target, const ld_column_data>) {
      return ColumnData();
    } else if constexpr (std::is_same_v<T, const ld_column_data* const*>) {
      length_ = std::size(columns_);
      for (auto& column : columns_) column = ColumnData();
      return columns_;
    } else if constexpr (std::is_const_v<Target> || std::is_class_v<Target>) {
      return nullptr;
    } else {
      return reinterpret_cast<T>(Copy(std::string(sizeof(Target), '\0')));
    }
  }

  template <class Options>
  const Options* CommonOptions(Options& options) {
    options.size = input_.Byte() % 8 ? sizeof options : input_.Byte();
    options.form = input_.Below(3);
    options.thread_count = input_.Below(4);
    return &options;
  }
  const ld_csv_read_options* CsvOptions() {
    csvOptions_ = {};
    csvOptions_.size = input_.Byte() % 8 ? sizeof csvOptions_ : input_.Byte();
    csvOptions_.separator = kTexts[input_.Byte() % std::size(kTexts)];
    csvOptions_.code_page = static_cast<std::uint32_t>(Number("code_page"));
    csvOptions_.header = input_.Below(4);
    csvOptions_.long_lines = input_.Below(4);
    csvOptions_.thread_count = input_.Below(4);
    csvOptions_.text_columns = kTexts;
    csvOptions_.text_column_count = input_.Below(3);
    csvOptions_.max_rows = input_.Below(4);
    csvOptions_.all_text = input_.Flag();
    csvOptions_.unquote_names = input_.Flag();
    return &csvOptions_;
  }
  /// Up to 4 cells, with offsets that may be wrong.
  const ld_column_data* ColumnData() {
    const std::uint32_t length = input_.Below(5);
    const auto words = [&](std::size_t count) {
      std::string bytes;
      for (std::size_t i = 0; i < count; ++i) {
        const std::uint64_t word = input_.Flag() ? input_.Byte() : input_.Word();
        bytes.append(reinterpret_cast<const char*>(&word), sizeof word);
      }
      return Copy(bytes);
    };
    auto& data = columnData_[nextColumnData_++ % std::size(columnData_)];
    data = {};
    data.size = input_.Byte() % 16 ? sizeof data : input_.Byte();
    data.format = input_.Below(8);
    data.length = length;
    data.validity =
        input_.Flag() ? reinterpret_cast<std::uint8_t*>(Copy(input_.Text(2) + "x")) : nullptr;
    data.values = input_.Byte() % 8 ? words(length) : nullptr;
    data.offsets = input_.Byte() % 8 ? reinterpret_cast<std::int64_t*>(words(length + 1)) : nullptr;
    const std::string bytes = input_.Text(40);
    data.bytes = Copy(bytes);
    data.byte_count = bytes.size();
    return &data;
  }

  void ReleaseArrow() {
    if (stream_.release) stream_.release(&stream_);
    if (schema_.release) schema_.release(&schema_);
    if (array_.release) array_.release(&array_);
  }

  /// Memory of exactly that many bytes, until the call returns.
  char* Copy(std::string_view bytes) {
    memory_.push_back(std::make_unique<char[]>(bytes.size()));
    std::ranges::copy(bytes, memory_.back().get());
    return memory_.back().get();
  }
  const char* Text(std::string_view name) {
    const std::uint8_t choice = input_.Byte();
    if (choice < 8) {
      length_ = choice;
      return nullptr;
    }
    if (name == "path") return choice < 128 ? "" : "/a folder/that/does not exist";
    const std::string text = choice < 128 ? kTexts[choice % std::size(kTexts)] : input_.Text(40);
    const bool isData =
        hasLength_ && (name == "text" || name == "content" || name == "source" || name == "data");
    if (!isData) return Copy(text + '\0');
    length_ = text.size();
    return Copy(text);
  }

  const char* Name() {
    const std::uint8_t choice = input_.Byte();
    return choice < 8 ? nullptr : kTexts[choice % std::size(kTexts)];
  }

  std::uint64_t Number(std::string_view name) {
    const std::uint8_t choice = input_.Byte();
    const bool isSize = name == "length" || name == "size" || name == "count";
    if (isSize && hasData_) {
      if (choice < 200) return length_;
      return choice < 230 ? choice % (length_ + 1) : kHuge[choice % 2];
    }
    if (name == "stride" && hasData_) return choice % 2;
    if (name == "indent_count") return choice % 20;
    if (name == "key_count" || name == "aggregate_count")
      return choice < 250 ? choice % (std::size(names_) + 1) : kHuge[choice % 2];
    if (name == "bit_count") return choice < 250 ? choice % 9 : kHuge[choice % 2];
    if (choice < 200) return choice % 6;
    if (isSize || name == "offset" || name == "stride") return kHuge[choice % 2];
    constexpr std::int64_t kSpecial[] = {-1,        INT64_MIN, INT64_MAX, INT32_MAX,
                                         INT32_MIN, 28,        1252,      65001};
    return static_cast<std::uint64_t>(kSpecial[choice % 8]);
  }

  /// What a call returned stays as it was if it failed. It is read here, so that a sanitizer sees
  /// an address that is not valid.
  void TakeResults(bool isDone) {
    std::size_t length = 0;
    for (const char* text : texts_) length += text ? std::strlen(text) : 0;
    Require(isDone || length == 0);
    for (const Object& result : results_) {
      if (!result.address) continue;
      Require(isDone);
      objects_.push_back({result.address, result.kind});
      KeepSmall(objects_.back());
    }
    texts_.clear();
    results_.clear();
  }
  /// Merging tables with themselves would multiply their rows.
  static void KeepSmall(const Object& object) {
    std::int64_t rows = 0;
    if (!Is<ld_table>(object)) return;
    auto* const table = static_cast<ld_table*>(object.address);
    Require(ld_table_get_row_count(table, &rows, nullptr));
    if (rows > 64) Require(ld_table_clear_rows(table, nullptr));
  }

  Input& input_;
  std::vector<Object> objects_;
  std::array<ld_variant, 8> values_{};
  ld_uuid uuid_{1, 2, 3, {4}};
  // Of the current call.
  bool hasLength_ = false, hasData_ = false;
  std::uint64_t length_ = 0;
  std::vector<std::unique_ptr<char[]>> memory_;
  ld_csv_read_options csvOptions_{};
  ArrowArrayStream stream_{};  // these three are kept
  ArrowSchema schema_{};
  ArrowArray array_{};
  ld_arrow_options arrowOptions_{};
  ld_json_read_options jsonOptions_{};
  ld_csv_write_options csvWriteOptions_{};
  const char* names_[3]{};
  ld_sort_key sortKeys_[3]{};
  ld_aggregate aggregates_[3]{};
  ld_json_write_options jsonWriteOptions_{};
  ld_column_options columnOptions_{};
  ld_column_data columnData_[2];
  std::size_t nextColumnData_ = 0;
  const ld_column_data* columns_[2];
  std::vector<Object> results_;
  std::vector<const char*> texts_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const char* data, std::size_t size) {
  Input input(data, size);
  Session session(input);
  for (int step = 0; step < 32 && !input.IsEmpty(); ++step) session.Step();
  return 0;
}
