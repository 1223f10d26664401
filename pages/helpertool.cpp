#include "pages/helpertool.h"

#include "system/lowerpriv.h"
#include "system/streamreader.h"

#include <QThreadPool>
#include <QtConcurrent>

int runHelperTool(char** args, QString* output)
{
    char helper[] = "/usr/local/share/morvantad/libexec/gui_helper_tool";
    FILE* pipe = nullptr;
    const int status = g_pProcess->runPrivCmd(helper, args, &pipe);
    if (pipe == nullptr)
        return status;
    output->clear();
    char chunk[512];
    while (readChunk(chunk, sizeof chunk, pipe))
        output->append(QString::fromUtf8(chunk));
    fclose(pipe);
    return status;
}

void keepWorkerReady()
{
    QThreadPool::globalInstance()->setExpiryTimeout(-1);
    QtConcurrent::run([] {}).waitForFinished();
}
