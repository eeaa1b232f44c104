#pragma once

#include <cstddef>
#include <cstdio>
#include <string>
#include <vector>

/// What the program needs of the system beyond the standard library.
namespace program {

/// Prepares the standard streams for bytes and UTF-8.
void PrepareStreams();

/// The arguments as UTF-8, without the name of the program.
std::vector<std::string> Arguments(int argc, char** argv);

/// Opens a file for reading or writing ("rb", "wb"); null with `errno` if it cannot.
/// @param path  UTF-8
std::FILE* OpenFile(const std::string& path, const char* mode);

bool IsTerminal(std::FILE* stream);
/// The columns of the terminal at standard output; 80 if it is none.
std::size_t TerminalWidth();

}  // namespace program
