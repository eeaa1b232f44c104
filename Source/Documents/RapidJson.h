#pragma once

#include <cstddef>
#include <cstdlib>
#include <new>
#include <stdexcept>

/// rapidjson as this library uses it. Include this header before any of rapidjson's own: all
/// sources must see them with the same settings.

// 64-bit sizes: no length or count that fits in memory overflows.
#define RAPIDJSON_NO_SIZETYPEDEFINE
namespace rapidjson {
using SizeType = std::size_t;
}

namespace Data::impl {

[[noreturn]] inline void ThrowJsonInvariant() {
  throw std::logic_error("An invariant of the JSON library does not hold");
}

}  // namespace Data::impl

// A broken invariant is a failure like any other; it never ends the process.
#define RAPIDJSON_ASSERT(condition) \
  ((condition) ? static_cast<void>(0) : ::Data::impl::ThrowJsonInvariant())

#include <rapidjson/document.h>
#include <rapidjson/reader.h>
#include <rapidjson/writer.h>

// The streams and the specialisations of its reader and writer (JsonStream.h, JsonWriter.h) rely on
// how this version calls them.
static_assert(RAPIDJSON_MAJOR_VERSION == 1 && RAPIDJSON_MINOR_VERSION == 1);

namespace Data::impl {

/// The base allocator for all of rapidjson's memory. rapidjson uses the null pointer of a failed
/// allocation without checking it, so the failure is thrown.
struct ThrowingAllocator {
  static constexpr bool kNeedFree = true;

  void* Malloc(std::size_t size) { return size == 0 ? nullptr : Checked(std::malloc(size)); }
  void* Realloc(void* block, std::size_t, std::size_t newSize) {
    if (newSize != 0) return Checked(std::realloc(block, newSize));
    std::free(block);
    return nullptr;
  }
  static void Free(void* block) { std::free(block); }

 private:
  static void* Checked(void* block) {
    if (!block) throw std::bad_alloc();
    return block;
  }
};

using JsonPool = rapidjson::MemoryPoolAllocator<ThrowingAllocator>;
using JsonValue = rapidjson::GenericValue<rapidjson::UTF8<>, JsonPool>;
/// A tree of values; its root is null until a text is read into it.
using JsonTree = rapidjson::GenericDocument<rapidjson::UTF8<>, JsonPool, ThrowingAllocator>;

}  // namespace Data::impl
