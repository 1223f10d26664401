#include "app/about.h"
#include "tests/support/worldtest.h"

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

namespace {

// This program stands in Contents/MacOS of a bundle of its own, unless it is run from a copy.
QString propertyListPath()
{
    return QCoreApplication::applicationDirPath().chopped(5) + "Info.plist";
}

void writePropertyList(const QByteArray& content)
{
    QFile file(propertyListPath());
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), qint64(content.size()));
}

QByteArray entry(const char* key, const char* value)
{
    return QByteArray("\t<key>") + key + "</key>\n\t<string>" + value + "</string>\n";
}

// The texts of the three labels as the property list makes them.
QStringList texts()
{
    const about dialog(nullptr);
    QStringList texts;
    for (const char* name : {"name", "version", "copyright"})
        texts << child<QLabel>(&dialog, name)->text();
    return texts;
}

const QStringList noTexts{"", "", ""};

} // namespace

class TestAbout : public WorldTest
{
    Q_OBJECT

private slots:
    void cleanup();

    void withoutAPropertyListAllIsEmpty();
    void unreadablePropertyListLeavesAllEmpty_data();
    void unreadablePropertyListLeavesAllEmpty();
    void showsNameVersionAndCopyright();
    void shipsThePropertyListItReads();
    void folderIsCutByLengthOnly();
    void absentKeyLeavesItsLabelEmpty_data();
    void absentKeyLeavesItsLabelEmpty();
    void valueStandsOnTheLineAfterItsKey_data();
    void valueStandsOnTheLineAfterItsKey();
    void eachDialogReadsTheFileAnew();
    void parseTakesWhatStandsBetweenTheMarks_data();
    void parseTakesWhatStandsBetweenTheMarks();
    void windowIsFixedAt284By165();
    void windowCannotBeMaximised();
    void formHasItsWidgetsInOrder();
    void logoIsTheCollectionsImage();
};

void TestAbout::cleanup()
{
    QFile::remove(propertyListPath());
    QDir().rmdir(propertyListPath());
    WorldTest::cleanup();
}

void TestAbout::withoutAPropertyListAllIsEmpty()
{
    QVERIFY(!QFile::exists(propertyListPath()));
    QCOMPARE(texts(), noTexts);
}

void TestAbout::unreadablePropertyListLeavesAllEmpty_data()
{
    QTest::addColumn<bool>("folder");
    QTest::newRow("a folder") << true;
    QTest::newRow("an empty file") << false;
}

void TestAbout::unreadablePropertyListLeavesAllEmpty()
{
    QFETCH(bool, folder);
    if (folder)
        QVERIFY(QDir().mkdir(propertyListPath()));
    else
        writePropertyList({});
    QCOMPARE(texts(), noTexts);
}

void TestAbout::showsNameVersionAndCopyright()
{
    writePropertyList(entry("CFBundleName", "A Name") + entry("CFBundleShortVersionString", "1.2") +
                      entry("CFBundleVersion", "345") +
                      entry("NSHumanReadableCopyright", "\xc2\xa9 Somebody"));
    QCOMPARE(texts(),
             QStringList({"A Name", "Version 1.2 (345)", QString::fromUtf8("© Somebody")}));
}

void TestAbout::shipsThePropertyListItReads()
{
    QVERIFY(QFile::copy(SHIPPED_PROPERTY_LIST, propertyListPath()));
    QCOMPARE(texts().at(0), QString("Morvanta Join Assistant"));
    QVERIFY(QRegularExpression("\\AVersion \\d+(\\.\\d+)+ \\(\\d+\\)\\z")
                .match(texts().at(1))
                .hasMatch());
    QVERIFY(texts().at(2).startsWith(QString::fromUtf8("Copyright ©")));
}

// A copy of this program in a folder of another name finds the list where its own test puts it.
void TestAbout::folderIsCutByLengthOnly()
{
    const QTemporaryDir folder(QCoreApplication::applicationDirPath() + "/Programs");
    const QString copy = folder.filePath("tst_about");
    QVERIFY(QFile::copy(QCoreApplication::applicationFilePath(), copy));
    QCOMPARE(QProcess::execute(copy, {"-silent", "showsNameVersionAndCopyright"}), 0);
}

void TestAbout::absentKeyLeavesItsLabelEmpty_data()
{
    const QByteArray name = entry("CFBundleName", "N");
    const QByteArray shortVersion = entry("CFBundleShortVersionString", "1.2");
    const QByteArray version = entry("CFBundleVersion", "345");
    const QByteArray copyright = entry("NSHumanReadableCopyright", "C");
    QTest::addColumn<QByteArray>("list");
    QTest::addColumn<QStringList>("texts");
    QTest::newRow("no name") << shortVersion + version + copyright
                             << QStringList{"", "Version 1.2 (345)", "C"};
    QTest::newRow("only the short version")
        << name + shortVersion + copyright << QStringList{"N", "", "C"};
    QTest::newRow("only the bundle's version")
        << name + version + copyright << QStringList{"N", "", "C"};
    QTest::newRow("empty short version")
        << entry("CFBundleShortVersionString", "") + version << noTexts;
    QTest::newRow("no copyright") << name + shortVersion + version
                                  << QStringList{"N", "Version 1.2 (345)", ""};
    QTest::newRow("keys in another case") << name.toLower() + copyright.toLower() << noTexts;
}

void TestAbout::absentKeyLeavesItsLabelEmpty()
{
    QFETCH(QByteArray, list);
    writePropertyList(list);
    QTEST(texts(), "texts");
}

