#pragma once

#include <string>
#include <string_view>

#include "Documents/JsonText.h"
#include "Documents/RapidJson.h"

namespace Data::impl {

/// A text as a stream for rapidjson's in-place reader. That reader unescapes a string onto itself;
/// here the text stays untouched, and only a string with escapes is unescaped, into a buffer.
///
/// What the reader calls for a string:
///     Take()                            the opening quote
///     PutBegin()
///     repeatedly: ScanCopyUnescapedString(), specialised below: skips plain bytes
///                 Put(byte) for each byte of an escape
///     Take(), Put('\0')                 the closing quote, and a terminator in its place
///     PutEnd()                          the length, terminator included
/// Then it calls the handler's String or Key, with pointers that mean nothing here: `JsonEvents`
/// takes the string from the stream instead. It calls RawNumber after taking the number's bytes.
class JsonStream {
 public:
  using Ch = char;

  /// @param text  followed by a zero byte, where the reader stops
  explicit JsonStream(std::string_view text)
      : begin_(text.data()), end_(begin_ + text.size()), position_(begin_), run_(begin_, begin_) {}

  char Peek() const { return *position_; }
  char Take() { return *position_++; }
  std::size_t Tell() const { return static_cast<std::size_t>(position_ - begin_); }
  void SkipTo(std::size_t position) { position_ = begin_ + position; }
  /// The last bytes taken.
  std::string_view Taken(std::size_t length) const { return {position_ - length, length}; }

  /// A string begins at the current position.
  char* PutBegin() {
    decoded_.clear();
    isDecoded_ = false;
    StartRun();
    return nullptr;
  }
  /// Skips bytes that need no unescaping.
  void SkipPlainRun() {
    position_ = EndOfPlainRun(position_, end_);
    run_ = {run_.data(), static_cast<std::size_t>(position_ - run_.data())};
  }
  /// An unescaped byte, or the terminator after the closing quote.
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
  /// The string that was read last; valid until the next one begins.
  std::string_view String() const { return isDecoded_ ? std::string_view(decoded_) : run_; }

 private:
  void StartRun() { run_ = {position_, position_}; }

  const char* begin_;
  const char* end_;
  const char* position_;
  std::string_view run_;  // plain bytes since the last escape
  std::string decoded_;   // the decoded text before them
  bool isDecoded_ = false;
};

using JsonReader =
    rapidjson::GenericReader<rapidjson::UTF8<>, rapidjson::UTF8<>, ThrowingAllocator>;

}  // namespace Data::impl

namespace rapidjson {

/// The reader's hook for skipping plain text faster than byte by byte.
template <>
template <>
inline void Data::impl::JsonReader::ScanCopyUnescapedString(Data::impl::JsonStream& in,
                                                            Data::impl::JsonStream&) {
  in.SkipPlainRun();
}

}  // namespace rapidjson
