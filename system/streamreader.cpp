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
    char* to = chunk;
    char* const last = chunk + sizeof chunk - 1; // where the NUL of a full chunk goes
    while (to < last && (to == chunk || to[-1] != '\n')) {
        if (begin == end && stream != nullptr) {
            begin = block;
            end = block + readBlock(block, sizeof block, stream);
        }
        if (begin == end)
            break;
        const auto room = static_cast<size_t>(std::min(last - to, end - begin));
        auto* past = static_cast<char*>(memccpy(to, begin, '\n', room));
        past = past == nullptr ? to + room : past;
        begin += past - to;
        to = past;
    }
    *to = '\0';
    return to == chunk ? nullptr : chunk;
}
