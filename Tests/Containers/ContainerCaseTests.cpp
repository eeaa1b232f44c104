#include <deque>
#include <map>
#include <set>
#include <sstream>

#include "CallersText.h"
#include "Records.h"

/// Containers and operations on them as text: the cases of Tests/Data/Containers.txt.
namespace Data::tests {

namespace {

/// The arguments of an operation, and what it answers.
class Args {
 public:
  /// @param text    separated by commas; "null" is a null pointer, "@" refers to the shared object
  /// @param shared  what destinations hold before
  Args(const std::string& text, const Variant& shared) : shared_(shared) {
    std::istringstream list(text);
    for (std::string word; std::getline(list >> std::ws, word, ',');) words_.push_back(word);
  }

  std::string Word(std::size_t i) const { return i < words_.size() ? words_[i] : ""; }
  std::uint64_t Number(std::size_t i) const { return std::stoull(Word(i)); }
  const char* Name(std::size_t i) const {
    if (i >= words_.size()) return "";
    return words_[i] == "null" ? nullptr : words_[i].c_str();
  }
  const _VARIANT* Value(std::size_t i) {
    if (Word(i) == "null") return nullptr;
    return &records_.emplace_back(Word(i) == "@" ? shared_ : RecordOf(Word(i)));
  }
  IObject* Object(std::size_t i) {
    return Word(i) == "@" ? Core::ReferencedObject(shared_) : nullptr;
  }
  /// A destination; what it receives is the answer.
  _VARIANT* Out(std::size_t i) {
    if (Word(i) == "null") return nullptr;
    return &destinations_.try_emplace(i, shared_).first->second;
  }
  bool Says(const std::string& answer) {
    answer_ = answer;
    return true;
  }
  bool Says(std::uint64_t number) { return Says(std::to_string(number)); }

  /// "@" or the type, by its number if it has no name, and the display text.
  std::string Shown(const Variant& value) const {
    const auto object = Core::ReferencedObject(value);
    if (object && object == Core::ReferencedObject(shared_)) return "@";
    const std::string name(Core::GetValueTypeName(value.Type()));
    if (name.empty()) return std::to_string(value.type) + " " + std::to_string(value.value[0]);
    const std::string text = Core::ToText(value);
    return text.empty() ? name : name + " " + text;
  }
  std::string Answer() const {
    std::string answer = answer_;
    for (const auto& [position, value] : destinations_)
      answer.append(answer.empty() ? "" : ", ").append(Shown(value));
    return answer;
  }
  bool AreDestinationsUntouched() const {
    return std::ranges::all_of(destinations_,
                               [&](const auto& d) { return Shown(d.second) == "@"; });
  }

