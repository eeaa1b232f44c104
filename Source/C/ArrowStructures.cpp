#include "C/ArrowStructures.h"

#include <cerrno>
#include <cstddef>
#include <new>

namespace Data::c {

namespace {

/// The children of a structure.
template <class Structure>
class Children {
 public:
  explicit Children(std::size_t count) : structures_(count) {
    for (Structure& child : structures_) addresses_.push_back(&child);
  }
  Children(const Children&) = delete;
  Children& operator=(const Children&) = delete;
  /// Those that were moved out have been left without a release function.
  ~Children() {
    for (Structure& child : structures_)
      if (child.release) child.release(&child);
  }

  Structure& operator[](std::size_t index) { return structures_[index]; }
  void GiveTo(Structure& parent) {
    parent.n_children = static_cast<std::int64_t>(structures_.size());
    parent.children = addresses_.data();
  }

 private:
  std::vector<Structure> structures_;
  std::vector<Structure*> addresses_;
};

/// Lets a structure own an object.
template <class Structure, class Owned>
void Own(Structure& structure, std::unique_ptr<Owned> owned) {
  structure.private_data = owned.release();
  structure.release = [](Structure* self) {
    if (!self->release) return;
    self->release = nullptr;
    delete static_cast<Owned*>(std::exchange(self->private_data, nullptr));
  };
}

struct TableSchema {
  explicit TableSchema(const std::vector<ArrowField>& fields) : children(fields.size()) {
    for (std::size_t i = 0; i < fields.size(); ++i) {
      auto field = std::make_unique<ArrowField>(fields[i]);
      children[i].format = field->format.c_str();
      children[i].name = field->name.c_str();
      children[i].flags = ARROW_FLAG_NULLABLE;
      Own(children[i], std::move(field));
    }
  }
  Children<ArrowSchema> children;
};

struct TableArray {
  explicit TableArray(std::size_t columnCount) : children(columnCount) {}

  const void* validity = nullptr;  ///< no row is null
  Children<ArrowArray> children;
};

ArrowArray MakeColumnArray(std::unique_ptr<ArrowColumn> column) {
  ArrowArray array{};
  array.length = column->values.length;
  array.null_count = column->values.nullCount;
  array.n_buffers = static_cast<std::int64_t>(column->buffers.size());
  array.buffers = column->buffers.data();
  Own(array, std::move(column));
  return array;
}

// -- Streams --

class Stream {
 public:
  Stream(std::vector<ArrowField> fields, std::vector<ArrowBatch> batches)
      : fields_(std::move(fields)), batches_(std::move(batches)) {}

  ArrowSchema Schema() const { return MakeArrowSchema(fields_); }
  /// A released array after the last batch.
  ArrowArray Next() {
    if (next_ == batches_.size()) return {};
    const ArrowArray array = MakeArrowArray(batches_[next_]);
    ++next_;
    return array;
  }
  const char* LastError() const { return lastError_; }

  /// Stores what `make` returns. All that can fail is the memory.
  template <class Structure, class Make>
  int Give(Structure* out, Make&& make) noexcept {
    lastError_ = nullptr;
    try {
      *out = make();
      return 0;
    } catch (const std::bad_alloc&) {
      lastError_ = "std::bad_alloc";
      return ENOMEM;
    }
  }

  static Stream& Of(ArrowArrayStream* stream) {
    return *static_cast<Stream*>(stream->private_data);
  }

 private:
  std::vector<ArrowField> fields_;
  std::vector<ArrowBatch> batches_;
  std::size_t next_ = 0;
  const char* lastError_ = nullptr;
};

}  // namespace

void ArrowColumn::AddBuffer(const void* buffer) {
  // A buffer without bytes still has an address, at which some consumers look. The validity may be
  // missing.
  static constexpr std::uint64_t kNoBytes = 0;
  buffers.push_back(buffer || buffers.empty() ? buffer : &kNoBytes);
}

ArrowSchema MakeArrowSchema(const std::vector<ArrowField>& fields) {
  auto owned = std::make_unique<TableSchema>(fields);
  ArrowSchema schema{};
  schema.format = "+s";
  schema.name = "";
  owned->children.GiveTo(schema);
  Own(schema, std::move(owned));
  return schema;
}

ArrowArray MakeArrowArray(ArrowBatch& batch) {
  auto owned = std::make_unique<TableArray>(batch.columns.size());
  std::vector<std::unique_ptr<ArrowColumn>> columns;
  for (std::size_t i = 0; i < batch.columns.size(); ++i)
    columns.push_back(std::make_unique<ArrowColumn>());
  // From here on nothing fails. Moving a column leaves its buffers where they are.
  for (std::size_t i = 0; i < batch.columns.size(); ++i) {
    *columns[i] = std::move(batch.columns[i]);
    owned->children[i] = MakeColumnArray(std::move(columns[i]));
  }
  ArrowArray array{};
  array.length = batch.length;
  array.n_buffers = 1;
  array.buffers = &owned->validity;
  owned->children.GiveTo(array);
  Own(array, std::move(owned));
  return array;
}

ArrowArrayStream MakeArrowStream(std::vector<ArrowField> fields, std::vector<ArrowBatch> batches) {
  ArrowArrayStream stream{};
  stream.get_schema = [](ArrowArrayStream* self, ArrowSchema* out) {
    Stream& state = Stream::Of(self);
    return state.Give(out, [&] { return state.Schema(); });
  };
  stream.get_next = [](ArrowArrayStream* self, ArrowArray* out) {
    Stream& state = Stream::Of(self);
    return state.Give(out, [&] { return state.Next(); });
  };
  stream.get_last_error = [](ArrowArrayStream* self) { return Stream::Of(self).LastError(); };
  Own(stream, std::make_unique<Stream>(std::move(fields), std::move(batches)));
  return stream;
}

}  // namespace Data::c
