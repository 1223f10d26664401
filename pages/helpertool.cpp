#include "pages/helpertool.h"

#include "system/lowerpriv.h"
#include "system/streamreader.h"
#include "system/toolpaths.h"

#include <QThreadPool>
#include <QtConcurrent>

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

void keepWorkerReady()
{
    QThreadPool::globalInstance()->setExpiryTimeout(-1);
    QtConcurrent::run([] {}).waitForFinished();
}
