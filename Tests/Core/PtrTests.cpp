#include "Prelude.h"

namespace Data::tests {

using Core::CastToInterface;
using Core::WeakPtr;

TEST(Ptr, CountsWhatItHolds) {
  const auto object = New(Data_CreateArray);
  EXPECT_EQ(ReferencesTo(object), 1u) << "received as handed out";
  {
    const Ptr<IArray> fromRaw(object.Get()), copy(object);
    const Ptr<IObject> asBase(object);
    EXPECT_EQ(ReferencesTo(object), 4u);
    Ptr<IArray> source(copy);
    const Ptr<IArray> moved(std::move(source));
    EXPECT_FALSE(source);
    EXPECT_EQ(ReferencesTo(object), 5u) << "a move adds none";
    const WeakPtr<IArray> weak(object);
    EXPECT_EQ(ReferencesTo(object), 5u) << "nor does a WeakPtr";
    EXPECT_EQ(weak.Share(), object);
    const Ptr<IObject> movedBase = Ptr<IArray>(object);
    EXPECT_EQ(ReferencesTo(object), 6u);
  }
  EXPECT_EQ(ReferencesTo(object), 1u);
}

TEST(Ptr, AssignmentGivesBackWhatWasHeld) {
  const auto first = New(Data_CreateArray), second = New(Data_CreateArray);
  Ptr<IArray> held(first);
  held = second;
  EXPECT_EQ(ReferencesTo(first), 1u);
  EXPECT_EQ(ReferencesTo(second), 2u);
  held = *&held;
  EXPECT_EQ(ReferencesTo(second), 2u) << "assigned to itself";
  EXPECT_EQ(*held.Receive(), nullptr) << "an out-pointer starts null";
  EXPECT_EQ(ReferencesTo(second), 1u);
  held = first;
  held = nullptr;
  EXPECT_EQ(ReferencesTo(first), 1u);
  held = Ptr<IArray>::Adopt(Ptr<IArray>(first).Detach());
  EXPECT_EQ(ReferencesTo(first), 2u) << "adopted and detached without a count";
}

TEST(Ptr, AccessThroughNullNamesTheInterface) {
  const char* const message =
      "Null pointer exception! Interface is not accessible: struct Data::Interfaces::IArray";
  const Ptr<IArray> none;
  const WeakPtr<IArray> weakNone;
  EXPECT_EQ(ThrownBy([&] { none->GetCount(); }), message);
  EXPECT_EQ(ThrownBy([&] { (*none).GetCount(); }), message);
  EXPECT_EQ(ThrownBy([&] { weakNone->GetCount(); }), message);
  EXPECT_EQ(ThrownBy([&] { none.Checked(); }), message);
  EXPECT_EQ(ThrownBy([&] { weakNone.Checked(); }), message);
  EXPECT_FALSE(weakNone.Share());
}

TEST(Ptr, CheckedAccessRejectsAnObjectOfAnotherKind) {
  const auto array = New(Data_CreateArray);
  EXPECT_EQ(array.Checked(), array.Get());
  const WeakPtr<IString> wrong(reinterpret_cast<IString*>(array.Get()));
  const std::string thrown = ThrownBy([&] { wrong.Checked(); });
  EXPECT_EQ(thrown,
            "Memory address [" + Core::StringFormat("%p", static_cast<const void*>(array.Get())) +
                "] is invalid and was probably already reclaimed by the OS. This means that object "
                "that was held by current Ptr<> was already released somewhere else. If WeakPtr is "
                "used then this can happen if object lifecycle is not maintained properly. This "
                "can also happen on AddReference and Release methods misuse. Other possible causes "
                "can be heap corruption or miscompiled binaries.");
}

TEST(Ptr, CastsToAnotherInterfaceOfTheObject) {
  const auto array = New(Data_CreateArray);
  const Ptr<IObject> object(array);
  EXPECT_EQ(CastToInterface<IArray>(object), array);
  EXPECT_EQ(ReferencesTo(array), 2u) << "the cast's reference was given back";
  EXPECT_EQ(CastToInterface<IArray>(object.Get()), array) << "from a bare pointer";
  EXPECT_EQ(ThrownBy([&] { CastToInterface<IString>(object); }),
            "Cannot cast to desired interface: Interface: struct Core::IObject Desired Interface: "
            "struct Data::Interfaces::IString");
  EXPECT_EQ(ThrownBy([&] { CastToInterface<IString>(array); }),
            "Cannot cast to desired interface: Interface: struct Data::Interfaces::IArray Desired "
            "Interface: struct Data::Interfaces::IString");
  EXPECT_EQ(ThrownBy([&] { CastToInterface<IString>(Ptr<IVariantList>()); }),
            "Null pointer exception! Interface is not accessible: struct "
            "Data::Interfaces::IVariantList");
  EXPECT_EQ(ReferencesTo(array), 2u);
}

TEST(StringFormat, FormatsAsPrintf) {
  const std::string longText(100'000, 'x');
  EXPECT_EQ(Core::StringFormat("%s", ""), "");
  EXPECT_EQ(Core::StringFormat("%d%% of %u", -7, 4294967295u), "-7% of 4294967295");
  EXPECT_EQ(Core::StringFormat("%llu|%5.1f|%x", 1ull << 40, 2.25, 255), "1099511627776|  2.2|ff");
  EXPECT_EQ(Core::StringFormat("<%s>", longText.c_str()), "<" + longText + ">");
}

}  // namespace Data::tests
