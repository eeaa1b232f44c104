#include "CsvSupport.h"

namespace Data::tests {

namespace {

/// Reading as its rules are worded, one after the other and without regard to
/// speed: the library must give the same table for any text.
namespace model {

constexpr std::string_view kLineSpace("\t\n\v\f\r \0", 7);
constexpr std::string_view kValueSpace("\t\n\v\f\r ");

std::string_view Trim(std::string_view text, std::string_view space) {
  const auto first = text.find_first_not_of(space);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(space) - first + 1);
}

using Pieces = std::vector<std::string_view>;

Pieces Split(std::string_view text, std::string_view delimiter, std::string_view space,
             bool dropsEmpty) {
  std::vector<std::size_t> quotes;
  for (std::size_t i = 0; i < text.size(); ++i)
    if (text[i] == '"') quotes.push_back(i);
  Pieces pieces;
  const auto keep = [&](std::string_view piece) {
    piece = Trim(piece, space);
    if (!piece.empty() || !dropsEmpty) pieces.push_back(piece);
  };
  std::size_t start = 0, search = 0;
  for (auto at = text.find(delimiter); at != text.npos; at = text.find(delimiter, search)) {
    std::size_t before = 0;
    while (before < quotes.size() && quotes[before] < at) ++before;
    if (before % 2 == 0) {
      keep(text.substr(start, at - start));
      start = search = at + delimiter.size();
      continue;
    }
    while (before < quotes.size() && quotes[before] <= at) ++before;
    if (before == quotes.size()) break;
    search = quotes[before];
    if (before + 1 < quotes.size() && quotes[before + 1] == search + 1) search += 2;
  }
  if (start >= 1 && start <= text.size()) keep(text.substr(start));
  if (pieces.empty()) pieces.push_back(Trim(text, space));
  return pieces;
}

std::string ShowText(std::string_view value) {
  value = Trim(value, "\"");
  std::string text(value);
  for (auto pair = text.find("\"\""); pair != text.npos; pair = text.find("\"\"", pair + 1))
    text.erase(pair, 1);
  return "'" + text + "'";
}

/// No number of the random texts is longer than what fits.
std::string ShowValue(std::string_view value) {
  const std::string text(value);
  const ValueType type = Data_DetectValueType(value.data(), value.size());
  if (type == ValueType::Unknown) return "~";
  if (type == ValueType::Int64) return ShowCell(Variant(std::stoll(text)));
  if (type == ValueType::Double) return ShowCell(Variant(std::stod(text)));
  return type == ValueType::String ? ShowText(value) : "?";
}

bool IsHeader(const Pieces& values) {
  bool hasText = false;
  for (const auto value : values) {
    const ValueType type = Data_DetectValueType(value.data(), value.size());
    if (type != ValueType::String && type != ValueType::Unknown) return false;
    hasText |= type == ValueType::String;
  }
  return hasText;
}

/// A name ends at its first zero byte; a repeated one maps to the existing column.
std::vector<std::string> NamesOf(const Pieces& header) {
  std::vector<std::string> names;
  for (const auto value : header) {
    const auto name = value.substr(0, value.find('\0'));
    if (name.empty() || std::find(names.begin(), names.end(), name) == names.end())
      names.emplace_back(name);
  }
  return names;
}

/// As `ShowTable`; "!" for any failure.
std::string Read(std::string_view text, std::string_view separator) {
  text = Trim(text, kLineSpace);
  if (text.empty()) return "!";
  std::vector<Pieces> lines;
  for (const auto line : Split(text, "\n", kLineSpace, true))
    lines.push_back(Split(line, separator, kValueSpace, false));
  std::size_t width = 0, first = 0;
  for (std::size_t i = 0; i < lines.size() && i < 100; ++i)
    width = std::max(width, lines[i].size());
  while (lines[first].size() < width) ++first;
  const bool hasHeader = IsHeader(lines[first]);
  auto names = hasHeader ? NamesOf(lines[first]) : std::vector<std::string>();
  while (!hasHeader && names.size() < width)
    names.push_back("Column " + std::to_string(names.size() + 1));
  std::string shown;
  for (const auto& name : names)
    shown += (shown.empty() ? "" : " / ") + (name.empty() ? "Unnamed" : name);
  for (std::size_t line = first + hasHeader; line < lines.size(); ++line) {
    if (lines[line].size() > names.size()) return "!";
    for (std::size_t i = 0; i < names.size(); ++i)
      shown += (i == 0 ? "\n" : " / ") + (i < lines[line].size() ? ShowValue(lines[line][i]) : "~");
  }
  return shown;
}

}  // namespace model

/// As `Show`, but what is random in the names of empty header cells is left out,
/// and every failure is "!".
std::string ShowComparable(const CsvResult& result) {
  if (!result.table) return "!";
  std::string shown = ShowTable(*result.table);
  for (auto at = shown.find("Unnamed_"); at != shown.npos; at = shown.find("Unnamed_", at))
    shown.erase(at + 7, 37);
  return shown;
}

/// Mostly what decides where values end, now and then long runs of plain text, so that
/// lines and quotes reach across every block that the library reads at once.
std::string RandomText(std::mt19937_64& random) {
  constexpr std::string_view kCharacters("ab\"\"\",,,\n\n \t\r;1.-c\0", 20);
  const std::size_t size = random() % 64 == 0 ? random() % 20000 : random() % 90;
  const std::uint64_t plain = random() % 4 == 0 ? 90 : 10;
  std::string text;
  while (text.size() < size)
    text += random() % 100 < plain ? 'x' : kCharacters[random() % kCharacters.size()];
  return text;
}

}  // namespace

TEST(CsvModel, AnyTextReadsAsItsRulesSay) {
  constexpr const char* kSeparators[] = {",",  ";",  "\t", " ",  "\n",
                                         "\"", "\r", ",,", "a,", "\",\""};
  std::mt19937_64 random(20240229);
  for (int i = 0; i < 20000; ++i) {
    const std::string text = RandomText(random);
    if (text.empty()) continue;
    const char* separator = kSeparators[random() % std::size(kSeparators)];
    EXPECT_EQ(ShowComparable(ReadSeparatedBy(separator, text)), model::Read(text, separator))
        << "text " << i << ", separator " << separator;
    if (HasFailure()) return;
  }
}

}  // namespace Data::tests
