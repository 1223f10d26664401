// A password that nobody else uses goes through every page, and is looked for wherever it should
// not be; and what a tool prints, rich text included, brings the program to fetch or open nothing.

#include "browser/cnbrowser.h"
#include "pages/dialogs/loadcn.h"
#include "pages/dialogs/warning.h"
#include "tests/support/commandlines.h"
#include "tests/support/webbrowser.h"
#include "tests/support/wizarddriver.h"

#include <QAccessible>
#include <QClipboard>
#include <QDir>
#include <QLabel>
#include <QProcess>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTextBrowser>

#include <cerrno>
#include <cstring>
#include <functional>
#include <sys/inotify.h>
#include <sys/resource.h>
#include <thread>
#include <unistd.h>

namespace {

// Of this process alone, since it is looked for among all processes of the machine.
const QString sentinel = QString("s3ntinel-Passw0rd-%1").arg(getpid());

// Notes whether a file of the folder is opened while it lives.
class Opened
{
public:
    explicit Opened(const QString& folder) : watch(inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
    {
        if (inotify_add_watch(watch, qPrintable(folder), IN_OPEN) < 0)
            qFatal("%s can't be watched: %s", qPrintable(folder), strerror(errno));
    }
    ~Opened()
    {
        close(watch);
    }
    bool any() const
    {
        char event[4096];
        return read(watch, event, sizeof event) > 0;
    }

private:
    int watch;
};

QString accessibleTexts(QObject* object)
{
    QString texts;
    if (QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(object)) {
        for (const auto kind :
             {QAccessible::Name, QAccessible::Description, QAccessible::Value, QAccessible::Help})
            texts += interface->text(kind) + '\n';
        if (QAccessibleTextInterface* text = interface->textInterface())
            texts += text->text(0, text->characterCount()) + '\n';
    }
    return texts;
}

// All that other programs can learn of the windows.
QString windowTexts()
{
    QString texts;
    const QWidgetList widgets = QApplication::allWidgets();
    for (QWidget* widget : widgets)
        texts += widget->windowTitle() + '\n' + widget->toolTip() + '\n' +
                 widget->accessibleName() + '\n' + accessibleTexts(widget);
    return texts;
}

QStringList temporaryFiles()
{
    return QDir("/tmp").entryList(QDir::AllEntries | QDir::Hidden | QDir::System |
                                  QDir::NoDotAndDotDot);
}

rlim_t coreLimit()
{
    rlimit limit = {};
    getrlimit(RLIMIT_CORE, &limit);
    return limit.rlim_cur;
}

} // namespace

class TestSecrets : public WorldTest
{
    Q_OBJECT

private slots:
    // Nobody else writes to the /tmp made here, which is the home, too: what appears there is ours.
    void initTestCase()
    {
        World::makeWritable("/tmp");
        qputenv("HOME", "/tmp");
        // Fontconfig writes its cache into the home of a user who may not write the system's.
        qputenv("XDG_CACHE_HOME", World::home().toUtf8());
    }

    void passwordGoesOnlyWhereItHasTo_data()
    {
        addColumns<bool>("succeeds");
        addRow("success", true);
        addRow("failure", false);
    }

