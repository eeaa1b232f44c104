#include <fcntl.h>
#include <unistd.h>

#include <fstream>

#include "Text/TextSupport.h"

// What only Linux lets a test see: the contents of freed memory, and the library's own conversion
// of UTF-8.
namespace Data::tests {

namespace {

/// Reads memory that may have been freed into a buffer that was allocated before.
void ReadMemory(const void* address, std::string& bytes) {
  static const int memory = open("/proc/self/mem", O_RDONLY);
  const auto offset = static_cast<off_t>(reinterpret_cast<std::uintptr_t>(address));
  EXPECT_EQ(pread(memory, bytes.data(), bytes.size(), offset), static_cast<ssize_t>(bytes.size()));
}

}  // namespace

TEST(SecureString, PlainTextsLeaveNoTraceInFreedMemory) {
  const struct {
    const char* what;
    bool keepsText;  // where it was
    std::function<void(IString&)> use;
  } cases[] = {
      {"released", true, [](IString&) {}},
      {"read as UTF-16", false, [](IString& text) { text.GetWide(); }},
      {"read in a code page", true, [](IString& text) { text.GetMultiByte(1252); }},
      {"set to a longer text", false,
       [](IString& text) { text.SetUtf8(std::string(2000, '-').data(), 2000); }},
      {"set to a shorter text", false, [](IString& text) { text.SetUtf8("-", 1); }},
      {"cleared", false, [](IString& text) { text.Clear(); }},
  };
  // Not on the stack, which is searched for it, and longer than the vectors that unoptimized code
  // leaves there.
  static const std::u16string longPart(32, u'!');
  const std::string_view asUtf16(reinterpret_cast<const char*>(longPart.data()), 64);
  // Long texts are converted in other memory than short ones.
  for (const std::size_t size : {0u, 40u, 100u, 1000u}) {
    const auto secret = Protect(MakeString(std::string(size, '!')).Get());
    for (const auto& c : cases) {
      auto text = PlainText(*secret);
      const void* const first = text->GetData();
      std::string inUse(size, '\0'), freed(size, '\0'), stack(8192, '\0');
      c.use(*text);
      ReadMemory(reinterpret_cast<const char*>(&inUse) - stack.size(), stack);
      EXPECT_EQ(stack.find(asUtf16), stack.npos) << c.what << ", " << size;
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

TEST(SecureString, KeyIsReadOnlyAndNotDumped) {
  const auto secret = Protect(MakeString("secret").Get());
  std::ifstream mappings("/proc/self/smaps");
  bool isReadOnlyMemory = false, isFound = false;
  for (std::string line; std::getline(mappings, line);) {
    if (line.find(" 00:00 0") != line.npos)  // memory of no file, with a name in brackets if shared
      isReadOnlyMemory = line.find(" r--p ") != line.npos && line.find('[') == line.npos;
    if (line.starts_with("VmFlags:")) isFound |= isReadOnlyMemory && line.find(" dd") != line.npos;
  }
  EXPECT_TRUE(isFound);
}

TEST(CodePages, ReplaceEachByteThatBeginsNoUtf8) {
  for (const Case& c : Cases("CodePages.txt", "ill-formed UTF-8"))
    EXPECT_EQ(std::u16string(MakeString(c[0])->GetWide()), MakeString(c[1])->GetWide()) << c.where;
}

}  // namespace Data::tests
