#include "tests/robustness/fuzz/runner.h"

#include <cstdio>
#include <cstdlib>

void Fuzz::check(bool holds, const char* claim)
{
    if (holds)
        return;
    fprintf(stderr, "Does not hold: %s\n", claim);
    abort();
}

Fuzz::Runner& Fuzz::Runner::installed()
{
    static Runner runner;
    g_pProcess = &runner;
    return runner;
}

int Fuzz::Runner::setupauth()
{
    return 0;
}

int Fuzz::Runner::runPrivCmd(char*, char** args, FILE** pipe)
{
    arguments = args;
    *pipe = output.isEmpty() ? fopen("/dev/null", "r")
                             : fmemopen(output.data(), static_cast<size_t>(output.size()), "r");
    return status;
}
