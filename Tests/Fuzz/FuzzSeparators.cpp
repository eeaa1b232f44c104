// The reading modes agree with each other, and a separator of several bytes splits like one of a
// single byte.

#include "Data/Interfaces/IObjectList.h"
#include "Data/Interfaces/IString.h"
#include "Data/Interfaces/ITable.h"
#include "Fuzz.h"

using namespace Data::fuzz;

namespace {

struct Reading {
  Reading(std::string_view text, int keepRows) {
    Data_ParseCsvWithErrors(text.data(), table.Receive(), problems.Receive(), text.size(), keepRows,
                            nullptr);
  }
  Ptr<ITable> table;
  Ptr<IObjectList> problems;
};

Ptr<ITable> ReadWith(std::string_view text, const char* separator) {
  Ptr<ITable> table;
  Data_ParseCsvWithSeparator(text.data(), separator, table.Receive(), text.size(), nullptr);
  return table;
}

/// Columns without a name get a random one.
bool HasUnnamedColumn(const Ptr<ITable>& table) {
  return CsvOf(table).find("Unnamed_") != std::string::npos;
}

void CompareModes(std::string_view text) {
  Ptr<ITable> strict;
  Error error;
  const bool isRead = Data_ParseCsv(text.data(), text.size(), strict.Receive(), error.Receive());
  const Reading kept(text, 1), dropped(text, 0);
  Require(static_cast<bool>(kept.table) == static_cast<bool>(dropped.table));
  if (!kept.table) return Require(!isRead);
  const std::uint64_t problems = kept.problems->GetCount();
  Require(isRead == (problems == 0));
  Require(dropped.problems->GetCount() == problems);
  Require(kept.table->GetRowCount() - dropped.table->GetRowCount() ==
          static_cast<std::int64_t>(problems));
  if (!isRead)
    return Require(Core::CastToInterface<IString>(kept.problems->GetAt(0))->GetUtf8() ==
                   std::string_view(error->GetMessage()));
  if (!HasUnnamedColumn(strict)) Require(CsvOf(strict) == CsvOf(kept.table));
}

/// Replaces the separators that are outside quotes.
std::string Replaced(std::string_view text, std::string_view separator, char by) {
  std::string replaced;
  bool isQuoted = false;
  while (!text.empty()) {
    if (text.front() == '"') isQuoted = !isQuoted;
    const bool isSeparator = !isQuoted && text.starts_with(separator);
    replaced += isSeparator ? by : text.front();
    text.remove_prefix(isSeparator ? separator.size() : 1);
  }
  return replaced;
}

void CompareSeparators(std::string_view text, const std::string& separator) {
  constexpr char kUnused = '\x1F';
  if (separator.empty() || text.find(kUnused) != std::string_view::npos) return;
  if (separator.find_first_of(std::string_view("\"\r\n \t\v\f\0\x1F\xEF\xBB\xBF", 12)) !=
      std::string::npos)
    return;
  const Ptr<ITable> table = ReadWith(text, separator.c_str());
  const Ptr<ITable> other = ReadWith(Replaced(text, separator, kUnused), "\x1F");
  Require(static_cast<bool>(table) == static_cast<bool>(other));
  if (!table) return;
  Require(table->GetColumnCount() == other->GetColumnCount());
  Require(table->GetRowCount() == other->GetRowCount());
  if (!HasUnnamedColumn(table)) Require(CsvOf(table) == CsvOf(other));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const char* data, std::size_t size) {
  Input input(data, size);
  const std::string separator = input.Text(5);
  CompareModes(input.Rest());
  CompareSeparators(input.Rest(), separator);
  return 0;
}
