#include "system/probes.h"
#include "tests/support/formtest.h"
#include "tests/support/webbrowser.h"
#include "tests/support/wizarddriver.h"

#include <QLabel>
#include <QPushButton>

namespace {

class CloudDriver : public WizardDriver
{
public:
    CloudDriver()
    {
        startAt(5);
    }
};

} // namespace

class TestCloud : public WorldTest
{
    Q_OBJECT

private slots:
    void downloadGoesOnWhenNoBrowserOpens()
    {
        allowWarning("does not support QPlatformServices::openUrl()");
        CloudDriver driver;
        driver.click("downloadButton");
        QCOMPARE(messages().filter("does not support QPlatformServices::openUrl()").size(), 1);
        QCOMPARE(driver.page(), 7);
    }

    void downloadOpensThePageOnceAndGoesOn()
    {
        CloudDriver driver;
        WebBrowser browser;
        driver.click("downloadButton");
        QCOMPARE(browser.opened,
                 QList<QUrl>{QUrl(QString("https://%1/AppLoad?noumc=1").arg(enrollmentHost))});
        QCOMPARE(driver.page(), 7);
    }

    void nextLeadsToTheEnd()
    {
        CloudDriver driver;
        World::forgetCalls();
        QCOMPARE(driver.next(), QStringList());
        QCOMPARE(driver.page(), 7);
        QCOMPARE(World::calls().size(), 0);
    }

    void formHasItsWidgets()
    {
        CloudDriver driver;
        compareForm(driver.currentPage(),
                    {{"label", "QLabel",
                      "To enroll with Morvanta Endpoint Services, get Morvanta Agent for Mac"},
                     {"downloadButton", "QPushButton", "Download"}});
    }

    void pageIs582By524()
    {
        CloudDriver driver;
        QCOMPARE(driver.currentPage()->minimumSize(), QSize(582, 524));
        QCOMPARE(driver.currentPage()->maximumSize(), QSize(582, 524));
    }

    void textWrapsAtTheTopLeft()
    {
        CloudDriver driver;
        QVERIFY(driver.on<QLabel>("label")->wordWrap());
        QCOMPARE(driver.on<QLabel>("label")->alignment(),
                 Qt::AlignLeading | Qt::AlignLeft | Qt::AlignTop);
    }

    void downloadTakesFocusByClickOnly()
    {
        CloudDriver driver;
        QCOMPARE(driver.on<QPushButton>("downloadButton")->focusPolicy(), Qt::ClickFocus);
    }
};

WORLD_TEST_MAIN(TestCloud)
#include "tst_cloud.moc"
