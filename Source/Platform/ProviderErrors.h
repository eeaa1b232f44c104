#pragma once

#include <openssl/err.h>

namespace Data::Platform {

/// Removes the errors that OpenSSL adds to the calling thread's queue during the lifetime of this
/// object: the program uses the same queue. Linux only.
class ProviderErrors {
 public:
  // An empty queue cannot be marked; then everything added later is removed.
  ProviderErrors() { ERR_set_mark(); }
  ProviderErrors(const ProviderErrors&) = delete;
  ProviderErrors& operator=(const ProviderErrors&) = delete;
  ~ProviderErrors() { ERR_pop_to_mark(); }
};

}  // namespace Data::Platform
