#include "Text/TextSupport.h"

namespace Data::tests {

namespace {

constexpr auto kEncode = &IEncoding::Encode, kDecode = &IEncoding::Decode;

std::string Converted(const Ptr<IEncoding>& encoding, decltype(kEncode) operation, IArray* input) {
  return BytesOf(*Made<IArray>(operation, encoding.Get(), input));
}
std::string Encode(const Ptr<IEncoding>& encoding, std::string_view bytes) {
  return Converted(encoding, kEncode, ArrayOf(bytes).Get());
}
std::string Decode(const Ptr<IEncoding>& encoding, std::string_view text) {
  return Converted(encoding, kDecode, ArrayOf(text).Get());
}

/// Each encoding and the field of its text in a case.
std::vector<std::pair<Ptr<IEncoding>, std::size_t>> Encodings() {
  return {{New(Data_CreateEncodingInstanceBase64), 1},
          {New(Data_CreateEncodingInstanceBase64Url), 2}};
}

}  // namespace

TEST(Encoding, EncodesAndPadsTheLastGroup) {
  for (const auto& [encoding, field] : Encodings()) {
    for (const Case& c : Cases("Text.txt", "base64")) {
      EXPECT_EQ(Encode(encoding, c[0]), c[field]) << c.where;
      EXPECT_EQ(Decode(encoding, c[field]), c[0]) << c.where;
    }
    for (const Case& c : Cases("Text.txt", "base64 decoding"))
      EXPECT_EQ(Decode(encoding, c[0]), c[field]) << c.where;
  }
}

// Long inputs are converted in blocks.
TEST(Encoding, ConvertsLongInputsAsTheirGroups) {
  std::mt19937 random(20240611);
  for (const auto& [encoding, field] : Encodings()) {
    for (std::size_t size = 0; size < 20'000; size += size < 200 ? 1u : 9'901u) {
      std::string bytes(size, '\0'), text;
      for (char& byte : bytes) byte = static_cast<char>(random());
      for (std::size_t i = 0; i < size; i += 3) text += Encode(encoding, bytes.substr(i, 3));
      ASSERT_EQ(Encode(encoding, bytes), text) << size;
      ASSERT_EQ(Decode(encoding, text), bytes) << size;
    }
  }
}

TEST(Encoding, StopsExactlyAtAnyByteAtAnyPosition) {
  const Case all = Cases("Text.txt", "base64").back();  // its text has each character
  for (const auto& [encoding, field] : Encodings()) {
    const std::string bytes = all.fields[0] + all.fields[0], alphabet = all.fields[field];
    const std::string text = alphabet + alphabet;
    for (std::size_t position = 0; position < text.size(); ++position)
      for (int byte = 0; byte < 256; ++byte) {
        const char c = static_cast<char>(byte);
        if (alphabet.find(c) != alphabet.npos) continue;
        std::string changed = text;
        changed[position] = c;
        ASSERT_EQ(Decode(encoding, changed), bytes.substr(0, position * 6 / 8))
            << "byte " << byte << " at " << position;
      }
  }
}

TEST(Encoding, ReadsAsManyBytesAsTheArrayCountsElements) {
  const auto base64 = New(Data_CreateEncodingInstanceBase64);
  const auto array = New(Data_CreateArray), tooShort = New(Data_CreateArray);
  array->SetData("Manx", 2, 2);
  tooShort->SetData("", 0, 5);
  EXPECT_EQ(Converted(base64, kEncode, array.Get()), "TWE=");
  const auto failing = Core::MakePtr<CallersArray>(nullptr);
  const auto failure = [&](const Ptr<IArray>& input) {
    Ptr<IArray> none;
    return Failure([&](auto error) { return base64->Encode(input.Get(), none.Receive(), error); });
  };
  for (const Ptr<IArray>& input : {tooShort, Ptr<IArray>(failing)})
    EXPECT_EQ(failure(input), "Offset or size are not in data bounds");
  failing->failure = Core::MakePtr<CallersError>();
  EXPECT_EQ(failure(failing), "") << "the array's own message, which is null";
}

TEST(Encoding, SurvivesArraysThatReleaseThemselvesAndTheEncoder) {
  for (const auto operation : {kEncode, kDecode}) {
    auto encoding = New(Data_CreateEncodingInstanceBase64);
    auto array = Core::MakePtr<CallersArray>("TWF");
    array->onRead = [&] {
      encoding.Reset();
      array.Reset();
    };
    EXPECT_EQ(Converted(encoding, operation, array.Get()), operation == kEncode ? "VFdG" : "Ma");
  }
}

}  // namespace Data::tests
