#include "system/commandrunner.h"
#include "system/streamreader.h"
#include "tests/support/worldtest.h"

#include <QScopeGuard>
#include <QSemaphore>
#include <QThreadPool>
#include <QtConcurrentRun>

#include <cerrno>
#include <csignal>
#include <unistd.h>

namespace {

// The rest of a chunk after a NUL is lost.
const QByteArray lost("\0lost\n", 6);

// Runs a tool that prints the bytes.
int runPrinting(const QByteArray& bytes, QString* output)
{
    World::answer("mvinfo", {bytes, ""});
    return runCmd("/usr/local/bin/mvinfo", output);
}

// A stream that gives "abc", a byte at each read. Read number `failing`, counted from 0, fails, and
// so do all later ones unless the error is EINTR.
class FailingStream
{
public:
    explicit FailingStream(int error, int failing = 1)
        : file(fopencookie(this, "r", {read, nullptr, nullptr, nullptr}), fclose), error(error),
          failing(failing)
    {
    }

    const Stream file;

private:
    static ssize_t read(void* cookie, char* buffer, size_t)
    {
        auto* stream = static_cast<FailingStream*>(cookie);
        const int read = stream->reads++;
        if (read == stream->failing || (read > stream->failing && stream->error != EINTR)) {
            errno = stream->error;
            return -1;
        }
        if (*stream->next == '\0')
            return 0;
        *buffer = *stream->next++;
        return 1;
    }

    const int error;
    const int failing;
    int reads = 0;
    const char* next = "abc";
};

} // namespace

class TestCommandRunner : public WorldTest
{
    Q_OBJECT

private slots:
    void commandThatCannotStartCountsAsASuccessWithoutOutput()
    {
        QString output = "before";
        const NoDescriptors none;
        QCOMPARE(runCmd("echo after; exit 3", &output), 0);
        QCOMPARE(output, QString("before"));
        QCOMPARE(getReturnValue("echo text"), std::string());
    }

    void silentCommandGivesItsStatusAndLeavesTheOutputAsItWas()
    {
        QString output = "before";
        for (const int status : {0, 3, 127, 128, 255}) {
            QCOMPARE(runCmd("exit " + QByteArray::number(status), &output), status);
            QCOMPARE(output, QString("before"));
        }
    }

    void killedShellIs999()
    {
        for (const char* command :
             {"echo text; kill -KILL $$", "echo text; kill -TERM $$", "echo text; kill -HUP $$"}) {
            QString output;
            QCOMPARE(runCmd(command, &output), 999);
            QCOMPARE(output, QString("text\n"));
        }
    }

    void statusThatCannotBeCollectedIs999()
    {
        // While the signal is ignored, the system itself drops the status of a child.
        const auto before = signal(SIGCHLD, SIG_IGN);
        QString output;
        const int status = runCmd("echo text", &output);
        signal(SIGCHLD, before);
        QCOMPARE(status, 999);
        QCOMPARE(output, QString("text\n"));
    }

    void outputIsAppended()
    {
        QString output = "before ";
        runPrinting("one\n", &output);
        runPrinting("two", &output);
        QCOMPARE(output, QString("before one\ntwo"));
    }

    void standardErrorIsNotCaptured()
    {
        int ends[2];
        QCOMPARE(pipe(ends), 0);
        const int before = dup(STDERR_FILENO);
        dup2(ends[1], STDERR_FILENO);
        close(ends[1]);
        QString output;
        runCmd("echo one >&2", &output);
        const std::string value = getReturnValue("echo two >&2");
        dup2(before, STDERR_FILENO);
        close(before);
        QCOMPARE(output, QString());
        QCOMPARE(value, std::string());
        char errors[1000];
        const ssize_t size = read(ends[0], errors, sizeof errors);
        close(ends[0]);
        QCOMPARE(QByteArray(errors, static_cast<int>(size)), QByteArray("one\ntwo\n"));
    }

    void redirectedStandardErrorIsCaptured()
    {
        QString output;
        runCmd("{ echo one; echo two >&2; } 2>&1", &output);
        QCOMPARE(output, QString("one\ntwo\n"));
        // Redirections are done from left to right: the second one leads back to the pipe.
        QCOMPARE(getReturnValue("echo two 2>&1 >&2"), std::string("two\n"));
    }

    void commandLineIsReadByTheShell()
    {
        QString output;
        QCOMPARE(runCmd("value='a  b\nc'; printf '%s' \"$value\" | tr a x; exit 4", &output), 4);
        QCOMPARE(output, QString("x  b\nc"));
    }