    void passwordGoesOnlyWhereItHasTo()
    {
        QFETCH(bool, succeeds);
        const rlim_t core = coreLimit();
        const QStringList before = temporaryFiles();
        QString seen;
        QStringList shown;
        const auto look = [&] {
            seen += windowTexts() + QProcess::systemEnvironment().join('\n') +
                    QGuiApplication::clipboard()->text();
        };
        const auto answer = [&](const char* command, const QByteArray& output, bool helper) {
            World::answer(command, {output, "", succeeds ? 0 : 7, 0, helper});
        };
        {
            World::setBound();
            WizardDriver driver;
            driver.next();
            driver.enterUser("admin", sentinel);
            look();
            if (!succeeds) {
                answer("mvedit check_domain_cred.tcl", "It says something\n", false);
                shown += driver.next();
                World::answer("mvedit check_domain_cred.tcl", Answer());
            }
            shown += driver.next();
            QCOMPARE(driver.page(), 3);
            look();
            shown += driver.next();
            QCOMPARE(driver.page(), 4);
            answer("mvedit mvedit_file_arg.tcl", "OU=Sales,DC=example,DC=test\n", false);
            answer("gui_helper_tool", "It says something\n", true);
            driver.click("AdvancedButton");
            shown += warningsDuring([&] {
                driver.click("ContainerDNBrowse");
                QTRY_VERIFY(!windowOf<LoadCN>()->isVisible());
            });
            look();
            auto* browser = windowOf<cnbrowser>();
            QCOMPARE(browser->isVisible(), succeeds);
            browser->close();
            shown += driver.next();
            QCOMPARE(driver.page(), succeeds ? 7 : 4);
            look();
        }
        {
            World::setJoined();
            World::answer("dsconfigad -show", Answer());
            WizardDriver driver;
            driver.next();
            driver.enterUser("admin", sentinel);
            look();
            shown += driver.next();
            look();
            QCOMPARE(driver.page(), succeeds ? 7 : 6);
        }
        seen += shown.join('\n') + messages().join('\n');
        QVERIFY2(!seen.contains(sentinel), "the password is to be seen");
        QVERIFY(!seen.contains(sentinel.toUtf8().toBase64()));
        QCOMPARE(temporaryFiles(), before);
        QCOMPARE(coreLimit(), core);

        // On command lines it is one whole argument, and only where a tool takes a password.
        QStringList places;
        const QList<Call> calls = World::calls();
        for (const Call& call : calls) {
            const QStringList words = call.words();
            for (int i = 0; i < words.size(); ++i) {
                if (!words.at(i).contains(sentinel))
                    continue;
                QCOMPARE(words.at(i), sentinel);
                places << words.first() + ' ' + words.at(1).section('/', -1) + ' ' +
                              QString::number(i);
            }
        }
        places.removeDuplicates();
        QCOMPARE(places, QStringList({"mvedit check_domain_cred.tcl 4", "dsconfigad -r 6",
                                      "mvedit mvedit_file_arg.tcl 4", "gui_helper_tool mvjoin 5",
                                      "gui_helper_tool mvleave 5"}));
    }

    // Each tool is held while all processes are looked at, the shell that runs it included.
    void processesShowItOnlyWhereTheyHaveTo()
    {
        const auto placesWhile = [](const QString& command, const std::function<void()>& action) {
            World::hold(command, "It says something\n");
            World::forgetCalls();
            QStringList places;
            std::thread look([&] {
                while (!World::wasRun(command))
                    std::this_thread::yield();
                places = placesOf(sentinel.toUtf8());
                World::release(command);
            });
            action();
            look.join();
            World::answer(command, Answer());
            places.sort();
            return places;
        };
        const auto placesAtNext = [&](const QString& command) {
            WizardDriver driver;
            driver.next();
            driver.enterUser("admin", sentinel);
            return placesWhile(command, [&] { driver.next(); });
        };
        const QString check = "mvedit check_domain_cred.tcl";
        const QStringList ofTheCheck = {"mvedit 4", "sh 2"};

        World::setBound();
        QCOMPARE(placesAtNext(check), ofTheCheck);
        QCOMPARE(placesAtNext("dsconfigad -r"), QStringList("dsconfigad 6"));
        {
            World::reset();
            WizardDriver driver;
            driver.next();
            driver.enterCredentials("example.test", "admin", sentinel);
            QCOMPARE(placesWhile(check, [&] { driver.next(); }), ofTheCheck);
            QCOMPARE(driver.page(), 4);
            driver.click("AdvancedButton");
            QCOMPARE(placesWhile("mvedit mvedit_file_arg.tcl",
                                 [&] {
                                     warningsDuring([&] {
                                         driver.click("ContainerDNBrowse");
                                         QTRY_VERIFY(QApplication::activeModalWidget() == nullptr);
                                     });
                                 }),
                     QStringList("mvedit 4"));
            QCOMPARE(placesWhile("gui_helper_tool mvjoin", [&] { driver.next(); }),
                     QStringList("gui_helper_tool 5"));
        }
        World::setJoined();
        QCOMPARE(placesAtNext(check), ofTheCheck);
        QCOMPARE(placesAtNext("gui_helper_tool mvleave"), QStringList("gui_helper_tool 5"));
    }

