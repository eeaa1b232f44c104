#pragma once

#include "Core/ObjectBase.h"
#include "Core/Ptr.h"
#include "Core/Variant.h"

namespace Data::impl {

/// Frees containers that hold each other, however deeply nested, without recursion.
///
/// If each container released its items in its destructor, a chain of containers would use stack
/// for every link. Instead, the first container to lose its last reference starts a teardown, which
/// takes over the references that the container holds. An item that is a container of this library,
/// and loses its last reference too, joins a list that is linked through the containers themselves,
/// so nothing is allocated; any other item is released as usual. The teardown frees the containers
/// on the list until it is empty.
/// Tables, rows and single values take part, because their cells may hold containers.
class Teardown {
 public:
  /// Destroys a container that has no references left. Its class must be listed in
  /// Tables/Teardown.cpp.
  static void End(Core::IObject& container) noexcept;

  /// Takes over a reference from a container that is being destroyed.
  void Release(Core::Ptr<Core::IObject>& object) {
    if (object) Release(object.Detach());
  }
  void Release(Core::Variant& value) {
    if (Core::ReferencedObject(value)) Release(Core::ReferencedObject(value.Detach()));
  }

 private:
  void Release(Core::IObject* object);

  Core::IObject* next_ = nullptr;  ///< the first container to be freed
  bool hasCalledOut_ = false;      ///< whether an item that is no container was released
};

/// `ObjectBase` for classes whose objects may hold each other. Each has an operation
/// `void ReleaseItems(Teardown&)` that hands over every reference it holds, and takes each out of
/// the container before it is released.
template <class Interface>
class ContainerBase : public Core::ObjectBase<Interface> {
 public:
  void Destroy() override { Teardown::End(*this); }

 private:
  friend Teardown;

  Core::IObject* nextInTeardown_ = nullptr;
};

}  // namespace Data::impl
