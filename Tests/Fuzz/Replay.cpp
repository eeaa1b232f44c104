// Stands in for the fuzzer's main program where a corpus is only replayed: runs the target once for
// every input of the given data files.

#include <cstdio>

#include "Cases.h"

extern "C" int LLVMFuzzerTestOneInput(const char* data, std::size_t size);

int main(int count, char** files) {
  for (int i = 1; i < count; ++i)
    for (const auto& input : Data::tests::Cases(files[i], "inputs"))
      LLVMFuzzerTestOneInput(input[0].data(), input[0].size());
  std::printf("[       OK ] %s (0 ms)\n", files[1]);
}
