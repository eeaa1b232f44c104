// OurTimes TASK FILE RUNS THREADS: prints the milliseconds of each run of a task on a line.
//
// The tasks: csv-read, csv-write, json-read and json-write. FILE holds the text that is read, or
// CSV that fills the table to write. Texts are read from memory and written to memory; ending a
// table or a text does not count.

#include <LayerData/layerdata.h>

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

namespace {

void Check(bool isDone, ld_error* error) {
  if (isDone) return;
  std::fprintf(stderr, "%s\n", ld_error_message(error));
  std::exit(1);
}

template <class Options>
Options WithThreads(std::uint32_t threads) {
  Options options{};
  options.size = sizeof options;
  options.thread_count = threads;
  return options;
}

template <class Options>
ld_table* Read(bool (*read)(const void*, std::uint64_t, const Options*, ld_table**,
                            ld_read_report**, ld_error**),
               const std::string& text, std::uint32_t threads) {
  const auto options = WithThreads<Options>(threads);
  ld_table* table = nullptr;
  ld_error* error = nullptr;
  Check(read(text.data(), text.size(), &options, &table, nullptr, &error), error);
  return table;
}

/// In the form that the exports of the first library write.
template <class Options>
ld_string* Write(bool (*write)(ld_table*, const Options*, ld_string**, ld_error**), ld_table* table,
                 std::uint32_t threads) {
  auto options = WithThreads<Options>(threads);
  options.form = LD_VALUE_FORM_DISPLAY;
  ld_string* text = nullptr;
  ld_error* error = nullptr;
  Check(write(table, &options, &text, &error), error);
  return text;
}

template <class Task>
void Time(int runs, Task&& task) {
  for (int i = 0; i < runs; ++i) {
    const auto start = std::chrono::steady_clock::now();
    void* const made = task();
    const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - start;
    std::printf("%.2f\n", time.count());
    ld_release(made);
  }
}

}  // namespace

int main(int argumentCount, char** arguments) {
  if (argumentCount != 5) return 2;
  const std::string task = arguments[1];
  std::ifstream file(arguments[2], std::ios::binary);
  const std::string text{std::istreambuf_iterator<char>(file), {}};
  const int runs = std::atoi(arguments[3]);
  const auto threads = static_cast<std::uint32_t>(std::atoi(arguments[4]));
  if (task == "csv-read") {
    Time(runs, [&] { return Read(ld_csv_read, text, threads); });
  } else if (task == "json-read") {
    Time(runs, [&] { return Read(ld_json_read, text, threads); });
  } else {
    ld_table* const table = Read(ld_csv_read, text, 1);
    Time(runs, [&] {
      return task == "csv-write" ? Write(ld_csv_write, table, threads)
                                 : Write(ld_json_write, table, threads);
    });
    ld_release(table);
  }
}
