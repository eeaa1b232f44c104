#include <atomic>
#include <mutex>
#include <thread>
#include <vector>

#include "Data/Interfaces/IVariantDictionary.h"
#include "VariantSupport.h"

namespace Data::tests {

using Core::IObject;
using Core::Ptr;
using Core::Variant;
using Interfaces::IArray;

namespace {

constexpr int kThreads = 4;
constexpr int kRounds = 2'000;

/// Runs `work(thread)` on several threads at once.
template <class Work>
void OnThreads(Work work) {
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i) threads.emplace_back(work, i);
  for (auto& thread : threads) thread.join();
}

}  // namespace

TEST(Threads, ShareReferences) {
  const auto array = New(Data_CreateArray);
  const auto list = New(Data_CreateObjectList);
  list->Add(array.Get());
  const Variant value(array);
  const auto error = SomeError();
  OnThreads([&](int) {
    for (int i = 0; i < kRounds; ++i) {
      const Ptr<IObject> object(list->GetAt(0));
      const auto cast = Core::CastToInterface<IArray>(object);
      const Variant copy(value), errorCopy(error);
      const Ptr<Core::IErrorCode> sameError = errorCopy.As<Ptr<Core::IErrorCode>>();
    }
  });
  EXPECT_EQ(ReferencesTo(array), 3u);
  EXPECT_EQ(ReferencesTo(error), 1u);
}

TEST(Threads, LastReleaseDestroysOnAnyThread) {
  for (int round = 0; round < 50; ++round) {
    IObject* object = New(Data_CreateArray).Detach();
    for (int i = 1; i < kThreads; ++i) object->AddReference();
    std::atomic<int> destroyed{0};
    OnThreads([&](int) { destroyed += object->Release() == 0; });
    EXPECT_EQ(destroyed, 1);
  }
}

TEST(Threads, ObjectLocksGuardTheirContent) {
  const auto dictionary = New(Data_CreateVariantDictionary);
  OnThreads([&](int thread) {
    for (int i = 0; i < kRounds; ++i) {
      const std::lock_guard guard(*dictionary);
      const Variant key(i), value(thread);
      EXPECT_TRUE(dictionary->Set(&key, &value, nullptr));
    }
  });
  EXPECT_EQ(dictionary->GetCount(), static_cast<std::uint64_t>(kRounds));
}

TEST(Threads, TryLockFailsAtOnceWhileAnotherHoldsTheObject) {
  const auto array = New(Data_CreateArray);
  const auto triedElsewhere = [&] {
    bool got = false;
    std::thread([&] {
      got = array->TryLock();
      if (got) array->Unlock();
    }).join();
    return got;
  };
  {
    const std::lock_guard guard(*array);
    EXPECT_FALSE(triedElsewhere());
  }
  EXPECT_TRUE(triedElsewhere());
  const std::unique_lock guard(*array, std::try_to_lock);
  EXPECT_TRUE(guard.owns_lock());
}

TEST(Threads, ErrorsHaveNoLock) {
  const auto error = SomeError();
  error->Lock();
  error->Lock();
  EXPECT_FALSE(error->TryLock());
  error->Unlock();
  EXPECT_FALSE(error->TryLock());
}

}  // namespace Data::tests