    void editsDontGiveItAway()
    {
        World::setBound();
        WizardDriver driver;
        for (const int page : {2, 3, 6}) {
            auto* edit =
                child<QLineEdit>(driver.wizard.page(page), page == 2 ? "ADPass" : "PasswordEdit");
            edit->setText(sentinel);
            QVERIFY(!windowTexts().contains(sentinel));
            edit->selectAll();
            edit->copy();
            QVERIFY(!QApplication::clipboard()->text().contains(sentinel));
            edit->cut();
            QVERIFY(!QApplication::clipboard()->text().contains(sentinel));
        }
    }

    void richTextFetchesAndOpensNothing_data()
    {
        addColumns<QString>("markup");
        addRow("remote image", "<p>x<img src=\"http://127.0.0.1:%1/x.png\"></p>");
        addRow("local image", "<p>x<img src=\"file://%2/x.png\"></p>");
        addRow("image by its path", "<p>x<img src=\"%2/x.png\"></p>");
        addRow("style sheet",
               "<html><head><link rel=\"stylesheet\" type=\"text/css\" href=\"%2/x.css\"></head>"
               "x</html>");
        addRow("background", "<body background=\"%2/x.png\">x</body>");
        addRow("link to a page", "<a href=\"http://127.0.0.1:%1/\">xxxxxxxxxxxxxxxxxxxx</a>");
        addRow("link to a file", "<a href=\"file://%2/x.html\">xxxxxxxxxxxxxx</a>");
    }

    void richTextFetchesAndOpensNothing()
    {
        QFETCH(QString, markup);
        const QString bait = World::file("bait");
        QVERIFY(QDir().mkdir(bait));
        for (const char* name : {"x.png", "x.css", "x.html"})
            QVERIFY(QFile(bait + '/' + name).open(QIODevice::WriteOnly));
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));
        markup.replace("%1", QString::number(server.serverPort())).replace("%2", bait);
        const Opened opened(bait);
        const WebBrowser pages("http");
        const WebBrowser files("file");

        // In a warning, with a click on its text.
        QString shown;
        QString clicked;
        withModalDialogs([&] { showWarning(markup); },
                         [&](QWidget* warning) {
                             auto* browser = child<QTextBrowser>(warning, "WarningLabel");
                             browser->grab();
                             const QPoint place(40, 12);
                             clicked = browser->anchorAt(place);
                             QTest::mouseClick(browser->viewport(), Qt::LeftButton, {}, place);
                             shown = browser->toPlainText();
                             warning->close();
                         });
        QVERIFY(shown.contains('x'));
        QCOMPARE(!clicked.isEmpty(), markup.startsWith("<a"));

        // On the pages that show what a tool has printed, where it is no markup at all.
        World::setJoined(markup.toUtf8(), markup.toUtf8(), markup.toUtf8());
        {
            WizardDriver driver;
            driver.wizard.grab();
            QVERIFY(visibleTexts(driver.currentPage()).last().endsWith(markup));
            QCOMPARE(driver.on<QLabel>("Domain_label")->textFormat(), Qt::PlainText);
            driver.next();
            driver.wizard.grab();
            QVERIFY(visibleTexts(driver.currentPage()).contains(markup));
            for (const char* name : {"ComputerName_Val", "ActiveDirectory_Val", "JoinedZone_Val"})
                QCOMPARE(driver.on<QLabel>(name)->textFormat(), Qt::PlainText);
            QCOMPARE(child<QLabel>(driver.wizard.page(2), "ADName")->textFormat(), Qt::PlainText);
        }
        // A fetch would have connected before this.
        QTcpSocket last;
        last.connectToHost(server.serverAddress(), server.serverPort());
        QVERIFY(last.waitForConnected());
        QTRY_VERIFY(server.hasPendingConnections());
        QCOMPARE(server.nextPendingConnection()->peerPort(), last.localPort());
        QVERIFY(!opened.any());
        QCOMPARE(pages.opened + files.opened, QList<QUrl>());
    }
};

WORLD_TEST_MAIN(TestSecrets)
#include "tst_secrets.moc"
