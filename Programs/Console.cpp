#include "Console.h"

#include <chrono>
#include <csignal>
#include <cstdio>
#include <memory>

#include "System.h"

namespace program {

bool isQuiet = false;

namespace {

volatile std::sig_atomic_t interrupted = 0;

void NoteInterrupt(int) { interrupted = 1; }

/// The bar is removed from the terminal when the job is done or has failed.
class Bar {
 public:
  explicit Bar(std::string what) : what_(std::move(what)) {}
  Bar(const Bar&) = delete;
  Bar& operator=(const Bar&) = delete;
  ~Bar() {
    if (percent_ >= 0) std::fputs("\r\033[K", stderr);
  }

  void Show(std::uint64_t done, std::uint64_t total) {
    constexpr auto kShort = std::chrono::milliseconds(400);
    if (total == 0 || Clock::now() - begin_ < kShort) return;
    const int percent =
        static_cast<int>(100.0 * static_cast<double>(done) / static_cast<double>(total));
    if (percent == percent_) return;
    percent_ = percent;
    const auto filled = static_cast<std::size_t>(percent / 4);
    const std::string bar = std::string(filled, '#') + std::string(25 - filled, '.');
    std::fprintf(stderr, "\r[%s] %3d %% %s", bar.c_str(), percent, what_.c_str());
  }

 private:
  using Clock = std::chrono::steady_clock;

  std::string what_;
  Clock::time_point begin_ = Clock::now();
  int percent_ = -1;
};

}  // namespace

void Warn(const std::string& message) {
  if (!isQuiet) std::fprintf(stderr, "warning: %s\n", message.c_str());
}

layerdata::Progress ShowProgress(const std::string& what) {
  if (isQuiet || !IsTerminal(stderr))
    return [](std::uint64_t, std::uint64_t) { return !IsInterrupted(); };
  return [bar = std::make_shared<Bar>(what)](std::uint64_t done, std::uint64_t total) {
    bar->Show(done, total);
    return !IsInterrupted();
  };
}

HoldInterrupts::HoldInterrupts()
    : interrupt_(std::signal(SIGINT, NoteInterrupt)),
      terminate_(std::signal(SIGTERM, NoteInterrupt)) {}

HoldInterrupts::~HoldInterrupts() {
  std::signal(SIGINT, interrupt_);
  std::signal(SIGTERM, terminate_);
}

bool IsInterrupted() { return interrupted != 0; }

}  // namespace program
