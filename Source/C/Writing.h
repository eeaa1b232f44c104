#pragma once

#include "C/Call.h"
#include "C/Options.h"
#include "C/Threads.h"
#include "Data/Interfaces/ITable.h"
#include "LayerData/layerdata_writing.h"
#include "Platform/OutputFile.h"
#include "Text/TextOutput.h"

/// What the functions that write tables share.
namespace Data::c {

/// A text that goes to a file while it is written.
class FileText final : public impl::TextOutput {
 public:
  explicit FileText(const char* path) : file_(path) {}
  void Append(std::string_view piece) override { file_.Write(piece); }
  void Commit() { file_.Commit(); }

 private:
  Platform::OutputFile file_;
};

template <class Options>
ld_value_form CheckedForm(const Options& options) {
  return Enumerator<ld_value_form>(options.form, LD_VALUE_FORM_DISPLAY, "ld_value_form");
}

/// Calls `write(table, parts, output)` for a text in memory.
template <class Options, class Write>
void WriteText(ld_table* table, const Options& options, ld_string** result, Write&& write) {
  CheckResult(result);
  auto& rows = Self<Interfaces::ITable>(table);
  Threads threads(options.thread_count, {options.progress, options.progress_context});
  threads.Start(static_cast<std::uint64_t>(rows.GetRowCount()));
  impl::MemoryText text;
  write(rows, threads, text);
  const auto string = text.Take();
  threads.Finish();
  GiveObject(result, string.Get());
}

/// Calls `write(table, parts, output)` for a text in a file.
template <class Options, class Write>
void WriteFile(ld_table* table, const char* path, const Options& options, Write&& write) {
  auto& rows = Self<Interfaces::ITable>(table);
  Core::CheckArgument(path);
  Threads threads(options.thread_count, {options.progress, options.progress_context});
  threads.Start(static_cast<std::uint64_t>(rows.GetRowCount()));
  FileText text(path);
  write(rows, threads, text);
  threads.Finish();
  text.Commit();
}

}  // namespace Data::c
