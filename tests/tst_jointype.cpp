#include "browser/cnbrowser.h"
#include "pages/dialogs/loadcn.h"
#include "pages/jointype.h"
#include "tests/support/wizarddriver.h"

#include <QFile>
#include <QPushButton>
#include <QTreeView>

namespace {

const QStringList advanced{"AliasEdit",        "AliasLabel",        "ContainerDNEdit",
                           "ContainerDNLabel", "ContainerDNBrowse", "PDSEdit",
                           "PDSLabel",         "ForceLeave",        "AppleUIDCheck"};

const QString containerScript = "mvedit mvedit_file_arg.tcl";

// The processes that this thread has started and not waited for, ended ones included.
QByteArray childProcesses()
{
    QFile file("/proc/thread-self/children");
    if (!file.open(QIODevice::ReadOnly))
        qFatal("This kernel doesn't list children");
    return file.readAll();
}

// Notes the names of the widgets that are shown or hidden, in order.
class VisibilityLog : public QObject
{
public:
    QStringList names;

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::ShowToParent || event->type() == QEvent::HideToParent)
            names << watched->objectName();
        return false;
    }
};

// On the join options page, with the advanced options open and an answer for the container script.
class OptionsDriver : public WizardDriver
{
public:
    explicit OptionsDriver(const QString& domain = "example.test", const QString& user = "admin",
                           const QString& password = "secret")
    {
        World::answer(containerScript,
                      {"CN=Users,DC=example,DC=test\nOU=Macs,DC=example,DC=test\n", ""});
        goToJoinOptions(domain, user, password);
        click("AdvancedButton");
        World::forgetCalls();
    }

    bool isChecked(const QString& name) const
    {
        return on<QAbstractButton>(name)->isChecked();
    }
    cnbrowser* browser() const
    {
        return currentPage()->findChild<cnbrowser*>();
    }
    // Back to the credentials, and here again with others.
    template <typename... Credentials> void goToDomain(const Credentials&... credentials)
    {
        back();
        enterCredentials(credentials...);
        next();
    }
    // Closes "Loading" while the script, whose answer is held, runs.
    void browseAndClose() const
    {
        World::forgetCalls();
        click("ContainerDNBrowse");
        QTRY_COMPARE(World::callsOf("mvedit").size(), 1);
        auto* loading = windowOf<LoadCN>();
        QTest::keyClick(loading, Qt::Key_Escape);
        QVERIFY(!loading->isVisible());
    }
    // Returns when the load has ended or was refused, with the texts of the warnings.
    QStringList browse() const
    {
        return warningsDuring([this] {
            click("ContainerDNBrowse");
            QTRY_VERIFY(!windowOf<LoadCN>()->isVisible());
        });
    }
    void choose(const QString& container) const
    {
        selectItem(child<QTreeView>(browser(), "browserTree"), container);
        QTest::mouseClick(child<QPushButton>(browser(), "chooseButton"), Qt::LeftButton);
    }
};

} // namespace

class TestJoinType : public WorldTest
{
    Q_OBJECT

private slots:
    void nextReadsJoinAndLeadsToTheEnd()
    {
        const OptionsDriver driver;
        QCOMPARE(driver.button(QWizard::NextButton)->text(), QString("Join"));
        QCOMPARE(driver.currentPage()->nextId(), 7);
    }

    void browsingWithoutATreeIsRefused_data()
    {
        addColumns<QString, QString, QString, bool>("domain", "user", "password", "loads");
        addRow("no domain", "", "admin", "secret", false);
        addRow("no user", "example.test", "", "secret", false);
        addRow("no password", "example.test", "admin", "", false);
        addRow("no container", "example.test", "admin", "secret", true);
    }

    void browsingWithoutATreeIsRefused()
    {
        QFETCH(QString, domain);
        QFETCH(QString, user);
        QFETCH(QString, password);
        OptionsDriver driver(domain, user, password);
        World::answer(containerScript, {});
        driver.type("ContainerDNEdit", "OU=Old");
        driver.click("ContainerDNLabel");
        QCOMPARE(driver.browse(), QStringList{refusedBrowse()});
        QCOMPARE(driver.text("ContainerDNEdit"), QString());
        QVERIFY(!driver.isChecked("ContainerDNLabel"));
        QVERIFY(driver.browser() == nullptr || !driver.browser()->isVisible());
        QTEST(!World::calls().isEmpty(), "loads");
    }

    void computerNameIsTheHostNamesFirstPart_data()
    {
        addColumns<QByteArray, QString>("hostName", "computerName");
        addRow("with a domain", QByteArray("my-mac.local"), "my-mac");
        addRow("several full stops", QByteArray("my-mac.example.test\n"), "my-mac");
        addRow("white space around", QByteArray(" \t my-mac.local \n"), "my-mac");
        addRow("blank inside", QByteArray("my mac\n"), "");
        addRow("blank inside the first part", QByteArray("my mac.local\n"), "");
        addRow("blank after the first part", QByteArray("my-mac.a b\n"), "my-mac");
        addRow("only a domain", QByteArray(".local\n"), "");
        addRow("non-ASCII", QByteArray("büro-mac\n"), "büro-mac");
    }

    void computerNameIsTheHostNamesFirstPart()
    {
        QFETCH(QByteArray, hostName);
        QFETCH(QString, computerName);
        World::answer("scutil", {hostName, ""});
        OptionsDriver driver;
        QCOMPARE(driver.text("ComputerNameEdit"), computerName);
    }

    void choicesSurviveReentry()
    {
        OptionsDriver driver;
        const QStringList edits{"ZoneEdit", "ComputerNameEdit", "ContainerDNEdit", "PDSEdit",
                                "AliasEdit"};
        const QStringList buttons{"ZoneButton",       "AdvancedButton", "ForceLeave",
                                  "ContainerDNLabel", "PDSLabel",       "AliasLabel"};
        for (const QString& edit : edits)
            driver.type(edit, "typed in " + edit);
        const QStringList typed = driver.texts(edits);
        for (const QString& button : buttons) {
            if (!driver.isChecked(button))
                driver.click(button);
        }
        driver.back();
        QCOMPARE(driver.page(), 3);
        driver.next();
        QCOMPARE(driver.texts(edits), typed);
        for (const QString& button : buttons)
            QVERIFY2(driver.isChecked(button), qPrintable(button));
        QVERIFY(driver.on<QWidget>("AliasEdit")->isVisible());
    }

    void zoneDisablesAndUnchecksTheUidScheme()
    {
        OptionsDriver driver;
        driver.click("AppleUIDCheck");
        QVERIFY(driver.isChecked("AppleUIDCheck"));
        driver.click("ZoneButton");
        QVERIFY(!driver.isChecked("AutoButton"));
        QVERIFY(!driver.on<QWidget>("AppleUIDCheck")->isEnabled());
        QVERIFY(!driver.isChecked("AppleUIDCheck"));
        driver.click("AutoButton");
        QVERIFY(driver.on<QWidget>("AppleUIDCheck")->isEnabled());
        QVERIFY(!driver.isChecked("AppleUIDCheck"));
    }

    void advancedOptionsShowAndHideInOrder()
    {
        WizardDriver driver;
        driver.goToJoinOptions();
        VisibilityLog log;
        for (const QString& name : advanced)
            driver.on<QWidget>(name)->installEventFilter(&log);
        driver.click("AdvancedButton");
        QCOMPARE(log.names, advanced);
        driver.click("AdvancedButton");
        QCOMPARE(log.names, advanced + advanced);
    }

    void openingUnchecksOnlyTheUidSchemeAndKeepsItDisabledWithAZone()
    {
        OptionsDriver driver;
        for (const char* name : {"ForceLeave", "ContainerDNLabel", "AppleUIDCheck"})
            driver.click(name);
        driver.type("ContainerDNEdit", "OU=Macs");
        driver.click("AdvancedButton");
        QVERIFY(driver.isChecked("AppleUIDCheck"));
        QVERIFY(driver.isChecked("ForceLeave"));
        driver.click("AdvancedButton");
        QVERIFY(!driver.isChecked("AppleUIDCheck"));
        QVERIFY(driver.on<QWidget>("AppleUIDCheck")->isEnabled());
        QVERIFY(driver.isChecked("ForceLeave"));
        QVERIFY(driver.isChecked("ContainerDNLabel"));
        QCOMPARE(driver.text("ContainerDNEdit"), QString("OU=Macs"));
        driver.click("AdvancedButton");
        driver.click("ZoneButton");
        driver.click("AdvancedButton");
        QVERIFY(!driver.on<QWidget>("AppleUIDCheck")->isEnabled());
    }

