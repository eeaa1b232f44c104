#include "Data/Exports.h"
#include "Exports/Factory.h"
#include "Tables/TableImpl.h"

using namespace Data::Interfaces;
using namespace Data::impl;

bool Data_CreateTable(ITable** out, Core::IErrorCode** error) {
  return CreateGuarded<TableImpl>(out, error);
}
