#include "tests/domain/joinoptions.h"

#include "browser/cnbrowser.h"

#include <QScopeGuard>
#include <QTreeView>

using PracticeMac::base;
using PracticeMac::directoryOn;

class TestJoin : public DomainTest
{
    Q_OBJECT

private slots:
    void joinsAutomatically()
    {
        JoinWizard wizard("auto-mac");
        join(&wizard);
        const Computer computer = directoryOn("auto-mac");
        QCOMPARE(computer.distinguishedName, "CN=auto-mac,CN=Computers," + base);
        QCOMPARE(computer.state, QString("enabled"));
        QCOMPARE(
            computer.serviceNames,
            QStringList({"RestrictedKrbHost/auto-mac", "RestrictedKrbHost/auto-mac.example.test",
                         "host/auto-mac", "host/auto-mac.example.test"}));
        QCOMPARE(computer.description, QString("Auto zone"));
    }

    void tellsAnUnknownZoneAndThenJoinsOne()
    {
        JoinWizard wizard("zone-mac");
        wizard.click("ZoneButton");
        wizard.type("ZoneEdit", "MacZ*");
        QCOMPARE(wizard.next(), QStringList("There is no zone \"MacZ*\" in example.test.\n"));
        QCOMPARE(wizard.page(), 4);
        QCOMPARE(directoryOn("zone-mac").distinguishedName, QString());
        wizard.type("ZoneEdit", "LabZone");
        join(&wizard);
        QCOMPARE(directoryOn("zone-mac").description, QString("Zone LabZone"));
        QCOMPARE(PracticeMac::run("/usr/local/bin/mvinfo", {"-z"}), QString("LabZone\n"));
    }

    void joinsWithEveryOption()
    {
        JoinWizard wizard("every-mac");
        openAdvancedOptions(&wizard);
        wizard.click("ForceLeave");
        wizard.click("AppleUIDCheck");
        choose(&wizard, "ContainerDN",
               "OU=Lab 12,OU=Microscopy,OU=Optics,OU=Research,OU=Departments," + base);
        choose(&wizard, "PDS", "dc1.example.test");
        choose(&wizard, "Alias", "every-alias");
        join(&wizard);
        const Computer computer = directoryOn("every-mac");
        QCOMPARE(computer.distinguishedName,
                 "CN=every-mac,OU=Lab 12,OU=Microscopy,OU=Optics,OU=Research,OU=Departments," +
                     base);
        QCOMPARE(computer.state, QString("enabled"));
        QCOMPARE(computer.description, QString("Auto zone, Apple UID scheme"));
        QVERIFY(computer.serviceNames.contains("host/every-alias.example.test"));
        QVERIFY(computer.serviceNames.contains("host/EVERY-ALIAS"));
    }

    void joinsAContainerPickedFromTheTree_data()
    {
        addColumns<QStringList, QString>("path", "container");

        addRow("OU with an escaped comma, which the tree shows as two levels",
               QStringList{"OU=Departments", " Marketing", "OU=Sales\\"},
               "OU=Sales\\, Marketing,OU=Departments");
        addRow("OU with umlauts",
               QStringList{"OU=Europe", "OU=Berlin", "OU=Users", "OU=Geschäftsführung"},
               "OU=Geschäftsführung,OU=Users,OU=Berlin,OU=Europe");
        addRow("OU below an apostrophe",
               QStringList{"OU=Europe", "OU=Dublin", "OU=St. Stephen's Green", "OU=Macs"},
               "OU=Macs,OU=St. Stephen's Green,OU=Dublin,OU=Europe");
        addRow("CN container", QStringList{"CN=Kiosk Macs", "CN=Lobby"}, "CN=Lobby,CN=Kiosk Macs");
    }

    void joinsAContainerPickedFromTheTree()
    {
        QFETCH(QStringList, path);
        QFETCH(QString, container);
        static int number = 0;
        const QString name = QString("picked-%1").arg(++number);

        JoinWizard wizard(name);
        pick(&wizard, path);
        QCOMPARE(wizard.text("ContainerDNEdit"), container + "," + base);
        join(&wizard);
        QCOMPARE(directoryOn(name).distinguishedName, "CN=" + name + "," + container + "," + base);
    }

    // The tree splits names at every comma, so a half of "Sales, Marketing" is an item of its own.
    // It can be chosen, and the join then says that there is no such container.
    void refusesHalfOfANameWithAComma()
    {
        JoinWizard wizard("half-mac");
        pick(&wizard, {"OU=Departments", " Marketing"});
        const QString half = " Marketing,OU=Departments," + base;
        QCOMPARE(wizard.text("ContainerDNEdit"), half);
        QCOMPARE(wizard.next(),
                 QStringList(QString("There is no container \"%1\" in example.test.\n").arg(half)));
        QCOMPARE(wizard.page(), 4);
        QCOMPARE(directoryOn("half-mac").distinguishedName, QString());
    }

