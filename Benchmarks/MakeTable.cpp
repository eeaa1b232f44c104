#include <cstdio>
#include <cstdlib>
#include <string>

#include "TableText.h"

/// Writes a mixed table of about the given number of megabytes to standard output.
int main(int argumentCount, char** arguments) {
  const int megabytes = argumentCount > 1 ? std::atoi(arguments[1]) : 50;
  const std::string text = Data::benchmarks::MakeTableText(
      Data::benchmarks::TableKind::Mixed, static_cast<std::size_t>(megabytes) * 1'000'000, 20);
  return std::fwrite(text.data(), 1, text.size(), stdout) == text.size() ? 0 : 1;
}
