// Any bytes give a table or an error; a table can be written, and reading its text again does not
// crash. A long value precedes an input that starts with 0xFE, so that a chunk of the scanner ends
// in the middle of the input. One that starts with 0xFF ends with a value so long that the table is
// created in a pool.

#include "Data/Interfaces/IJsonDocument.h"
#include "Data/Interfaces/IObjectList.h"
#include "Data/Interfaces/IString.h"
#include "Data/Interfaces/ITable.h"
#include "Fuzz.h"

using namespace Data::fuzz;

namespace {

constexpr std::size_t kChunk = std::size_t{4} << 10;
constexpr std::size_t kPooled = std::size_t{260} << 10;

std::string Enlarged(std::string_view text) {
  const auto mark = static_cast<std::uint8_t>(text.empty() ? 0 : text.front());
  if (mark < 0xFE) return std::string(text);
  text.remove_prefix(1);
  if (mark == 0xFE) return std::string(kChunk - text.size() / 2, 'x').append(text);
  return std::string(text).append(kPooled, 'x');
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const char* data, std::size_t size) {
  const std::string text = Enlarged({data, size});
  Ptr<ITable> table, again;
  Ptr<IObjectList> problems;
  Error error;
  if (!Data_ParseCsvWithErrors(text.data(), table.Receive(), problems.Receive(), text.size(), 1,
                               error.Receive()))
    return 0;
  const std::string csv = CsvOf(table);
  Ptr<IJsonDocument> json;
  if (Data_TableToJson(table.Get(), json.Receive(), error.Receive()))  // fails for NaN and infinity
    Require(json->IsValid());
  Data_ParseCsv(csv.data(), csv.size(), again.Receive(), error.Receive());
  return 0;
}
