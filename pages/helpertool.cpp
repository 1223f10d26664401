#include "pages/helpertool.h"

#include "system/streamreader.h"
#include "system/toolpaths.h"

#include <pthread.h>
#include <unistd.h>

int runHelperTool(char** args, QString* output)
{
    FILE* pipe = nullptr;
    const int status = g_pProcess->runPrivCmd(QByteArray(Tools::helper).data(), args, &pipe);
    if (pipe == nullptr)
        return status;
    output->clear();
    StreamReader reader(pipe);
    while (const char* chunk = reader.next())
        output->append(QString::fromUtf8(chunk));
    fclose(pipe);
    return status;
}

bool canMakeThread()
{
    int descriptors[2];
    if (pipe(descriptors) != 0)
        return false;
    close(descriptors[0]);
    close(descriptors[1]);
    pthread_t trial;
    const auto doNothing = [](void* nothing) { return nothing; };
    return pthread_create(&trial, nullptr, doNothing, nullptr) == 0 &&
           pthread_join(trial, nullptr) == 0;
}
