// Replaces the fuzzer's main program: FuzzCsvTests, for example, runs its target once for every
// input of the corpus Fuzz/Csv.txt.

#include <cstdio>

#include "Cases.h"

extern "C" int LLVMFuzzerTestOneInput(const char* data, std::size_t size);

int main(int, char** arguments) {
  std::string name(arguments[0]);
  name.erase(0, name.rfind("Fuzz") + 4);
  name.resize(name.rfind("Tests"));
  for (const auto& input : Data::tests::Cases(("Fuzz/" + name + ".txt").c_str(), "inputs"))
    LLVMFuzzerTestOneInput(input[0].data(), input[0].size());
  std::printf("[       OK ] Fuzz.%s (0 ms)\n", name.c_str());
}
