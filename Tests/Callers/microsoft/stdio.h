#pragma once

// What the examples use of the C runtime of Windows, msvcrt.dll.

#include <stddef.h>

typedef struct FILE {
  char* next;
  int left;
  char* base;
  int flags, file, character, size;
  char* temporary;
} FILE;

FILE* __iob_func(void);
#define stdout (__iob_func() + 1)
#define stderr (__iob_func() + 2)

#define SEEK_END 2

FILE* fopen(const char* path, const char* mode);
int fclose(FILE* file);
size_t fread(void* out, size_t size, size_t count, FILE* file);
int fseek(FILE* file, long offset, int origin);
long ftell(FILE* file);
void rewind(FILE* file);
int fputs(const char* text, FILE* file);
int fprintf(FILE* file, const char* format, ...);
int printf(const char* format, ...);
