#include "Text/Bytes.h"

namespace Data::tests {

namespace {

/// An encoder and a model of it, bit by bit.
struct Model {
  const char* name;
  bool (*create)(IEncoding**, IErrorCode**);
  std::string alphabet;
  bool isPadded;

  std::string Encode(const std::string& bytes) const {
    std::string text;
    for (std::size_t bit = 0; bit < 8 * bytes.size(); bit += 6) {
      unsigned value = 0;
      for (std::size_t i = bit; i < bit + 6; ++i) {
        const unsigned byte = i / 8 < bytes.size() ? static_cast<unsigned char>(bytes[i / 8]) : 0;
        value = value << 1 | (byte >> (7 - i % 8) & 1);
      }
      text += alphabet[value];
    }
    if (isPadded) text.append((4 - text.size() % 4) % 4, '=');
    return text;
  }

  std::string Decode(const std::string& text) const {
    std::string bytes;
    unsigned bits = 0, bitCount = 0;
    for (const char c : text) {
      const std::size_t value = alphabet.find(c);
      if (value == alphabet.npos) break;
      bits = bits << 6 | static_cast<unsigned>(value);
      bitCount += 6;
      if (bitCount < 8) continue;
      bitCount -= 8;
      bytes += static_cast<char>(bits >> bitCount);
    }
    return bytes;
  }
};

const std::string kLettersAndDigits =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";
const Model kModels[] = {
    {"Base64", Data_CreateEncodingInstanceBase64, kLettersAndDigits + "+/", true},
    {"Base64Url", Data_CreateEncodingInstanceBase64Url, kLettersAndDigits + "-_", false},
};

std::string Converted(decltype(&IEncoding::Encode) operation, IEncoding& encoding,
                      std::string_view input) {
  Ptr<IArray> output;
  EXPECT_TRUE(std::invoke(operation, encoding, ArrayOf(input).Get(), output.Receive(), nullptr));
  return BytesOf(*output);
}
std::string Encode(IEncoding& encoding, std::string_view bytes) {
  return Converted(&IEncoding::Encode, encoding, bytes);
}
std::string Decode(IEncoding& encoding, std::string_view text) {
  return Converted(&IEncoding::Decode, encoding, text);
}

std::string RandomBytes(std::size_t size) {
  static std::mt19937 generator(20240611);
  std::string bytes(size, '\0');
  for (char& byte : bytes) byte = static_cast<char>(generator());
  return bytes;
}

}  // namespace

TEST(Encoding, EncodesAndPadsTheLastGroup) {
  for (const std::size_t i : {0u, 1u}) {
    const auto encoding = New(kModels[i].create);
    for (const Case& c : Cases("Text.txt", "base64")) {
      EXPECT_EQ(Encode(*encoding, c[0]), c[1 + i]) << c.where;
      EXPECT_EQ(Decode(*encoding, c[1 + i]), c[0]) << c.where;
    }
    for (const Case& c : Cases("Text.txt", "base64 decoding"))
      EXPECT_EQ(Decode(*encoding, c[0]), c[1 + i]) << c.where;
  }
}

TEST(Encoding, IsExactAtEveryLength) {
  for (const Model& model : kModels) {
    const auto encoding = New(model.create);
    for (std::size_t size = 0; size < 200; ++size) {
      const std::string bytes = RandomBytes(size);
      const std::string text = model.Encode(bytes);
      ASSERT_EQ(Encode(*encoding, bytes), text) << model.name << " " << size;
      ASSERT_EQ(Decode(*encoding, text), bytes) << model.name << " " << size;
      const std::string cut = text.substr(0, text.size() / 2 + size % 4);
      ASSERT_EQ(Decode(*encoding, cut), model.Decode(cut)) << model.name << " " << size;
    }
    const std::string large = RandomBytes(1'000'001);
    EXPECT_EQ(Encode(*encoding, large), model.Encode(large)) << model.name;
    EXPECT_EQ(Decode(*encoding, model.Encode(large)), large) << model.name;
  }
}

TEST(Encoding, StopsExactlyAtAnyByteAtAnyPosition) {
  for (const Model& model : kModels) {
    const auto encoding = New(model.create);
    const std::string text = model.Encode(RandomBytes(96));
    for (std::size_t position = 0; position < text.size(); ++position)
      // All bytes at the ends of the blocks, some elsewhere.
      for (int byte = 0; byte < 256; byte += (position + 1) % 16 < 2 ? 1 : 17) {
        std::string changed = text;
        changed[position] = static_cast<char>(byte);
        ASSERT_EQ(Decode(*encoding, changed), model.Decode(changed))
            << model.name << ", byte " << byte << " at " << position;
      }
  }
}

TEST(Encoding, ReadsAsManyBytesAsTheArrayCountsElements) {
  const auto base64 = New(Data_CreateEncodingInstanceBase64);
  const auto array = New(Data_CreateArray), tooShort = New(Data_CreateArray);
  array->SetData("Manx", 2, 2);
  tooShort->SetData("", 0, 5);
  Ptr<IArray> text;
  EXPECT_TRUE(base64->Encode(array.Get(), text.Receive(), nullptr));
  EXPECT_EQ(BytesOf(*text), "TWE=");
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
  for (const auto operation : {&IEncoding::Encode, &IEncoding::Decode}) {
    auto encoding = New(Data_CreateEncodingInstanceBase64);
    auto array = Core::MakePtr<CallersArray>("TWF");
    array->onRead = [&] {
      encoding.Reset();
      array.Reset();
    };
    Ptr<IArray> out;
    EXPECT_TRUE(std::invoke(operation, *encoding, array.Get(), out.Receive(), nullptr));
    EXPECT_EQ(BytesOf(*out), operation == &IEncoding::Encode ? "VFdG" : "Ma");
  }
}

}  // namespace Data::tests
