#include "app/about.h"
#include "tests/support/files.h"
#include "tests/support/worldtest.h"

#include <QDir>
#include <QLabel>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

namespace {

// Where the dialog reads the list: it cuts "MacOS", five characters, from the program's folder.
QString propertyListPath()
{
    return QCoreApplication::applicationDirPath().chopped(5) + "Info.plist";
}

QString entry(const QString& key, const QString& value)
{
    return "\t<key>" + key + "</key>\n\t<string>" + value + "</string>\n";
}

// The texts of the three labels as the property list that is there makes them.
QStringList texts()
{
    const about dialog(nullptr);
    QStringList texts;
    for (const char* name : {"name", "version", "copyright"})
        texts << child<QLabel>(&dialog, name)->text();
    return texts;
}

QStringList textsOf(const QString& list)
{
    writeFile(propertyListPath(), list.toUtf8());
    return texts();
}

const QStringList noTexts{"", "", ""};

} // namespace

class TestAbout : public WorldTest
{
    Q_OBJECT

private slots:
    void cleanup()
    {
        QFile::remove(propertyListPath());
        QDir().rmdir(propertyListPath());
        WorldTest::cleanup();
    }

    void withoutAPropertyListOrWithAFolderInItsPlaceAllIsEmpty()
    {
        QVERIFY(!QFile::exists(propertyListPath()));
        QCOMPARE(texts(), noTexts);
        QVERIFY(QDir().mkdir(propertyListPath()));
        QCOMPARE(texts(), noTexts);
    }

    void shipsThePropertyListItReads()
    {
        QVERIFY(QFile::copy(SHIPPED_PROPERTY_LIST, propertyListPath()));
        QCOMPARE(texts().at(0), QString("Morvanta Join Assistant"));
        QVERIFY(QRegularExpression("\\AVersion \\d+(\\.\\d+)+ \\(\\d+\\)\\z")
                    .match(texts().at(1))
                    .hasMatch());
        QVERIFY(texts().at(2).startsWith(QString("Copyright ©")));
    }

    // A copy of this program lies in a folder of another name. There both the dialog and
    // propertyListPath() cut five characters off that name.
    void folderIsCutByLengthOnly()
    {
        const QTemporaryDir folder(QCoreApplication::applicationDirPath() + "/Programs");
        const QString copy = folder.filePath("tst_about");
        QVERIFY(QFile::copy(QCoreApplication::applicationFilePath(), copy));
        QCOMPARE(QProcess::execute(copy, {"-silent", "eachKeyFillsItsLabel:all keys"}), 0);
    }

    void eachKeyFillsItsLabel_data()
    {
        const QString name = entry("CFBundleName", "N");
        const QString shortVersion = entry("CFBundleShortVersionString", "1.2");
        const QString version = entry("CFBundleVersion", "345");
        const QString copyright = entry("NSHumanReadableCopyright", "© C");
        addColumns<QString, QStringList>("list", "texts");
        addRow("all keys", name + shortVersion + version + copyright,
               QStringList{"N", "Version 1.2 (345)", "© C"});
        addRow("no key at all", "", noTexts);
        addRow("no name", shortVersion + version + copyright,
               QStringList{"", "Version 1.2 (345)", "© C"});
        addRow("only the short version", name + shortVersion + copyright,
               QStringList{"N", "", "© C"});
        addRow("only the bundle's version", name + version + copyright,
               QStringList{"N", "", "© C"});
        addRow("empty short version", entry("CFBundleShortVersionString", "") + version, noTexts);
        addRow("no copyright", name + shortVersion + version,
               QStringList{"N", "Version 1.2 (345)", ""});
        addRow("keys in another case", name.toLower() + copyright.toLower(), noTexts);
    }

    void eachKeyFillsItsLabel()
    {
        QFETCH(QString, list);
        QTEST(textsOf(list), "texts");
    }

    void valueStandsOnTheLineAfterItsKey_data()
    {
        addColumns<QString, QString>("list", "name");
        addRow("carriage returns", "<key>CFBundleName</key>\r\n<string>N</string>\r\n", "N");
        addRow("last line without an end", "<key>CFBundleName</key>\n<string>N</string>", "N");
        addRow("same line: the line after it is read",
               "<key>CFBundleName</key><string>N</string>\n<string>M</string>\n", "M");
        addRow("two lines below: the line between is read",
               "<key>CFBundleName</key>\n\n<string>N</string>\n", "");
        addRow("key on the last line", "<key>CFBundleName</key>", "");
        addRow("later key wins", entry("CFBundleName", "first") + entry("CFBundleName", "second"),
               "second");
        addRow("key within another", entry("MyCFBundleNameToo", "N"), "N");
        addRow("key on a value's line is passed over",
               "CFBundleName\n<string>CFBundleName</string>\n<string>M</string>\n", "CFBundleName");
        addRow("of two keys on a line the name is meant",
               "CFBundleVersion CFBundleName\n<string>N</string>\n", "N");
        addRow("long", entry("CFBundleName", QString(100000, 'x')), QString(100000, 'x'));
    }

    void valueStandsOnTheLineAfterItsKey()
    {
        QFETCH(QString, list);
        QTEST(textsOf(list).at(0), "name");
    }

    void eachDialogReadsTheFileAnew()
    {
        QCOMPARE(textsOf(entry("CFBundleName", "first")).at(0), QString("first"));
        const about dialog(nullptr);
        QCOMPARE(textsOf(entry("CFBundleName", "second")).at(0), QString("second"));
        QCOMPARE(child<QLabel>(&dialog, "name")->text(), QString("first"));
    }

    void parseTakesWhatStandsBetweenTheMarks_data()
    {
        addColumns<QString, QString>("line", "value");
        addRow("value", "\t<string>Name</string>\n", "Name");
        addRow("empty value", "<string></string>", "");
        addRow("first of each mark", "<string>a<string>b</string>c</string>", "a<string>b");
        addRow("other case", "<STRING>abc</STRING>\n", ">abc</STRING>\n");
        addRow("no opening mark: from the eighth character", "0123456789</string>", "789");
        addRow("no closing mark: the rest", "<string>Name\n", "Name\n");
        addRow("closing mark first: the rest", "</string><string>Name", "Name");
        addRow("no marks in a short line", "<true/>", "");
    }

    void parseTakesWhatStandsBetweenTheMarks()
    {
        QFETCH(QString, line);
        about dialog(nullptr);
        QTEST(dialog.parse(line), "value");
    }

    void windowIsFixedAt284By165AndCannotBeMaximised()
    {
        const about dialog(nullptr);
        QCOMPARE(dialog.minimumSize(), QSize(284, 165));
        QCOMPARE(dialog.maximumSize(), QSize(284, 165));
        QVERIFY(dialog.windowFlags() & Qt::CustomizeWindowHint);
        QVERIFY(!(dialog.windowFlags() & Qt::WindowMaximizeButtonHint));
        QCOMPARE(dialog.windowFlags() & Qt::WindowType_Mask, Qt::WindowFlags(Qt::Dialog));
    }

    void logoIsTheResourcesImage()
    {
        const about dialog(nullptr);
        const auto* label = child<QLabel>(&dialog, "label");
        QCOMPARE(label->text(), QString());
        QVERIFY(label->hasScaledContents());
        QCOMPARE(label->pixmap(Qt::ReturnByValue).toImage(), QPixmap(":/:/Morvanta.png").toImage());
        QVERIFY(!label->pixmap(Qt::ReturnByValue).isNull());
    }
};

WORLD_TEST_MAIN(TestAbout)
#include "tst_about.moc"
