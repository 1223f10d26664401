#include "browser/cnbrowserhelper.h"
#include "tests/support/worldtest.h"

#include <QScopeGuard>
#include <QSignalSpy>
#include <QStandardItemModel>

#include <csignal>
#include <memory>
#include <unistd.h>

namespace {

// A load from its start to its end.
class Load
{
public:
    Load()
    {
        helper.setDomainInfo("example.test", "admin", "secret");
    }
    bool run()
    {
        QSignalSpy obtained(&helper, &cnbrowserhelper::cnDataObtained);
        helper.getCNData();
        return obtained.wait() && obtained.count() == 1;
    }
    std::unique_ptr<QStandardItemModel> model()
    {
        return std::unique_ptr<QStandardItemModel>(helper.createModelOutOfCNData());
    }

    cnbrowserhelper helper;
};

QStringList rootTexts(const QStandardItemModel* model)
{
    QStringList texts;
    for (int row = 0; row < model->rowCount(); ++row)
        texts << model->item(row)->text();
    return texts;
}

} // namespace

class TestContainerLoader : public WorldTest
{
    Q_OBJECT

private slots:
    void scriptThatCannotStartReportsNothing_data()
    {
        addColumns<bool>("left");
        addRow("missing", false);
        addRow("not executable", true);
    }

    void scriptThatCannotStartReportsNothing()
    {
        QFETCH(bool, left);
        if (left)
            World::replaceByPlainFile("mvedit");
        else
            World::removeTool("mvedit");
        Load load;
        QSignalSpy obtained(&load.helper, &cnbrowserhelper::cnDataObtained);
        const QList<int> before = openDescriptors();
        load.helper.getCNData();
        // The failed start has been noticed when its pipes are closed again: all but one that Qt 6
        // forgets, the writing end of the script's standard input.
        const int forgotten = QT_VERSION_MAJOR == 6 ? 1 : 0;
        QTRY_COMPARE(openDescriptors().size(), before.size() + forgotten);
        const QList<int> after = openDescriptors();
        for (const int descriptor : after)
            if (!before.contains(descriptor))
                close(descriptor);
        QCoreApplication::processEvents();
        QCOMPARE(obtained.count(), 0);
        QVERIFY(!load.helper.cnDataCheck());
        QCOMPARE(messages(), QStringList());
    }

    void failedScriptGivesNoData_data()
    {
        addColumns<int>("code");
        addRow("1", 1);
        addRow("127", 127);
        addRow("255", 255);
    }

    void failedScriptGivesNoData()
    {
        QFETCH(int, code);
        World::answer("mvedit", {"OU=a,DC=x\n", "", code});
        Load load;
        QVERIFY(load.run());
        QCOMPARE(messages(), QStringList{QString("readStdOutput errcode:  %1").arg(code)});
        QVERIFY(!load.helper.cnDataCheck());
        QVERIFY(load.model() == nullptr);
    }

    void killedScriptGivesNoData()
    {
        World::answer("mvedit", {"OU=a,DC=x\n", "", 0, SIGKILL});
        Load load;
        QVERIFY(load.run());
        QCOMPARE(messages(), QStringList{"readStdOutput errcode:  9"});
        QVERIFY(!load.helper.cnDataCheck());
        QVERIFY(load.model() == nullptr);
    }

    void outputWithoutADomainGivesNoModel_data()
    {
        addColumns<QByteArray>("output");
        addRow("nothing", QByteArray());
        addRow("empty lines", QByteArray("\n\n  \n"));
        addRow("no component of a domain", QByteArray("OU=a,O=x\n"));
        addRow("lower case", QByteArray("ou=a,dc=x\n"));
    }

    void outputWithoutADomainGivesNoModel()
    {
        QFETCH(QByteArray, output);
        World::answer("mvedit", {output, ""});
        Load load;
        QVERIFY(load.run());
        QVERIFY(!load.helper.cnDataCheck());
        QVERIFY(load.model() == nullptr);
        QCOMPARE(messages(), QStringList());
    }

    void thereIsNoModelBeforeALoad()
    {
        Load load;
        QVERIFY(load.model() == nullptr);
        load.helper.getCNData();
        QVERIFY(load.model() == nullptr);
        QSignalSpy obtained(&load.helper, &cnbrowserhelper::cnDataObtained);
        QVERIFY(obtained.wait());
    }

    void newLoaderHasNothing()
    {
        cnbrowserhelper helper;
        QVERIFY(!helper.cnDataCheck());
        QCOMPARE(helper.createModelOutOfCNData(), nullptr);
        QCOMPARE(helper.parent(), nullptr);
        QCOMPARE(World::calls().size(), 0);
    }

    void scriptGetsFourArguments_data()
    {
        addColumns<QString>("value");
        addRow("plain", "value");
        addRow("blanks", " two  words ");
        addRow("quotes", "it's \"so\"");
        addRow("shell characters", "$HOME `id` $(id) * ; | \\");
        addRow("place marker", "%1 %2");
        addRow("line end", "one\ntwo");
        addRow("option", "-x");
        addRow("not ASCII", "Zoë 東京 🙂");
        addRow("32,767 characters", QString(32767, QChar(0x6771)));
    }

