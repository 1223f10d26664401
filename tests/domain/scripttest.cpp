#include "tests/domain/scripttest.h"

#include "tests/support/files.h"

#include <QDir>
#include <QElapsedTimer>
#include <QMap>
#include <QProcess>
#include <QRegularExpression>

namespace {

const char* const searchPath = "/usr/local/bin:/usr/local/sbin:/usr/bin:/bin:/usr/sbin:/sbin";

const QString resources =
    "/Applications/Utilities/Morvanta/Morvanta Join Assistant.app/Contents/Resources/";

// The content of files before they were rewritten, by their paths.
QMap<QString, QByteArray> originals;

} // namespace

void ScriptTest::startScript(QProcess* process, const QString& script, const QStringList& arguments)
{
    process->start("/usr/local/bin/mvedit", QStringList(resources + script) + arguments);
}

ScriptResult ScriptTest::runScript(const QString& script, const QStringList& arguments)
{
    QElapsedTimer timer;
    timer.start();
    QProcess process;
    startScript(&process, script, arguments);
    if (!process.waitForFinished(60000))
        qFatal("%s did not end", qPrintable(script));
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError()), timer.elapsed()};
}

ScriptResult ScriptTest::check(const QString& domain, const QString& user, const QString& password)
{
    return runScript("check_domain_cred.tcl", {domain, user, password});
}

ScriptResult ScriptTest::list(const QString& password)
{
    return runScript("mvedit_file_arg.tcl",
                     {PracticeMac::domain, PracticeMac::administrator, password});
}

void ScriptTest::checkResult(const ScriptResult& result, const QString& errors)
{
    QCOMPARE(result.errors, errors.isEmpty() ? errors : errors + QLatin1Char('\n'));
    QCOMPARE(result.status, errors.isEmpty() ? 0 : 1);
}

void ScriptTest::checkRefusal(const ScriptResult& result, const QString& sentence)
{
    QCOMPARE(result.errors.section('\n', 0, 0), sentence);
    QCOMPARE(result.status, 1);
}

QString ScriptTest::runTcl(const QString& program)
{
    QTemporaryDir folder;
    const QString file = folder.filePath("program.tcl");
    writeFile(file, ("source {" + resources + "domain_session.tcl}\n" + program).toUtf8());
    return PracticeMac::run("/usr/bin/tclsh", {file}).trimmed();
}

void ScriptTest::standIn(const QString& tool, const QByteArray& script)
{
    const QString file = tools->filePath(tool);
    writeFile(file, "#!/bin/sh\n" + script);
    QVERIFY(QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
}

void ScriptTest::note(const QStringList& names)
{
    for (const QString& tool : names)
        standIn(tool, QByteArray("echo \"${0##*/} $*\" >>\"${0%/*}/calls\"\nPATH=") + searchPath +
                          " exec \"${0##*/}\" \"$@\"\n");
}

QStringList ScriptTest::noted() const
{
    const QRegularExpression folder(QRegularExpression::escape(temporaries->path()) + "/[\\w.]+");
    return QString::fromUtf8(readFile(tools->filePath("calls")))
        .replace(folder, "PRIVATE")
        .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

void ScriptTest::rewrite(const QString& path, const QByteArray& text)
{
    if (!originals.contains(path))
        originals.insert(path, readFile(path));
    writeFile(path, text);
}

QString ScriptTest::testFile(const QString& name)
{
    return QString(DOMAIN_TESTS "/") + name;
}

void ScriptTest::init()
{
    DomainTest::init();
    tools.reset(new QTemporaryDir);
    qputenv("PATH", tools->path().toLocal8Bit() + ':' + searchPath);
    temporaries.reset(new QTemporaryDir);
    qputenv("TMPDIR", temporaries->path().toLocal8Bit());
}

void ScriptTest::cleanup()
{
    for (auto file = originals.cbegin(); file != originals.cend(); ++file)
        writeFile(file.key(), file.value());
    originals.clear();
    // The scripts leave no ticket and no settings behind, also when they fail.
    QVERIFY(QDir(temporaries->path()).isEmpty());
    temporaries.reset();
    qunsetenv("TMPDIR");
    qputenv("PATH", searchPath);
    qputenv("LC_ALL", "C.UTF-8"); // as the practice Mac has it
    tools.reset();
    DomainTest::cleanup();
}
