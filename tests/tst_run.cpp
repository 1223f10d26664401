#include "tests/support/datarows.h"

#include <QDir>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>

namespace {

struct Result {
    int status;
    QString output;
    QString errors;
};

Result run(const QStringList& arguments)
{
    QProcess process;
    process.start(PROJECT_FOLDER "/run", arguments);
    if (!process.waitForFinished(30000))
        qFatal("./run did not end");
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

} // namespace

// The command that shows the assistant, as far as it goes without a build or a practice Mac.
class TestRun : public QObject
{
    Q_OBJECT

private slots:
    void helpTellsWhatToLookForInEachScenario()
    {
        const Result help = run({"--help"});
        QCOMPARE(help.status, 0);
        QCOMPARE(help.errors, QString());
        const QStringList scenarios =
            QDir(PROJECT_FOLDER "/practice/scenarios").entryList(QDir::Files);
        QVERIFY(!scenarios.isEmpty());
        for (const QString& scenario : scenarios) {
            const QRegularExpression line("^    " + scenario + " +[A-Za-z].{30,}\\.$",
                                          QRegularExpression::MultilineOption);
            QVERIFY2(help.output.contains(line), qPrintable(scenario));
        }
    }

    void refusesWhatItDoesNotKnow_data()
    {
        addColumns<QStringList>("arguments");

        addRow("option", QStringList{"--tourist"});
        addRow("second option", QStringList{"--joined", "--bound"});
        addRow("empty argument", QStringList{""});
        addRow("scenario without a name", QStringList{"--scenario"});
        addRow("scenario with an empty name", QStringList{"--scenario", ""});
        addRow("unknown scenario", QStringList{"--scenario", "farther"});
        addRow("scenario by its path", QStringList{"--scenario", "../scenarios/far"});
        addRow("unknown option after --qt6", QStringList{"--qt6", "--tourist"});
        addRow("two scenarios", QStringList{"--scenario", "far", "gone"});
    }

    void refusesWhatItDoesNotKnow()
    {
        QFETCH(QStringList, arguments);
        const Result result = run(arguments);
        QCOMPARE(result.status, 2);
        QCOMPARE(result.output, QString());
        QVERIFY2(result.errors.startsWith("usage: ./run ") && result.errors.count('\n') == 1,
                 qPrintable(result.errors));
    }
};

QTEST_GUILESS_MAIN(TestRun)
#include "tst_run.moc"
