#include "Cases.h"

#include <charconv>
#include <fstream>
#include <stdexcept>

namespace Data::tests {

namespace {

std::string_view Trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string Unescape(std::string_view text) {
  std::string bytes;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\\') {
      bytes += text[i];
      continue;
    }
    const char kind = i + 1 < text.size() ? text[++i] : '\0';
    if (kind == 'x') {
      unsigned value = 0;
      const char* const digits = text.data() + i + 1;
      if (i + 2 >= text.size() || std::from_chars(digits, digits + 2, value, 16).ptr != digits + 2)
        throw std::runtime_error("Not two hexadecimal digits: " + std::string(text));
      bytes += static_cast<char>(value);
      i += 2;
      continue;
    }
    constexpr std::string_view kKinds = "nrt0\\sp", kBytes("\n\r\t\0\\ |", 7);
    const std::size_t at = kKinds.find(kind);
    if (at == std::string_view::npos)
      throw std::runtime_error("Unknown escape: " + std::string(text));
    bytes += kBytes[at];
  }
  return bytes;
}

std::vector<std::string> Fields(std::string_view line) {
  std::vector<std::string> fields;
  for (;;) {
    const std::size_t bar = line.find('|');
    fields.push_back(Unescape(Trimmed(line.substr(0, bar))));
    if (bar == std::string_view::npos) return fields;
    line.remove_prefix(bar + 1);
  }
}

}  // namespace

std::vector<Case> Cases(const char* file, std::string_view section) {
  std::ifstream in(std::string(LAYERDATA_TEST_DATA "/") + file, std::ios::binary);
  std::vector<Case> cases;
  bool isInSection = false;
  std::string line;
  for (int number = 1; std::getline(in, line); ++number) {
    if (line.empty() || line[0] == '#') continue;
    if (line[0] == '[') {
      isInSection = std::string_view(line) == "[" + std::string(section) + "]";
    } else if (isInSection) {
      cases.push_back({std::string(file) + ":" + std::to_string(number), Fields(line)});
    }
  }
  if (cases.empty())
    throw std::runtime_error("No case in " + std::string(file) + " [" + std::string(section) + "]");
  return cases;
}

}  // namespace Data::tests
