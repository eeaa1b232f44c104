#ifndef LAYERDATA_LAYERDATA_ARROW_H
#define LAYERDATA_LAYERDATA_ARROW_H

/// Tables to and from the Arrow C data interface and C stream interface. Part of layerdata.h, whose rules hold here.

#include "layerdata.h"

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif
