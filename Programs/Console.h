#pragma once

#include <LayerData/Progress.h>

#include <string>

/// What the program says beside its results.
namespace program {

/// Nothing but failures is said.
extern bool isQuiet;

/// Writes a warning to standard error, unless the program is quiet.
void Warn(const std::string& message);

/// A bar on the terminal that shows how far a long job is. There is none for short jobs, in a
/// quiet program, and when standard error is no terminal.
/// @param what  what the job does: "reading data.csv"
/// @return to be called by the job. Cancels it after an interruption that `HoldInterrupts` held.
layerdata::Progress ShowProgress(const std::string& what);

/// While an object of this class lives, Ctrl-C does not end the program: the job at hand is
/// cancelled, so that it can remove what it has not finished.
class HoldInterrupts {
 public:
  HoldInterrupts();
  HoldInterrupts(const HoldInterrupts&) = delete;
  HoldInterrupts& operator=(const HoldInterrupts&) = delete;
  ~HoldInterrupts();

 private:
  void (*interrupt_)(int);
  void (*terminate_)(int);
};

/// Whether an interruption was held.
bool IsInterrupted();

}  // namespace program