    // OU=Workshop and CN=Workshop lie side by side. The tree keeps a level by its names alone, so
    // it shows one of them; the other can't be picked, only typed.
    void offersOneOfTwoNeighboursWithOneName()
    {
        JoinWizard wizard("neighbour-mac");
        openAdvancedOptions(&wizard);
        cnbrowser* browser = browse(&wizard);
        const auto* tree = child<QTreeView>(browser, "browserTree");
        const QStringList above{"DC=test", "DC=example", "OU=Departments", "OU=Research"};
        const bool showsOu = itemAt(tree, above + QStringList("OU=Workshop")).isValid();
        QCOMPARE(itemAt(tree, above + QStringList("CN=Workshop")).isValid(), !showsOu);
        browser->close();

        const QString hidden = showsOu ? "CN=Workshop" : "OU=Workshop";
        const QString parent = ",OU=Research,OU=Departments," + base;
        choose(&wizard, "ContainerDN", hidden + parent);
        join(&wizard);
        QCOMPARE(directoryOn("neighbour-mac").distinguishedName,
                 "CN=neighbour-mac," + hidden + parent);
    }

    void refusesAnExistingAccountUnlessItIsOverwritten()
    {
        const Computer existing = directoryOn("front-desk");
        QCOMPARE(existing.state, QString("disabled"));
        JoinWizard wizard("front-desk");
        wizard.click("ZoneButton");
        wizard.type("ZoneEdit", "MacZone");
        QCOMPARE(wizard.next(), QStringList("example.test already has a computer front-desk (" +
                                            existing.distinguishedName +
                                            "). Choose another name or overwrite it.\n"));
        QCOMPARE(wizard.page(), 4);
        QVERIFY(!PracticeMac::isJoined());
        QCOMPARE(directoryOn("front-desk").state, QString("disabled"));
        QCOMPARE(directoryOn("front-desk").description, existing.description);

        openAdvancedOptions(&wizard);
        wizard.click("ForceLeave");
        choose(&wizard, "ContainerDN", "CN=Loan Pool,OU=Departments," + base);
        join(&wizard);
        const Computer computer = directoryOn("front-desk");
        QCOMPARE(computer.distinguishedName, "CN=front-desk,CN=Loan Pool,OU=Departments," + base);
        QCOMPARE(computer.state, QString("enabled"));
        QCOMPARE(computer.description, QString("Zone MacZone"));
        QVERIFY(computer.serviceNames.contains("host/front-desk.example.test"));
    }

    // DNS lists another controller, which is dead.
    void joinsThroughThePreferredServer()
    {
        JoinWizard wizard("server-mac");
        const QString listControllers = PracticeMac::script("list_controllers");
        PracticeMac::run(PracticeMac::script("packets"), {"lose", "198.51.100.1"});
        PracticeMac::run(listControllers, {"dead=198.51.100.1"});
        const auto restore = qScopeGuard([=] { PracticeMac::run(listControllers, {"dc1"}); });
        openAdvancedOptions(&wizard);
        choose(&wizard, "PDS", "dc1.example.test");
        join(&wizard);
        QCOMPARE(directoryOn("server-mac").state, QString("enabled"));
    }

    void refusesAServerThatIsNoController()
    {
        JoinWizard wizard("server-mac2");
        openAdvancedOptions(&wizard);
        choose(&wizard, "PDS", "dc7.example.test");
        QCOMPARE(wizard.next(), QStringList("dc7.example.test is not a domain controller of "
                                            "example.test, or does not answer.\n"));
        QCOMPARE(wizard.page(), 4);
        QCOMPARE(directoryOn("server-mac2").distinguishedName, QString());
    }

    // An administrator who may create accounts in this container, but not take this one away.
    void saysWhyAnAccountIsNotMoved()
    {
        const QString existing = directoryOn("front-desk").distinguishedName;
        const QString container = "OU=Floor 1,OU=Macs,OU=Computers,OU=Berlin,OU=Europe," + base;
        JoinWizard wizard("front-desk", "berlin.admin");
        openAdvancedOptions(&wizard);
        wizard.click("ForceLeave");
        choose(&wizard, "ContainerDN", container);
        const QString said = wizard.next().value(0);
        QVERIFY2(said.startsWith("The computer " + existing + " could not be moved to " +
                                 container + ". "),
                 qPrintable(said));
        QVERIFY2(said.contains("Insufficient access"), qPrintable(said));
        QCOMPARE(directoryOn("front-desk").distinguishedName, existing);
    }
};

DOMAIN_TEST_MAIN(TestJoin)
#include "tst_join.moc"
