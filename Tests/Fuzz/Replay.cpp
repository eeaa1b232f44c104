// Stands in for the fuzzer's main program: runs the target once for every input of its corpus.

#include <cstdio>

#include "Cases.h"

extern "C" int LLVMFuzzerTestOneInput(const char* data, std::size_t size);

int main() {
  for (const auto& input : Data::tests::Cases(LAYERDATA_CORPUS, "inputs"))
    LLVMFuzzerTestOneInput(input[0].data(), input[0].size());
  std::puts("[       OK ] " LAYERDATA_CORPUS " (0 ms)");
}
