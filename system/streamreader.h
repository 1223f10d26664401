#pragma once

#include <cstdio>

// Reading of what tools print. Unlike the C library's own functions these go on when a signal has
// interrupted them, such as the one that tells of the end of another child process, and lose
// nothing by it.

// The next byte, or EOF at the end or on an error.
int readByte(FILE* stream);

// Reads as fgets() does: up to size - 1 bytes, ended after a line end, and a NUL after them. False
// when there is nothing left.
bool readChunk(char* chunk, int size, FILE* stream);

// Fills the block unless the stream ends first; returns how many bytes it holds.
size_t readBlock(char* block, size_t size, FILE* stream);
