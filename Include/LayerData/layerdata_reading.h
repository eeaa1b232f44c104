#ifndef LAYERDATA_LAYERDATA_READING_H
#define LAYERDATA_LAYERDATA_READING_H

/// Delimited text and JSON to tables, with options and a report of what the text lost. Part of layerdata.h, whose rules hold here.

#include "layerdata.h"

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif
