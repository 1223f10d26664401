#include "tests/support/program.h"
#include "tests/support/worldtest.h"

#include <QDir>
#include <QImage>

class TestStartup : public WorldTest
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        Q_INIT_RESOURCE(Resources);
    }

    void startsWithoutAnyTool()
    {
        for (const char* tool : {"mvinfo", "mvedit", "dsconfigad", "scutil", "profiles",
                                 "gui_helper_tool", "authorization_prompt"})
            World::removeTool(tool);
        Program program;
        QVERIFY(program.close());
    }

    void needsNoSessionBus()
    {
        const XSession session;
        QProcess process;
        process.setProcessEnvironment(session.environment());
        process.start(ASSISTANT_PROGRAM, QStringList());
        const QString wizard = session.waitForWindow("Morvanta Join Assistant");
        QVERIFY(session.pressIn(wizard, "alt+F4"));
        QVERIFY(process.waitForFinished(20000));
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(process.exitCode(), 0);
    }

    void ignoresItsArguments()
    {
        Program program({"--help", "--version", "-x", "/no/such/file", "--", "join"});
        QVERIFY(program.close());
        QCOMPARE(program.process.readAllStandardOutput(), QByteArray());
        QCOMPARE(World::callsOf("gui_helper_tool").size(), 0);
    }

    void leavesQtItsOwnArguments()
    {
        Program program({"-platform", "none"}, Program::WithoutWaiting);
        QVERIFY(program.process.waitForFinished(20000)); // there is no such platform
        QCOMPARE(program.process.exitStatus(), QProcess::CrashExit);
    }

    void showsTheWizardOnlyAfterTheProbes()
    {
        World::hold("profiles");
        Program program({}, Program::WithoutWaiting);
        QVERIFY(Program::ran("profiles"));
        program.session.awaitWindowManager();
        QCOMPARE(program.session.windows(), QStringList());
        World::release("profiles");
        QVERIFY(program.showsTheWizard());
        QCOMPARE(World::callsOf("mvinfo").size(), 2);
        QVERIFY(program.close());
    }

    void closingAtAnyPageEndsItAndNoOtherWindowWasShown_data()
    {
        // For each press of Next, one tool that it runs.
        addColumns<bool, bool, QStringList, QString>("bound", "joined", "tools", "key");
        const QStringList join{"mvinfo", "mvedit", "gui_helper_tool"};
        addRow("0 introduction", false, false, QStringList{}, "alt+F4");
        addRow("2 unbind", true, false, QStringList{"dsconfigad"}, "alt+F4");
        addRow("3 credentials", false, false, QStringList{"mvinfo"}, "alt+F4");
        addRow("4 join options", false, false, QStringList{"mvinfo", "mvedit"}, "alt+F4");
        addRow("6 leave", false, true, QStringList{"mvinfo"}, "alt+F4");
        addRow("7 report", false, false, join, "alt+F4");
        addRow("7 report, by Finish", false, false, join, "Return");
    }

    void closingAtAnyPageEndsItAndNoOtherWindowWasShown()
    {
        QFETCH(bool, bound);
        QFETCH(bool, joined);
        QFETCH(QStringList, tools);
        QFETCH(QString, key);
        if (bound)
            World::setBound();
        if (joined)
            World::setJoined();
        Program program;
        QStringList windows{program.wizard};
        for (const QString& tool : tools) {
            if (tool == "gui_helper_tool") {
                QVERIFY(program.join());
                windows << program.progress;
            } else {
                QVERIFY(program.nextRuns(tool));
            }
        }
        QVERIFY(program.close(key));
        QCOMPARE(program.session.allWindowsEver(), windows);
    }

    void resourcesAreExactlyTheseImages()
    {
        QCOMPARE(QDir(":/:").entryList(QDir::AllEntries, QDir::Name | QDir::IgnoreCase),
                 QStringList({"adlock icon.png", "background.png", "blanklock.png", "down.png",
                              "help.png", "lock icon.png", "Morvanta.png", "up.png"}));
    }

    void imagesHaveTheirSizes()
    {
        const auto sizeOf = [](const QString& name) {
            return QImage(":/:/" + name + ".png").size();
        };
        QCOMPARE(sizeOf("background"), QSize(170, 600)); // as high as the window
        QVERIFY(sizeOf("Morvanta").width() >= 256);
        for (const char* icon : {"up", "down", "help", "lock icon", "adlock icon", "blanklock"}) {
            const QSize size = sizeOf(icon);
            QVERIFY2(size.width() >= 64 && size.height() >= 64, icon);
        }
    }
};

WORLD_TEST_MAIN(TestStartup)
#include "tst_startup.moc"
