#include "Prelude.h"

namespace Data::tests {

namespace {

constexpr std::string_view kLettersAndDigits =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";

/// An encoder and what it should do, bit by bit.
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

const Model kModels[] = {
    {"Base64", Data_CreateEncodingInstanceBase64, std::string(kLettersAndDigits) + "+/", true},
    {"Base64Url", Data_CreateEncodingInstanceBase64Url, std::string(kLettersAndDigits) + "-_",
     false},
};

Ptr<IEncoding> Create(const Model& model) {
  Ptr<IEncoding> encoding;
  EXPECT_TRUE(model.create(encoding.Receive(), nullptr));
  return encoding;
}

Ptr<IArray> ArrayOf(std::string_view bytes) {
  Ptr<IArray> array;
  EXPECT_TRUE(Data_CreateArray(array.Receive()));
  array->SetData(bytes.data(), 1, bytes.size());
  return array;
}

std::string TextOf(IArray& array) {
  EXPECT_EQ(array.GetStride(), 1u);
  return {static_cast<const char*>(array.GetData()), array.GetCount()};
}

std::string Encode(IEncoding& encoding, std::string_view bytes) {
  Ptr<IArray> text;
  EXPECT_TRUE(encoding.Encode(ArrayOf(bytes).Get(), text.Receive(), nullptr));
  return TextOf(*text);
}

std::string Decode(IEncoding& encoding, std::string_view text) {
  Ptr<IArray> bytes;
  EXPECT_TRUE(encoding.Decode(ArrayOf(text).Get(), bytes.Receive(), nullptr));
  return TextOf(*bytes);
}

std::string RandomBytes(std::size_t size) {
  static std::mt19937 generator(20240611);
  std::string bytes(size, '\0');
  for (char& byte : bytes) byte = static_cast<char>(generator());
  return bytes;
}

}  // namespace

TEST(Encoding, EncodesAndPadsTheLastGroup) {
  const struct {
    std::string bytes;
    const char *base64, *base64Url;
  } cases[] = {
      {"", "", ""},
      {"M", "TQ==", "TQ"},
      {"Ma", "TWE=", "TWE"},
      {"Man", "TWFu", "TWFu"},
      {"\xFB\xFF", "+/8=", "-_8"},
      {"\0\0\0\0"s, "AAAAAA==", "AAAAAA"},
      {"foobar", "Zm9vYmFy", "Zm9vYmFy"},
  };
  const auto base64 = Create(kModels[0]), base64Url = Create(kModels[1]);
  for (const auto& c : cases) {
    EXPECT_EQ(Encode(*base64, c.bytes), c.base64);
    EXPECT_EQ(Encode(*base64Url, c.bytes), c.base64Url);
    EXPECT_EQ(Decode(*base64, c.base64), c.bytes);
    EXPECT_EQ(Decode(*base64Url, c.base64Url), c.bytes);
  }
}

TEST(Encoding, DecodesUpToTheFirstForeignCharacter) {
  const struct {
    const char* what;
    std::string text, base64, base64Url;
  } cases[] = {
      {"no padding needed", "TWE", "Ma", "Ma"},
      {"a lone character holds no byte", "T", "", ""},
      {"padding ends the text", "TW=Fu", "M", "M"},
      {"so does anything else", "QUJD!garbage", "ABC", "ABC"},
      {"white space, too", "QUJD\nQUJD", "ABC", "ABC"},
      {"spare bits are ignored", "TX==", "M", "M"},
      {"characters of the other alphabet", "QUJD+/8=", "ABC\xFB\xFF", "ABC"},
      {"and the other way round", "QUJD-_8", "ABC", "ABC\xFB\xFF"},
      {"a zero", "QUJD\0QUJD"s, "ABC", "ABC"},
      {"a letter beyond ASCII", "QUJD\xC4", "ABC", "ABC"},
      {"at the start", "=QUJD", "", ""},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Decode(*Create(kModels[0]), c.text), c.base64) << c.what;
    EXPECT_EQ(Decode(*Create(kModels[1]), c.text), c.base64Url) << c.what;
  }
}

TEST(Encoding, IsExactAtEveryLength) {
  for (const Model& model : kModels) {
    const auto encoding = Create(model);
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
    const auto encoding = Create(model);
    const std::string text = model.Encode(RandomBytes(96));
    for (std::size_t position = 0; position < text.size(); ++position) {
      for (int byte = 0; byte < 256; ++byte) {
        // All bytes at the ends of the blocks, some at the others.
        if (position % 16 != 0 && position % 16 != 15 && byte % 17 != 11) continue;
        std::string changed = text;
        changed[position] = static_cast<char>(byte);
        ASSERT_EQ(Decode(*encoding, changed), model.Decode(changed))
            << model.name << ", byte " << byte << " at " << position;
      }
    }
  }
}

TEST(Encoding, ReadsAsManyBytesAsTheArrayCountsElements) {
  const auto array = ArrayOf("");
  array->SetData("Manx", 2, 2);
  Ptr<IArray> text;
  EXPECT_TRUE(Create(kModels[0])->Encode(array.Get(), text.Receive(), nullptr));
  EXPECT_EQ(TextOf(*text), "TWE=");

  array->SetData("", 0, 5);
  Ptr<IArray> none;
  Ptr<IErrorCode> error;
  EXPECT_FALSE(Create(kModels[0])->Encode(array.Get(), none.Receive(), error.Receive()));
  EXPECT_EQ(MessageOf(error), "Offset or size are not in data bounds")
      << "five elements without a byte";
}

TEST(Encoding, ChecksItsArguments) {
  const std::string array = "struct Data::Interfaces::IArray";
  const auto input = ArrayOf("QUJD"), held = ArrayOf("held");
  const struct {
    const char* what;
    IArray* input;
    bool hasOut;
    IArray* held;
    std::string message;
  } cases[] = {
      {"the input comes first", nullptr, false, nullptr,
       "Pointer of " + array + " must not be null!"},
      {"no out-pointer", input.Get(), false, nullptr,
       "Pointer to a pointer of " + array +
           " must not be null! Address of return must be specified!"},
      {"an out-pointer in use", input.Get(), true, held.Get(),
       "Pointer of " + array + " must be null in order to avoid memory leaks!"},
  };
  for (const auto operation : {&IEncoding::Encode, &IEncoding::Decode}) {
    for (const auto& c : cases) {
      const auto encoding = Create(kModels[0]);
      IArray* out = c.held;
      Ptr<IErrorCode> error;
      EXPECT_FALSE(
          std::invoke(operation, *encoding, c.input, c.hasOut ? &out : nullptr, error.Receive()));
      EXPECT_EQ(MessageOf(error), c.message) << c.what;
      EXPECT_EQ(error->GetCode(), 2u) << c.what;
      EXPECT_EQ(out, c.held) << c.what;
    }
  }
}

TEST(Encoding, FactoriesCheckTheOutPointer) {
  for (const Model& model : kModels) {
    Ptr<IErrorCode> noOut, inUse;
    EXPECT_FALSE(model.create(nullptr, noOut.Receive()));
    EXPECT_EQ(MessageOf(noOut),
              "Pointer to a pointer of struct Data::Interfaces::IEncoding must not be null! "
              "Address of return must be specified!");
    const auto held = Create(model);
    IEncoding* out = held.Get();
    EXPECT_FALSE(model.create(&out, inUse.Receive()));
    EXPECT_EQ(MessageOf(inUse),
              "Pointer of struct Data::Interfaces::IEncoding must be null in order to avoid memory "
              "leaks!");
    EXPECT_EQ(out, held.Get());
  }
}

}  // namespace Data::tests
