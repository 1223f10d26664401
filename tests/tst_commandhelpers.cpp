#include "system/commandrunner.h"
#include "tests/support/worldtest.h"

#include <QFileInfo>

#include <unistd.h>

namespace {

// Calls randomizeFileName() and closes the descriptor that it leaves open.
QString makeRandomFile(const QString& base)
{
    const QList<int> before = openDescriptors();
    const QString path = randomizeFileName(base);
    const QList<int> after = openDescriptors();
    if (after.size() > before.size() + 1)
        qFatal("It keeps more than one descriptor open");
    for (const int descriptor : after) {
        if (!before.contains(descriptor))
            close(descriptor);
    }
    return path;
}

} // namespace

class TestCommandHelpers : public WorldTest
{
    Q_OBJECT

private slots:
    void firstLineEndsBeforeTheFirstLineEnd()
    {
        QCOMPARE(getFirstLine(""), QString(""));
        QCOMPARE(getFirstLine("\ntext\n"), QString(""));
        QCOMPARE(getFirstLine("whole text"), QString("whole text"));
        QCOMPARE(getFirstLine("one\ntwo\n"), QString("one"));
        QCOMPARE(getFirstLine("one\r\ntwo"), QString("one\r"));
    }

    void arrayOfNoItemsHoldsOnlyTheNullPointer()
    {
        char** array = convertQSLtoArray({});
        QCOMPARE(array[0], nullptr);
        delete[] array;
    }

    void userWithoutADomainGetsTheDomain()
    {
        QCOMPARE(appendDomainName("admin", "example.test"), QString("admin@example.test"));
        QCOMPARE(appendDomainName("", "example.test"), QString("@example.test"));
        QCOMPARE(appendDomainName("admin", ""), QString("admin@"));
        QCOMPARE(appendDomainName("%1", "%2"), QString("%1@%2"));
    }

    void userWithADomainIsUnchanged()
    {
        for (const QString user :
             {"admin@other.test", "admin@example.test", "admin@", "@other.test", "a@b@c"})
            QCOMPARE(appendDomainName(user, "example.test"), user);
    }

    void fileThatCannotBeMadeIsOnlyAName_data()
    {
        addColumns<QString, QString>("base", "start");
        addRow("missing folder", World::file("none/file"), World::file("none/file."));
        addRow("base of 300 bytes, cut at 255", World::file({}).leftJustified(300, 'x'),
               World::file({}).leftJustified(255, 'x'));
        addRow("no room for the whole suffix", World::file({}).leftJustified(250, 'x'),
               World::file({}).leftJustified(250, 'x') + '.' + QString(4, 'X'));
    }

    void fileThatCannotBeMadeIsOnlyAName()
    {
        QFETCH(QString, base);
        QFETCH(QString, start);
        const QString path = makeRandomFile(base);
        QCOMPARE(path.left(start.size()), start);
        QVERIFY(path.toUtf8().size() <= 255);
        QVERIFY(!QFileInfo::exists(path));
    }

    void eachNewFileHasSixCharactersMoreIsEmptyAndItsOwners()
    {
        const QString base = World::file("out 東京");
        const QString path = makeRandomFile(base);
        QVERIFY(path.startsWith(base + '.'));
        QCOMPARE(path.size(), base.size() + 7);
        QVERIFY(!path.endsWith(".XXXXXX"));
        const QFileInfo file(path);
        QVERIFY(file.isFile());
        QCOMPARE(file.size(), 0);
        QCOMPARE(file.permissions() & QFile::Permissions(0x7077),
                 QFile::ReadOwner | QFile::WriteOwner);
        const QString another = makeRandomFile(base);
        QVERIFY(another != path);
        QVERIFY(QFileInfo::exists(another));
    }

    void newFilesDescriptorReachesNoTool()
    {
        NEEDS_TOOLS();
        getReturnValue("/usr/local/bin/mvinfo -d");
        const QList<int> before = openDescriptors();
        randomizeFileName(World::file("out"));
        getReturnValue("/usr/local/bin/mvinfo -d");
        for (const int descriptor : openDescriptors()) {
            if (!before.contains(descriptor))
                close(descriptor);
        }
        QCOMPARE(World::calls().at(1).descriptors, World::calls().at(0).descriptors);
    }

    void pathIsExaminedWithAndWithoutFollowingALink_data()
    {
        addColumns<QString, bool, bool>("path", "link", "exists");
        addRow("file", World::file("file"), false, true);
        addRow("folder", World::file({}), false, true);
        addRow("link to a file", World::file("link"), true, true);
        addRow("link to nothing", World::file("dangling"), true, false);
        addRow("missing path", World::file("missing"), false, false);
        addRow("below a file", World::file("file/below"), false, false);
        addRow("empty path", "", false, false);
        addRow("pipe", World::file("pipe"), false, true);
    }

    void pathIsExaminedWithAndWithoutFollowingALink()
    {
        QFETCH(QString, path);
        const QString command =
            "cd " + World::file({}) +
            " && touch file && ln -s file link && ln -s none dangling && mkfifo pipe";
        QString output;
        QCOMPARE(runCmd(qPrintable(command), &output), 0);
        QTEST(isSymlink(path.toUtf8()), "link");
        QTEST(doesExist(path.toUtf8()), "exists");
    }
};

WORLD_TEST_MAIN(TestCommandHelpers)
#include "tst_commandhelpers.moc"
