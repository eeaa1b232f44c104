#pragma once

#include <LayerData/layerdata.h>

#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// Arrow structures built by hand, as a producer would.
namespace c_tests {

template <class T>
std::string Bytes(std::initializer_list<T> values) {
  std::string bytes(values.size() * sizeof(T), '\0');
  if (values.size() > 0) std::memcpy(bytes.data(), values.begin(), bytes.size());
  return bytes;
}

inline constexpr std::nullopt_t kNoBuffer = std::nullopt;

/// A column: its type and its values.
struct Arrow {
  using Buffers = std::vector<std::optional<std::string>>;

  std::string format;
  std::int64_t length = 0;
  Buffers buffers = {};
  std::vector<Arrow> children = {};
  std::int64_t offset = 0;
  std::string name = "x";
  std::int64_t nullCount = -1;
  std::vector<Arrow> dictionary = {};

  Arrow Named(std::string newName) && {
    name = std::move(newName);
    return std::move(*this);
  }
  Arrow Sliced(std::int64_t newOffset, std::int64_t newLength) && {
    offset = newOffset;
    length = newLength;
    return std::move(*this);
  }
  Arrow With(Arrow values) && {
    dictionary.push_back(std::move(values));
    return std::move(*this);
  }
};

/// How many structures have been made and not been released yet.
inline int unreleased = 0;

template <class Structure>
struct Holder {
  explicit Holder(const Arrow& source) : arrow(source) {}

  Arrow arrow;
  std::vector<Structure> children;
  std::vector<Structure*> addresses;
  Structure dictionary{};
  std::vector<const void*> buffers;

  static void Release(Structure* structure) {
    const std::unique_ptr<Holder> holder(static_cast<Holder*>(structure->private_data));
    for (Structure& child : holder->children)
      if (child.release) child.release(&child);
    if (holder->dictionary.release) holder->dictionary.release(&holder->dictionary);
    structure->release = nullptr;
    --unreleased;
  }

  /// Fills a structure, with children that `make` makes.
  template <class Make>
  static Holder* Hold(const Arrow& arrow, Structure* out, Make&& make) {
    auto holder = std::make_unique<Holder>(arrow);
    for (const Arrow& child : holder->arrow.children) holder->children.push_back(make(child));
    for (Structure& child : holder->children) holder->addresses.push_back(&child);
    if (!arrow.dictionary.empty()) {
      holder->dictionary = make(arrow.dictionary[0]);
      out->dictionary = &holder->dictionary;
    }
    out->n_children = static_cast<std::int64_t>(holder->children.size());
    out->children = holder->addresses.data();
    out->release = Release;
    out->private_data = holder.get();
    ++unreleased;
    return holder.release();
  }
};

inline ArrowSchema SchemaOf(const Arrow& arrow) {
  ArrowSchema schema{};
  auto* const holder = Holder<ArrowSchema>::Hold(arrow, &schema, SchemaOf);
  schema.format = holder->arrow.format.c_str();
  schema.name = holder->arrow.name.c_str();
  schema.flags = ARROW_FLAG_NULLABLE;
  return schema;
}

inline ArrowArray ArrayOf(const Arrow& arrow) {
  ArrowArray array{};
  auto* const holder = Holder<ArrowArray>::Hold(arrow, &array, ArrayOf);
  for (const auto& buffer : holder->arrow.buffers)
    holder->buffers.push_back(buffer ? buffer->data() : nullptr);
  array.length = arrow.length;
  array.null_count = arrow.nullCount;
  array.offset = arrow.offset;
  array.n_buffers = static_cast<std::int64_t>(holder->buffers.size());
  array.buffers = holder->buffers.data();
  return array;
}

/// A batch of columns.
inline Arrow Batch(std::vector<Arrow> columns) {
  const std::int64_t length = columns.empty() ? 0 : columns[0].length;
  return {"+s", length, {kNoBuffer}, std::move(columns)};
}

}  // namespace c_tests
