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

TEST(Failures, NameTheTypeThatIsMissing) {
  const auto list = New(Data_CreateVariantList);
  IVariantList* held = list.Get();
  const char* noText = nullptr;
  const void* noBytes = nullptr;
  const Structures::_VARIANT* noRecord = nullptr;
  const struct {
    const char* message;
    std::string thrown;
  } cases[] = {
      {"Pointer to a pointer of struct Data::Interfaces::IVariantList must not be null! Address of "
       "return must be specified!",
       ThrownBy([&] { Core::CheckOutPointer<IVariantList>(nullptr); })},
      {"Pointer of struct Data::Interfaces::IVariantList must be null in order to avoid memory "
       "leaks!",
       ThrownBy([&] { Core::CheckOutPointer(&held); })},
      {"Pointer of char must not be null!", ThrownBy([&] { Core::CheckArgument(noText); })},
      {"Pointer of void must not be null!", ThrownBy([&] { Core::CheckArgument(noBytes); })},
      {"Pointer of struct Data::Structures::_VARIANT must not be null!",
       ThrownBy([&] { Core::CheckArgument(noRecord); })},
      {"Pointer of struct Core::IErrorCode must not be null!",
       ThrownBy([&] { Core::CheckArgument<Core::IErrorCode>(nullptr); })},
      {"Must be nullptr to prevent memory leaks. Maybe default constructor initialized the object?",
       ThrownBy([&] { Core::ThrowMustBeNull(); })},
  };
  for (const auto& c : cases) EXPECT_EQ(c.thrown, c.message);
}

TEST(StringFormat, FormatsAsPrintf) {
  const std::string longText(100'000, 'x');
  const struct {
    std::string formatted, expected;
  } cases[] = {
      {Core::StringFormat("%s", ""), ""},
      {Core::StringFormat("100%%"), "100%"},
      {Core::StringFormat("%d of %u", -7, 4294967295u), "-7 of 4294967295"},
      {Core::StringFormat("%lld %llu", INT64_MIN + 0LL, UINT64_MAX + 0ULL),
       "-9223372036854775808 18446744073709551615"},
      {Core::StringFormat("%llu", 1ull << 40), "1099511627776"},
      {Core::StringFormat("%f|%5.1f|%x", 0.1, 2.25, 255), "0.100000|  2.2|ff"},
      {Core::StringFormat("<%s>", longText.c_str()), "<" + longText + ">"},
  };
  for (const auto& c : cases) EXPECT_EQ(c.formatted, c.expected);
}

}  // namespace Data::tests
