#include "system/commandrunner.h"
#include "tests/support/worldtest.h"

#include <QFileInfo>

#include <unistd.h>

class TestCommandHelpers : public WorldTest
{
    Q_OBJECT

private slots:
    void firstLineEndsBeforeTheFirstLineEnd_data();
    void firstLineEndsBeforeTheFirstLineEnd();
    void arrayOfNoItemsHoldsOnlyTheNullPointer();
    void arrayHoldsEachItemInOrder_data();
    void arrayHoldsEachItemInOrder();
    void userWithoutADomainGetsTheDomain_data();
    void userWithoutADomainGetsTheDomain();
    void userWithADomainIsUnchanged_data();
    void userWithADomainIsUnchanged();
    void fileThatCannotBeMadeIsOnlyAName_data();
    void fileThatCannotBeMadeIsOnlyAName();
    void newFileIsEmptyAndItsOwners();
    void newFilesDiffer();
    void newFilesDescriptorReachesNoTool();
    void pathIsExaminedWithAndWithoutFollowingALink_data();
    void pathIsExaminedWithAndWithoutFollowingALink();
};

namespace {

QStringList takeArray(char** array)
{
    QStringList items;
    for (char** item = array; *item != nullptr; ++item) {
        items << QString::fromUtf8(*item);
        delete[] * item;
    }
    delete[] array;
    return items;
}

// Makes the file, and closes the descriptor on which the function keeps it open.
QString makeRandomFile(const QString& base)
{
    const QList<int> before = openDescriptors();
    const QString path = randomizeFileName(base);
    const QList<int> after = openDescriptors();
    for (const int descriptor : after) {
        if (!before.contains(descriptor))
            close(descriptor);
    }
    return path;
}

} // namespace

void TestCommandHelpers::firstLineEndsBeforeTheFirstLineEnd_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("first");
    QTest::newRow("empty") << ""
                           << "";
    QTest::newRow("a line end first") << "\ntext\n"
                                      << "";
    QTest::newRow("no line end") << "whole text"
                                 << "whole text";
    QTest::newRow("two lines") << "one\ntwo\n"
                               << "one";
    QTest::newRow("a carriage return stays") << "one\r\ntwo"
                                             << "one\r";
}

void TestCommandHelpers::firstLineEndsBeforeTheFirstLineEnd()
{
    QFETCH(QString, text);
    QTEST(getFirstLine(text), "first");
}

void TestCommandHelpers::arrayOfNoItemsHoldsOnlyTheNullPointer()
{
    char** array = convertQSLtoArray({});
    QCOMPARE(array[0], nullptr);
    delete[] array;
}

void TestCommandHelpers::arrayHoldsEachItemInOrder_data()
{
    QTest::addColumn<QStringList>("items");
    QTest::newRow("one") << QStringList{"-show"};
    QTest::newRow("several") << QStringList{"-u", "admin", "-p", "secret", "example.test"};
    QTest::newRow("empty items") << QStringList{"", "a", ""};
    QTest::newRow("blanks and quotes") << QStringList{" a  b ", "'a'", "\"b\""};
    QTest::newRow("shell characters") << QStringList{"$HOME", "`id`", "\\", "%1", "a;b|c", "*"};
    QTest::newRow("not ASCII") << QStringList{QString::fromUtf8("Zoë Ωmega 東京 🙂")};
    QTest::newRow("32,767 characters") << QStringList{QString(32767, QChar(0x6771)), "end"};
}

void TestCommandHelpers::arrayHoldsEachItemInOrder()
{
    QFETCH(QStringList, items);
    QCOMPARE(takeArray(convertQSLtoArray(items)), items);
}

void TestCommandHelpers::userWithoutADomainGetsTheDomain_data()
{
    QTest::addColumn<QString>("user");
    QTest::addColumn<QString>("domain");
    QTest::addColumn<QString>("full");
    QTest::newRow("bare name") << "admin"
                               << "example.test"
                               << "admin@example.test";
    QTest::newRow("no name") << ""
                             << "example.test"
                             << "@example.test";
    QTest::newRow("no domain") << "admin"
                               << ""
                               << "admin@";
    QTest::newRow("place markers") << "%1"
                                   << "%2"
                                   << "%1@%2";
}