    void progressStandsWhileContainersLoad()
    {
        OptionsDriver driver;
        World::answer(containerScript, {"CN=Users,DC=example,DC=test\n", "", 0, 0, false, true});
        driver.click("ContainerDNBrowse");
        QVERIFY(windowOf<LoadCN>()->isVisible());
        QCOMPARE(QApplication::activeModalWidget(), windowOf<LoadCN>());
        QTRY_COMPARE(World::callsOf("mvedit").size(), 1);
        QVERIFY(!driver.browser()->isVisible());
        World::release(containerScript);
        QTRY_VERIFY(driver.browser()->isVisible());
        QVERIFY(!windowOf<LoadCN>()->isVisible());
    }

    void closingTheProgressEndsTheScriptWhoseFailureEmptiesNothing()
    {
        allowWarning("Destroyed while process");
        OptionsDriver driver;
        const QByteArray before = childProcesses();
        World::hold(containerScript);
        driver.browseAndClose();
        driver.type("ContainerDNEdit", "OU=Macs");
        // Once the child is gone, QProcess has told of its failure.
        QCOMPARE(warningsDuring([&] { QTRY_COMPARE(childProcesses(), before); }), QStringList());
        QCOMPARE(driver.text("ContainerDNEdit"), QString("OU=Macs"));
    }

    void afterAClosedLoadTheFormerDomainIsLoadedAnew()
    {
        allowWarning("Destroyed while process");
        OptionsDriver driver;
        driver.browse();
        driver.browser()->close();
        driver.goToDomain("other.test");
        World::hold(containerScript);
        driver.browseAndClose();
        driver.goToDomain("example.test");
        World::answer(containerScript, {"CN=Users,DC=example,DC=test\n", ""});
        World::forgetCalls();
        QCOMPARE(driver.browse(), QStringList());
        QCOMPARE(World::callsOf("mvedit").size(), 1);
        QVERIFY(driver.browser()->isVisible());
    }

    void browserGetsTheFieldsAfreshAndIsMadeOnce()
    {
        OptionsDriver driver;
        QCOMPARE(driver.browse(), QStringList());
        QCOMPARE(World::callsOf("mvedit").at(0).arguments.mid(1),
                 QStringList({"example.test", "admin", "secret"}));
        const cnbrowser* first = driver.browser();
        driver.browser()->close();
        driver.goToDomain("other.test", "operator", "word");
        World::forgetCalls();
        QCOMPARE(driver.browse(), QStringList());
        QCOMPARE(World::callsOf("mvedit").at(0).arguments.mid(1),
                 QStringList({"other.test", "operator", "word"}));
        QCOMPARE(driver.currentPage()->findChildren<cnbrowser*>().size(), 1);
        QCOMPARE(driver.browser(), first);
        QVERIFY(driver.browser()->isVisible());
    }

    void choosingAContainerSwitchesItOnAndAnEmptyNameOff()
    {
        OptionsDriver driver;
        driver.type("ContainerDNEdit", "OU=Old");
        driver.browse();
        driver.choose("OU=Macs");
        QCOMPARE(driver.text("ContainerDNEdit"), QString("OU=Macs,DC=example,DC=test"));
        QVERIFY(driver.isChecked("ContainerDNLabel"));
        emit driver.browser()->browseChooseButtonClicked(QString());
        QCOMPARE(driver.text("ContainerDNEdit"), QString());
        QVERIFY(!driver.isChecked("ContainerDNLabel"));
    }
};

WORLD_TEST_MAIN(TestJoinType)
#include "tst_jointype.moc"
