#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "TableText.h"

using Data::benchmarks::TableKind;

/// MakeTable KIND MEGABYTES: writes a table of about that size to standard output.
int main(int argumentCount, char** arguments) {
  constexpr struct {
    std::string_view name;
    TableKind kind;
  } kKinds[] = {{"mixed", TableKind::Mixed},
                {"numbers", TableKind::Numeric},
                {"dates", TableKind::Dates},
                {"text", TableKind::Text}};
  if (argumentCount != 3) return 2;
  for (const auto& [name, kind] : kKinds) {
    if (name != arguments[1]) continue;
    const auto bytes = static_cast<std::size_t>(std::atoi(arguments[2])) * 1'000'000;
    const std::string text = Data::benchmarks::MakeTableText(kind, bytes, 20);
    return std::fwrite(text.data(), 1, text.size(), stdout) == text.size() ? 0 : 1;
  }
  return 2;
}
