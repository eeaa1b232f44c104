#pragma once

/// The version of the library that these headers belong to. Programs built against one major
/// version run with every later release of it.
#define LAYERDATA_VERSION_MAJOR 1
#define LAYERDATA_VERSION_MINOR 0
#define LAYERDATA_VERSION_PATCH 0

/// One number that compares as versions do: 10000 for 1.0.0.
#define LAYERDATA_VERSION \
  (LAYERDATA_VERSION_MAJOR * 10000 + LAYERDATA_VERSION_MINOR * 100 + LAYERDATA_VERSION_PATCH)
