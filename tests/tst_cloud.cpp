#include "system/probes.h"
#include "tests/support/webbrowser.h"
#include "tests/support/wizarddriver.h"

#include <QPushButton>

class TestCloud : public WorldTest
{
    Q_OBJECT

private slots:
    void downloadGoesOnWhenNoBrowserOpens()
    {
        allowWarning("does not support QPlatformServices::openUrl()");
        WizardDriver driver;
        driver.startAt(5);
        driver.click("downloadButton");
        QCOMPARE(messages().filter("does not support QPlatformServices::openUrl()").size(), 1);
        QCOMPARE(driver.page(), 7);
    }

    void downloadOpensThePageOnceAndGoesOn()
    {
        WizardDriver driver;
        driver.startAt(5);
        WebBrowser browser;
        driver.click("downloadButton");
        QCOMPARE(browser.opened,
                 QList<QUrl>{QUrl(QString("https://%1/AppLoad?noumc=1").arg(enrollmentHost))});
        QCOMPARE(driver.page(), 7);
    }

    void nextLeadsToTheEnd()
    {
        WizardDriver driver;
        driver.startAt(5);
        QCOMPARE(driver.next(), QStringList());
        QCOMPARE(driver.page(), 7);
    }

    void downloadTakesFocusByClickOnly()
    {
        WizardDriver driver;
        driver.startAt(5);
        QCOMPARE(driver.on<QPushButton>("downloadButton")->focusPolicy(), Qt::ClickFocus);
    }
};

WORLD_TEST_MAIN(TestCloud)
#include "tst_cloud.moc"
