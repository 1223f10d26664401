#include "pages/wizardintro.h"
#include "tests/support/texts.h"
#include "tests/support/worldtest.h"

#include <QLabel>

#include <csignal>

namespace {

const QString joinText = greeting("join your Mac to your", "Domain");
const QString leaveText = greeting("leave your Mac from your", "domain");

} // namespace

class TestWizardIntro : public WorldTest
{
    Q_OBJECT

private slots:
    void withoutTheAgentOnlyTheJoinTextShows_data()
    {
        addColumns<bool>("missing");
        addRow("missing", true);
        addRow("killed", false);
    }

    void withoutTheAgentOnlyTheJoinTextShows()
    {
        QFETCH(bool, missing);
        World::answer("mvinfo -d", {"example.test\n", "", 0, SIGKILL});
        if (missing)
            World::removeTool("mvinfo");
        WizardIntro page;
        page.show();
        QCOMPARE(visibleTexts(&page), QStringList{joinText});
    }

    void notJoinedOnlyTheJoinTextShows()
    {
        WizardIntro page;
        page.show();
        QCOMPARE(visibleTexts(&page), QStringList{joinText});
    }

    void joinedShowsTheLeaveTextAndTheDomain_data()
    {
        addColumns<QByteArray>("output");
        addRow("with its line end", QByteArray("example.test\n"));
        addRow("without a line end", QByteArray("example.test"));
        addRow("several lines", QByteArray("example.test\nmore\n"));
        addRow("nothing", QByteArray());
        addRow("longer than two chunks", QByteArray(1500, 'x') + '\n');
        addRow("not ASCII", QByteArray("m\xc3\xbcnchen.test\n"));
    }

    void joinedShowsTheLeaveTextAndTheDomain()
    {
        QFETCH(QByteArray, output);
        World::setJoined(output);
        WizardIntro page;
        page.show();
        QCOMPARE(visibleTexts(&page), QStringList({leaveText, "You are currently joined to " +
                                                                  QString::fromUtf8(output)}));
    }

    void choiceIsMadeOnce()
    {
        WizardIntro page;
        World::setJoined();
        page.initializePage();
        page.show();
        page.hide();
        page.show();
        QCOMPARE(visibleTexts(&page), QStringList{joinText});
    }

    void formHasItsNameTitleAndSize()
    {
        const WizardIntro page;
        QCOMPARE(page.objectName(), QString("WizardIntro"));
        QCOMPARE(page.windowTitle(), QString("WizardPage"));
        QCOMPARE(page.size(), QSize(582, 524));
    }

    void labelsAreWrappedInTheirOrder()
    {
        const WizardIntro page;
        const QList<QLabel*> labels = page.findChildren<QLabel*>();
        QCOMPARE(labels.size(), 3);
        for (const QLabel* label : labels)
            QVERIFY(label->wordWrap());
        QCOMPARE(labels.at(0)->objectName(), QString("Join_label"));
        QCOMPARE(labels.at(1)->objectName(), QString("Leave_label"));
        QCOMPARE(labels.at(2)->objectName(), QString("Domain_label"));
        QCOMPARE(labels.at(0)->text(), joinText);
        QCOMPARE(labels.at(1)->text(), leaveText);
        QCOMPARE(labels.at(2)->text(), QString("TextLabel"));
    }
};

WORLD_TEST_MAIN(TestWizardIntro)
#include "tst_wizardintro.moc"
