#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "C/ColumnReading.h"
#include "LayerData/layerdata.h"
#include "Text/TextBuffer.h"

/// The Arrow structures that the library gives to others. Their release functions keep to the
/// interface: a child may be moved out and released on its own, and a structure that was released
/// or moved is left alone.
namespace Data::c {

/// The name of a column and its Arrow format.
struct ArrowField {
  std::string name;
  std::string format;
};

/// The values of a column in a batch.
struct ArrowColumn {
  /// @param buffer  part of this column, whose vectors must not change any more
  void AddBuffer(const void* buffer);

  ColumnBuffers values{ColumnFormat::Int64};
  /// What stands in the place of some of the values in a narrower type.
  std::vector<char> packed;
  std::vector<std::int32_t> offsets;
  impl::TextBuffer texts;
  bool areIntegers = false;  ///< of a column that has turned out to have other numbers as well
  /// The validity and one or two more, in the order of Arrow.
  std::vector<const void*> buffers;
};

struct ArrowBatch {
  std::int64_t length = 0;
  std::vector<ArrowColumn> columns;
};

/// @throws std::bad_alloc
ArrowSchema MakeArrowSchema(const std::vector<ArrowField>& fields);
/// Takes the columns out of the batch.
/// @throws std::bad_alloc, the batch unchanged
ArrowArray MakeArrowArray(ArrowBatch& batch);
/// @throws std::bad_alloc
ArrowArrayStream MakeArrowStream(std::vector<ArrowField> fields, std::vector<ArrowBatch> batches);

}  // namespace Data::c
