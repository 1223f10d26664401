#include "system/bindingreport.h"

#include "system/lowerpriv.h"
#include "system/toolpaths.h"

#include <QByteArray>

#include <cstring>

static int ask(FILE** pipe)
{
    char show[] = "-show";
    char* arguments[] = {show, nullptr};
    return g_pProcess->runPrivCmd(QByteArray(Tools::directoryPlugin).data(), arguments, pipe);
}

BindingReport::BindingReport() : result(ask(&pipe)), reader(pipe) {}

BindingReport::~BindingReport()
{
    if (pipe != nullptr)
        fclose(pipe);
}

int BindingReport::status() const
{
    return result;
}

const char* BindingReport::nextDomainLine()
{
    const char* line = reader.next();
    while (line != nullptr && strstr(line, "Active Directory Domain") == nullptr)
        line = reader.next();
    return line;
}
