#pragma once

/// The version of the library that these headers belong to. A program runs with the version that it
/// was built against and with every later one of the same major version.
#define LAYERDATA_VERSION_MAJOR 1
#define LAYERDATA_VERSION_MINOR 0
#define LAYERDATA_VERSION_PATCH 0

/// The version as one number that can be compared: 10000 for 1.0.0.
#define LAYERDATA_VERSION \
  (LAYERDATA_VERSION_MAJOR * 10000 + LAYERDATA_VERSION_MINOR * 100 + LAYERDATA_VERSION_PATCH)
