#ifndef LAYERDATA_LAYERDATA_WRITING_H
#define LAYERDATA_LAYERDATA_WRITING_H

/// Tables to delimited text and JSON that read back as the same table. Part of layerdata.h, whose rules hold here.

#include "layerdata.h"

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif
