#include "tests/domain/joinoptions.h"

#include "pages/dialogs/loadjoin.h"

#include <QCheckBox>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>

using PracticeMac::directoryOn;
using PracticeMac::processes;

namespace {

void signalController(const QString& signal)
{
    const QStringList services = processes({"-f", "^samba: task\\[(ldap|kdc)\\]"});
    QVERIFY(!services.isEmpty());
    PracticeMac::run("/bin/kill", QStringList("-" + signal) + services);
}

// Lets the controller hang as soon as the join has got to its work on the directory.
class HangDuringJoin : public QObject
{
public:
    HangDuringJoin()
    {
        QObject::connect(&poll, &QTimer::timeout, this, [this] {
            if (processes({"-f", "^adcli join"}).isEmpty())
                return;
            poll.stop();
            signalController("STOP");
            dialogWasUp = qobject_cast<LoadJoin*>(QApplication::activeModalWidget()) != nullptr;
        });
        poll.start(5);
    }

    bool happened() const
    {
        return !poll.isActive();
    }

    bool dialogWasUp = false;

private:
    QTimer poll;
};

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

    void joinEndsWithASentenceWhenTheControllerHangsInTheMiddle()
    {
        JoinWizard wizard("hung-mac");
        HangDuringJoin hang;
        QCOMPARE(wizard.next(), QStringList("The computer account hung-mac could not be made. The "
                                            "controller stopped answering.\n"));
        QVERIFY(hang.happened());
        QVERIFY(hang.dialogWasUp);
        QCOMPARE(wizard.page(), 4);
        QVERIFY(!PracticeMac::isJoined());

        // Once it answers again, the same page joins, over what the first try may have left behind.
        signalController("CONT");
        wizard.on<QCheckBox>("ForceLeave")->setChecked(true);
        QCOMPARE(wizard.next(), QStringList());
        QCOMPARE(wizard.page(), 7);
        QCOMPARE(directoryOn("hung-mac").state, QString("enabled"));
    }

    void browseWarnsWhenTheControllerHangs()
    {
        JoinWizard wizard("unseen-mac");
        QTest::mouseClick(wizard.on<QPushButton>("AdvancedButton"), Qt::LeftButton);
        signalController("STOP");
        const QStringList warnings = warningsDuring([&wizard] {
            QTest::mouseClick(wizard.on<QPushButton>("ContainerDNBrowse"), Qt::LeftButton);
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
        wizard.on<QRadioButton>("radioButton_3")->click();
        QCOMPARE(wizard.next(), QStringList());
        QCOMPARE(wizard.page(), 7);
        QVERIFY(!PracticeMac::isJoined());
        signalController("CONT");
        QCOMPARE(directoryOn("cut-off-mac").state, QString("enabled"));
    }
};

DOMAIN_TEST_MAIN(TestOutage)
#include "tst_outage.moc"
