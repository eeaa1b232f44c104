#include <set>

#include "Script.h"

namespace Data::tests {

namespace {

/// A new container in a scene with an object "@", which it may hold, and a text "own".
using Make = std::function<Scene(const Variant& shared)>;

Scene SceneOf(const auto& object, const Variant& shared, const char* script = "") {
  Scene scene(object);
  scene.objects = {{"@", shared}, {"own", MakeString("k")}};
  EXPECT_EQ(scene.Answers(script), "");
  return scene;
}

/// @param script  what is done first
Make MakeNew(auto factory, const char* script = "") {
  return [=](const Variant& shared) { return SceneOf(New(factory), shared, script); };
}

Scene Constrained(const Variant& value, const Variant& min, const Variant& max,
                  const Variant& shared) {
  return SceneOf(Made<IConstrainedValue>(Data_CreateConstrainedValue, &value, &min, &max), shared);
}

}  // namespace

TEST(Containers, AnswerFailOrChange) {
  const auto makeEnum = [](const Variant& shared) {
    const auto options = New(Data_CreateObjectList);
    for (const char* text : {"a", "b", static_cast<const char*>(nullptr), "a", "ca"})
      options->Add(Core::MakePtr<CallersText>(text).Get());
    return SceneOf(Made<IEnum>(Data_CreateEnum, options.Get()), shared);
  };
  const std::pair<const char*, Make> kinds[] = {
      {"array", MakeNew(Data_CreateArray)},
      {"objects", MakeNew(Data_CreateObjectList)},
      {"values", MakeNew(Data_CreateVariantList)},
      {"pairs", MakeNew(Data_CreateVariantPairList)},
      {"dictionary", MakeNew(Data_CreateVariantDictionary)},
      {"configuration", MakeNew(Data_CreateConfiguration)},
      {"properties", MakeNew(Data_CreateProperties,
                             "Register width, Int32, 1, null; Register colour, String, 1, \"red; "
                             "Register scale, Double, 0, Null; Register bytes, Array, 1, null")},
      {"options", MakeNew(Data_CreateObjectList)},
      {"enumeration", makeEnum},
      {"constrained number", [](auto& shared) { return Constrained(5, 0, 10, shared); }},
      {"constrained text", [](auto& shared) { return Constrained("m", "m", "m", shared); }},
  };
  for (const auto& [section, make] : kinds) {
    for (const Case& c : Cases("Containers.txt", section)) {
      Scene scene = make(New(Data_CreateArray));
      EXPECT_EQ(scene.Answers(c[0]), c[1]) << c.where << ": " << c[2];
      EXPECT_EQ(scene.Answers("End; References"), "0") << c.where;
    }
  }
}

TEST(Containers, StayWholeWhileCallbacksCome) {
  const auto tableOf = [](const Variant& cell) {
    const auto table = New(Data_CreateTable);
    table->AddColumn("a");
    table->AddRow(&cell, 1);
    return table;
  };
  const std::pair<std::string, Make> kinds[] = {
      {"objects", MakeNew(Data_CreateObjectList, "Add @")},
      {"values", MakeNew(Data_CreateVariantList, "Add @")},
      {"pairs", MakeNew(Data_CreateVariantPairList, "Add @, @")},
      {"dictionary", MakeNew(Data_CreateVariantDictionary, "Set @, @; Set Int32 2, @")},
      {"configuration", MakeNew(Data_CreateConfiguration, "Set a, @")},
      {"properties", MakeNew(Data_CreateProperties, "Register a, String, 1, @; Set a, @")},
      {"constrained", [](auto& shared) { return Constrained(shared, shared, "z", shared); }},
      {"allowed",
       [](auto& shared) {
         return SceneOf(Made<IAllowedValue>(Data_CreateAllowedValue, &shared,
                                            ComparisonOperator::None, "", "", "", ""),
                        shared);
       }},
      {"options", MakeNew(Data_CreateObjectList, "Add @; Add @; Add @")},
      {"row", [=](auto& shared) { return SceneOf(Ptr<IRow>(tableOf(shared)->GetRow(0)), shared); }},
      {"value",
       [=](auto& shared) {
         const auto table = tableOf(shared);
         return SceneOf(Made<IValue>(&IRow::GetValue, table->GetRow(0), 0), shared);
       }},
  };
  for (const auto& [name, make] : kinds) {
    const std::string section = name + " callbacks";
    CallBackAtEveryUse(
        "Containers.txt", section, section, [&make = make] { return make(ValueOf("~k")); },
        [&](Scene& scene, const std::string&) {
          for (const Case& operation : Cases("Containers.txt", section))
            if (scene.owner) ThrownBy([&] { scene.Run(operation[0]); });
        });
  }
}

TEST(ObjectList, TextOfAListThatChangesWhileItIsRead) {
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

/// The value lies in the range whenever it can be seen.
TEST(ConstrainedValue, ChangesWithItsRange) {
  Scene scene = Constrained("b", ValueOf("~a"), "z", Null);
  std::set<std::string> seen;
  bool isLooking = false;
  *kOnUse = [&] {
    if (std::exchange(isLooking, true)) return;
    seen.insert(scene.Answers("GetConstraints; GetValue"));
    isLooking = false;
  };
  EXPECT_EQ(scene.Answers("SetConstraints \"x, \"z"), "");
  *kOnUse = [] {};
  EXPECT_EQ(seen, (std::set<std::string>{"String a, String z ~ String b",
                                         "String x, String z ~ String x"}));
}

TEST(Properties, RegisterANameOnce) {
  const auto bag = New(Data_CreateProperties);
  const Variant held = ValueOf("~k");
  *kOnUse = [&] { bag->Register("a", ValueType::String, true, nullptr, nullptr); };
  const auto registered = [&](auto error) {
    return bag->Register("a", ValueType::String, true, &held, error);
  };
  EXPECT_EQ(Failure(registered), "Property with name [a] already exists!");
  *kOnUse = [] {};
}

TEST(Array, MayBeFilledFromItself) {
  Scene scene(New(Data_CreateArray));
  auto& array = static_cast<IArray&>(*scene.self);
  array.SetData("abcd", 1, 4);
  for (int i = 0; i < 8; ++i) array.Append(array.GetData(), array.GetCount());
  EXPECT_EQ(array.GetCount(), 1024u);
  array.SetData(array.GetPointer(1018, 4, nullptr), 2, 2);
  EXPECT_EQ(scene.Answers("State"), "2 x 2:cdab");
  array.Write(2, array.GetPointer(1, 3, nullptr), 3);
  EXPECT_EQ(scene.Answers("State"), "1 x 3:cddab") << "as the bytes were before";
}

}  // namespace Data::tests
