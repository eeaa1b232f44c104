#pragma once

#include <stdint.h>

namespace Data::Structures {

/// Which unmatched rows a merge of two tables keeps (see `ITable::Merge`).
enum class MergeMode : int32_t {
  Matching = 0,  ///< none
  AllLeft = 1,   ///< unmatched left rows
  All = 2        ///< unmatched left rows and, at the end, unmatched right rows
};

}  // namespace Data::Structures
