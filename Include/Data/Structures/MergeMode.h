#pragma once

#include <stdint.h>

namespace Data::Structures {

/// Which rows without a partner a merge of two tables keeps (see `ITable::Merge`).
enum class MergeMode : int32_t {
  Matching = 0,  ///< none
  AllLeft = 1,   ///< left rows without a partner
  All = 2        ///< left rows, then right rows without a partner
};

}  // namespace Data::Structures
