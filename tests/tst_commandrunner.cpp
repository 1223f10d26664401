#include "system/commandrunner.h"
#include "system/streamreader.h"
#include "tests/support/worldtest.h"

#include <QScopeGuard>
#include <QtConcurrent>

#include <cerrno>
#include <csignal>
#include <unistd.h>

class TestCommandRunner : public WorldTest
{
    Q_OBJECT

private slots:
    void commandThatCannotStartCountsAsSuccess();
    void commandThatCannotStartLeavesTheOutputAsItWas();
    void commandThatCannotStartHasNoReturnValue();
    void unknownCommandIsTheShells127();
    void exitStatusIsReturned_data();
    void exitStatusIsReturned();
    void silentCommandLeavesTheOutputAsItWas();
    void killedShellIs999_data();
    void killedShellIs999();
    void statusThatCannotBeCollectedIs999();
    void outputIsAppended();
    void standardErrorIsNotCaptured();
    void redirectedStandardErrorIsCaptured();
    void lineIsReadByTheShell();
    void quotedValueIsOneArgument_data();
    void quotedValueIsOneArgument();
    void outputIsWholeAtAnyLength_data();
    void outputIsWholeAtAnyLength();
    void characterAcrossAChunkBorderIsReplaced_data();
    void characterAcrossAChunkBorderIsReplaced();
    void invalidBytesAreReplaced();
    void returnValueKeepsEachByte_data();
    void returnValueKeepsEachByte();
    void restOfAChunkAfterANulByteIsLost();
    void returnValueIgnoresTheExitStatus();
    void aReadErrorIsTakenForTheEnd();
    void anInterruptedReadGoesOn();
    void runsInTwoThreadsDoNotMeet();
};

namespace {

// Runs a tool that prints the bytes.
int runPrinting(const QByteArray& bytes, QString* output)
{
    World::answer("mvinfo", {bytes, ""});
    return runCmd("/usr/local/bin/mvinfo", output);
}

QByteArray returnValuePrinting(const QByteArray& bytes)
{
    World::answer("mvinfo", {bytes, ""});
    return QByteArray::fromStdString(getReturnValue("/usr/local/bin/mvinfo"));
}

// What an action writes to the process's standard error; as much as a pipe holds.
QByteArray standardErrorDuring(const std::function<void()>& action)
{
    int ends[2];
    if (pipe(ends) != 0)
        qFatal("no pipe");
    const int before = dup(STDERR_FILENO);
    dup2(ends[1], STDERR_FILENO);
    close(ends[1]);
    action();
    dup2(before, STDERR_FILENO);
    close(before);
    char text[1000];
    const ssize_t size = qMax<ssize_t>(read(ends[0], text, sizeof text), 0);
    close(ends[0]);
    return QByteArray(text, static_cast<int>(size));
}

// A stream that gives "abc", a byte at each read, of which one is interrupted, or all from one on
// fail.
class FailingStream
{
public:
    explicit FailingStream(int error, int failing = 1)
        : file(fopencookie(this, "r", {read, nullptr, nullptr, nullptr})), error(error),
          failing(failing)
    {
    }
    ~FailingStream()
    {
        fclose(file);
    }
    FailingStream(const FailingStream&) = delete;
    FailingStream& operator=(const FailingStream&) = delete;

