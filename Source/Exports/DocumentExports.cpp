#include "Data/Exports.h"
#include "Documents/JsonDocumentImpl.h"
#include "Exports/Factory.h"

using namespace Data::Interfaces;
using namespace Data::impl;

bool Data_CreateJsonDocument(IJsonDocument** out) { return Create<JsonDocumentImpl>(out); }
