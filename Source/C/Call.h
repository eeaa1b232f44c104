#pragma once

#include <cstdint>
#include <new>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>

#include "Core/ErrorCodeImpl.h"
#include "Core/Failures.h"
#include "Core/Guard.h"
#include "Core/Ptr.h"
#include "Data/Interfaces/IString.h"
#include "Data/Interfaces/ITable.h"
#include "Data/Structures/Uuid.h"
#include "LayerData/layerdata.h"

/// What the functions of the C interface share.
namespace Data::c {

/// Runs the body of a function so that nothing thrown leaves it. The body returns false if there is
/// nothing to return; an operation may also store an error object in the body's argument.
template <class Body>
bool Call(ld_error** error, Body&& body) noexcept {
  Core::IErrorCode* raised = nullptr;
  bool hasResult = true;
  const bool isDone = Core::Guarded(&raised, [&] { hasResult = body(&raised); });
  if (isDone && hasResult && !raised) return true;
  if (isDone && !raised)
    Core::ReportError(&raised, "There is nothing to return.", Core::ErrorKind::Problem);
  auto** out = reinterpret_cast<Core::IErrorCode**>(error);
  if (out && !*out) {
    *out = raised;
  } else if (raised) {
    raised->Release();
  }
  return false;
}

/// The interface of a handle.
template <class Interface, class Handle>
Interface* Object(Handle* handle) {
  auto* object = reinterpret_cast<Interface*>(handle);
  if (object) Core::CheckInterface(object);
  return object;
}

/// The object whose operation is called.
/// @throws std::runtime_error "Pointer of " + type + " must not be null!"
template <class Interface, class Handle>
Interface& Self(Handle* handle) {
  auto* object = reinterpret_cast<Interface*>(handle);
  Core::CheckArgument(object);
  return *object;
}

/// An enumerator of the caller's, which can be any number.
template <class Enumeration>
Enumeration Enumerator(std::int64_t value, std::int64_t last, const char* type) {
  if (value < 0 || value > last)
    throw std::runtime_error("Invalid value " + std::to_string(value) + " of " + type + "!");
  return static_cast<Enumeration>(value);
}

/// Rejects a length that no memory can have, such as a negative number that became unsigned.
inline void CheckLength(std::uint64_t length) {
  constexpr std::uint64_t kAddresses = std::uint64_t{1} << 47;  // of a process, on both systems
  if (length > kAddresses) throw std::runtime_error("The length is too large!");
}

/// @throws std::runtime_error "Index out of range [%d/%d]!"
inline void CheckIndex(std::uint64_t index, std::uint64_t count) {
  if (index >= count)
    throw std::runtime_error("Index out of range [" + std::to_string(index) + "/" +
                             std::to_string(count) + "]!");
}

template <class T>
void CheckResult(T* result) {
  if (!result) throw std::runtime_error("The address of the result must not be null!");
}

/// Whether an operation succeeded. One that fails without an error object had no memory for it.
inline bool Done(bool succeeded, Core::IErrorCode** raised = nullptr) {
  if (!succeeded && !(raised && *raised)) throw std::bad_alloc();
  return succeeded;
}

/// The answer of an operation that answers zero if it fails, even if there is no memory for the
/// error object. Zero therefore counts if it comes again while there is memory for one.
template <class Operation>
auto Confirmed(Core::IErrorCode** raised, Operation operation) {
  const auto answer = operation();
  if (answer != decltype(answer){} || *raised) return answer;
  Core::MakePtr<Core::impl::ErrorCodeImpl>("", 0u);
  return operation();
}

template <class Answer, class Value>
void GiveAnswer(Answer* result, Value value) {
  if constexpr (std::is_pointer_v<Value>) {
    *result = reinterpret_cast<Answer>(value);
  } else {
    *result = static_cast<Answer>(value);
  }
}

/// Stores an object that carries no reference yet.
template <class Handle, class Interface>
void GiveObject(Handle** result, Interface* object) {
  *result = reinterpret_cast<Handle*>(Core::Ptr<Interface>(object).Detach());
}

/// A new object on its way to the caller.
template <class Interface>
class Out {
 public:
  template <class Handle>
  explicit Out(Handle** out) : out_(reinterpret_cast<Interface**>(out)) {
    CheckResult(out);
  }

  Interface** Receive() { return object_.Receive(); }
  void Give() { *out_ = object_.Detach(); }

 private:
  Interface** out_;
  Core::Ptr<Interface> object_;
};

inline const Structures::_VARIANT* Record(const ld_variant* value) {
  return reinterpret_cast<const Structures::_VARIANT*>(value);
}
inline Structures::_VARIANT* Record(ld_variant* value) {
  return reinterpret_cast<Structures::_VARIANT*>(value);
}
inline const Structures::_UUID* Record(const ld_uuid* uuid) {
  return reinterpret_cast<const Structures::_UUID*>(uuid);
}
inline Structures::_UUID* Record(ld_uuid* uuid) {
  return reinterpret_cast<Structures::_UUID*>(uuid);
}

// Operations that C offers in another way.

/// `IObject::Unlock`, which may do anything to an object that is not locked.
void Unlock(Core::IObject& object);
/// `ITable::GetCell`, which hides a wrong column.
bool GetCell(Interfaces::ITable& table, std::int64_t row, std::int32_t column,
             Structures::_VARIANT* out);
/// `ITable::InsertColumn`, which never returns for an index before the end.
Interfaces::IColumn* InsertColumnAtEnd(Interfaces::ITable& table, const char* name,
                                       std::int32_t index);
/// `Data_UuidToString`, which says nothing about a null UUID.
bool WriteUuid(const Structures::_UUID* uuid, Interfaces::IString** out);
/// `Data_UuidFromString`, which says nothing about a wrong text.
bool ReadUuid(const char* text, Structures::_UUID* uuid);

}  // namespace Data::c