    // A chunk ends with its line, or after 511 bytes.
    void runCmdDecodesEachChunkAndGetReturnValueNone_data()
    {
        addColumns<QByteArray, QString>("printed", "read");
        const auto addWhole = [](const char* name, const QByteArray& printed) {
            addRow(name, printed, QString::fromUtf8(printed));
        };
        addWhole("nothing", "");
        addWhole("line ends only", "\n\n\n");
        addWhole("one chunk without its line end", QByteArray(511, 'x'));
        addWhole("one chunk and its line end", QByteArray(511, 'x') + '\n');
        addWhole("four million characters", QByteArray("0123456789abcde\n").repeated(250000));
        QByteArray all;
        for (int byte = 1; byte < 256; ++byte)
            all += static_cast<char>(byte);
        addWhole("each byte but NUL", all);

        const QString replacement = QChar(QChar::ReplacementCharacter);
        addRow("bytes that are no characters", QByteArray("x\xffy\xc3\nz\xc3"),
               QString("x%1y%1\nz%1").arg(replacement));
        const auto addAfter = [](const char* name, const QByteArray& start, const QString& read) {
            addRow(name, start + "\u00e9y\n", start + read + "y\n");
        };
        addAfter("across the first border", QByteArray(510, 'x'), replacement + replacement);
        addAfter("across the second border", QByteArray(1021, 'x'), replacement + replacement);
        addAfter("just before a border", QByteArray(509, 'x'), "\u00e9");
        addAfter("just after a border", QByteArray(511, 'x'), "\u00e9");
        addAfter("a line end starts the count anew", "z\n" + QByteArray(508, 'x'), "\u00e9");
        addRow("a NUL", "one" + lost + "two\n", QString("onetwo\n"));
    }

    void runCmdDecodesEachChunkAndGetReturnValueNone()
    {
        QFETCH(QByteArray, printed);
        QString output;
        QCOMPARE(runPrinting(printed, &output), 0);
        QTEST(output, "read");
        QCOMPARE(QByteArray::fromStdString(getReturnValue("/usr/local/bin/mvinfo")),
                 QByteArray(printed).replace(lost, {}));
    }

    void returnValueIgnoresTheExitStatus()
    {
        QCOMPARE(getReturnValue("echo text; exit 9"), std::string("text\n"));
        QCOMPARE(getReturnValue("echo text; kill -KILL $$"), std::string("text\n"));
    }

    void aThousandCharactersAndTheirLineEndAreReadAs511And490()
    {
        QByteArray line = QByteArray(1000, 'x') + '\n';
        const Stream stream(fmemopen(line.data(), 1001, "r"), fclose);
        StreamReader reader(stream.get());
        QCOMPARE(QByteArray(reader.next()), line.left(511));
        QCOMPARE(QByteArray(reader.next()), line.mid(511));
        QCOMPARE(reader.next(), nullptr);
    }

    void aReadErrorIsTakenForTheEnd()
    {
        FailingStream stream(EIO);
        QCOMPARE(QByteArray(StreamReader(stream.file.get()).next()), QByteArray("a"));
        QCOMPARE(StreamReader(FailingStream(EIO, 0).file.get()).next(), nullptr);
    }

    void anInterruptedReadGoesOn()
    {
        for (const int interrupted : {0, 1, 2}) {
            FailingStream stream(EINTR, interrupted);
            StreamReader reader(stream.file.get());
            QCOMPARE(QByteArray(reader.next()), QByteArray("abc"));
            QCOMPARE(reader.next(), nullptr);
        }
    }

    void runsInTwoThreadsAreIndependent()
    {
        World::answer("mvinfo -d", {"domain\n", "", 1, 0, false, true});
        World::answer("mvinfo -z", {"zone\n", "", 2, 0, false, true});
        QString domain;
        QString zone;
        // The global pool has one thread where there is one processor.
        QThreadPool pool;
        pool.setMaxThreadCount(2);
        // Both begin once both threads are there: a sanitizer opens files to make one, and the
        // runs' descriptors are compared below.
        QSemaphore ready;
        QSemaphore begin;
        const auto run = [&](const char* command, QString* output) {
            return QtConcurrent::run(&pool, [&ready, &begin, command, output] {
                ready.release();
                begin.acquire();
                return runCmd(command, output);
            });
        };
        auto first = run("/usr/local/bin/mvinfo -d", &domain);
        auto second = run("/usr/local/bin/mvinfo -z", &zone);
        ready.acquire(2);
        begin.release(2);
        const auto release = qScopeGuard([&] {
            World::release("mvinfo -d");
            World::release("mvinfo -z");
            first.waitForFinished();
            second.waitForFinished();
        });
        QTRY_COMPARE(World::calls().size(), 2);
        World::release("mvinfo -d");
        QCOMPARE(first.result(), 1);
        World::release("mvinfo -z");
        QCOMPARE(second.result(), 2);
        QCOMPARE(domain, QString("domain\n"));
        QCOMPARE(zone, QString("zone\n"));
        QCOMPARE(World::calls().at(0).descriptors, World::calls().at(1).descriptors);
    }
};

WORLD_TEST_MAIN(TestCommandRunner)
#include "tst_commandrunner.moc"
