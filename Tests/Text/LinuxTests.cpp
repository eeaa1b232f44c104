#include <fcntl.h>
#include <openssl/crypto.h>
#include <openssl/err.h>
#include <unistd.h>

#include "Text/Bytes.h"

// What only Linux lets a test see: failures of the cryptography library, whose allocations a
// program can replace; the contents of freed memory; the library's own conversion of UTF-8.
namespace Data::tests {

namespace {

std::size_t allocationsToFailure = SIZE_MAX;
bool failsForGood = false;

bool Fails() {
  if (allocationsToFailure > 0) return --allocationsToFailure == 0;
  return failsForGood;
}
void* Allocate(std::size_t size, const char*, int) { return Fails() ? nullptr : std::malloc(size); }
void* Reallocate(void* memory, std::size_t size, const char*, int) {
  return Fails() ? nullptr : std::realloc(memory, size);
}
void Free(void* memory, const char*, int) { std::free(memory); }

// Only before anything else uses the library.
const bool isTakenOver = CRYPTO_set_mem_functions(Allocate, Reallocate, Free) == 1;

/// Runs an operation while its first, second, third ... allocation of OpenSSL's fails, alone or
/// with all that follow, until it makes none that fails. Its failures must be reported and leave
/// the thread's error queue as it was.
template <class Operation>
void WithEachFailure(Operation operation) {
  ASSERT_TRUE(isTakenOver);
  ERR_clear_error();
  for (const bool forGood : {false, true}) {
    bool isReached = true;
    for (std::size_t n = 1; isReached; ++n) {
      ERR_raise(ERR_LIB_USER, 7);
      Ptr<IErrorCode> error;
      failsForGood = forGood;
      allocationsToFailure = n;
      const bool succeeded = operation(error.Receive());
      isReached = std::exchange(allocationsToFailure, SIZE_MAX) == 0;
      EXPECT_TRUE(succeeded || MessageOf(error).find("ailed") != std::string::npos) << n;
      EXPECT_TRUE(succeeded || isReached) << n;
      EXPECT_EQ(ERR_GET_REASON(ERR_get_error()), 7) << n << ": the program's own error";
      EXPECT_EQ(ERR_get_error(), 0u) << n << ": " << MessageOf(error);
    }
  }
}

std::string Digest(IHashing& hashing) {
  Ptr<IArray> digest;
  EXPECT_TRUE(hashing.Hash("abc", 3, digest.Receive(), nullptr));
  return BytesOf(*digest);
}

Ptr<ISecureString> Protect(std::string_view text) {
  Ptr<ISecureString> secret;
  EXPECT_TRUE(Data_CreateSecureString(MakeString(text).Get(), secret.Receive(), nullptr));
  return secret;
}

Ptr<IString> PlainText(ISecureString& secret) {
  Ptr<IString> text;
  EXPECT_TRUE(secret.GetText(text.Receive(), nullptr));
  return text;
}

/// Reads memory that may have been freed into a buffer that was allocated before.
void ReadMemory(const void* address, std::string& bytes) {
  static const int memory = open("/proc/self/mem", O_RDONLY);
  const auto offset = static_cast<off_t>(reinterpret_cast<std::uintptr_t>(address));
  EXPECT_EQ(pread(memory, bytes.data(), bytes.size(), offset), static_cast<ssize_t>(bytes.size()));
}

}  // namespace

TEST(Hashing, SurvivesEveryFailureOfTheProvider) {
  const auto key = ArrayOf("key");
  const std::function<bool(IHashing**, IErrorCode**)> factories[] = {
      Data_CreateHashingInstanceMD5,
      [](auto out, auto error) { return Data_CreateHashingInstanceSha2(0, out, error); },
      [&](auto out, auto error) {
        return Data_CreateHashingInstanceHmacSha2(2, key.Get(), out, error);
      },
  };
  for (const auto& create : factories) {
    Ptr<IHashing> hashing;
    ASSERT_TRUE(create(hashing.Receive(), nullptr));
    const std::string expected = Digest(*hashing);
    WithEachFailure([&](IErrorCode** error) {
      Ptr<IArray> digest;
      const bool succeeded = hashing->Hash("abc", 3, digest.Receive(), error);
      EXPECT_EQ(succeeded ? BytesOf(*digest) : expected, expected);
      const auto countdown = std::exchange(allocationsToFailure, SIZE_MAX);
      EXPECT_EQ(Digest(*hashing), expected) << "the object works afterwards";
      allocationsToFailure = countdown;
      return succeeded;
    });
    WithEachFailure([&](IErrorCode** error) {
      Ptr<IHashing> another;
      return create(another.Receive(), error);
    });
  }
}

TEST(SecureString, SurvivesEveryFailureOfTheProvider) {
  const auto text = MakeString("secret");
  const auto secret = Protect("secret");
  WithEachFailure([&](IErrorCode** error) {
    Ptr<ISecureString> another;
    return Data_CreateSecureString(text.Get(), another.Receive(), error);
  });
  WithEachFailure([&](IErrorCode** error) {
    Ptr<IString> plain;
    return secret->GetText(plain.Receive(), error);
  });
  EXPECT_STREQ(PlainText(*secret)->GetUtf8(), "secret");
}

TEST(SecureString, PlainTextsLeaveNoTraceInFreedMemory) {
  const std::string longer(2000, '-');
  const struct {
    const char* what;
    bool keepsText;  // where it was
    std::function<void(IString&)> use;
  } cases[] = {
      {"released", true, [](IString&) {}},
      {"read as UTF-16", false, [](IString& text) { text.GetWide(); }},
      {"read in a code page", true, [](IString& text) { text.GetMultiByte(1252); }},
      {"set to a longer text", false, [&](IString& text) { text.SetUtf8(longer.data(), 2000); }},
      {"set to a shorter text", false, [](IString& text) { text.SetUtf8("-", 1); }},
      {"cleared", false, [](IString& text) { text.Clear(); }},
  };
  // Long texts are converted in other memory than short ones.
  for (const std::size_t size : {0u, 40u, 100u, 1000u}) {
    const auto secret = Protect(std::string(size, '!'));
    for (const auto& c : cases) {
      auto text = PlainText(*secret);
      const void* const first = text->GetData();
      std::string inUse(size, '\0'), freed(size, '\0');
      c.use(*text);
      ReadMemory(first, inUse);
      const void* const last = text->GetData();
      text.Reset();
      ReadMemory(last, freed);
      const bool isFound = inUse.find("!!!") != inUse.npos;
      EXPECT_LE(isFound, c.keepsText) << c.what << ", " << size;
      EXPECT_GE(isFound, &c == cases && size > 0) << "nothing was found where the text is";
      EXPECT_EQ(freed.find("!!!"), freed.npos) << c.what << ", " << size;
      EXPECT_EQ(freed.find("!\0!"s), freed.npos) << c.what << ", " << size;
    }
  }
}

TEST(CodePages, ReplaceEachByteThatBeginsNoUtf8) {
  for (const Case& c : Cases("CodePages.txt", "ill-formed UTF-8"))
    EXPECT_EQ(std::u16string(MakeString(c[0])->GetWide()), MakeString(c[1])->GetWide()) << c.where;
}

}  // namespace Data::tests
