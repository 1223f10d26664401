#include "tests/domain/joinoptions.h"
#include "tests/domain/sentences.h"

#include <QTreeView>

using PracticeMac::base;
using PracticeMac::directoryOn;

namespace {

// The SRV records of the domain's controllers, as the Mac's default name server lists them.
QString listedControllers()
{
    return PracticeMac::run("/usr/bin/dig", {"+short", "_ldap._tcp.dc._msdcs.example.test", "SRV"});
}

// The credentials page refuses the administrator for this reason.
void refuseCredentials(const QString& reason)
{
    WizardDriver wizard;
    wizard.goToCredentials();
    wizard.enterCredentials(PracticeMac::domain, PracticeMac::administrator, PracticeMac::password);
    QCOMPARE(wizard.next(), QStringList(refusedCheck(reason)));
    QCOMPARE(wizard.page(), 3);
}

} // namespace

// Macs with one trouble each: CMakeLists.txt names the scenario that each function runs on.
class TestScenarios : public DomainTest
{
    Q_OBJECT

private slots:
    void tellsThatTheClockIsWrong()
    {
        refuseCredentials("This Mac's clock is 60 minutes ahead of the domain's: set its date and "
                          "time, and try again.");
    }

    void tellsThatHeMayNotJoinByDefault()
    {
        const QString container = "OU=Macs,OU=Computers,OU=Berlin,OU=Europe," + base;
        JoinWizard wizard("berlin-mac", "berlin.admin");
        const QStringList warnings = wizard.next();
        QCOMPARE(warnings.size(), 1);
        QVERIFY2(warnings.at(0).startsWith("The computer account berlin-mac could not be made. ") &&
                     warnings.at(0).contains("Insufficient permissions"),
                 qPrintable(warnings.at(0)));
        QCOMPARE(wizard.page(), 4);
        QCOMPARE(directoryOn("berlin-mac").distinguishedName, QString());

        pick(&wizard, {"OU=Europe", "OU=Berlin", "OU=Computers", "OU=Macs"});
        join(&wizard);
        QCOMPARE(directoryOn("berlin-mac").distinguishedName, "CN=berlin-mac," + container);
        QCOMPARE(directoryOn("berlin-mac").state, QString("enabled"));
    }

    void tellsThatNoEncryptionIsInCommon()
    {
        refuseCredentials(Sentence::noEncryption.arg(PracticeMac::administrator));
    }

    void joinsPastDeadControllers()
    {
        QCOMPARE(listedControllers().count("0 100 389 far"), 16);
        QCOMPARE(listedControllers().count("10 100 389 dc1"), 1);
        JoinWizard wizard("far-mac");
        pick(&wizard, {"OU=Servers"});
        join(&wizard);
        QCOMPARE(directoryOn("far-mac").distinguishedName, "CN=far-mac,OU=Servers," + base);
        QCOMPARE(directoryOn("far-mac").state, QString("enabled"));
    }

    void tellsThatAllControllersAreDead()
    {
        refuseCredentials(Sentence::unreachable.arg(PracticeMac::domain).arg(3));
    }

    void tellsThatTheControllerDiedDuringTheJoin()
    {
        JoinWizard wizard("lost-mac");
        QCOMPARE(wizard.next(), QStringList("The computer account lost-mac could not be made. The "
                                            "controller stopped answering.\n"));
        QCOMPARE(wizard.page(), 4);
        QVERIFY(!PracticeMac::isJoined());
        QCOMPARE(directoryOn("lost-mac").distinguishedName, QString());

        join(&wizard);
        QCOMPARE(directoryOn("lost-mac").state, QString("enabled"));
    }

    void picksOneOfTenThousandContainers()
    {
        JoinWizard wizard("branch-mac");
        pick(&wizard, {"OU=Branches", "OU=Region 100", "OU=Branch 99"});
        const QAbstractItemModel* tree = child<QTreeView>(&wizard.wizard, "browserTree")->model();
        const auto branches = tree->match(tree->index(0, 0), Qt::DisplayRole, "OU=Branch ", -1,
                                          Qt::MatchStartsWith | Qt::MatchRecursive);
        QCOMPARE(branches.size(), 9900);
        join(&wizard);
        QCOMPARE(directoryOn("branch-mac").distinguishedName,
                 "CN=branch-mac,OU=Branch 99,OU=Region 100,OU=Branches," + base);
    }

    void joinsThroughTheDomainsOwnNameServer()
    {
        QCOMPARE(listedControllers(), QString());
        JoinWizard wizard("split-mac");
        join(&wizard);
        QCOMPARE(directoryOn("split-mac").state, QString("enabled"));
    }
};

DOMAIN_TEST_MAIN(TestScenarios)
#include "tst_scenarios.moc"
