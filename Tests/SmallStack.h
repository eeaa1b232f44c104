#pragma once

#include "Prelude.h"

#include <pthread.h>

namespace Data::tests {

/// Runs a test on a thread with a stack of 1 MB, the default on Windows: code that
/// recurses into its input overflows it.
inline void OnSmallStack(std::function<void()> test) {
  pthread_attr_t attributes;
  ASSERT_EQ(pthread_attr_init(&attributes), 0);
  ASSERT_EQ(pthread_attr_setstacksize(&attributes, 1 << 20), 0);
  const auto run = [](void* function) -> void* {
    (*static_cast<std::function<void()>*>(function))();
    return nullptr;
  };
  pthread_t thread;
  ASSERT_EQ(pthread_create(&thread, &attributes, run, &test), 0);
  pthread_join(thread, nullptr);
  pthread_attr_destroy(&attributes);
}

}  // namespace Data::tests
