#include "Data/Exports.h"
#include "Exports/Factory.h"
#include "Text/Base64Impl.h"

using namespace Data::Interfaces;
using namespace Data::impl;

bool Data_CreateEncodingInstanceBase64(IEncoding** out, Core::IErrorCode** error) {
  return CreateGuarded<Base64Impl>(out, error, kBase64);
}

bool Data_CreateEncodingInstanceBase64Url(IEncoding** out, Core::IErrorCode** error) {
  return CreateGuarded<Base64Impl>(out, error, kBase64Url);
}
