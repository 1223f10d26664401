// Tools' output, which runHelperTool(), runCmd() and getReturnValue() read in pieces.

#include "pages/helpertool.h"
#include "system/commandrunner.h"
#include "tests/robustness/fuzz/runner.h"

#include <QTemporaryFile>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    Fuzz::Runner& runner = Fuzz::Runner::installed();
    runner.output = QByteArray(reinterpret_cast<const char*>(data), static_cast<int>(size));
    const QString decoded = Reference::decoded(runner.output);
    runner.status = static_cast<int>(size % 256);
    // An earlier run's output does not survive.
    QString output = "earlier";
    char* arguments[] = {nullptr};
    Fuzz::check(runHelperTool(arguments, &output) == runner.status, "the status is the runner's");
    Fuzz::check(output == decoded, "the helper tool's output");

    // A shell takes a thousand times as long.
    static int runs = 0;
    if (++runs % 200 != 0)
        return 0;
    static QTemporaryFile file;
    if (!file.open() || !file.resize(0) || file.write(runner.output) < 0 || !file.flush())
        return 0;
    const QByteArray command = "cat " + file.fileName().toUtf8();
    file.close();
    output = "earlier";
    Fuzz::check(runCmd(command.constData(), &output) == 0, "cat exits with 0");
    Fuzz::check(output == "earlier" + decoded, "a command's output is appended");
    Fuzz::check(getReturnValue(command.constData()) ==
                    Reference::pieces(runner.output).join().toStdString(),
                "bytes stay bytes");
    return 0;
}