 private:
  const Variant& shared_;
  std::vector<std::string> words_;
  std::deque<Variant> records_;
  std::map<std::size_t, Variant> destinations_;
  std::string answer_;
};

/// Operations by name. Each returns false if it fails or answers no.
template <class Interface>
using Operations = std::map<std::string, std::function<bool(Interface&, Args&, IErrorCode**)>>;

template <class Interface>
std::string AnswerOf(Interface& object, const Operations<Interface>& operations,
                     const std::string& name, Args& args) {
  const auto& operation = operations.at(name);
  Ptr<IErrorCode> error;
  bool isDone = false;
  const std::string thrown = ThrownBy([&] { isDone = operation(object, args, error.Receive()); });
  EXPECT_TRUE(isDone || args.AreDestinationsUntouched()) << name;
  if (error) return Failure([&](auto e) { return operation(object, args, e); });
  if (!thrown.empty()) return thrown;
  return isDone ? args.Answer() : "no";
}

/// Runs the scripts of a section, each on a new object: operations separated by ";", which give
/// answers separated by " ~ ". "References" tells how many references the object holds to the
/// shared one.
template <class Interface>
void Check(const char* section, const std::function<Ptr<Interface>()>& make,
           Operations<Interface> operations) {
  if constexpr (requires(Interface & container) { container.IsEmpty(); }) {
    operations["Clear"] = [](auto& container, auto&, auto) { return container.Clear(), true; };
    operations["Count"] = [](auto& container, auto& a, auto) {
      return a.Says(std::to_string(container.GetCount()) + (container.IsEmpty() ? ", empty" : ""));
    };
  }
  for (const Case& c : Cases("Containers.txt", section)) {
    const auto array = New(Data_CreateArray);
    const Variant shared(array);
    auto object = make();
    std::string answers;
    std::istringstream script{std::string(c[0])};
    for (std::string text; std::getline(script >> std::ws, text, ';');) {
      std::istringstream words(text);
      std::string name, arguments;
      words >> name;
      std::getline(words, arguments);
      Args args(arguments, shared);
      const std::string answer = name == "References" ? std::to_string(ReferencesTo(array) - 2)
                                                      : AnswerOf(*object, operations, name, args);
      if (!answer.empty()) answers.append(answers.empty() ? "" : " ~ ").append(answer);
    }
    EXPECT_EQ(answers, c[1]) << c.where << ": " << c[2];
    object.Reset();
    EXPECT_EQ(ReferencesTo(array), 2u) << c.where;
  }
}

/// "stride x count:" and all bytes.
std::string StateOf(IArray& array) {
  std::uint64_t size = 0;
  while (array.GetPointer(0, size + 1, nullptr)) ++size;
  const auto* const bytes = static_cast<const char*>(array.GetPointer(0, size, nullptr));
  return std::to_string(array.GetStride()) + " x " + std::to_string(array.GetCount()) + ":" +
         std::string(bytes, size);
}

std::string TextsOf(const Ptr<IObjectList>& list) {
  return Core::ToText(Variant::StringList(list)) + "]";
}

}  // namespace

TEST(ContainerCases, Arrays) {
  const auto position = [](IArray& array, const void* pointer) {
    return static_cast<std::uint64_t>(static_cast<const char*>(pointer) -
                                      static_cast<const char*>(array.GetData()));
  };
  Check<IArray>(
      "array", [] { return New(Data_CreateArray); },
      {{"SetData",
        [](auto& array, auto& a, auto) {
          array.SetData(a.Name(0), a.Number(1), a.Number(2));
          return true;
        }},
       {"Resize",
        [](auto& array, auto& a, auto) { return array.Resize(a.Number(0), a.Number(1)), true; }},
       {"GetPointer",
        [=](auto& array, auto& a, auto e) {
          const void* const pointer = array.GetPointer(a.Number(0), a.Number(1), e);
          return pointer && a.Says(position(array, pointer));
        }},
       {"Write", [](auto& array, auto& a,
                    auto) { return a.Says(array.Write(a.Number(0), a.Name(1), a.Number(2))); }},
       {"Append",
        [](auto& array, auto& a, auto) { return a.Says(array.Append(a.Name(0), a.Number(1))); }},
       {"Size", [](auto& array, auto& a, auto) { return a.Says(array.GetSize()); }},
       {"State", [](auto& array, auto& a, auto) { return a.Says(StateOf(array)); }}});
}

TEST(Array, MayBeFilledFromItself) {
  const auto array = New(Data_CreateArray);
  array->SetData("abcd", 1, 4);
  for (int i = 0; i < 8; ++i) array->Append(array->GetData(), array->GetCount());
  EXPECT_EQ(array->GetCount(), 1024u);
  array->SetData(array->GetPointer(1018, 4, nullptr), 2, 2);
  EXPECT_EQ(StateOf(*array), "2 x 2:cdab");
  array->Write(2, array->GetPointer(1, 3, nullptr), 3);
  EXPECT_EQ(StateOf(*array), "1 x 3:cddab") << "as the bytes were before";
}

TEST(ContainerCases, Lists) {
  Check<IObjectList>("objects", [] { return New(Data_CreateObjectList); },
                     {{"Add", [](auto& l, auto& a, auto) { return l.Add(a.Object(0)), true; }},
                      {"GetAt", [](auto& l, auto& a, auto) {
                         IObject* const object = l.GetAt(a.Number(0));
                         return object && a.Says(object == a.Object(1) ? "@" : "another");
                       }}});
  Check<IVariantList>(
      "values", [] { return New(Data_CreateVariantList); },
      {{"Add", [](auto& l, auto& a, auto) { return l.Add(a.Value(0)), true; }},
       {"GetAt", [](auto& l, auto& a, auto) { return l.GetAt(a.Number(0), a.Out(1)); }}});
  Check<IVariantPairList>(
      "pairs", [] { return New(Data_CreateVariantPairList); },
      {{"Add", [](auto& l, auto& a, auto e) { return l.Add(a.Value(0), a.Value(1), e); }},
       {"GetAt",
        [](auto& l, auto& a, auto e) { return l.GetAt(a.Number(0), a.Out(1), a.Out(2), e); }}});
}

TEST(ContainerCases, Dictionaries) {
  Check<IVariantDictionary>(
      "dictionary", [] { return New(Data_CreateVariantDictionary); },
      {{"Set", [](auto& d, auto& a, auto e) { return d.Set(a.Value(0), a.Value(1), e); }},
       {"Get", [](auto& d, auto& a, auto e) { return d.Get(a.Value(0), a.Out(1), e); }},
       {"Contains",
        [](auto& d, auto& a, auto e) { return d.Contains(a.Value(0), e) && a.Says("yes"); }},
       {"FirstKey", [](auto& d, auto& a, auto e) {
          Ptr<IVariantList> keys;
          return d.GetKeys(keys.Receive(), e) && keys->GetAt(0, a.Out(0));
        }}});
}

TEST(ContainerCases, Configurations) {
  Check<IConfiguration>(
      "configuration", [] { return New(Data_CreateConfiguration); },
      {{"Set", [](auto& c, auto& a, auto) { return c.Set(a.Name(0), a.Value(1)), true; }},
       {"Get", [](auto& c, auto& a, auto) { return c.Get(a.Name(0), a.Out(1)); }},
       {"Contains", [](auto& c, auto& a, auto) { return c.Contains(a.Name(0)) && a.Says("yes"); }},
       {"Names", [](auto& c, auto& a, auto) {
          std::multiset<std::string> names;
          while (const char* name = c.GetNameAt(names.size())) names.insert(name);
          EXPECT_EQ(names.size(), c.GetNameCount());
          std::string text;
          for (const auto& name : names) text += "[" + name + "]";
          return a.Says(text);
        }}});
}

TEST(ContainerCases, Properties) {
  const auto make = [] {
    const auto properties = New(Data_CreateProperties);
    const Variant colour("red"), none(Null);
    EXPECT_TRUE(properties->Register("width", ValueType::Int32, true, nullptr, nullptr));
    EXPECT_TRUE(properties->Register("colour", ValueType::String, true, &colour, nullptr));
    EXPECT_TRUE(properties->Register("scale", ValueType::Double, false, &none, nullptr));
    EXPECT_TRUE(properties->Register("bytes", ValueType::Array, true, nullptr, nullptr));
    return properties;
  };
  Check<IProperties>(
      "properties", make,
      {{"Register",
        [](auto& p, auto& a, auto e) {
          return p.Register(a.Name(0), TypeNamed(a.Word(1)), true, a.Value(2), e);
        }},
       {"Set", [](auto& p, auto& a, auto e) { return p.Set(a.Name(0), a.Value(1), e); }},
       {"Get", [](auto& p, auto& a, auto e) { return p.Get(a.Name(0), a.Out(1), e); }},
       {"GetDefault",
        [](auto& p, auto& a, auto e) { return p.GetDefault(a.Name(0), a.Out(1), e); }},
       {"Contains",
        [](auto& p, auto& a, auto e) { return p.Contains(a.Name(0), e) && a.Says("yes"); }},
       {"HasValue",
        [](auto& p, auto& a, auto e) { return p.HasValue(a.Name(0), e) && a.Says("yes"); }},
       {"IsRequired",
        [](auto& p, auto& a, auto e) { return p.IsRequired(a.Name(0), e) && a.Says("yes"); }},
       {"Reset", [](auto& p, auto& a, auto e) { return p.Reset(a.Name(0), e); }},
       {"GetType",
        [](auto& p, auto& a, auto e) {
          const ValueType type = p.GetType(a.Name(0), e);
          return type != ValueType::Unknown && a.Says(std::string(Core::GetValueTypeName(type)));
        }},
       {"Count", [](auto& p, auto& a, auto) { return a.Says(p.GetCount()); }},
       {"Missing", [](auto& p, auto& a, auto e) {
          Ptr<IObjectList> names;
          return p.GetMissing(names.Receive(), e) && a.Says(TextsOf(names));
        }}});
}

TEST(ContainerCases, Enumerations) {
  const auto make = [] {
    const auto options = New(Data_CreateObjectList);
    for (const char* text : {"a", "b", static_cast<const char*>(nullptr), "a", "ca"})
      options->Add(Core::MakePtr<CallersText>(text).Get());
    Ptr<IEnum> created;
    EXPECT_TRUE(Data_CreateEnum(options.Get(), created.Receive(), nullptr));
    return created;
  };
  Check<IEnum>(
      "enumeration", make,
      {{"SetIndex", [](auto& c, auto& a,
                       auto e) { return c.SetIndex(static_cast<std::uint32_t>(a.Number(0)), e); }},
       {"SelectOption", [](auto& c, auto& a, auto e) { return c.SelectOption(a.Name(0), e); }},
       {"Selected", [](auto& c, auto& a,
                       auto) { return a.Says(std::to_string(c.GetIndex()) + c.GetSelected()); }},
       {"Options", [](auto& c, auto& a, auto e) {
          Ptr<IObjectList> options;
          return c.GetOptions(options.Receive(), e) && a.Says(c.GetCount()) &&
                 a.Says(a.Answer() + " " + TextsOf(options));
        }}});
}

TEST(ContainerCases, ConstrainedValues) {
  const auto make = [](const Variant& value, const Variant& min, const Variant& max) {
    return [=] {
      Ptr<IConstrainedValue> created;
      EXPECT_TRUE(Data_CreateConstrainedValue(&value, &min, &max, created.Receive(), nullptr));
      return created;
    };
  };
  const Operations<IConstrainedValue> operations = {
      {"SetValue", [](auto& c, auto& a, auto e) { return c.SetValue(a.Value(0), e); }},
      {"SetConstraints",
       [](auto& c, auto& a, auto e) { return c.SetConstraints(a.Value(0), a.Value(1), e); }},
      {"Get", [](auto& c, auto& a, auto) {
         c.GetValue(a.Out(0));
         c.GetConstraints(a.Out(1), a.Out(2));
         return true;
       }}};
  Check<IConstrainedValue>("constrained number", make(5, 0, 10), operations);
  Check<IConstrainedValue>("constrained text", make("m", "m", "m"), operations);
}

}  // namespace Data::tests
