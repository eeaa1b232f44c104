#include "Core/VariantConversions.h"
#include "Data/Exports.h"
#include "Exports/Factory.h"
#include "Text/MultiByteStringImpl.h"
#include "Text/SecureString.h"

using namespace Data::Interfaces;
using namespace Data::impl;

bool Data_CreateString(IString** out) { return Create<MultiByteStringImpl>(out); }

bool Data_CreateSecureString(IString* text, ISecureString** out, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckArgument(text);
    Core::CheckOutPointer(out);
    *out = Core::MakePtr<SecureString>(*text).Detach();
  });
}
