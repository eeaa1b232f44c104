#include "TableText.h"

#include <cstdarg>
#include <cstdio>
#include <random>
#include <string_view>

namespace Data::benchmarks {

namespace {

constexpr std::string_view kWords[] = {
    "survey", "north",  "bridge",  "culvert", "stone", "unpaved", "river",    "crossing", "checked",
    "to",     "repair", "flooded", "in",      "the",   "spring",  "and",      "reopened", "east",
    "bank",   "timber", "track",   "closed",  "since", "owner",   "notified", "of",       "old",
    "mill",   "road",   "with",    "narrow",  "deck",  "new",     "railing",  "at",       "weir"};
constexpr std::string_view kKinds[] = {"bridge", "ford",       "culvert",       "ferry",
                                       "tunnel", "footbridge", "level crossing"};

/// Writes the rows of a table, with one method per kind of value, each drawing the next random
/// numbers. The distributions of the standard library differ between implementations, so none is
/// used.
class TableText {
 public:
  explicit TableText(std::uint64_t seed) : random_(seed) {}

  void Header(std::string_view names) { text_.append(names) += '\n'; }
  void Mixed(std::size_t row);
  void Numeric(std::size_t row);
  void Dates(std::size_t row);
  void Text(std::size_t row);
  const std::string& Result() const { return text_; }

 private:
  std::uint64_t Below(std::uint64_t limit) { return random_() % limit; }
  double Between(double low, double high) {
    return low + (high - low) * static_cast<double>(random_() >> 11) * 0x1p-53;
  }
  bool OneIn(std::uint64_t chances) { return Below(chances) == 0; }

  void Print(const char* format, ...) __attribute__((format(printf, 2, 3)));
  void Integer(std::uint64_t limit) { text_ += std::to_string(Below(limit)); }
  void Date();
  void DateTime();
  void Sentence(std::size_t words);
  void Next() { text_ += ','; }
  void EndRow() { text_ += '\n'; }

  std::mt19937_64 random_;
  std::string text_;
};

void TableText::Print(const char* format, ...) {
  char text[64];
  va_list arguments;
  va_start(arguments, format);
  const int size = std::vsnprintf(text, sizeof text, format, arguments);
  va_end(arguments);
  text_.append(text, static_cast<std::size_t>(size));
}

void TableText::Date() {
  const auto year = static_cast<int>(1980 + Below(45)), month = static_cast<int>(1 + Below(12));
  Print("%04d-%02d-%02d", year, month, static_cast<int>(1 + Below(28)));
}

void TableText::DateTime() {
  Date();
  const auto hour = static_cast<int>(Below(24)), minute = static_cast<int>(Below(60));
  Print("T%02d:%02d:%02d", hour, minute, static_cast<int>(Below(60)));
}

void TableText::Sentence(std::size_t words) {
  for (std::size_t i = 0; i < words; ++i) {
    if (i != 0) text_ += ' ';
    text_ += kWords[Below(std::size(kWords))];
  }
}

/// One remark in eight is empty, one in eight is quoted because of its comma, and some of those
/// contain quotes.
void TableText::Mixed(std::size_t row) {
  text_ += std::to_string(100000 + row);
  Next();
  text_ += kKinds[Below(std::size(kKinds))];
  Next();
  Sentence(2 + Below(3));
  Next();
  Print("%.6f", Between(45.5, 49.0));
  Next();
  Print("%.6f", Between(5.9, 17.2));
  Next();
  if (!OneIn(20)) Print("%.1f", Between(3, 120));
  Next();
  Integer(3000);
  Next();
  DateTime();
  Next();
  const std::uint64_t remark = Below(8);
  if (remark == 1) {
    text_ += '"';
    Sentence(2 + Below(4));
    text_ += OneIn(4) ? ", \"\"old\"\" " : ", ";
    Sentence(2 + Below(4));
    text_ += '"';
  } else if (remark != 0) {
    Sentence(1 + Below(6));
  }
  EndRow();
}

void TableText::Numeric(std::size_t row) {
  text_ += std::to_string(row);
  Next();
  Integer(10);
  Next();
  Integer(1000000000000000000u);
  Next();
  Print("%.2f", Between(-1000, 1000));
  Next();
  Print("%.8f", Between(-180, 180));
  Next();
  Print("%.15g", Between(0, 1));
  Next();
  Print("%.17g", Between(0, 1e6));
  Next();
  Print("-%d", static_cast<int>(Below(1000000)));
  EndRow();
}

void TableText::Dates(std::size_t row) {
  text_ += std::to_string(row);
  Next();
  Date();
  Next();
  DateTime();
  Next();
  DateTime();
  text_ += 'Z';
  Next();
  DateTime();
  Print(".%03d", static_cast<int>(Below(1000)));
  EndRow();
}

void TableText::Text(std::size_t row) {
  Print("key-%zu", row);
  Next();
  text_ += kWords[Below(std::size(kWords))];
  Next();
  Sentence(4);
  Next();
  text_ += '"';
  Sentence(3);
  text_ += ", ";
  Sentence(3);
  text_ += '"';
  Next();
  Sentence(12);
  EndRow();
}

struct Layout {
  std::string_view header;
  void (TableText::*addRow)(std::size_t row);
};

constexpr Layout LayoutOf(TableKind kind) {
  switch (kind) {
    case TableKind::Numeric:
      return {"row,digit,key,amount,longitude,share,reading,change", &TableText::Numeric};
    case TableKind::Dates:
      return {"row,day,moment,utc,exact", &TableText::Dates};
    case TableKind::Text:
      return {"key,word,name,address,remark", &TableText::Text};
    default:
      return {"id,kind,name,latitude,longitude,length,load,inspected,remark", &TableText::Mixed};
  }
}

}  // namespace

std::string MakeTableText(TableKind kind, std::size_t bytes, std::uint64_t seed) {
  const Layout layout = LayoutOf(kind);
  TableText text(seed);
  text.Header(layout.header);
  for (std::size_t row = 0; text.Result().size() < bytes; ++row) (text.*layout.addRow)(row);
  return text.Result();
}

}  // namespace Data::benchmarks