    FILE* const file;

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

void TestCommandRunner::commandThatCannotStartCountsAsSuccess()
{
    QString output;
    const NoDescriptors none;
    QCOMPARE(runCmd("exit 3", &output), 0);
}

void TestCommandRunner::commandThatCannotStartLeavesTheOutputAsItWas()
{
    QString output = "before";
    const NoDescriptors none;
    runCmd("echo after", &output);
    QCOMPARE(output, QString("before"));
}

void TestCommandRunner::commandThatCannotStartHasNoReturnValue()
{
    const NoDescriptors none;
    QCOMPARE(getReturnValue("echo text"), std::string());
}

void TestCommandRunner::unknownCommandIsTheShells127()
{
    World::removeTool("mvinfo");
    QString output;
    QCOMPARE(runCmd("/usr/local/bin/mvinfo -d 2>/dev/null", &output), 127);
    QCOMPARE(output, QString());
}

void TestCommandRunner::exitStatusIsReturned_data()
{
    QTest::addColumn<int>("status");
    QTest::newRow("success") << 0;
    QTest::newRow("above the signals' range") << 128;
    QTest::newRow("the highest") << 255;
}

void TestCommandRunner::exitStatusIsReturned()
{
    QFETCH(int, status);
    QString output;
    QCOMPARE(runCmd("exit " + QByteArray::number(status), &output), status);
}

void TestCommandRunner::silentCommandLeavesTheOutputAsItWas()
{
    QString output = "before";
    QCOMPARE(runCmd("exit 3", &output), 3);
    QCOMPARE(output, QString("before"));
}

void TestCommandRunner::killedShellIs999_data()
{
    QTest::addColumn<QByteArray>("command");
    QTest::newRow("killed") << QByteArray("echo text; kill -KILL $$");
    QTest::newRow("terminated") << QByteArray("echo text; kill -TERM $$");
    QTest::newRow("hung up") << QByteArray("echo text; kill -HUP $$");
}

void TestCommandRunner::killedShellIs999()
{
    QFETCH(QByteArray, command);
    QString output;
    QCOMPARE(runCmd(command, &output), 999);
    QCOMPARE(output, QString("text\n"));
}

void TestCommandRunner::statusThatCannotBeCollectedIs999()
{
    // The system then drops the status of a child by itself.
    const auto before = signal(SIGCHLD, SIG_IGN);
    QString output;
    const int status = runCmd("echo text", &output);
    signal(SIGCHLD, before);
    QCOMPARE(status, 999);
    QCOMPARE(output, QString("text\n"));
}

void TestCommandRunner::outputIsAppended()
{
    QString output = "before ";
    runPrinting("one\n", &output);
    runPrinting("two", &output);
    QCOMPARE(output, QString("before one\ntwo"));
}

void TestCommandRunner::standardErrorIsNotCaptured()
{
    QString output;
    std::string value;
    const QByteArray errors = standardErrorDuring([&] {
        runCmd("echo one >&2", &output);
        value = getReturnValue("echo two >&2");
    });
    QCOMPARE(output, QString());
    QCOMPARE(value, std::string());
    QCOMPARE(errors, QByteArray("one\ntwo\n"));
}

void TestCommandRunner::redirectedStandardErrorIsCaptured()
{
    QString output;
    runCmd("{ echo one; echo two >&2; } 2>&1", &output);
    QCOMPARE(output, QString("one\ntwo\n"));
    QCOMPARE(getReturnValue("echo two 2>&1 >&2"), std::string("two\n"));
}

void TestCommandRunner::lineIsReadByTheShell()
{
    QString output;
    QCOMPARE(runCmd("value='a  b'; printf '%s' \"$value\" | tr a x; exit 4", &output), 4);
    QCOMPARE(output, QString("x  b"));
}

void TestCommandRunner::quotedValueIsOneArgument_data()
{
    QTest::addColumn<QString>("value");
    QTest::newRow("empty") << "";
    QTest::newRow("blanks") << " two  words ";
    QTest::newRow("double quotes") << "say \"so\"";
    QTest::newRow("dollar") << "$HOME $$";
    QTest::newRow("backquotes") << "`exit 1` $(exit 1)";
    QTest::newRow("place marker") << "%1 %%";
    QTest::newRow("backslash") << "a\\b\\";
    QTest::newRow("line end") << "one\ntwo";
    QTest::newRow("not ASCII") << QString::fromUtf8("Zoë Ωmega 東京 🙂");
    QTest::newRow("32,767 characters") << QString(32767, QChar(0x6771));
}

void TestCommandRunner::quotedValueIsOneArgument()
{
    QFETCH(QString, value);
    QString output;
    QCOMPARE(runCmd(("/usr/local/bin/mvedit '" + value + "' end").toUtf8(), &output), 0);
    QCOMPARE(World::calls().size(), 1);
    QCOMPARE(World::calls().at(0).arguments, QStringList({value, "end"}));
}

void TestCommandRunner::outputIsWholeAtAnyLength_data()
{
    QTest::addColumn<QByteArray>("printed");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("line ends only") << QByteArray("\n\n\n");
    QTest::newRow("no line end") << QByteArray("text");
    QTest::newRow("one chunk without its line end") << QByteArray(511, 'x');
    QTest::newRow("one chunk and its line end") << QByteArray(511, 'x') + '\n';
    QTest::newRow("1,000 characters and a line end") << QByteArray(1000, 'x') + '\n';
    QTest::newRow("four million characters") << QByteArray("0123456789abcde\n").repeated(250000);
}

void TestCommandRunner::outputIsWholeAtAnyLength()
{
    QFETCH(QByteArray, printed);
    QString output;
    QCOMPARE(runPrinting(printed, &output), 0);
    QVERIFY(output == QString::fromLatin1(printed));
    QVERIFY(returnValuePrinting(printed) == printed);
}

void TestCommandRunner::characterAcrossAChunkBorderIsReplaced_data()
{
    QTest::addColumn<QByteArray>("printed");
    QTest::addColumn<QString>("read");
    const QString twice(2, QChar(QChar::ReplacementCharacter));
    QTest::newRow("at the first border") << QByteArray(510, 'x') + "\u00e9y\n"
                                         << QString(510, 'x') + twice + "y\n";
    QTest::newRow("at the second border") << QByteArray(1021, 'x') + "\u00e9y\n"
                                          << QString(1021, 'x') + twice + "y\n";
    QTest::newRow("just before the border") << QByteArray(509, 'x') + "\u00e9y\n"
                                            << QString(509, 'x') + QChar(0xe9) + "y\n";
    QTest::newRow("just after the border") << QByteArray(511, 'x') + "\u00e9y\n"
                                           << QString(511, 'x') + QChar(0xe9) + "y\n";
    QTest::newRow("a line end starts the count anew")
        << QByteArray("z\n") + QByteArray(508, 'x') + "\u00e9y\n"
        << QString("z\n") + QString(508, 'x') + QChar(0xe9) + "y\n";
}

void TestCommandRunner::characterAcrossAChunkBorderIsReplaced()
{
    QFETCH(QByteArray, printed);
    QString output;
    runPrinting(printed, &output);
    QTEST(output, "read");
}

void TestCommandRunner::invalidBytesAreReplaced()
{
    QString output;
    runPrinting("a\xff"
                "b\xc3\n",
                &output);
    QCOMPARE(output, QString("a%1b%1\n").arg(QChar(QChar::ReplacementCharacter)));
}

void TestCommandRunner::returnValueKeepsEachByte_data()
{
    QTest::addColumn<QByteArray>("printed");
    QByteArray all;
    for (int byte = 1; byte < 256; ++byte)
        all += static_cast<char>(byte);
    QTest::newRow("each byte but NUL") << all;
    QTest::newRow("a character across a chunk border") << QByteArray(510, 'x') + "\u00e9y\n";
    QTest::newRow("a character that breaks off") << QByteArray("a\xc3");
}

void TestCommandRunner::returnValueKeepsEachByte()
{
    QFETCH(QByteArray, printed);
    QCOMPARE(returnValuePrinting(printed), printed);
}

void TestCommandRunner::restOfAChunkAfterANulByteIsLost()
{
    const QByteArray printed("one\0lost\ntwo\n", 13);
    QString output;
    QCOMPARE(runPrinting(printed, &output), 0);
    QCOMPARE(output, QString("onetwo\n"));
    QCOMPARE(returnValuePrinting(printed), QByteArray("onetwo\n"));
}

void TestCommandRunner::returnValueIgnoresTheExitStatus()
{
    QCOMPARE(getReturnValue("echo text; exit 9"), std::string("text\n"));
    QCOMPARE(getReturnValue("echo text; kill -KILL $$"), std::string("text\n"));
}

void TestCommandRunner::aReadErrorIsTakenForTheEnd()
{
    FailingStream stream(EIO);
    QCOMPARE(QByteArray(StreamReader(stream.file).next()), QByteArray("a"));
    QCOMPARE(StreamReader(FailingStream(EIO, 0).file).next(), nullptr);
}

void TestCommandRunner::anInterruptedReadGoesOn()
{
    for (const int interrupted : {0, 1, 2}) {
        FailingStream stream(EINTR, interrupted);
        StreamReader reader(stream.file);
        QCOMPARE(QByteArray(reader.next()), QByteArray("abc"));
        QCOMPARE(reader.next(), nullptr);
    }
}

void TestCommandRunner::runsInTwoThreadsDoNotMeet()
{
    Answer answer;
    answer.held = true;
    answer.output = "domain\n";
    answer.exitStatus = 1;
    World::answer("mvinfo -d", answer);
    answer.output = "zone\n";
    answer.exitStatus = 2;
    World::answer("mvinfo -z", answer);
    QString domain;
    QString zone;
    auto first = QtConcurrent::run([&] { return runCmd("/usr/local/bin/mvinfo -d", &domain); });
    auto second = QtConcurrent::run([&] { return runCmd("/usr/local/bin/mvinfo -z", &zone); });
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

WORLD_TEST_MAIN(TestCommandRunner)
#include "tst_commandrunner.moc"
