#pragma once

#include "system/streamreader.h"

// What the system's own directory plug-in reports of its binding.
class BindingReport
{
public:
    // Asks the plug-in's tool, with administrator rights. Blocks; user-interface thread.
    BindingReport();
    ~BindingReport();
    BindingReport(const BindingReport&) = delete;
    BindingReport& operator=(const BindingReport&) = delete;

    // The privileged runner's result code: 0 once the tool was started, however it ends.
    int status() const;
    // The next chunk (see StreamReader) with the words "Active Directory Domain" in it; null when
    // none is left. Valid until the next call.
    const char* nextDomainLine();

private:
    // In this order: asking the tool sets the pipe from which the reader reads.
    FILE* pipe = nullptr;
    int result;
    StreamReader reader;
};
