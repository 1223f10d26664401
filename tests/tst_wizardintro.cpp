#include "pages/wizardintro.h"
#include "tests/support/texts.h"
#include "tests/support/worldtest.h"

#include <QLabel>

namespace {

const QString joinText = greeting("join your Mac to your", "Domain");
const QString leaveText = greeting("leave your Mac from your", "domain");

} // namespace

class TestWizardIntro : public WorldTest
{
    Q_OBJECT

private slots:
    void notJoinedOnlyTheJoinTextShows()
    {
        WizardIntro page;
        page.show();
        QCOMPARE(visibleTexts(&page), QStringList{joinText});
    }

    void joinedShowsTheLeaveTextAndTheDomain()
    {
        World::setJoined("m\u00fcnchen.test\n");
        WizardIntro page;
        page.show();
        QCOMPARE(visibleTexts(&page),
                 QStringList({leaveText, "You are currently joined to m\u00fcnchen.test\n"}));
    }

    void aLaterJoinChangesNoText()
    {
        WizardIntro page;
        World::setJoined();
        page.initializePage();
        page.show();
        page.hide();
        page.show();
        QCOMPARE(visibleTexts(&page), QStringList{joinText});
    }

    void labelsHaveTheirTextsInTheirOrder()
    {
        const WizardIntro page;
        QStringList labels;
        for (const QLabel* label : page.findChildren<QLabel*>())
            labels << label->objectName() + ": " + label->text();
        QCOMPARE(labels, QStringList({"Join_label: " + joinText, "Leave_label: " + leaveText,
                                      "Domain_label: TextLabel"}));
    }
};

WORLD_TEST_MAIN(TestWizardIntro)
#include "tst_wizardintro.moc"
