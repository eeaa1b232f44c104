#include "Containers/ArrayImpl.h"
#include "Containers/ObjectListImpl.h"
#include "Containers/VariantDictionaryImpl.h"
#include "Containers/VariantListImpl.h"
#include "Containers/VariantPairListImpl.h"
#include "Data/Exports.h"
#include "Exports/Factory.h"

using namespace Data::Interfaces;
using namespace Data::impl;

bool Data_CreateArray(IArray** out) { return Create<ArrayImpl>(out); }

bool Data_CreateObjectList(IObjectList** out) { return Create<ObjectListImpl>(out); }

bool Data_CreateVariantList(IVariantList** out) { return Create<VariantListImpl>(out); }

bool Data_CreateVariantDictionary(IVariantDictionary** out, Core::IErrorCode** error) {
  return CreateGuarded<VariantDictionaryImpl>(out, error);
}

bool Data_CreateVariantPairList(IVariantPairList** out, Core::IErrorCode** error) {
  return CreateGuarded<VariantPairListImpl>(out, error);
}
