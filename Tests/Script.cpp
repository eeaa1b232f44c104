#include "Script.h"

#include <deque>
#include <set>
#include <sstream>

#include "Tables/TableSupport.h"

namespace Data::tests {

namespace {

std::vector<std::string> Split(std::string_view text, char separator) {
  std::istringstream list{std::string(text)};
  std::vector<std::string> parts;
  for (std::string part; std::getline(list >> std::ws, part, separator);) parts.push_back(part);
  return parts;
}

Cells CellsOf(std::string_view text, char separator) {
  Cells cells;
  for (const std::string& value : Split(text, separator)) cells.push_back(ValueOf(value));
  return cells;
}

/// The arguments of an operation, and what it answers.
class Call {
 public:
  Call(const Scene& scene, const std::string& name, const std::string& arguments, bool isSilent)
      : scene_(scene), words_(Split(arguments, ',')), isSilent_(isSilent) {
    for (const char* word : {"Get", "Find", "Has", "Is", "Contains", "BelongsTo"})
      isQuestion_ = isQuestion_ || name.starts_with(word);
  }

  ~Call() { Start(); }
  IErrorCode** error = nullptr;

  /// Uses of callers' texts count from here on, not while arguments are made.
  void Start() {
    if (onUse_) *kOnUse = std::exchange(onUse_, nullptr);
  }

  /// The next argument; a missing number is how many values were given.
  template <class T>
  T Take() {
    if constexpr (std::is_same_v<T, IErrorCode**>) {
      return error;
    } else {
      static const std::string none;
      const bool isMissing = next_ >= words_.size();
      const std::string& word = isMissing ? none : words_[next_++];
      if constexpr (std::is_same_v<T, ValueType>)
        return TypeNamed(word);
      else if constexpr (std::is_enum_v<T>)
        return static_cast<T>(std::stoi(word));
      else if constexpr (!std::is_pointer_v<T>)
        return static_cast<T>(isMissing ? values_.back().size()
                                        : PayloadWord(ValueType::Int64, word));
      else if constexpr (std::is_same_v<T, const _VARIANT*>)
        return Values(word);
      else if (word == "null")
        return nullptr;
      else if constexpr (std::is_same_v<T, _VARIANT*>)
        return word == "same" ? &destinations_.back() : &destinations_.emplace_back(untouched_);
      else if constexpr (std::is_convertible_v<const char*, T>)
        return word.c_str();
      else if constexpr (std::is_convertible_v<T, IObject*>)
        return reinterpret_cast<T>(scene_.Find(word));
      else
        return Receive<std::remove_pointer_t<std::remove_pointer_t<T>>>();
    }
  }

  /// Takes what the operation returns.
  /// @return false if that is false or null
  template <class Result>
  bool Returns(const Result& result) {
    if constexpr (std::is_convertible_v<Result, IObject*>) returned_ = result;
    if constexpr (std::is_same_v<Result, IRow*>) {
      EXPECT_TRUE(!isSilent_ || !isQuestion_ || !result || !scene_.owner ||
                  result->GetTable() == scene_.self)
          << "a row that left the table was found";
    }
    if (isSilent_) return true;
    if constexpr (std::is_same_v<Result, bool>) {
      if (result && isQuestion_ && destinations_.empty() && received_.empty()) answer_ = "yes";
      return result;
    } else if constexpr (std::is_arithmetic_v<Result>) {
      answer_ = std::to_string(result);
    } else if constexpr (std::is_same_v<Result, ValueType>) {
      answer_ = Core::GetValueTypeName(result);
      return result != ValueType::Unknown;
    } else if constexpr (std::is_same_v<Result, std::string>) {
      answer_ = result;
      return !result.empty();
    } else if (!result) {
      return false;
    } else if constexpr (std::is_same_v<Result, const char*>) {
      answer_ = *result ? result : "\"\"";
    } else if constexpr (!std::is_convertible_v<Result, IObject*>) {
      answer_ = scene_.Shown(*result);
    } else if (isQuestion_) {
      answer_ = scene_.Shown(result);
    }
    return true;
  }

  /// Whether the operation left the given records alone.
  bool AreDestinationsUntouched() const {
    return std::ranges::all_of(destinations_, [&](const Variant& value) {
      return Core::ReferencedObject(value) == Core::ReferencedObject(untouched_);
    });
  }
  std::string Answer() const {
    std::string answer = answer_;
    const auto add = [&](const std::string& text) {
      answer.append(answer.empty() ? "" : ", ").append(text);
    };
    for (const Variant& value : destinations_) add(scene_.Shown(value));
    for (const auto& object : received_) add(scene_.Shown(object().Get()));
    return answer;
  }
  /// The object that the operation created or returned.
  Ptr<IObject> Object() const { return received_.empty() ? returned_ : received_[0](); }

