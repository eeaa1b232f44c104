#include "Containers/ArrayImpl.h"
#include "Data/Exports.h"
#include "Exports/Factory.h"

using namespace Data::Interfaces;
using namespace Data::impl;

bool Data_CreateArray(IArray** out) { return Create<ArrayImpl>(out); }
