// Keys of every type: a value that was set is found until the map is cleared, and the keys that the
// map lists are the ones it contains.

#include "Core/VariantComparison.h"
#include "Data/Interfaces/IVariantDictionary.h"
#include "Data/Interfaces/IVariantList.h"
#include "Fuzz.h"

using namespace Data::fuzz;

namespace {

/// Whether a key equals itself, so that it can be found again.
bool EqualsItself(const Variant& key) {
  return Core::AreComparable(key, key) && !Core::IsNullAddress(key) &&
         Core::KindOf(key.Type()) != Core::ValueKind::Array;
}

void SetAndGet(IVariantDictionary& map, Input& input) {
  const Variant key = AnyValue(input), value = AnyValue(input);
  const std::uint64_t before = map.GetCount();
  Error error;
  const bool contained = map.Contains(&key, error.Receive());
  const bool isSet = map.Set(&key, &value, error.Receive());
  Require(map.GetCount() == before + (isSet && !contained ? 1 : 0));
  if (!isSet) return;
  Variant found;
  const bool isFound = map.Get(&key, &found, error.Receive());
  Require(isFound == map.Contains(&key, error.Receive()));
  if (!EqualsItself(key)) return;
  Require(isFound && found.type == value.type && found.value[0] == value.value[0] &&
          found.value[1] == value.value[1]);
}

void CheckKeys(IVariantDictionary& map) {
  Ptr<IVariantList> keys;
  Require(map.GetKeys(keys.Receive(), nullptr));
  Require(keys->GetCount() == map.GetCount() && map.IsEmpty() == (map.GetCount() == 0));
  for (std::uint64_t i = 0; i < keys->GetCount(); ++i) {
    Variant key;
    Require(keys->GetAt(i, &key));
    if (EqualsItself(key)) Require(map.Contains(&key, nullptr));
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const char* data, std::size_t size) {
  Input input(data, std::min<std::size_t>(size, 400));
  const auto map = New(Data_CreateVariantDictionary);
  while (!input.IsEmpty()) {
    if (input.Byte() < 4) Require(map->Clear() && map->IsEmpty());
    SetAndGet(*map, input);
  }
  CheckKeys(*map);
  return 0;
}
