// Every function of the C interface with arguments that suit it.

#include <filesystem>
#include <fstream>

#include "C/Arrow.h"
#include "C/Calls.h"
#include "Sweep/Made.h"

namespace Data::tests {
namespace {

using c_tests::Complete;
using c_tests::Function;
using c_tests::IsHandle;

Ptr<IString> New(ld_string*) { return Utf8(); }
Ptr<IAllowedValue> New(ld_allowed_value*) { return Allowed(); }
Ptr<IArray> New(ld_array*) { return Bytes(); }
Ptr<IConfiguration> New(ld_configuration*) { return Configuration(); }
Ptr<IConstrainedValue> New(ld_constrained_value*) { return Constrained(); }
Ptr<IDateTime> New(ld_date_time*) { return Date("2024-11-14T10:20:30.5Z").As<Ptr<IDateTime>>(); }
Ptr<IEncoding> New(ld_encoding*) { return tests::New(Data_CreateEncodingInstanceBase64); }
Ptr<IObjectList> New(ld_object_list*) { return Texts(); }
Ptr<IEnum> New(ld_enum*) { return Enum(); }
Ptr<IHashing> New(ld_hashing*) { return Hmac(); }
Ptr<IHtmlDocument> New(ld_html_document*) { return tests::New(Data_CreateHtmlDocument); }
Ptr<IJsonDocument> New(ld_json_document*) { return Json(); }
Ptr<IProperties> New(ld_properties*) { return Properties(); }
Ptr<IRtfDocument> New(ld_rtf_document*) { return tests::New(Data_CreateRtfDocument); }
Ptr<ISchema> New(ld_schema*) { return Schema(); }
Ptr<ISecureString> New(ld_secure_string*) { return Secret(); }
Ptr<IVariantList> New(ld_variant_list*) {
  const auto list = tests::New(Data_CreateVariantList);
  for (int i = 0; i < 2; ++i) list->Add(&kValue);
  return list;
}
Ptr<IVariantDictionary> New(ld_variant_dictionary*) { return Dictionary(); }
Ptr<IVariantPairList> New(ld_variant_pair_list*) {
  const auto list = tests::New(Data_CreateVariantPairList);
  for (int i = 0; i < 2; ++i) EXPECT_TRUE(list->Add(&kValue, &kDate, nullptr));
  return list;
}
Ptr<IXmlDocument> New(ld_xml_document*) { return Xml(); }
Ptr<IObject> New(ld_object*) { return Texts(); }
template <class Handle>
requires std::is_same_v<Handle, ld_table> Ptr<ITable> New(Handle*) { return Table(); }

Ptr<IObject> New(ld_read_report*) {
  ld_table* table = nullptr;
  ld_read_report* report = nullptr;
  ld_csv_read_options options{};
  options.size = sizeof options;
  options.header = LD_HEADER_LINE_YES;
  options.long_lines = LD_LONG_LINES_SKIP;
  EXPECT_TRUE(ld_csv_read(kBadCsv, std::strlen(kBadCsv), &options, &table, &report, nullptr));
  ld_release(table);
  return Ptr<IObject>::Adopt(reinterpret_cast<IObject*>(report));
}

// -- Records --

/// The address sanitizer itself needs memory to start a thread, and ends the process without.
#if defined(__SANITIZE_ADDRESS__)
constexpr std::uint32_t kThreads = 1;
#else
constexpr std::uint32_t kThreads = 3;
#endif
const char* const kTextColumns[] = {"name"};
/// Reads in parts, although the text is small.
const ld_csv_read_options kCsvOptions = [] {
  ld_csv_read_options options{};
  options.size = sizeof options;
  options.separator = ";";
  options.thread_count = kThreads;
  options.text_columns = kTextColumns;
  options.text_column_count = 1;
  return options;
}();
/// Writes in parts.
template <class Options>
const Options kWriteOptions = [] {
  Options options{};
  options.size = sizeof options;
  options.thread_count = kThreads;
  return options;
}();
constexpr std::int64_t kOffsets[] = {0, 20, 20};
constexpr std::uint8_t kValidity = 1;
const ld_column_data kColumnData{.size = sizeof kColumnData,
                                 .format = LD_COLUMN_FORMAT_TEXT,
                                 .length = 2,
                                 .null_count = 1,
                                 .validity = &kValidity,
                                 .values = nullptr,
                                 .offsets = kOffsets,
                                 .bytes = kJson,
                                 .byte_count = 20};
constexpr std::uint8_t kBitmap = 5;
const ld_sort_key kSortKeys[] = {{kName, LD_SORT_ORDER_DESCENDING}};
const ld_aggregate kAggregates[] = {{LD_AGGREGATE_FUNCTION_MAX, kName, "maximum"}};
const ld_column_data* const kColumns[] = {&kColumnData};

/// A file with delimited text, and one to be written.
struct Files {
  Files() {
    std::ofstream(folder / "in.csv") << kCsv;
    std::ofstream(folder / "in.json") << kJson;
  }
  ~Files() { std::filesystem::remove_all(folder); }

