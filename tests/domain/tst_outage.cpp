#include "tests/domain/joinoptions.h"

namespace {

void signalController(const QString& signal)
{
    const QStringList services = PracticeMac::processes({"-f", "^samba: task\\[(ldap|kdc)\\]"});
    QVERIFY(!services.isEmpty());
    PracticeMac::run("/bin/kill", QStringList("-" + signal) + services);
}

} // namespace

// A controller whose directory and Kerberos services hang: they take connections and never answer.
class TestOutage : public DomainTest
{
    Q_OBJECT

private slots:
    void cleanup()
    {
        signalController("CONT");
        DomainTest::cleanup();
    }

    void browseWarnsWhenTheControllerHangs()
    {
        JoinWizard wizard("unseen-mac");
        openAdvancedOptions(&wizard);
        signalController("STOP");
        const QStringList warnings = warningsDuring([&wizard] {
            wizard.click("ContainerDNBrowse");
            QVERIFY(QTest::qWaitFor([] { return QApplication::activeModalWidget() == nullptr; },
                                    30000));
        });
        QCOMPARE(warnings, QStringList(refusedBrowse()));
        QCOMPARE(wizard.page(), 4);
    }

    void leavesWithoutTheDomain()
    {
        joinMac("cut-off-mac");
        signalController("STOP");
        WizardDriver wizard;
        wizard.next();
        QCOMPARE(wizard.page(), 6);
        wizard.click("radioButton_3");
        QCOMPARE(wizard.next(), QStringList());
        QCOMPARE(wizard.page(), 7);
        QVERIFY(!PracticeMac::isJoined());
        signalController("CONT");
        QCOMPARE(PracticeMac::directoryOn("cut-off-mac").state, QString("enabled"));
    }
};

DOMAIN_TEST_MAIN(TestOutage)
#include "tst_outage.moc"
