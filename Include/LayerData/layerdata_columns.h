#ifndef LAYERDATA_LAYERDATA_COLUMNS_H
#define LAYERDATA_LAYERDATA_COLUMNS_H

/// Whole columns to and from arrays in memory. Part of layerdata.h, whose rules hold here.

#include "layerdata.h"

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif
