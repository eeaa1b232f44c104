#pragma once

#include <stddef.h>

void* malloc(size_t size);
void free(void* memory);
double atof(const char* text);
void exit(int code);
