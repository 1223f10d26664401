#include "pages/joinflags.h"
#include "system/probes.h"
#include "tests/support/formtest.h"
#include "tests/support/wizarddriver.h"

#include <QDesktopServices>
#include <QLabel>
#include <QPushButton>
#include <QUrl>

namespace {

constexpr int cloudPage = 5;
constexpr int pageBefore = 8;

// No page of the wizard leads to the cloud page, so this one does.
class PageBeforeCloud : public QWizardPage
{
    int nextId() const override
    {
        return cloudPage;
    }
};

class CloudDriver : public WizardDriver
{
public:
    CloudDriver()
    {
        startAt(cloudPage);
    }
};

} // namespace

class TestCloud : public WorldTest
{
    Q_OBJECT

public slots:
    // Takes the place of the web browser.
    void openUrl(const QUrl& url)
    {
        opened << url;
    }

private slots:
    void downloadGoesOnWhenNoBrowserOpens();
    void downloadOpensThePageOnceAndGoesOn();
    void nextLeadsToTheEnd();
    void formHasItsWidgets_data();
    void formHasItsWidgets();
    void pageIs582By524();
    void textWrapsAtTheTopLeft();
    void downloadTakesFocusByClickOnly();
    void backIsDisabledOnlyForWhoHasJoinedToEnroll_data();
    void backIsDisabledOnlyForWhoHasJoinedToEnroll();

private:
    QList<QUrl> opened;
};

void TestCloud::downloadGoesOnWhenNoBrowserOpens()
{
    allowWarning("does not support QPlatformServices::openUrl()");
    CloudDriver driver;
    driver.click("downloadButton");
    QCOMPARE(messages().filter("does not support QPlatformServices::openUrl()").size(), 1);
    QCOMPARE(driver.page(), 7);
}

void TestCloud::downloadOpensThePageOnceAndGoesOn()
{
    CloudDriver driver;
    QDesktopServices::setUrlHandler("https", this, "openUrl");
    driver.click("downloadButton");
    QDesktopServices::unsetUrlHandler("https");
    QCOMPARE(opened, QList<QUrl>{QUrl(QString("https://%1/AppLoad?noumc=1").arg(enrollmentHost))});
    QCOMPARE(driver.page(), 7);
}

void TestCloud::nextLeadsToTheEnd()
{
    CloudDriver driver;
    World::forgetCalls();
    QCOMPARE(driver.next(), QStringList());
    QCOMPARE(driver.page(), 7);
    QCOMPARE(World::calls().size(), 0);
}

void TestCloud::formHasItsWidgets_data()
{
    addFormRows({{"label", "QLabel",
                  "To enroll with Morvanta Endpoint Services, get Morvanta Agent for Mac"},
                 {"downloadButton", "QPushButton", "Download"}});
}

void TestCloud::formHasItsWidgets()
{
    CloudDriver driver;
    QCOMPARE(driver.currentPage()->windowTitle(), QString("WizardPage"));
    compareWithFormRow(driver.currentPage());
}

void TestCloud::pageIs582By524()
{
    CloudDriver driver;
    QCOMPARE(driver.currentPage()->minimumSize(), QSize(582, 524));
    QCOMPARE(driver.currentPage()->maximumSize(), QSize(582, 524));
}

void TestCloud::textWrapsAtTheTopLeft()
{
    CloudDriver driver;
    QVERIFY(driver.on<QLabel>("label")->wordWrap());
    QCOMPARE(driver.on<QLabel>("label")->alignment(),
             Qt::AlignLeading | Qt::AlignLeft | Qt::AlignTop);
}

void TestCloud::downloadTakesFocusByClickOnly()
{
    CloudDriver driver;
    QCOMPARE(driver.on<QPushButton>("downloadButton")->focusPolicy(), Qt::ClickFocus);
}

void TestCloud::backIsDisabledOnlyForWhoHasJoinedToEnroll_data()
{
    QTest::addColumn<bool>("joined");
    QTest::addColumn<bool>("wantsToEnroll");
    QTest::addColumn<bool>("canGoBack");
    QTest::newRow("neither") << false << false << true;
    QTest::newRow("only joined") << true << false << true;
    QTest::newRow("only enrolling") << false << true << true;
    QTest::newRow("both") << true << true << false;
}

void TestCloud::backIsDisabledOnlyForWhoHasJoinedToEnroll()
{
    QFETCH(bool, joined);
    QFETCH(bool, wantsToEnroll);
    WizardDriver driver;
    driver.wizard.setPage(pageBefore, new PageBeforeCloud);
    driver.startAt(pageBefore);
    joining = joined;
    enrolling = wantsToEnroll;
    driver.next();
    QCOMPARE(driver.page(), cloudPage);
    QTEST(driver.button(QWizard::BackButton)->isEnabled(), "canGoBack");
}

WORLD_TEST_MAIN(TestCloud)
#include "tst_cloud.moc"
