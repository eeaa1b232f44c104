#pragma once

#include <stdint.h>

namespace Data::Structures {

/// A 128-bit identifier in 16 bytes; the integers are little-endian. Its text, such as
/// "6b29fc40-ca47-1067-b31d-00dd010662da", shows the three integers and then the bytes in order.
struct _UUID {
  uint32_t data1;    ///< the first 8 digits of the text
  uint16_t data2;    ///< the next 4
  uint16_t data3;    ///< the next 4
  uint8_t data4[8];  ///< the last 16, two for each byte
};

}  // namespace Data::Structures
