#pragma once

#include <cstdint>
#include <span>

#include "C/ArrowValues.h"
#include "Core/ObjectPool.h"
#include "Data/Structures/Variant.h"
#include "Text/TextBuffer.h"

namespace Data::c {

/// Reads values of an array into cells that are Null; null values leave them so.
/// @param indexes  a value for each cell, -1 for none; overwritten
/// @param pool     where texts and date-times are allocated; null for the heap
/// @throws std::runtime_error for a value that is broken or beyond what a cell can hold
void ReadArrowCells(const ArrowValues& values, std::span<std::int64_t> indexes,
                    std::span<Structures::_VARIANT* const> cells, Core::ObjectPool* pool);

/// Appends a value as JSON: lists as arrays, structs as objects, and all others as the cell that
/// `ReadArrowCells` makes of them, bytes in Base64 and numbers that JSON does not know as texts.
void AppendArrowJson(impl::TextBuffer& json, const ArrowValues& values, std::int64_t index);

}  // namespace Data::c
