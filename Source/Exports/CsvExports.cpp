#include "Data/Exports.h"
#include "Tables/ValueTypeDetection.h"

using namespace Data::impl;

Data::Structures::ValueType Data_DetectValueType(const char* text, std::uint64_t size) {
  return text ? DetectValueType({text, size}) : Data::Structures::ValueType::Unknown;
}