void TestCommandHelpers::userWithoutADomainGetsTheDomain()
{
    QFETCH(QString, user);
    QFETCH(QString, domain);
    QTEST(appendDomainName(user, domain), "full");
}

void TestCommandHelpers::userWithADomainIsUnchanged_data()
{
    QTest::addColumn<QString>("user");
    QTest::newRow("another domain") << "admin@other.test";
    QTest::newRow("the same domain") << "admin@example.test";
    QTest::newRow("an at sign at the end") << "admin@";
    QTest::newRow("an at sign first") << "@other.test";
    QTest::newRow("two at signs") << "a@b@c";
}

void TestCommandHelpers::userWithADomainIsUnchanged()
{
    QFETCH(QString, user);
    QCOMPARE(appendDomainName(user, "example.test"), user);
}

void TestCommandHelpers::fileThatCannotBeMadeIsOnlyAName_data()
{
    QTest::addColumn<QString>("base");
    QTest::addColumn<QString>("start");
    QTest::newRow("missing folder") << World::file("none/file") << World::file("none/file.");
    QTest::newRow("base of 300 bytes")
        << World::file({}).leftJustified(300, 'x') << World::file({}).leftJustified(255, 'x');
    QTest::newRow("no room for the whole suffix")
        << World::file({}).leftJustified(250, 'x')
        << World::file({}).leftJustified(250, 'x') + ".XXXX";
}

void TestCommandHelpers::fileThatCannotBeMadeIsOnlyAName()
{
    QFETCH(QString, base);
    QFETCH(QString, start);
    const QString path = makeRandomFile(base);
    QCOMPARE(path.left(start.size()), start);
    QVERIFY(path.toUtf8().size() <= 255);
    QVERIFY(!QFileInfo::exists(path));
}

void TestCommandHelpers::newFileIsEmptyAndItsOwners()
{
    const QString base = World::file(QString::fromUtf8("out 東京"));
    const QString path = makeRandomFile(base);
    QVERIFY(path.startsWith(base + '.'));
    QCOMPARE(path.size(), base.size() + 7);
    QVERIFY(!path.endsWith(".XXXXXX"));
    const QFileInfo file(path);
    QVERIFY(file.isFile());
    QCOMPARE(file.size(), 0);
    const auto everybody = QFile::Permissions(0x0777);
    QCOMPARE(file.permissions() & everybody & ~QFile::Permissions(0x0700), QFile::Permissions());
    QCOMPARE(file.permissions() & QFile::Permissions(0x7000), QFile::ReadOwner | QFile::WriteOwner);
}

void TestCommandHelpers::newFilesDiffer()
{
    const QString first = makeRandomFile(World::file("out"));
    const QString second = makeRandomFile(World::file("out"));
    QVERIFY(first != second);
    QVERIFY(QFileInfo::exists(first));
    QVERIFY(QFileInfo::exists(second));
}

void TestCommandHelpers::newFilesDescriptorReachesNoTool()
{
    NEEDS_TOOLS();
    getReturnValue("/usr/local/bin/mvinfo -d");
    const QList<int> before = openDescriptors();
    randomizeFileName(World::file("out"));
    getReturnValue("/usr/local/bin/mvinfo -d");
    const QList<int> after = openDescriptors();
    for (const int descriptor : after) {
        if (!before.contains(descriptor))
            close(descriptor);
    }
    QCOMPARE(World::calls().at(1).descriptors, World::calls().at(0).descriptors);
}

void TestCommandHelpers::pathIsExaminedWithAndWithoutFollowingALink_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("link");
    QTest::addColumn<bool>("exists");
    QTest::newRow("file") << World::file("file") << false << true;
    QTest::newRow("folder") << World::file({}) << false << true;
    QTest::newRow("link to a file") << World::file("link") << true << true;
    QTest::newRow("link to nothing") << World::file("dangling") << true << false;
    QTest::newRow("missing path") << World::file("missing") << false << false;
    QTest::newRow("below a file") << World::file("file/below") << false << false;
    QTest::newRow("empty path") << "" << false << false;
    QTest::newRow("pipe") << World::file("pipe") << false << true;
}

void TestCommandHelpers::pathIsExaminedWithAndWithoutFollowingALink()
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

WORLD_TEST_MAIN(TestCommandHelpers)
#include "tst_commandhelpers.moc"
