#include "system/streamreader.h"

#include <cerrno>

int readByte(FILE* stream)
{
    int byte = getc(stream);
    while (byte == EOF && ferror(stream) != 0 && errno == EINTR) {
        clearerr(stream);
        byte = getc(stream);
    }
    return byte;
}

bool readChunk(char* chunk, int size, FILE* stream)
{
    int length = 0;
    while (length < size - 1) {
        const int byte = readByte(stream);
        if (byte == EOF)
            break;
        chunk[length++] = static_cast<char>(byte);
        if (byte == '\n')
            break;
    }
    chunk[length] = '\0';
    return length > 0;
}

size_t readBlock(char* block, size_t size, FILE* stream)
{
    size_t length = fread(block, 1, size, stream);
    while (length < size && ferror(stream) != 0 && errno == EINTR) {
        clearerr(stream);
        length += fread(block + length, 1, size - length, stream);
    }
    return length;
}