    void scriptGetsFourArguments()
    {
        QFETCH(QString, value);
        Load load;
        load.helper.setDomainInfo("d" + value, "u" + value, "p" + value);
        QVERIFY(load.run());
        QCOMPARE(World::calls().size(), 1);
        QCOMPARE(World::calls().at(0).path, QString("/usr/local/bin/mvedit"));
        QCOMPARE(
            World::calls().at(0).arguments,
            QStringList({"/Applications/Utilities/Morvanta/Morvanta Join Assistant.app/Contents/"
                         "Resources/mvedit_file_arg.tcl",
                         "d" + value, "u" + value, "p" + value}));
    }

    void loadReturnsBeforeTheScriptEnds()
    {
        World::hold("mvedit", "DC=x\n");
        Load load;
        QSignalSpy obtained(&load.helper, &cnbrowserhelper::cnDataObtained);
        load.helper.getCNData();
        const auto release = qScopeGuard([] { World::release("mvedit"); });
        QTRY_COMPARE(World::calls().size(), 1);
        QCOMPARE(obtained.count(), 0);
        QVERIFY(!load.helper.cnDataCheck());
        World::release("mvedit");
        QVERIFY(obtained.wait());
        QVERIFY(load.helper.cnDataCheck());
    }

    void outputMakesTheModel_data()
    {
        addColumns<QByteArray, QStringList>("output", "roots");
        addRow("two lines", QByteArray("DC=b\nDC=a\n"), QStringList{"DC=a", "DC=b"});
        addRow("no last line end", QByteArray("DC=b\nDC=a"), QStringList{"DC=a", "DC=b"});
        addRow("empty lines", QByteArray("\n\nDC=a\n  \n\n"), QStringList{"DC=a"});
        addRow("a comma last", QByteArray("DC=a\nDC=b,\n"), QStringList{"DC=a"});
        addRow("carriage returns", QByteArray("DC=a\r\nDC=b\r\n"), QStringList{"DC=a", "DC=b"});
        addRow("a line that is no name", QByteArray("Connected.\nOU=a,DC=x\n"),
               QStringList{"Connected.", "DC=x"});
        addRow("a NUL", QByteArray("DC=a\0b\nDC=c\n", 12),
               QStringList{QString::fromUtf8("DC=a\0b", 6), "DC=c"});
        addRow("not ASCII", QByteArray("DC=z\u00f6\u6771\n"), QStringList{"DC=zö東"});
        addRow("not UTF-8", QByteArray("DC=a\xff\n"),
               QStringList{QString("DC=a") + QChar(QChar::ReplacementCharacter)});
    }

    void outputMakesTheModel()
    {
        QFETCH(QByteArray, output);
        World::answer("mvedit", {output, ""});
        Load load;
        QVERIFY(load.run());
        QVERIFY(load.helper.cnDataCheck());
        const auto model = load.model();
        QVERIFY(model != nullptr);
        QTEST(rootTexts(model.get()), "roots");
    }

    void standardErrorIsNotData()
    {
        World::answer("mvedit", {"", "DC=x\n"});
        Load load;
        QVERIFY(load.run());
        QVERIFY(!load.helper.cnDataCheck());
    }

    void modelIsMadeOnce()
    {
        World::answer("mvedit", {"DC=x\n", ""});
        Load load;
        QVERIFY(load.run());
        QVERIFY(load.model() != nullptr);
        QVERIFY(!load.helper.cnDataCheck());
        QVERIFY(load.model() == nullptr);
    }

    void secondLoadReleasesTheFirst()
    {
        World::answer("mvedit", {"DC=first\n", ""});
        Load load;
        QVERIFY(load.run());
        QVERIFY(load.model() != nullptr);
        World::answer("mvedit", {"DC=second\n", ""});
        QVERIFY(load.run());
        QCOMPARE(rootTexts(load.model().get()), QStringList{"DC=second"});
        // The output of a load goes as well, even when no model was made of it.
        QVERIFY(load.run());
        load.helper.getCNData();
        QVERIFY(!load.helper.cnDataCheck());
        QSignalSpy obtained(&load.helper, &cnbrowserhelper::cnDataObtained);
        QVERIFY(obtained.wait());
    }

    void secondLoadEndsAScriptThatStillRuns()
    {
        allowWarning("Destroyed while process");
        World::hold("mvedit");
        Load load;
        load.helper.getCNData();
        const auto release = qScopeGuard([] { World::release("mvedit"); });
        QTRY_COMPARE(World::calls().size(), 1);
        World::answer("mvedit", {"DC=x\n", ""});
        QVERIFY(load.run());
        QCOMPARE(rootTexts(load.model().get()), QStringList{"DC=x"});
    }

    void releasedScriptReportsNothing()
    {
        allowWarning("Destroyed while process");
        World::hold("mvedit");
        auto helper = std::make_unique<cnbrowserhelper>();
        QSignalSpy obtained(helper.get(), &cnbrowserhelper::cnDataObtained);
        helper->getCNData();
        const auto release = qScopeGuard([] { World::release("mvedit"); });
        QTRY_COMPARE(World::calls().size(), 1);
        helper.reset();
        QCOMPARE(obtained.count(), 0);
    }

    void clearingReleasesEverything()
    {
        World::answer("mvedit", {"DC=x\n", ""});
        Load load;
        QVERIFY(load.run());
        load.helper.clearAllData();
        QVERIFY(!load.helper.cnDataCheck());
        QVERIFY(load.model() == nullptr);
        load.helper.clearAllData();
    }
};

WORLD_TEST_MAIN(TestContainerLoader)
#include "tst_containerloader.moc"
