#include "host/script/running.h"

#include <cstring>
#include <unistd.h>

namespace script {

static Place running;

Running::Running()
{
    running = {};
}

Running::~Running()
{
    running = {};
}

void setRunningPlace(const Place &place)
{
    running = place;
}

bool writeRunningPlace(int file)
{
    const Source *source = running.source;
    if (!source)
        return false;
    size_t line = source->firstLine;
    for (size_t i = 0; i < running.offset; i++)
        line += source->text[i] == '\n';
    char digits[] = ":                    : ";
    char *first = digits + strlen(digits) - 2;
    do
        *--first = char('0' + line % 10);
    while (line /= 10);
    *--first = ':';
    ssize_t ignored = write(file, source->name.data(), source->name.size());
    ignored = write(file, first, strlen(first));
    (void)ignored;
    return true;
}

} // namespace script
