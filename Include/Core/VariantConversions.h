#pragma once

/// All conversions of a `_VARIANT`: to numbers, to objects and to text.
#include "Core/VariantNumbers.h"
#include "Core/VariantObjects.h"
#include "Core/VariantText.h"
