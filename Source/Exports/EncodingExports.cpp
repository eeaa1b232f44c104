#include "Data/Exports.h"
#include "Exports/Factory.h"
#include "Text/Base64Impl.h"

using namespace Data::Interfaces;
using namespace Data::impl;

namespace {

bool CreateBase64(const Base64Alphabet& alphabet, IEncoding** out, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckOutPointer(out);
    HandOut<IEncoding>(Core::MakePtr<Base64Impl>(alphabet), out);
  });
}

}  // namespace

bool Data_CreateEncodingInstanceBase64(IEncoding** out, Core::IErrorCode** error) {
  return CreateBase64(kBase64, out, error);
}

bool Data_CreateEncodingInstanceBase64Url(IEncoding** out, Core::IErrorCode** error) {
  return CreateBase64(kBase64Url, out, error);
}