 private:
  const _VARIANT* Values(const std::string& word) {
    const auto held = scene_.objects.find(word);
    const Cells& values =
        values_.emplace_back(word.starts_with('(') ? CellsOf(word.substr(1, word.size() - 2), ' ')
                             : held != scene_.objects.end() ? Cells{held->second}
                                                            : Cells{ValueOf(word)});
    if (word == "null") return nullptr;
    if (word != "cell") return values.data();
    return Core::InterfaceOf<ITable>(scene_.self)->GetCellAt(0, 0);
  }
  template <class Interface>
  Interface** Receive() {
    const auto out = std::make_shared<Ptr<Interface>>();
    received_.push_back([out] { return Ptr<IObject>(*out); });
    return out->Receive();
  }

  const Scene& scene_;
  std::vector<std::string> words_;
  bool isSilent_, isQuestion_ = false;
  std::size_t next_ = 0;
  std::deque<Cells> values_;
  const Variant untouched_ = ValueOf("~untouched");
  std::deque<Variant> destinations_;
  std::vector<std::function<Ptr<IObject>()>> received_;
  IObject* returned_ = nullptr;
  std::string answer_;
  std::function<void()> onUse_ = std::exchange(*kOnUse, [] {});
};

struct Operation {
  template <class Result, class Owner, class... Types>
  Operation(Result (Owner::*member)(Types...))
      : isOf(IsA<Owner>), run([=](IObject* object, Call& call) {
          const std::tuple<Owner*, Types...> arguments{static_cast<Owner*>(object),
                                                       call.Take<Types>()...};
          call.Start();
          if constexpr (std::is_void_v<Result>) {
            std::apply(std::mem_fn(member), arguments);
            return true;
          } else {
            return call.Returns(std::apply(std::mem_fn(member), arguments));
          }
        }) {}
  template <class Result, class Owner>
  Operation(Result (*function)(Owner&, Call&))
      : isOf(IsA<Owner>), run([=](IObject* object, Call& call) {
          call.Start();
          return call.Returns(function(static_cast<Owner&>(*object), call));
        }) {}

  template <class Owner>
  static bool IsA(IObject* object) {
    return Core::InterfaceOf<Owner>(object) != nullptr;
  }

