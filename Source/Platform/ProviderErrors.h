#pragma once

#include <openssl/err.h>

namespace Data::Platform {

/// OpenSSL reports errors on a queue of the calling thread, which belongs to the
/// program. This takes off again what was added during its lifetime. Linux only.
class ProviderErrors {
 public:
  // An empty queue cannot be marked, but then everything on it later is new.
  ProviderErrors() { ERR_set_mark(); }
  ProviderErrors(const ProviderErrors&) = delete;
  ProviderErrors& operator=(const ProviderErrors&) = delete;
  ~ProviderErrors() { ERR_pop_to_mark(); }
};

}  // namespace Data::Platform
