// Any bytes give a table or an error; a table can be written, and reading its text again does not
// crash. An input that starts with 0xFE or 0xFF is repeated up to 9 or 260 KB, so that it spans
// several chunks of the scanner.

#include "Data/Interfaces/IJsonDocument.h"
#include "Data/Interfaces/IObjectList.h"
#include "Data/Interfaces/IString.h"
#include "Data/Interfaces/ITable.h"
#include "Fuzz.h"

using namespace Data::fuzz;

namespace {

std::string Repeated(std::string_view text) {
  const auto mark = static_cast<std::uint8_t>(text.empty() ? 0 : text.front());
  if (mark < 0xFE || text.size() < 64) return std::string(text);
  text.remove_prefix(1);
  const std::size_t wanted = mark == 0xFF ? std::size_t{260} << 10 : std::size_t{9} << 10;
  std::string repeated;
  while (repeated.size() < wanted) repeated += text;
  return repeated;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const char* data, std::size_t size) {
  const std::string text = Repeated({data, size});
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