void TestAbout::valueStandsOnTheLineAfterItsKey_data()
{
    QTest::addColumn<QByteArray>("list");
    QTest::addColumn<QString>("name");
    QTest::newRow("next line") << QByteArray("<key>CFBundleName</key>\n<string>N</string>\n")
                               << "N";
    QTest::newRow("carriage returns")
        << QByteArray("<key>CFBundleName</key>\r\n<string>N</string>\r\n") << "N";
    QTest::newRow("last line without an end")
        << QByteArray("<key>CFBundleName</key>\n<string>N</string>") << "N";
    QTest::newRow("same line: the line after it is read")
        << QByteArray("<key>CFBundleName</key><string>N</string>\n<string>M</string>\n") << "M";
    QTest::newRow("two lines below: the line between is read")
        << QByteArray("<key>CFBundleName</key>\n\n<string>N</string>\n") << "";
    QTest::newRow("key on the last line") << QByteArray("<key>CFBundleName</key>") << "";
    QTest::newRow("later key wins")
        << entry("CFBundleName", "first") + entry("CFBundleName", "second") << "second";
    QTest::newRow("key within another") << entry("MyCFBundleNameToo", "N") << "N";
    QTest::newRow("key on a value's line is passed over")
        << QByteArray("CFBundleName\n<string>CFBundleName</string>\n<string>M</string>\n")
        << "CFBundleName";
    QTest::newRow("of two keys on a line the name is meant")
        << QByteArray("CFBundleVersion CFBundleName\n<string>N</string>\n") << "N";
    QTest::newRow("not closed: the rest of the line")
        << QByteArray("CFBundleName\n<string>N\n</string>\n") << "N\n";
    QTest::newRow("long") << entry("CFBundleName", QByteArray(100000, 'x')) << QString(100000, 'x');
}

void TestAbout::valueStandsOnTheLineAfterItsKey()
{
    QFETCH(QByteArray, list);
    writePropertyList(list);
    QTEST(texts().at(0), "name");
}

void TestAbout::eachDialogReadsTheFileAnew()
{
    writePropertyList(entry("CFBundleName", "first"));
    const about dialog(nullptr);
    writePropertyList(entry("CFBundleName", "second"));
    QCOMPARE(child<QLabel>(&dialog, "name")->text(), QString("first"));
    QCOMPARE(texts().at(0), QString("second"));
}

void TestAbout::parseTakesWhatStandsBetweenTheMarks_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("value");
    QTest::newRow("value") << "\t<string>Name</string>\n"
                           << "Name";
    QTest::newRow("empty value") << "<string></string>"
                                 << "";
    QTest::newRow("first of each mark") << "<string>a<string>b</string>c</string>"
                                        << "a<string>b";
    QTest::newRow("other case") << "<STRING>abc</STRING>\n"
                                << ">abc</STRING>\n";
    QTest::newRow("no opening mark: from the eighth character") << "0123456789</string>"
                                                                << "789";
    QTest::newRow("no closing mark: the rest") << "<string>Name\n"
                                               << "Name\n";
    QTest::newRow("closing mark first: the rest") << "</string><string>Name"
                                                  << "Name";
    QTest::newRow("no marks in a short line") << "<true/>"
                                              << "";
    QTest::newRow("empty line") << ""
                                << "";
}

void TestAbout::parseTakesWhatStandsBetweenTheMarks()
{
    QFETCH(QString, line);
    about dialog(nullptr);
    QTEST(dialog.parse(line), "value");
}

void TestAbout::windowIsFixedAt284By165()
{
    about dialog(nullptr);
    dialog.show();
    QCOMPARE(dialog.size(), QSize(284, 165));
    QCOMPARE(dialog.minimumSize(), QSize(284, 165));
    QCOMPARE(dialog.maximumSize(), QSize(284, 165));
}

void TestAbout::windowCannotBeMaximised()
{
    const about dialog(nullptr);
    QVERIFY(dialog.windowFlags() & Qt::CustomizeWindowHint);
    QVERIFY(!(dialog.windowFlags() & Qt::WindowMaximizeButtonHint));
    QCOMPARE(dialog.windowFlags() & Qt::WindowType_Mask, Qt::WindowFlags(Qt::Dialog));
}

void TestAbout::formHasItsWidgetsInOrder()
{
    const about dialog(nullptr);
    QCOMPARE(dialog.objectName(), QString("about"));
    QCOMPARE(dialog.windowTitle(), QString());
    QStringList names;
    const QList<QLabel*> labels = dialog.findChildren<QLabel*>();
    for (const QLabel* label : labels)
        names << label->objectName();
    QCOMPARE(names, QStringList({"name", "version", "copyright", "label"}));
    QCOMPARE(labels.at(0)->font().pointSize(), 14);
    QCOMPARE(int(labels.at(0)->font().weight()), int(QFont::Bold));
    QCOMPARE(labels.at(1)->font().pointSize(), 10);
    QCOMPARE(labels.at(2)->font(), QApplication::font());
}

void TestAbout::logoIsTheCollectionsImage()
{
    const about dialog(nullptr);
    const auto* label = child<QLabel>(&dialog, "label");
    QCOMPARE(label->text(), QString());
    QVERIFY(label->hasScaledContents());
    QCOMPARE(label->pixmap(Qt::ReturnByValue).toImage(), QPixmap(":/:/Morvanta.png").toImage());
    QVERIFY(!label->pixmap(Qt::ReturnByValue).isNull());
}

WORLD_TEST_MAIN(TestAbout)
#include "tst_about.moc"