  bool (*isOf)(IObject*);
  std::function<bool(IObject*, Call&)> run;
};

template <class Container>
std::string Count(Container& container, Call&) {
  return std::to_string(container.GetCount()) + (container.IsEmpty() ? ", empty" : "");
}

std::string Position(IArray& array, Call& call) {
  const auto offset = call.Take<std::uint64_t>(), size = call.Take<std::uint64_t>();
  const void* const pointer = array.GetPointer(offset, size, call.error);
  if (!pointer) return "";
  return std::to_string(static_cast<const char*>(pointer) -
                        static_cast<const char*>(array.GetData()));
}

/// "stride x count:" and all bytes.
std::string State(IArray& array, Call&) {
  std::uint64_t size = 0;
  while (array.GetPointer(0, size + 1, nullptr)) ++size;
  const auto* const bytes = static_cast<const char*>(array.GetPointer(0, size, nullptr));
  return std::to_string(array.GetStride()) + " x " + std::to_string(array.GetCount()) + ":" +
         std::string(bytes, size);
}

bool CreateEnum(IObjectList& options, Call& call) {
  return Data_CreateEnum(&options, call.Take<IEnum**>(), call.error);
}

/// All names, which are as many as `count` tells and differ.
template <auto count, class Bag>
std::string Names(Bag& bag, Call&) {
  std::set<std::string> names;
  std::uint64_t i = 0;
  while (const char* name = bag.GetNameAt(i++)) names.insert(name);
  EXPECT_EQ(names.size(), i - 1);
  EXPECT_EQ(names.size(), (bag.*count)());
  std::string text;
  for (const auto& name : names) text += "[" + name + "]";
  return text;
}

bool MergeOnColumns(ITable& table, Call& call) {
  auto* const right = call.Take<ITable*>();
  const auto mode = call.Take<Structures::MergeMode>();
  const auto keyCount = call.Take<std::uint32_t>();
  const char *const first = call.Take<const char*>(), *const second = call.Take<const char*>();
  auto** const out = call.Take<ITable**>();
  return table.MergeOnColumns(right, mode, out, call.error, keyCount, first, second);
}

std::string TableNames(ITable& table, Call&) { return NamesOf(table); }
std::string Rows(ITable& table, Call&) { return TextOf(table); }
std::string Types(ITable& table, Call&) { return ShowColumns(table); }

using Operations = std::multimap<std::string, Operation>;

/// "AddRow" for &ITable::AddRow, from the signature that the compiler gives this function.
template <auto member>
std::string NameOf() {
  std::string name = __PRETTY_FUNCTION__;
  name.erase(name.find_first_of(";]", name.find("member = ")));
  return name.substr(name.rfind(':') + 1);
}

/// Adds operations of an interface.
template <auto... members>
void Add(Operations& all) {
  (all.emplace(NameOf<members>(), members), ...);
}

const Operations kOperations = [] {
  Operations all{{"GetPointer", Position},
                 {"State", State},
                 {"Count", Count<IObjectList>},
                 {"CreateEnum", CreateEnum},
                 {"Count", Count<IVariantList>},
                 {"Count", Count<IVariantPairList>},
                 {"Count", Count<IVariantDictionary>},
                 {"Names", Names<&IConfiguration::GetNameCount, IConfiguration>},
                 {"Names", Names<&IProperties::GetCount, IProperties>},
                 {"MergeOnColumns", MergeOnColumns},
                 {"Names", TableNames},
                 {"Rows", Rows},
                 {"Types", Types}};
  Add<&IArray::Append, &IArray::GetSize, &IArray::Resize, &IArray::SetData, &IArray::Write>(all);
  Add<&IString::SetUtf8>(all);
  Add<&IObjectList::Add, &IObjectList::Clear, &IObjectList::GetAt>(all);
  Add<&IVariantList::Add, &IVariantList::Clear, &IVariantList::GetAt>(all);
  Add<&IVariantPairList::Add, &IVariantPairList::Clear, &IVariantPairList::GetAt>(all);
  Add<&IVariantDictionary::Clear, &IVariantDictionary::Contains, &IVariantDictionary::Get,
      &IVariantDictionary::GetKeys, &IVariantDictionary::Set>(all);
  Add<&IConfiguration::Contains, &IConfiguration::Get, &IConfiguration::Set>(all);
  Add<&IProperties::Contains, &IProperties::Get, &IProperties::GetCount, &IProperties::GetDefault,
      &IProperties::GetMissing, &IProperties::GetNameAt, &IProperties::GetType,
      &IProperties::HasValue, &IProperties::IsRequired, &IProperties::Register, &IProperties::Reset,
      &IProperties::Set>(all);
  Add<&IEnum::GetCount, &IEnum::GetIndex, &IEnum::GetOptions, &IEnum::GetSelected,
      &IEnum::SelectOption, &IEnum::SetIndex>(all);
  Add<&IConstrainedValue::GetConstraints, &IConstrainedValue::GetValue,
      &IConstrainedValue::SetConstraints, &IConstrainedValue::SetValue>(all);
  Add<&IAllowedValue::GetValue, &IAllowedValue::GetValueText>(all);
  Add<&ITable::AddColumn, &ITable::AddRow, &ITable::AddRowCopy, &ITable::AddRowFromDictionary,
      &ITable::BuildIndex, &ITable::ClearIndexes, &ITable::ClearRows, &ITable::FindRow,
      &ITable::FindRows, &ITable::GetCell, &ITable::GetCellAt, &ITable::GetCellByName,
      &ITable::GetColumn, &ITable::GetColumnByName, &ITable::GetHeader, &ITable::GetIndexColumn,
      &ITable::GetRow, &ITable::GetRows, &ITable::HasColumn, &ITable::InsertColumn,
      &ITable::InsertRow, &ITable::InsertRowCopy, &ITable::Merge, &ITable::MergeOn,
      &ITable::OnColumnAdded, &ITable::RemoveColumn, &ITable::RemoveColumnAt, &ITable::RemoveRow,
      &ITable::RemoveRows, &ITable::SetCell, &ITable::SetCellByName>(all);
  Add<&IRow::GetCell, &IRow::GetCellAt, &IRow::GetCellByName, &IRow::GetCellCount,
      &IRow::GetCellOfColumn, &IRow::GetCellText, &IRow::GetColumn, &IRow::GetColumnByName,
      &IRow::GetIndex, &IRow::GetNextRow, &IRow::GetPreviousRow, &IRow::GetTable, &IRow::GetValue,
      &IRow::IsModified, &IRow::SetCell, &IRow::SetCellByName, &IRow::SetCellOfColumn,
      &IRow::SetCells, &IRow::SetModified, &IRow::TryGetCell, &IRow::TryGetCellByName,
      &IRow::TrySetCellByName>(all);
  Add<&IColumn::BelongsTo, &IColumn::Fill, &IColumn::FindRow, &IColumn::GetDecimals,
      &IColumn::GetIndex, &IColumn::GetName, &IColumn::GetNextColumn, &IColumn::GetPreviousColumn,
      &IColumn::GetType, &IColumn::GetValue, &IColumn::GetValues, &IColumn::GetWidth,
      &IColumn::HasSeenNull, &IColumn::IsHidden, &IColumn::IsReadOnly, &IColumn::SetDecimals,
      &IColumn::SetHidden, &IColumn::SetName, &IColumn::SetReadOnly, &IColumn::SetType,
      &IColumn::SetWidth>(all);
  Add<&ITableHeader::Contains, &ITableHeader::GetColumn, &ITableHeader::GetColumnByName,
      &ITableHeader::GetColumnCount, &ITableHeader::GetColumns, &ITableHeader::GetIndexName,
      &ITableHeader::GetName, &ITableHeader::HasColumn, &ITableHeader::SetName>(all);
  Add<&IValue::GetRecord, &IValue::GetText, &IValue::GetType, &IValue::GetValue, &IValue::SetValue>(
      all);
  return all;
}();

}  // namespace

Variant ValueOf(const std::string& text) {
  if (text.starts_with('~')) {
    auto own = Core::MakePtr<CallersText>(text == "~null" ? nullptr : text.c_str() + 1);
    own->onAddReference = own->onRelease = own->onRead = [onUse = kOnUse] {
      const auto call = *onUse;
      call();
    };
    return Reference(ValueType::String, std::move(own));
  }
  if (text.starts_with('#')) return RecordOf(std::string_view(text).substr(1));
  const char *const begin = text.data(), *const end = begin + text.size();
  double real = 0;
  const auto parsed = std::from_chars(begin, end, real);
  if (parsed.ec != std::errc()) try {
      return RecordOf(text);
    } catch (const std::invalid_argument&) {
      return text;
    }
  if (parsed.ptr == end)
    return text.find('.') == text.npos ? Variant(static_cast<int>(real)) : Variant(real);
  return text.ends_with('L') ? Variant(static_cast<std::int64_t>(real)) : Variant(text);
}

Ptr<ITable> TableOf(std::string_view text) {
  const auto table = New(Data_CreateTable);
  const auto parts = Split(text, ';');
  for (std::size_t i = 0; i < parts.size(); ++i) {
    if (i == 0)
      for (const std::string& name : Split(parts[0], ' ')) table->AddColumn(name.c_str());
    const Cells cells = CellsOf(parts[i] == "-" ? "" : parts[i], ',');
    if (i > 0) table->AddRow(cells.data(), cells.size());
  }
  return table;
}

std::string Scene::Answers(std::string_view script) {
  std::string answers;
  for (const std::string& step : Split(script, ';')) {
    const std::string answer = AnswerOf(step, false);
    if (!answer.empty()) answers.append(answers.empty() ? "" : " ~ ").append(answer);
  }
  return answers;
}

void Scene::Run(std::string_view script) {
  const bool wasOwned = static_cast<bool>(owner);
  for (const std::string& step : Split(script, ';'))
    if (owner || !wasOwned) AnswerOf(step, true);
}

std::string Scene::AnswerOf(const std::string& step, bool isSilent) {
  std::istringstream words(step);
  std::string target, name, arguments;
  words >> name >> std::ws;
  if (words.peek() == '=') {
    words.get();
    target = std::exchange(name, "");
    words >> name >> std::ws;
  }
  std::getline(words, arguments);
  if (name == "References")
    return std::to_string(ReferencesTo(objects.at("@").As<Ptr<IObject>>()) - 2);
  if (name == "End") {
    if (objects.erase(arguments) == 0) owner.Reset();
    return "";
  }

  const std::size_t dot = name.find('.');
  IObject* const object = dot == name.npos ? self : Find(name.substr(0, dot));
  name.erase(0, dot + 1);
  const auto [first, last] = kOperations.equal_range(name);
  const auto operation =
      std::find_if(first, last, [&](const auto& entry) { return entry.second.isOf(object); });
  if (operation == last) throw std::logic_error("No such operation: " + step);
  if (isSilent) {
    Call call(*this, name, arguments, true);
    operation->second.run(object, call);
    if (!target.empty()) objects[target] = call.Object();
    return "";
  }

  const std::string before = owner ? Describe(self) : "";
  std::string answer = "no";
  const auto run = [&](IErrorCode** error) {
    Call call(*this, name, arguments, false);
    call.error = error;
    bool isDone = false;
    const std::string thrown = ThrownBy([&] { isDone = operation->second.run(object, call); });
    if (!thrown.empty()) answer = thrown;
    EXPECT_TRUE(isDone || call.AreDestinationsUntouched()) << step;
    if (isDone) answer = target.empty() ? call.Answer() : "";
    if (isDone && !target.empty()) objects[target] = call.Object();
    return isDone;
  };
  Ptr<IErrorCode> error;
  const bool isDone = run(error.Receive());
  if (error) answer = Failure(run);
  EXPECT_TRUE(isDone || !owner || Describe(self) == before) << step;
  return answer.starts_with("Memory address") ? "Memory address" : answer;
}

IObject* Scene::Find(const std::string& name) const {
  if (name == "self") return self;
  if (const auto held = objects.find(name); held != objects.end())
    return Core::ReferencedObject(held->second);
  auto* const table = Core::InterfaceOf<ITable>(self);
  const int index =
      std::atoi(name.c_str() + std::min(name.find_first_of("0123456789"), name.size()));
  if (name.starts_with("row")) return table->GetRow(index);
  if (name.starts_with("column")) return table->GetColumn(index);
  if (name == "header") return table->GetHeader();
  throw std::logic_error("No such object: " + name);
}

std::string Scene::Shown(IObject* object) const {
  for (const auto& [name, value] : objects)
    if (Core::ReferencedObject(value) == object) return name;
  if (auto* row = Core::InterfaceOf<IRow>(object)) return Core::ToText(*row->GetCellAt(0));
  if (auto* column = Core::InterfaceOf<IColumn>(object)) return column->GetName();
  if (auto* header = Core::InterfaceOf<ITableHeader>(object)) return header->GetName();
  if (auto* table = Core::InterfaceOf<ITable>(object))
    return NamesOf(*table) + "; " + TextOf(*table);
  if (auto* text = Core::InterfaceOf<IString>(object)) return text->GetUtf8();
  std::string items;
  if (auto* list = Core::InterfaceOf<IObjectList>(object))
    for (std::uint64_t i = 0; i < list->GetCount(); ++i)
      items += (i == 0 ? "" : ", ") + Shown(list->GetAt(i));
  Variant value;
  if (auto* list = Core::InterfaceOf<IVariantList>(object))
    for (std::uint64_t i = 0; list->GetAt(i, &value); ++i)
      items += (i == 0 ? "" : ", ") + Shown(value);
  return items.empty() ? "none" : items;
}

std::string Scene::Shown(const _VARIANT& value) const {
  IObject* const object = Core::ReferencedObject(value);
  for (const auto& [name, held] : objects)
    if (object && object == Core::ReferencedObject(held)) return name;
  const std::string name(Core::GetValueTypeName(Core::TypeOf(value)));
  if (name.empty()) return std::to_string(value.type) + " " + std::to_string(value.value[0]);
  const std::string text = Core::ToText(value);
  return text.empty() ? name : name + " " + text;
}

void CallBackAtEveryUse(const char* file, const std::string& operations, const std::string& actions,
                        const std::function<Scene()>& make,
                        const std::function<void(Scene&, const std::string& what)>& check) {
  for (const Case& operation : Cases(file, operations)) {
    for (const Case& action : Cases(file, actions)) {
      for (int use = 1, usesLeft = 0; usesLeft == 0; ++use) {
        const std::string what =
            operation.where + ", use " + std::to_string(use) + ": " + action.fields[0];
        {
          Scene scene = make();
          usesLeft = use;
          *kOnUse = [&] {
            if (usesLeft == 0 || --usesLeft > 0) return;
            const Ptr<IObject> again(scene.owner ? nullptr : scene.self);
            ThrownBy([&] { scene.Run(action[0]); });
          };
          ThrownBy([&] { scene.Run(operation[0]); });
          *kOnUse = [] {};
          check(scene, what);
        }
        ASSERT_EQ(kOnUse.use_count(), 1) << what << ": every reference is given back";
      }
    }
  }
}

}  // namespace Data::tests
