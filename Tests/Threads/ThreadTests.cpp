#include "Prelude.h"

#include <mutex>

namespace Data::tests {

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

/// The objects of a large text share their memory, but each is freed by itself: in any order, on
/// any thread, even long after the table.
TEST(Threads, EndTheObjectsOfATableThatIsGone) {
  constexpr int kRows = 20'000;
  std::string text = "name,at\n";
  for (int i = 0; i < kRows; ++i) {
    const std::string number = std::to_string(i);
    text += "the name of row " + number + ",2024-01-01T00:00:01." + number + "\n";
  }
  auto table = Made<ITable>(Data_ParseCsv, text.data(), text.size());
  std::vector<Ptr<IRow>> rows;
  std::vector<Ptr<IString>> names;
  std::vector<Ptr<IDateTime>> times;
  for (int i = 0; i + 2 < kRows; i += 7) {
    rows.emplace_back(table->GetRow(i));
    names.push_back(Core::ToStringObject(*table->GetCellAt(i + 1, 0)));
    times.push_back(Core::GetDateTime(*table->GetCellAt(i + 2, 1)));
  }
  table.Reset();
  EXPECT_EQ(Core::ToText(*rows[1]->GetCellAt(0)), "the name of row 7");
  EXPECT_STREQ(names[1]->GetUtf8(), "the name of row 8");
  names[1]->SetUtf8(text.data(), text.size());
  EXPECT_EQ(times[1]->GetNanosecond(), 900'000'000u);
  OnThreads([&](int thread) {
    if (thread == 0) rows.clear();
    if (thread == 1) names.clear();
    while (thread == 2 && !times.empty()) times.pop_back();
  });
}

TEST(Threads, ReadOneSecureString) {
  const std::string text(1000, 't');
  const auto secret = Made<ISecureString>(Data_CreateSecureString, MakeString(text).Get());
  OnThreads([&](int) {
    for (int i = 0; i < 50; ++i)
      EXPECT_EQ(Made<IString>(&ISecureString::GetText, secret.Get())->GetUtf8(), text);
  });
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
