#include "browser/cnbrowserhelper.h"
#include "tests/support/worldtest.h"

#include <QSignalSpy>
#include <QStandardItemModel>

#include <csignal>
#include <memory>

namespace {

// A loader with credentials, and what its script answers; run() takes one load to its end.
class Loader
{
public:
    explicit Loader(const Answer& answer = {})
    {
        World::answer("mvedit", answer);
        helper.setDomainInfo("example.test", "admin", "secret");
    }
    bool run()
    {
        QSignalSpy obtained(&helper, &cnbrowserhelper::cnDataObtained);
        helper.getCNData();
        return obtained.wait(20000) && obtained.count() == 1;
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
    void failedOrKilledScriptGivesNoData()
    {
        const QByteArray output = "OU=a,DC=x\n";
        const Answer failures[] = {
            {output, "", 1}, {output, "", 127}, {output, "", 255}, {output, "", 0, SIGKILL}};
        QStringList logged;
        for (const Answer& failure : failures) {
            Loader loader(failure);
            QVERIFY(loader.run());
            // QProcess hands a signal's number on in place of an exit code.
            const int code = failure.exitStatus + failure.signal;
            logged << QString("readStdOutput errcode:  %1").arg(code);
            QCOMPARE(messages(), logged);
            QVERIFY(!loader.helper.cnDataCheck());
            QVERIFY(loader.model() == nullptr);
        }
    }

    void newLoaderHasNothing()
    {
        cnbrowserhelper helper;
        QVERIFY(!helper.cnDataCheck());
        QCOMPARE(helper.createModelOutOfCNData(), nullptr);
        QCOMPARE(helper.parent(), nullptr);
        QCOMPARE(World::calls().size(), 0);
    }

    void outputWithADomainMakesTheModel_data()
    {
        addColumns<QByteArray, QStringList>("output", "roots");
        addRow("two lines", QByteArray("DC=b\nDC=a\n"), QStringList{"DC=a", "DC=b"});
        addRow("no last line end", QByteArray("DC=b\nDC=a"), QStringList{"DC=a", "DC=b"});
        addRow("carriage returns", QByteArray("DC=a\r\nDC=b\r\n"), QStringList{"DC=a", "DC=b"});
        addRow("a line that is no name", QByteArray("Connected.\nOU=a,DC=x\n"),
               QStringList{"Connected.", "DC=x"});
        addRow("a NUL", QByteArray("DC=a\0b\nDC=c\n", 12),
               QStringList{QString::fromUtf8("DC=a\0b", 6), "DC=c"});
        addRow("not UTF-8", QByteArray("DC=a\xff\n"),
               QStringList{QString("DC=a") + QChar(QChar::ReplacementCharacter)});
        addRow("nothing: no model", QByteArray(), QStringList());
        addRow("empty lines: no model", QByteArray("\n\n  \n"), QStringList());
        addRow("no component of a domain: no model", QByteArray("OU=a,O=x\n"), QStringList());
        addRow("lower case: no model", QByteArray("ou=a,dc=x\n"), QStringList());
    }

    void outputWithADomainMakesTheModel()
    {
        QFETCH(QByteArray, output);
        QFETCH(QStringList, roots);
        Loader loader({output, "DC=standard error is not data\n"});
        QVERIFY(loader.run());
        QCOMPARE(loader.helper.cnDataCheck(), !roots.isEmpty());
        const auto model = loader.model();
        QCOMPARE(model != nullptr, !roots.isEmpty());
        if (model != nullptr)
            QCOMPARE(rootTexts(model.get()), roots);
        QCOMPARE(messages(), QStringList());
    }

    void modelIsMadeOnce()
    {
        Loader loader({"DC=x\n", ""});
        QVERIFY(loader.run());
        QVERIFY(loader.model() != nullptr);
        QVERIFY(!loader.helper.cnDataCheck());
        QVERIFY(loader.model() == nullptr);
    }

    void secondLoadReleasesTheFirst()
    {
        Loader loader({"DC=first\n", ""});
        QVERIFY(loader.run());
        QVERIFY(loader.model() != nullptr);
        World::answer("mvedit", {"DC=second\n", ""});
        QVERIFY(loader.run());
        QCOMPARE(rootTexts(loader.model().get()), QStringList{"DC=second"});
        // A new load also drops an output of which no model was made.
        QVERIFY(loader.run());
        loader.helper.getCNData();
        QVERIFY(!loader.helper.cnDataCheck());
        QSignalSpy obtained(&loader.helper, &cnbrowserhelper::cnDataObtained);
        QVERIFY(obtained.wait(20000));
    }

    void secondLoadEndsAScriptThatStillRuns()
    {
        allowWarning("Destroyed while process");
        Loader loader;
        World::hold("mvedit");
        loader.helper.getCNData();
        QTRY_COMPARE(World::calls().size(), 1);
        // Not for "mvedit", which would release the first script: the second load has to end it.
        World::answer("mvedit mvedit_file_arg.tcl", {"DC=x\n", ""});
        QVERIFY(loader.run());
        QCOMPARE(rootTexts(loader.model().get()), QStringList{"DC=x"});
    }

    void deletedLoaderEndsItsScriptAndReportsNothing()
    {
        allowWarning("Destroyed while process");
        World::hold("mvedit");
        auto helper = std::make_unique<cnbrowserhelper>();
        QSignalSpy obtained(helper.get(), &cnbrowserhelper::cnDataObtained);
        helper->getCNData();
        QTRY_COMPARE(World::calls().size(), 1);
        helper.reset();
        QCOMPARE(obtained.count(), 0);
    }

    void clearingReleasesEverything()
    {
        Loader loader({"DC=x\n", ""});
        QVERIFY(loader.run());
        QVERIFY(loader.model() != nullptr);
        loader.helper.clearAllData();
        loader.helper.clearAllData(); // a second time, which does no harm
        // Clears an output of which no model was made yet, too.
        QVERIFY(loader.run());
        loader.helper.clearAllData();
        QVERIFY(!loader.helper.cnDataCheck());
        QVERIFY(loader.model() == nullptr);
    }
};

WORLD_TEST_MAIN(TestContainerLoader)
#include "tst_containerloader.moc"
