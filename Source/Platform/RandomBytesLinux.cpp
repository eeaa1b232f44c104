#include <errno.h>
#include <sys/random.h>

#include <system_error>

#include "Platform/RandomBytes.h"

namespace Data::Platform {

void FillWithRandomBytes(void* buffer, std::size_t size) {
  auto* to = static_cast<char*>(buffer);
  while (size != 0) {
    const auto count = getrandom(to, size, 0);
    if (count < 0 && errno != EINTR) throw std::system_error(errno, std::generic_category());
    if (count <= 0) continue;
    to += count;
    size -= static_cast<std::size_t>(count);
  }
}

}  // namespace Data::Platform