  const std::filesystem::path folder = [] {
    auto path = std::filesystem::temp_directory_path() / "layerdata-sweep-XXXXXX";
    std::string name = path.string();
    return std::filesystem::path(mkdtemp(name.data()));
  }();
  const std::string csv = (folder / "in.csv").string(), json = (folder / "in.json").string(),
                    out = (folder / "out").string();
} const files;

/// A batch of a dictionary-encoded column and one of integers.
const c_tests::Arrow kBatch = c_tests::Batch(
    {c_tests::Arrow{"i", 2, {c_tests::kNoBuffer, c_tests::Bytes<std::int32_t>({1, 0})}}.With(
         {"u",
          2,
          {c_tests::kNoBuffer, c_tests::Bytes<std::int32_t>({0, 1, 30}), std::string(30, 'x')}}),
     c_tests::Arrow{"l", 2, {c_tests::kNoBuffer, c_tests::Bytes<std::int64_t>({7, 8})}}});

template <class Structure>
void ReleaseArrow(Structure& structure) {
  if (structure.release) structure.release(&structure);
}

/// The arguments of one call. `Prepare` makes the objects, among them one table whose rows and
/// columns the others are; `Next` needs no memory.
class SuitableArguments {
 public:
  SuitableArguments() = default;
  SuitableArguments(std::string_view function, const Objects& objects) : objects_(objects) {
    writes_ = function.find("write") != function.npos;
    readsJson_ = function.starts_with("ld_json_read");
    if (!function.starts_with("ld_table_from_arrow")) return;
    ld_table* table = nullptr;
    EXPECT_TRUE(ld_parse_csv(kCsv, std::strlen(kCsv), &table, nullptr));
    EXPECT_TRUE(ld_table_to_arrow_stream(table, nullptr, &stream_, nullptr));
    ld_release(table);
    schema_ = c_tests::SchemaOf(kBatch);
    array_ = c_tests::ArrayOf(kBatch);
  }
  SuitableArguments(const SuitableArguments&) = delete;
  ~SuitableArguments() { ReleaseArrow(schema_), ReleaseArrow(array_), ReleaseArrow(stream_); }

  Objects Prepared() {
    if (owner_) objects_.push_back(owner_);
    return objects_;
  }
  template <class T>
  void Prepare() {
    if constexpr (IsHandle<T>) objects_.push_back(MakeHandle(T()));
    if constexpr (std::is_same_v<T, void*>) objects_.push_back(Ptr<IObject>(Utf8()));
  }

  template <class T>
  T Next(const char* name) {
    if constexpr (IsHandle<T> || std::is_same_v<T, void*>) {
      return reinterpret_cast<T>(objects_[nextObject_++].Get());
    } else if constexpr (std::is_pointer_v<T>) {
      return Address<T>(name);
    } else if constexpr (std::is_floating_point_v<T>) {
      return T{1.5};
    } else {
      return static_cast<T>(Number(name));
    }
  }

  /// Describes what the call stored, and releases it.
  std::string Given() {
    std::string text;
    for (std::size_t i = 0; i < outCount_; ++i)
      if (outs_[i])
        text += " " + Describe(Ptr<IObject>::Adopt(static_cast<IObject*>(outs_[i])).Get());
    for (const Variant& value : values_) text += Describe(value);
    return text;
  }

 private:
  template <class T>
  Ptr<IObject> MakeHandle(T handle) {
    using Handle = std::remove_pointer_t<T>;
    const auto table = [&] { return owner_ ? owner_ : owner_ = Indexed(); };
    if constexpr (std::is_same_v<Handle, ld_row>) {
      return Ptr<IObject>(table()->GetRow(1));
    } else if constexpr (std::is_same_v<Handle, ld_column>) {
      return Ptr<IObject>(table()->GetColumn(0));
    } else if constexpr (std::is_same_v<Handle, ld_table_header>) {
      return Ptr<IObject>(table()->GetHeader());
    } else if constexpr (std::is_same_v<Handle, ld_value>) {
      return Ptr<IObject>(Made<IValue>(&IRow::GetValue, table()->GetRow(0), 2));
    } else if constexpr (std::is_same_v<Handle, ld_table>) {
      return std::exchange(isFirstTable_, false) ? Ptr<IObject>(table()) : Ptr<IObject>(Table());
    } else {
      return Ptr<IObject>(New(handle));
    }
  }

