#include "CallersText.h"

/// Operations whose values, keys and destinations call the container back.
namespace Data::tests {

namespace {

using Text = Ptr<CallersText>;
using Operations = std::vector<std::function<void()>>;

/// What the text does at one of the calls that it gets.
struct Reaction {
  std::function<void()> react = [] {};
  int callsLeft = 0;

  void CountCall() {
    if (callsLeft > 0 && --callsLeft == 0) react();
  }
};

/// Runs every operation with every other one inside it: once for each call that the operation
/// makes to the text. Whatever happens in between, memory stays sound, every operation works
/// afterwards and no reference is lost.
/// @param make  the operations of a new container that holds the text
void CallBackAtEveryCall(const std::function<Operations(const Text&)>& make) {
  const std::size_t count = make(Core::MakePtr<CallersText>("k")).size();
  for (std::size_t outer = 0; outer < count; ++outer) {
    for (std::size_t inner = 0; inner < count; ++inner) {
      bool hasReacted = true;
      for (int call = 1; hasReacted; ++call) {
        Reaction reaction;
        const auto text = Core::MakePtr<CallersText>("k");
        text->onRead = text->onAddReference = text->onRelease = [&] { reaction.CountCall(); };
        Operations operations = make(text);
        reaction = {operations[inner], call};
        operations[outer]();
        hasReacted = std::exchange(reaction.callsLeft, 0) == 0;
        for (const auto& operation : operations) operation();
        operations.clear();
        reaction = {};
        ASSERT_EQ(ReferencesTo(text), 1u) << outer << " calls " << inner << " at " << call;
      }
    }
  }
}

/// A record that refers to the text.
Variant Holding(const Text& text) { return Variant(Ptr<IString>(text.Get())); }

}  // namespace

TEST(Callbacks, Dictionary) {
  CallBackAtEveryCall([](const Text& text) -> Operations {
    const auto d = New(Data_CreateVariantDictionary);
    const Variant held = Holding(text), inlineKey("k"), number(1);
    const auto get = [=](const Variant& key) {
      return [=] {
        Variant value = held;
        d->Get(&key, &value, nullptr);
      };
    };
    const auto set = [=](const Variant& key, const Variant& value) {
      return [=] { EXPECT_TRUE(d->Set(&key, &value, nullptr)); };
    };
    const auto addMany = [=] {
      for (int i = 0; i < 40; ++i) set(Variant(static_cast<std::int64_t>(d->GetCount())), held)();
    };
    const auto list = [=] {
      Ptr<IVariantList> keys;
      EXPECT_TRUE(d->GetKeys(keys.Receive(), nullptr));
    };
    const auto own = Core::MakeString("k");
    const auto changeText = [=] {
      text->SetUtf8("x", 1);
      own->SetUtf8("a text that needs another buffer than before", 44);
    };
    const auto getUnequal = [=] {
      text->SetUtf8("x", 1);
      get(inlineKey)();
    };
    set(held, held)();
    set(Variant(2), held)();
    return {get(held),
            getUnequal,
            get(inlineKey),
            get(Variant(own)),
            [=] { d->Contains(&held, nullptr); },
            set(held, held),
            set(inlineKey, number),
            set(Variant(own), held),
            list,
            addMany,
            changeText,
            [=] { EXPECT_TRUE(d->Clear()); }};
  });
}

TEST(Callbacks, Lists) {
  CallBackAtEveryCall([](const Text& text) -> Operations {
    const auto objects = New(Data_CreateObjectList);
    const auto values = New(Data_CreateVariantList);
    const auto pairs = New(Data_CreateVariantPairList);
    const Variant held = Holding(text);
    const auto add = [=] {
      objects->Add(text.Get());
      values->Add(&held);
      EXPECT_TRUE(pairs->Add(&held, &held, nullptr));
    };
    add();
    return {add, [=] { objects->Clear(); }, [=] { values->Clear(); },
            [=] { EXPECT_TRUE(pairs->Clear()); },
            [=] {
              Variant key = held, value = held;
              values->GetAt(0, &value);
              pairs->GetAt(0, &key, &value, nullptr);
              pairs->GetAt(0, &key, &key, nullptr);
            }};
  });
}

TEST(Callbacks, ConfigurationAndProperties) {
  CallBackAtEveryCall([](const Text& text) -> Operations {
    const auto c = New(Data_CreateConfiguration);
    const auto p = New(Data_CreateProperties);
    const Variant held = Holding(text), number(1);
    EXPECT_TRUE(p->Register("a", ValueType::String, true, &held, nullptr));
    return {[=] {
              c->Set("a", &held);
              EXPECT_TRUE(p->Set("a", &held, nullptr));
            },
            [=] { c->Set("a", &number); },
            [=] {
              const std::string name = std::to_string(p->GetCount());
              c->Set(name.c_str(), &held);
              p->Register(name.c_str(), ValueType::String, true, &held, nullptr);
              EXPECT_STREQ(p->GetNameAt(p->GetCount() - 1), p->GetNameAt(p->GetCount() - 1));
            },
            [=] { EXPECT_TRUE(p->Reset("a", nullptr)); },
            [=] {
              Variant value = held;
              c->Get("a", &value);
              EXPECT_TRUE(p->Get("a", &value, nullptr));
              EXPECT_TRUE(p->GetDefault("a", &value, nullptr));
            }};
  });
}

TEST(Callbacks, ConstrainedAndAllowedValues) {
  CallBackAtEveryCall([](const Text& text) -> Operations {
    const Variant held = Holding(text), low("a"), high("z");
    Ptr<IConstrainedValue> c;
    Ptr<IAllowedValue> allowed;
    EXPECT_TRUE(Data_CreateConstrainedValue(&held, &held, &high, c.Receive(), nullptr));
    EXPECT_TRUE(Data_CreateAllowedValue(&held, ComparisonOperator::None, "", "", "", "",
                                        allowed.Receive(), nullptr));
    return {[=] { c->SetValue(&held, nullptr); }, [=] { c->SetValue(&low, nullptr); },
            [=] { c->SetConstraints(&low, &high, nullptr); },
            [=] { c->SetConstraints(&held, &held, nullptr); },
            [=] {
              Variant min = held, max = held;
              c->GetConstraints(&min, &max);
              c->GetValue(&min);
              allowed->GetValue(&max);
              Ptr<IString> shown;
              EXPECT_TRUE(allowed->GetValueText(shown.Receive(), nullptr));
            }};
  });
}

TEST(Callbacks, Enum) {
  CallBackAtEveryCall([](const Text& text) -> Operations {
    const auto options = std::make_shared<Ptr<IObjectList>>(New(Data_CreateObjectList));
    const auto add = [=] {
      if (const auto list = *options) list->Add(text.Get());
    };
    for (int i = 0; i < 3; ++i) add();
    return {[=] {
              Ptr<IEnum> created;
              Data_CreateEnum(options->Get(), created.Receive(), nullptr);
            },
            add,
            [=] {
              if (const auto list = *options) list->Clear();
            },
            [=] { options->Reset(); }};
  });
}

TEST(Callbacks, TextOfAListThatChangesWhileItIsRead) {
  const auto list = New(Data_CreateObjectList);
  const Variant texts = Reference(ValueType::StringList, list);
  const auto text = Core::MakePtr<CallersText>("k");
  const auto grow = [&] {
    if (list->GetCount() < 1000) list->Add(text.Get());
  };
  for (int i = 0; i < 2; ++i) grow();
  text->onRead = grow;
  EXPECT_EQ(Core::ToText(texts), "[ \"k\" \"k\" ");
  text->onRead = [&] { list->Clear(); };
  EXPECT_EQ(Core::ToText(texts), "[ \"k\" ");
}

/// What an item does to the container that releases it as it ends.
TEST(Callbacks, EndingContainers) {
  const auto text = Core::MakePtr<CallersText>("k");
  const Variant held = Holding(text);
  const auto end = [&](auto container, auto use) {
    use(*container);
    auto* const ending = container.Get();
    bool isCalled = false;
    text->onRelease = [&] {
      if (std::exchange(isCalled, true)) return;
      const decltype(container) again(ending);
      for (int i = 0; i < 20; ++i) use(*ending);
    };
    container.Reset();
    text->onRelease = [] {};
    EXPECT_TRUE(isCalled);
  };
  const auto keyOf = [](std::uint64_t count) { return "key " + std::to_string(count); };
  end(New(Data_CreateObjectList), [&](auto& list) { list.Add(text.Get()); });
  end(New(Data_CreateVariantList), [&](auto& list) { list.Add(&held); });
  end(New(Data_CreateVariantPairList), [&](auto& list) { list.Add(&held, &held, nullptr); });
  end(New(Data_CreateVariantDictionary), [&](auto& dictionary) {
    const Variant key(keyOf(dictionary.GetCount()));
    dictionary.Set(&key, &held, nullptr);
  });
  end(New(Data_CreateConfiguration), [&](auto& configuration) {
    configuration.Set("name", &held);
    configuration.Set(keyOf(configuration.GetNameCount()).c_str(), &held);
  });
  end(New(Data_CreateProperties), [&](auto& bag) {
    bag.Register(keyOf(bag.GetCount()).c_str(), ValueType::String, true, &held, nullptr);
    bag.Set("key 0", &held, nullptr);
  });
  Ptr<IConstrainedValue> constrained;
  ASSERT_TRUE(Data_CreateConstrainedValue(&held, &held, &held, constrained.Receive(), nullptr));
  end(std::move(constrained), [&](auto& value) { value.SetConstraints(&held, &held, nullptr); });
  Ptr<IAllowedValue> allowed;
  ASSERT_TRUE(Data_CreateAllowedValue(&held, ComparisonOperator::None, "", "", "", "",
                                      allowed.Receive(), nullptr));
  end(std::move(allowed), [](auto& value) {
    Variant copy;
    value.GetValue(&copy);
  });
  const auto table = New(Data_CreateTable);
  table->AddColumn("a");
  Ptr<IRow> row(table->AddRow(&held, 1));
  Ptr<IValue> cell;
  ASSERT_TRUE(row->GetValue(0, cell.Receive()));
  table->ClearRows();
  end(std::move(row), [](auto& ending) { ending.GetCellCount(); });
  end(std::move(cell), [&](auto& value) { value.SetValue(&held); });
  EXPECT_EQ(ReferencesTo(text), 2u) << "here and in `held`";
}

/// The value lies in the range whenever it can be seen.
TEST(Callbacks, ConstrainedValueChangesWithItsRange) {
  const auto text = Core::MakePtr<CallersText>("a");
  const Variant held = Holding(text), value("b"), low("x"), high("z");
  Ptr<IConstrainedValue> c;
  ASSERT_TRUE(Data_CreateConstrainedValue(&value, &held, &high, c.Receive(), nullptr));
  std::string seen;
  const auto look = [&] {
    Variant seenValue, min, max;
    c->GetValue(&seenValue);
    c->GetConstraints(&min, &max);
    seen = min.As<std::string>() + seenValue.As<std::string>();
  };
  bool isLooking = false;
  text->onRelease = [&] {
    if (std::exchange(isLooking, true)) return;
    look();
    isLooking = false;
  };
  ASSERT_TRUE(c->SetConstraints(&low, &high, nullptr));
  text->onRelease = [] {};
  EXPECT_EQ(seen, "xx");
}

}  // namespace Data::tests
