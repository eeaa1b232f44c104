#include "Data/Exports.h"
#include "Exports/Factory.h"
#include "Text/MultiByteStringImpl.h"

using namespace Data::Interfaces;
using namespace Data::impl;

bool Data_CreateString(IString** out) { return Create<MultiByteStringImpl>(out); }
