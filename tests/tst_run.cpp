#include <QDir>
#include <QProcess>
#include <QtTest>

// The command that shows the assistant, as far as it goes without a build or a practice Mac.
class TestRun : public QObject
{
    Q_OBJECT

private slots:
    void helpTellsWhatToLookForInEachScenario();
    void refusesWhatItDoesNotKnow_data();
    void refusesWhatItDoesNotKnow();
};

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

void TestRun::helpTellsWhatToLookForInEachScenario()
{
    const Result help = run({"--help"});
    QCOMPARE(help.status, 0);
    QCOMPARE(help.errors, QString());
    const QStringList scenarios = QDir(PROJECT_FOLDER "/practice/scenarios").entryList(QDir::Files);
    QVERIFY(scenarios.contains("split-dns"));
    for (const QString& scenario : scenarios) {
        const QRegularExpression line("^    " + scenario + " +[A-Za-z].{30,}\\.$",
                                      QRegularExpression::MultilineOption);
        QVERIFY2(help.output.contains(line), qPrintable(scenario));
    }
}

void TestRun::refusesWhatItDoesNotKnow_data()
{
    QTest::addColumn<QStringList>("arguments");

    QTest::newRow("option") << QStringList{"--tourist"};
    QTest::newRow("second option") << QStringList{"--joined", "--bound"};
    QTest::newRow("empty argument") << QStringList{""};
    QTest::newRow("scenario without a name") << QStringList{"--scenario"};
    QTest::newRow("scenario with an empty name") << QStringList{"--scenario", ""};
    QTest::newRow("unknown scenario") << QStringList{"--scenario", "farther"};
    QTest::newRow("scenario by its path") << QStringList{"--scenario", "../scenarios/far"};
    QTest::newRow("option after the Qt") << QStringList{"--qt6", "--tourist"};
    QTest::newRow("Qt after the option") << QStringList{"--joined", "--qt6"};
    QTest::newRow("two scenarios") << QStringList{"--scenario", "far", "gone"};
}

void TestRun::refusesWhatItDoesNotKnow()
{
    QFETCH(QStringList, arguments);
    const Result result = run(arguments);
    QCOMPARE(result.status, 2);
    QCOMPARE(result.output, QString());
    QVERIFY2(result.errors.startsWith("usage: ./run ") && result.errors.count('\n') == 1,
             qPrintable(result.errors));
}

QTEST_GUILESS_MAIN(TestRun)
#include "tst_run.moc"
