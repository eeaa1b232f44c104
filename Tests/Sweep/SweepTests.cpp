#include <array>
#include <variant>

#include "Sweep/Description.h"
#include "Sweep/FailingMemory.h"

namespace Data::tests {
namespace {

using Mode = FailingMemory::Mode;
using Objects = std::vector<Ptr<IObject>>;

constexpr char kLackOfMemory[] = "a lack of memory, told as such";

/// One call of an operation: values for it, room for what it gives (it converts to any kind of
/// out-pointer), and what came of it.
class Call {
 public:
  const Variant text{"a text of more than sixteen bytes"}, other{"one more text of that length"};
  const Variant date = Date("2024-11-14T10:20:30.5Z"), json = JsonVariant(R"({"a":[1,2.5]})");

  operator IErrorCode**() {
    isGuarded_ = true;
    return error_.Receive();
  }
  operator Structures::_VARIANT*() { return &values_[valueCount_++]; }
  template <std::derived_from<IObject> Interface>
  operator Interface**() {
    adopt_[objectCount_] = [](void* out) {
      return Ptr<IObject>::Adopt(*static_cast<Interface**>(out));
    };
    return new (&out_[objectCount_++]) Interface*(nullptr);
  }

  void Return(const char* text) { returned_ = text; }
  void Return(void* block) { returned_ = std::int64_t{block != nullptr}; }
  void Return(IObject* object) { returned_ = object; }
  template <class Number>
  requires(!std::is_pointer_v<Number>) void Return(Number value) {
    returned_ = static_cast<std::int64_t>(value);
  }
  void Throw(const std::exception& exception) { thrown_ = exception.what(); }

  /// What it returned, gave and reported, or what it threw; to be asked once.
  std::string Outcome() {
    const std::string outcome = Describe();
    const bool isLack = isGuarded_ ? outcome == "0 error 2 \"std::bad_alloc\" "
                                   : outcome == "throws std::bad_alloc";
    return isLack ? kLackOfMemory : outcome;
  }

 private:
  std::string Describe() {
    if (!thrown_.empty()) return "throws " + thrown_;
    std::string outcome = std::visit([](auto value) { return Show(value); }, returned_);
    for (std::size_t i = 0; i < objectCount_; ++i)
      if (const auto object = adopt_[i](&out_[i])) outcome += " " + tests::Describe(object.Get());
    for (const Variant& value : values_) outcome += tests::Describe(value);
    return error_ ? outcome + " error " + tests::Describe(error_.Get()) : outcome;
  }
  static std::string Show(std::int64_t value) { return std::to_string(value); }
  static std::string Show(const char* text) { return text ? text : "0"; }
  static std::string Show(IObject* object) { return object ? tests::Describe(object) : "0"; }

  std::array<void*, 2> out_;
  std::array<Ptr<IObject> (*)(void*), 2> adopt_;
  std::array<Variant, 2> values_;
  std::size_t objectCount_ = 0, valueCount_ = 0;
  Ptr<IErrorCode> error_;
  bool isGuarded_ = false;
  std::variant<std::int64_t, const char*, IObject*> returned_;
  std::string thrown_;
};

/// A line of the table: what is called, on which objects.
struct Operation {
  template <class Function, class... Interface>
  Operation(const char* name, Function function, Ptr<Interface> (*... makers)())
      : name(name), make([=] { return Objects{makers()...}; }) {
    perform = [=]<std::size_t... i>(std::index_sequence<i...>) {
      return [=](const Objects& objects, Call& call) {
        const auto run = [&] {
          return function(call, static_cast<Interface*>(objects[i].Get())...);
        };
        if constexpr (std::is_void_v<decltype(run())>) {
          run();
        } else {
          call.Return(run());
        }
      };
    }
    (std::index_sequence_for<Interface...>());
  }

  /// The outcome with the n-th allocation failing.
  std::string Outcome(const Objects& objects, std::uint64_t n = 0, Mode mode = {}) const {
    Call call;
    try {
      const FailingMemory failure(n, mode);
      perform(objects, call);
    } catch (const std::exception& exception) {
      call.Throw(exception);
    }
    return call.Outcome();
  }

  const char* name;
  std::function<Objects()> make;
  std::function<void(const Objects&, Call&)> perform;
};
void PrintTo(const Operation& operation, std::ostream* out) { *out << operation.name; }

std::string DescribeAll(const Objects& objects) {
  std::string text;
  for (const auto& object : objects) text += Describe(object.Get()) + "\n";
  return text;
}

// -- What the operations work on --

Ptr<ITable> Table() {
  const auto table = New(Data_CreateTable);
  for (const char* name : {"id", "name", "a column of more than sixteen bytes"})
    table->AddColumn(name);
  for (std::int64_t i = 0; i < 4; ++i) {
    const Variant cells[] = {i, "a shared text of long length", Date("2024-11-14T10:20:30Z")};
    table->AddRow(cells, i == 3 ? 1 : 3);
  }
  EXPECT_TRUE(table->BuildIndex(0, table->GetColumn(0), nullptr));
  table->GetHeader()->SetName("a table with a long name");
  return table;
}

constexpr char kLongName[] = "a name of more than sixteen bytes";

const Operation kOperations[] = {
    {"ITable_AddColumn", [](Call&, ITable* t) { return t->AddColumn(kLongName); }, Table},
    {"ITable_GetRows", [](Call& c, ITable* t) { return t->GetRows(c, c); }, Table},
    {"Data_TableToJson", [](Call& c, ITable* t) { return Data_TableToJson(t, c, c); }, Table},
    {"Data_ConvertTableToCsv",
     [](Call& c, ITable* t) { return Data_ConvertTableToCsv(t, ";", c, true, c); }, Table},
    {"ITable_MergeOnColumns",
     [](Call& c, ITable* t, ITable* right) {
       return t->MergeOnColumns(right, Structures::MergeMode::All, c, c, 2, "id", "name");
     },
     Table, Table},
};

class Sweep : public testing::TestWithParam<Operation> {};

TEST_P(Sweep, FailsAsAWhole) {
  const Operation& operation = GetParam();
  const std::string before = DescribeAll(operation.make());
  const Objects used = operation.make();
  const std::string expected = operation.Outcome(used), after = DescribeAll(used);
  for (const Mode mode : {Mode::OnlyOne, Mode::AllFromThere}) {
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
          // There may be no memory for the error either.
          EXPECT_TRUE(outcome == kLackOfMemory || (outcome == "0" && mode == Mode::AllFromThere))
              << outcome;
          EXPECT_EQ(mode == Mode::OnlyOne ? DescribeAll(objects) : before, before);
          EXPECT_EQ(operation.Outcome(objects), expected) << "when there is memory again";
        }
        EXPECT_EQ(DescribeAll(objects), after);
      }
      EXPECT_EQ(FailingMemory::LiveBlocks(), blocks);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(, Sweep, testing::ValuesIn(kOperations),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace Data::tests
