#ifndef LAYERDATA_LAYERDATA_ROWS_H
#define LAYERDATA_LAYERDATA_ROWS_H

/// Filtering, sorting, joining and grouping the rows of tables. Part of layerdata.h, whose rules hold here.

#include "layerdata.h"

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif
