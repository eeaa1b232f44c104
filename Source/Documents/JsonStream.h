#pragma once

#include <string>
#include <string_view>

#include "Documents/JsonText.h"
#include "Documents/RapidJson.h"

namespace Data::impl {

/// A text as rapidjson's reader reads it in place. The reader believes that it
/// decodes strings onto themselves; here the text stays untouched, and only a
/// string that has escapes is decoded into a buffer.
class JsonStream {
 public:
  using Ch = char;

  /// @param text  with a zero byte right behind it, which ends it for the reader
  explicit JsonStream(std::string_view text)
      : begin_(text.data()), end_(begin_ + text.size()), position_(begin_), run_(begin_, begin_) {}

  char Peek() const { return *position_; }
  char Take() { return *position_++; }
  std::size_t Tell() const { return static_cast<std::size_t>(position_ - begin_); }
  /// The last bytes taken.
  std::string_view Taken(std::size_t length) const { return {position_ - length, length}; }

  /// The reader begins a string behind its opening quote.
  char* PutBegin() {
    decoded_.clear();
    isDecoded_ = false;
    StartRun();
    return nullptr;
  }
  /// Bytes that stand in the string as they are.
  void SkipPlainRun() {
    position_ = EndOfPlainRun(position_, end_);
    run_ = {run_.data(), static_cast<std::size_t>(position_ - run_.data())};
  }
  /// A byte of an escape, or the terminator that the reader adds after the closing quote.
  void Put(char byte) {
    if (byte == '\0' && position_[-1] == '"') return;
    decoded_ += run_;
    decoded_ += byte;
    isDecoded_ = true;
    StartRun();
  }
  /// @return the length of the string, the reader's terminator included
  std::size_t PutEnd(char*) {
    if (isDecoded_) decoded_ += run_;
    return String().size() + 1;
  }
  /// The string that was read last.
  std::string_view String() const { return isDecoded_ ? std::string_view(decoded_) : run_; }

 private:
  void StartRun() { run_ = {position_, position_}; }

  const char* begin_;
  const char* end_;
  const char* position_;
  std::string_view run_;  // plain bytes since the last escape
  std::string decoded_;   // what came before them
  bool isDecoded_ = false;
};

using JsonReader =
    rapidjson::GenericReader<rapidjson::UTF8<>, rapidjson::UTF8<>, ThrowingAllocator>;

}  // namespace Data::impl

namespace rapidjson {

/// The reader's place for a faster way over plain text; by default it takes
/// strings byte by byte.
template <>
template <>
inline void Data::impl::JsonReader::ScanCopyUnescapedString(Data::impl::JsonStream& in,
                                                            Data::impl::JsonStream&) {
  in.SkipPlainRun();
}

}  // namespace rapidjson
