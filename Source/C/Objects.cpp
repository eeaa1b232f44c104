#include <algorithm>
#include <array>

#include "C/Call.h"
#include "Core/StringFormat.h"
#include "Data/Exports.h"
#include "Data/Interfaces/IRow.h"
#include "Data/Version.h"

using namespace Data;
using namespace Data::c;
using namespace Data::Interfaces;

namespace {

/// `MergeOnColumns` takes its keys as variable arguments, and reads only as many as it is told.
/// So it is always given this many.
constexpr std::uint32_t kMostKeys = 16;

}  // namespace

namespace Data::c {

void Unlock(Core::IObject& object) {
  const bool wasFree = object.TryLock();
  object.Unlock();
  if (wasFree) throw std::runtime_error("The object is not locked!");
}

bool GetCell(ITable& table, std::int64_t row, std::int32_t column, Structures::_VARIANT* out) {
  return table.GetRow(row)->GetCell(column, out);
}

bool WriteUuid(const Structures::_UUID* uuid, IString** out) {
  Core::CheckArgument(uuid);
  return Data_UuidToString(uuid, out);
}

bool ReadUuid(const char* text, Structures::_UUID* uuid) {
  Core::CheckArgument(text);
  if (!Data_UuidFromString(text, uuid)) throw std::runtime_error("The text is not a UUID!");
  return true;
}

IColumn* InsertColumnAtEnd(ITable& table, const char* name, std::int32_t index) {
  Core::CheckArgument(name);
  const std::int64_t count = table.GetColumnCount();
  if (index >= 0 && index < count && !table.HasColumn(name))
    throw std::runtime_error(Core::StringFormat("Columns can only be added at the end [%d/%d]!",
                                                index, static_cast<int>(count)));
  return table.InsertColumn(name, index);
}

}  // namespace Data::c

uint32_t ld_version(void) { return LAYERDATA_VERSION; }

const char* ld_version_text(void) {
#define TEXT_OF(number) TEXT(number)
#define TEXT(number) #number
  return TEXT_OF(LAYERDATA_VERSION_MAJOR) "." TEXT_OF(LAYERDATA_VERSION_MINOR) "." TEXT_OF(
      LAYERDATA_VERSION_PATCH);
}

void ld_retain(void* object) {
  if (object) static_cast<Core::IObject*>(object)->AddReference();
}

void ld_release(void* object) {
  Call(nullptr, [&](Core::IErrorCode**) {
    if (object) static_cast<Core::IObject*>(object)->Release();
    return true;
  });
}

const char* ld_error_message(const ld_error* error) {
  auto* object = reinterpret_cast<Core::IErrorCode*>(const_cast<ld_error*>(error));
  return object ? object->GetMessage() : "";
}

uint32_t ld_error_code(const ld_error* error) {
  auto* object = reinterpret_cast<Core::IErrorCode*>(const_cast<ld_error*>(error));
  return object ? object->GetCode() : 0;
}

bool ld_table_merge_on_columns(ld_table* self, ld_table* right, const char* const* keys,
                               uint32_t key_count, ld_merge_mode mode, ld_table** out,
                               ld_error** error) {
  return Call(error, [&](Core::IErrorCode** raised) {
    Out<ITable> merged(out);
    if (key_count > 0) Core::CheckArgument(keys);
    if (key_count > kMostKeys)
      throw std::runtime_error(Core::StringFormat("At most %d key columns!", int{kMostKeys}));
    std::array<const char*, kMostKeys> k{};
    std::copy_n(keys, key_count, k.begin());
    if (!Done(Self<ITable>(self).MergeOnColumns(
                  Object<ITable>(right),
                  Enumerator<Structures::MergeMode>(mode, LD_MERGE_MODE_ALL, "ld_merge_mode"),
                  merged.Receive(), raised, key_count, k[0], k[1], k[2], k[3], k[4], k[5], k[6],
                  k[7], k[8], k[9], k[10], k[11], k[12], k[13], k[14], k[15]),
              raised))
      return false;
    merged.Give();
    return true;
  });
}
