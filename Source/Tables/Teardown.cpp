#include "Containers/Teardown.h"

#include <typeinfo>

#include "Containers/AllowedValueImpl.h"
#include "Containers/ConfigurationImpl.h"
#include "Containers/ConstrainedValueImpl.h"
#include "Containers/ObjectListImpl.h"
#include "Containers/PropertiesImpl.h"
#include "Containers/VariantDictionaryImpl.h"
#include "Containers/VariantListImpl.h"
#include "Containers/VariantPairListImpl.h"
#include "Tables/RowImpl.h"
#include "Tables/TableImpl.h"
#include "Tables/ValueImpl.h"

// This file is in Tables, not beside its header, because tables, rows and values take part.
namespace Data::impl {

using Core::IObject;

namespace {

template <class... Containers>
struct ClassList {
  /// Calls `visit` with the object cast to its class.
  /// @return false for an object of any other class
  template <class Visit>
  static bool VisitAsItsClass(IObject& object, const Visit& visit) {
    const std::type_info* type = Core::ClassOf(object);
    // These classes are internal to the library, so each has its type information at one address.
    return ((type == &typeid(Containers) && (visit(static_cast<Containers&>(object)), true)) ||
            ...);
  }
};

using Containers = ClassList<ObjectListImpl, VariantListImpl, VariantDictionaryImpl,
                             VariantPairListImpl, ConfigurationImpl, PropertiesImpl,
                             ConstrainedValueImpl, AllowedValueImpl, TableImpl, RowImpl, ValueImpl>;

}  // namespace

void Teardown::Release(IObject* object) {
  const bool isContainer = Containers::VisitAsItsClass(*object, [&](auto& container) {
    if (!container.DropReference()) return;
    container.nextInTeardown_ = std::exchange(next_, object);
  });
  if (isContainer) return;
  hasCalledOut_ = true;
  object->Release();
}

void Teardown::End(IObject& container) noexcept {
  Teardown teardown;
  teardown.next_ = &container;
  while (teardown.next_) {
    Containers::VisitAsItsClass(*teardown.next_, [&](auto& ending) {
      teardown.next_ = ending.nextInTeardown_;
      // Releasing an item that the program implements may run code that uses the container and even
      // adds items. The reference keeps such a use from destroying the container a second time.
      ending.AddReference();
      do {
        teardown.hasCalledOut_ = false;
        ending.ReleaseItems(teardown);
      } while (teardown.hasCalledOut_);
      delete &ending;
    });
  }
}

}  // namespace Data::impl
