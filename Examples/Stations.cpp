// The C++ layer in one page: reads a table, looks at it, filters, computes, sorts, joins, groups and
// writes.
//
//   Stations Examples/Data/stations.csv Examples/Data/readings.csv

#include <LayerData/Schema.h>
#include <LayerData/Table.h>
