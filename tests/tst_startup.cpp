#include "app/cocoainitializer.h"
#include "tests/support/program.h"
#include "tests/support/worldtest.h"

#include <QDir>
#include <QImage>

#include <type_traits>

int qInitResources_Resources();
int qCleanupResources_Resources();

class TestStartup : public WorldTest
{
    Q_OBJECT

private slots:
    void startsWithoutAnyTool();
    void ignoresItsArguments();
    void showsTheWizardOnlyAfterTheProbes();
    void showsOneWindowOfFixedSize();
    void closingAtAnyPageEndsIt_data();
    void closingAtAnyPageEndsIt();
    void closingOrFinishingTheLastPageEndsIt_data();
    void closingOrFinishingTheLastPageEndsIt();
    void progressOfAJoinCannotBeClosed();
    void initializerIsBuiltAndDestroyedButNotCopied();
    void collectionHoldsExactlyItsFiles();
    void imagesHaveTheirSizes_data();
    void imagesHaveTheirSizes();
    void collectionIsRegisteredAndRemoved();
};

void TestStartup::startsWithoutAnyTool()
{
    for (const char* tool : {"mvinfo", "mvedit", "dsconfigad", "scutil", "profiles",
                             "gui_helper_tool", "authorization_prompt"})
        World::removeTool(tool);
    Program program;
    QVERIFY(program.showsTheWizard());
    QVERIFY(program.close());
    QVERIFY(program.endsWith0());
}

void TestStartup::ignoresItsArguments()
{
    Program program({"--help", "--version", "-x", "/no/such/file", "--", "join"});
    QVERIFY(program.showsTheWizard());
    QVERIFY(program.close());
    QVERIFY(program.endsWith0());
    QCOMPARE(program.process.readAllStandardOutput(), QByteArray());
    QCOMPARE(World::callsOf("gui_helper_tool").size(), 0);
}

void TestStartup::showsTheWizardOnlyAfterTheProbes()
{
    Answer held;
    held.held = true;
    World::answer("profiles", held);
    Program program;
    QTRY_COMPARE(World::callsOf("profiles").size(), 1);
    QCOMPARE(program.session.windows(), QStringList());
    World::release("profiles");
    QVERIFY(program.showsTheWizard());
    QCOMPARE(World::callsOf("mvinfo").size(), 2);
    QVERIFY(program.close());
    QVERIFY(program.endsWith0());
}

void TestStartup::showsOneWindowOfFixedSize()
{
    Program program;
    QVERIFY(program.showsTheWizard());
    QCOMPARE(program.session.windows(), QStringList{program.wizard});
    QCOMPARE(program.session.place(program.wizard).size(), QSize(800, 600));
    QVERIFY(program.close());
    QVERIFY(program.endsWith0());
}

void TestStartup::closingAtAnyPageEndsIt_data()
{
    QTest::addColumn<bool>("bound");
    QTest::addColumn<bool>("joined");
    QTest::addColumn<QStringList>("tools"); // what each press of Next runs
    QTest::newRow("0 introduction") << false << false << QStringList{};
    QTest::newRow("2 unbind") << true << false << QStringList{"dsconfigad"};
    QTest::newRow("3 credentials") << false << false << QStringList{"mvinfo"};
    QTest::newRow("4 join options") << false << false << QStringList{"mvinfo", "mvedit"};
    QTest::newRow("6 leave") << false << true << QStringList{"mvinfo"};
}

void TestStartup::closingAtAnyPageEndsIt()
{
    QFETCH(bool, bound);
    QFETCH(bool, joined);
    QFETCH(QStringList, tools);
    if (bound)
        World::setBound();
    if (joined)
        World::setJoined();
    Program program;
    QVERIFY(program.showsTheWizard());
    for (const QString& tool : tools)
        QVERIFY(program.nextRuns(tool));
    QVERIFY(program.close());
    QVERIFY(program.endsWith0());
    QCOMPARE(program.session.allWindowsEver(), QStringList{program.wizard});
}

void TestStartup::closingOrFinishingTheLastPageEndsIt_data()
{
    QTest::addColumn<QString>("key");
    QTest::newRow("closing") << "alt+F4";
    QTest::newRow("Finish") << "Return";
}

void TestStartup::closingOrFinishingTheLastPageEndsIt()
{
    QFETCH(QString, key);
    Program program;
    QVERIFY(program.showsTheWizard());
    QVERIFY(program.nextRuns("mvinfo"));
    QVERIFY(program.nextRuns("mvedit"));
    QVERIFY(program.join());
    QVERIFY(program.close(key));
    QVERIFY(program.endsWith0());
    QCOMPARE(program.session.allWindowsEver(), QStringList({program.wizard, program.progress}));
}

void TestStartup::progressOfAJoinCannotBeClosed()
{
    Answer held;
    held.reportsPid = true;
    held.held = true;
    World::answer("gui_helper_tool", held);
    Program program;
    QVERIFY(program.showsTheWizard());
    for (const char* tool : {"mvinfo", "mvedit", "gui_helper_tool"})
        QVERIFY(program.nextRuns(tool));
    const QString progress = program.session.waitForWindow("Joining");
    QVERIFY(program.session.pressIn(progress, "alt+F4"));
    QVERIFY(program.session.pressIn(progress, "Escape"));
    QVERIFY(program.session.pressIn(progress, "Return"));
    World::release("gui_helper_tool");
    QVERIFY(program.close());
    QVERIFY(program.endsWith0());
    QCOMPARE(program.session.allWindowsEver(), QStringList({program.wizard, progress}));
}

// The address sanitizer sees whether they leave anything behind.
void TestStartup::initializerIsBuiltAndDestroyedButNotCopied()
{
    {
        const CocoaInitializer initializer;
    }
    QVERIFY(!std::is_copy_constructible_v<CocoaInitializer>);
    QVERIFY(!std::is_copy_assignable_v<CocoaInitializer>);
}

void TestStartup::collectionHoldsExactlyItsFiles()
{
    QCOMPARE(QDir(":/:").entryList(QDir::AllEntries, QDir::Name | QDir::IgnoreCase),
             QStringList({"adlock icon.png", "background.png", "blanklock.png", "down.png",
                          "help.png", "lock icon.png", "Morvanta.png", "up.png"}));
}

void TestStartup::imagesHaveTheirSizes_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QSize>("least");
    QTest::addColumn<QSize>("most");
    const QSize any(4096, 4096);
    QTest::newRow("background is as high as the window")
        << "background.png" << QSize(170, 600) << QSize(170, 600);
    QTest::newRow("logo") << "Morvanta.png" << QSize(256, 1) << any;
    for (const char* file :
         {"up.png", "down.png", "help.png", "lock icon.png", "adlock icon.png", "blanklock.png"})
        QTest::newRow(file) << file << QSize(64, 64) << any;
}

void TestStartup::imagesHaveTheirSizes()
{
    QFETCH(QString, file);
    QFETCH(QSize, least);
    QFETCH(QSize, most);
    const QSize size = QImage(":/:/" + file).size();
    QCOMPARE(size.expandedTo(least), size);
    QCOMPARE(size.boundedTo(most), size);
}

void TestStartup::collectionIsRegisteredAndRemoved()
{
    QCOMPARE(qCleanupResources_Resources(), 1);
    QVERIFY(!QFile::exists(":/:/background.png"));
    QCOMPARE(qInitResources_Resources(), 1);
    QVERIFY(QFile::exists(":/:/background.png"));
}

WORLD_TEST_MAIN(TestStartup)
#include "tst_startup.moc"