  template <class T>
  T Address(std::string_view name) {
    using Target = std::remove_pointer_t<T>;
    if constexpr (std::is_same_v<Target, ld_variant>) {
      return reinterpret_cast<T>(&values_[valueCount_++]);
    } else if constexpr (std::is_same_v<Target, const ld_variant>) {
      length_ = 1;
      return reinterpret_cast<T>(&kValue);
    } else if constexpr (std::is_same_v<Target, const ld_uuid>) {
      return reinterpret_cast<T>(&kUuid);
    } else if constexpr (std::is_same_v<Target, const char> || std::is_same_v<T, const void*>) {
      const char* const text = Text(name);
      length_ = std::strlen(text);
      return text;
    } else if constexpr (std::is_same_v<Target, const std::uint16_t>) {
      length_ = std::size(kWide) - 1;
      return reinterpret_cast<T>(kWide);
    } else if constexpr (std::is_same_v<T, const char* const*>) {
      return kNames;
    } else if constexpr (std::is_pointer_v<Target> && IsHandle<Target>) {
      return reinterpret_cast<T>(&outs_[outCount_++]);
    } else if constexpr (std::is_same_v<Target, const ld_csv_read_options>) {
      return &kCsvOptions;
    } else if constexpr (requires(Target target) { target.thread_count; }) {
      return &kWriteOptions<std::remove_const_t<Target>>;
    } else if constexpr (std::is_same_v<Target, const ld_column_data>) {
      return &kColumnData;
    } else if constexpr (std::is_same_v<T, const ld_column_data* const*>) {
      length_ = std::size(kColumns);
      return kColumns;
    } else if constexpr (std::is_same_v<Target, const std::uint8_t>) {
      return &kBitmap;
    } else if constexpr (std::is_same_v<Target, const ld_sort_key>) {
      return kSortKeys;
    } else if constexpr (std::is_same_v<Target, const ld_aggregate>) {
      return kAggregates;
    } else if constexpr (std::is_same_v<Target, ArrowSchema>) {
      return &schema_;
    } else if constexpr (std::is_same_v<Target, ArrowArray>) {
      return &array_;
    } else if constexpr (std::is_same_v<Target, ArrowArrayStream>) {
      return &stream_;
    } else if constexpr (std::is_const_v<Target>) {
      return nullptr;  // options
    } else {
      static_assert(sizeof(Target) <= sizeof(std::uint64_t[2]));
      return reinterpret_cast<T>(&scratch_[2 * scratchCount_++]);
    }
  }

  const char* Text(std::string_view name) const {
    if (name == "data" && readsJson_) return kJson;
    if (name == "content" || name == "data") return kCsv;
    if (name == "path") return (writes_ ? files.out : readsJson_ ? files.json : files.csv).c_str();
    if (name == "separator") return ",";
    if (name == "text" || name == "source") return kJson;
    return kName;
  }
  std::uint64_t Number(std::string_view name) const {
    if (name == "length" || name == "size" || name == "count") return length_;
    if (name == "bit_count") return 4;
    if (name == "kind") return LD_JOIN_KIND_FULL;
    if (name == "type") return LD_VALUE_TYPE_STRING;
    if (name == "mode") return LD_MERGE_MODE_ALL;
    if (name == "code_page") return 1252;
    if (name == "indent_character") return ' ';
    return 1;
  }

  static constexpr char16_t kWide[] = u"a text of more than any other text that the string holds";
  static constexpr const char* kNames[] = {kName};

  Objects objects_;
  Ptr<ITable> owner_;
  bool isFirstTable_ = true, writes_ = false, readsJson_ = false;
  std::size_t nextObject_ = 0, outCount_ = 0, valueCount_ = 0, scratchCount_ = 0;
  std::uint64_t length_ = 1;
  std::array<void*, 4> outs_{};
  std::array<Variant, 4> values_;
  std::array<std::uint64_t, 16> scratch_{};
  ArrowSchema schema_{};
  ArrowArray array_{};
  ArrowArrayStream stream_{};
};

/// Functions that wait for another thread, or that answer differently each time.
bool IsLeftOut(std::string_view name) {
  return name.starts_with("ld_object_") || name == "ld_new_uuid" ||
         name == "ld_create_current_date_time";
}

std::string Outcome(const Function<SuitableArguments>& function, const Objects& objects,
                    std::uint64_t n, bool onlyOne) {
  SuitableArguments arguments(function.name, objects);
  ld_error* error = nullptr;
  bool isDone = false;
  {
    const FailingMemory failure(n, onlyOne);
    isDone = function.call(function, arguments, &error);
  }
  std::string outcome = isDone ? "1" : "0";
  if (error)
    outcome += " error " + std::to_string(ld_error_code(error)) + " " + ld_error_message(error);
  ld_release(error);
  return outcome + arguments.Given();
}

}  // namespace

std::vector<Operation> CFunctions() {
  std::vector<Operation> operations;
  for (const auto& function : c_tests::kFunctions<SuitableArguments>) {
    if (IsLeftOut(function.name)) continue;
    Operation& operation = operations.emplace_back();
    operation.name = function.name;
    operation.mayNeedNoMemory = true;
    operation.make = [&] {
      SuitableArguments arguments;
      function.prepare(arguments);
      return arguments.Prepared();
    };
    operation.outcome = [&](Call& call, const Objects& objects, std::uint64_t n, bool onlyOne) {
      call.isGuarded = true;
      return Outcome(function, objects, n, onlyOne);
    };
  }
  return operations;
}

}  // namespace Data::tests
