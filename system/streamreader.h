#pragma once

#include <cstdio>

// Fills the block unless the stream ends or fails; returns how many bytes it holds. Unlike fread()
// it goes on when a signal has interrupted it, such as that for the end of another child process.
size_t readBlock(char* block, size_t size, FILE* stream);

// Reads all that is left in a stream, in chunks as fgets() reads them into 512 bytes.
class StreamReader
{
public:
    // The stream is the caller's; null reads as empty.
    explicit StreamReader(FILE* stream);

    // The next chunk: up to 511 bytes, the last of which may be a line end, and a NUL after them.
    // Valid until the next call; null at the end of the stream.
    const char* next();

private:
    FILE* stream;
    char block[65536]; // as much as a pipe holds
    const char* begin = block;
    const char* end = block;
    char chunk[512];
};
