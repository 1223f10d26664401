#include "system/streamreader.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

size_t readBlock(char* block, size_t size, FILE* stream)
{
    size_t length = fread(block, 1, size, stream);
    while (length < size && ferror(stream) != 0 && errno == EINTR) {
        clearerr(stream);
        length += fread(block + length, 1, size - length, stream);
    }
    return length;
}

StreamReader::StreamReader(FILE* stream) : stream(stream) {}

const char* StreamReader::next()
{
    char* free = chunk;
    char* const last = chunk + sizeof chunk - 1; // where the NUL of a full chunk goes
    while (free < last && (free == chunk || free[-1] != '\n')) {
        if (begin == end && stream != nullptr) {
            begin = block;
            end = block + readBlock(block, sizeof block, stream);
        }
        if (begin == end)
            break;
        const auto room = static_cast<size_t>(std::min(last - free, end - begin));
        auto* past = static_cast<char*>(memccpy(free, begin, '\n', room));
        past = past == nullptr ? free + room : past;
        begin += past - free;
        free = past;
    }
    *free = '\0';
    return free == chunk ? nullptr : chunk;
}
