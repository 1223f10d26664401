// Every external tool with every fault, and every use of a tool under every shortage: prints a
// table of what the user sees and fails where that is not what the rules give, where the program
// crashes or hangs, or where a child process, descriptor, thread or window is left.

#include "browser/cnbrowser.h"
#include "pages/dialogs/loadcn.h"
#include "pages/helpertool.h"
#include "tests/robustness/faults/shortage.h"
#include "tests/robustness/faults/watch.h"
#include "tests/support/reference.h"
#include "tests/support/wizarddriver.h"

#include <QCheckBox>
#include <QElapsedTimer>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTextBrowser>
#include <QThreadPool>
#include <QTreeView>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <sched.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

// How a tool is run: by a shell, as a process of its own, or with administrator rights.
enum class Way { Shell, Process, Privileged };

struct Fault {
    QString name;
    enum Place { InPlace, Missing, NotExecutable, Folder } place = InPlace;
    int signal = 0;
    int exitStatus = -1; // of its own; -1 for the use's
    QByteArray output;
    bool reportsPid = true; // where the tool has to
};

struct Use {
    QString name;
    QString tool;
    QString command; // whose answer is at fault
    Way way;
    int outputStatus; // with which a tool that speaks exits, so that its words are seen
    // Brings the wizard to where the tool is used; then uses it and tells what is to be seen.
    void (*prepare)(WizardDriver&);
    QString (*use)(WizardDriver&);
    // What is to be seen, by the rules.
    QString (*expected)(const Fault&, int status);
};

// --- What is seen

QString shortened(const QString& text)
{
    QString shown = text;
    shown.replace('\n', "\\n").replace('\r', "\\r");
    for (QChar& character : shown) {
        if (!character.isPrint())
            character = '?';
    }
    if (shown.size() <= 72)
        return shown;
    return QString("%1... (%2 characters, checksum %3)")
        .arg(shown.left(40))
        .arg(text.size())
        .arg(qHash(text, 0), 8, 16, QChar('0'));
}

QString seen(int page, const QStringList& warnings)
{
    QString text = QString("page %1").arg(page);
    for (const QString& warning : warnings)
        text += warning.isEmpty() ? QString(", empty warning")
                                  : ", warning \"" + shortened(warning) + '"';
    return text;
}

// A text as the warning's browser gives it back.
QString asWarned(const QString& text)
{
    QTextBrowser browser;
    browser.setText(text);
    return browser.toPlainText();
}

// --- What the rules give

int shellStatus(const Fault& fault, int status)
{
    switch (fault.place) {
    case Fault::Missing:
        return 127;
    case Fault::NotExecutable:
    case Fault::Folder:
        return 126;
    default:
        return fault.signal != 0 && fault.signal != SIGSTOP ? 999 : status;
    }
}

// A helper that has not reported its process id whole is not waited for and counts as a success.
int privilegedStatus(const Fault& fault, int status)
{
    if (fault.place != Fault::InPlace)
        return -60031;
    if (!fault.reportsPid)
        return 0;
    return fault.signal != 0 && fault.signal != SIGSTOP ? 998 : status;
}

QString checkComplaint(const Fault& fault)
{
    if (fault.place == Fault::Missing)
        return "sh: 1: /usr/local/bin/mvedit: not found";
    if (fault.place != Fault::InPlace)
        return "sh: 1: /usr/local/bin/mvedit: Permission denied";
    // A tool that is killed in mid-line leaves the shell to say so.
    const bool killed = fault.signal != 0 && fault.signal != SIGSTOP;
    return killed ? QString(strsignal(fault.signal))
                  : Reference::decoded(fault.output).section('\n', 0, 0);
}

// --- The uses

void nothing(WizardDriver&) {}

QString useGreeting(WizardDriver& driver)
{
    return '"' + shortened(visibleTexts(driver.currentPage()).last()) + '"';
}

QString expectGreeting(const Fault& fault, int status)
{
    if (shellStatus(fault, status) == 0)
        return '"' +
               shortened("You are currently joined to " + Reference::undecoded(fault.output)) + '"';
    return '"' + shortened(greeting("join your Mac to your", "Domain")) + '"';
}

QString useComputerName(WizardDriver& driver)
{
    return "computer name \"" +
           shortened(child<QLineEdit>(&driver.wizard, "ComputerNameEdit")->text()) + '"';
}

QString expectComputerName(const Fault& fault, int)
{
    constexpr int longestEdit = 32767;
    QString name = Reference::undecoded(fault.output).trimmed().section('.', 0, 0);
    if (fault.place != Fault::InPlace || name.contains(' '))
        name.clear();
    return "computer name \"" + shortened(name.left(longestEdit)) + '"';
}

QString useProfiles(WizardDriver& driver)
{
    const bool enabled = child<QCheckBox>(&driver.wizard, "CloudCheck")->isEnabled();
    return enabled ? "not enrolled" : "enrolled";
}

QString expectProfiles(const Fault&, int)
{
    return "not enrolled";
}

void prepareCredentials(WizardDriver& driver)
{
    driver.goToCredentials();
    driver.type("DomainEdit", "example.test");
    driver.type("PasswordEdit", "secret");
}

QString useNext(WizardDriver& driver)
{
    const QStringList warnings = driver.next();
    return seen(driver.page(), warnings);
}

QString expectCheck(const Fault& fault, int status)
{
    if (shellStatus(fault, status) == 0)
        return seen(4, {});
    return seen(3, {asWarned(refusedCheck(checkComplaint(fault)))});
}

void prepareJoin(WizardDriver& driver)
{
    driver.goToJoinOptions();
    driver.on<QAbstractButton>("AdvancedButton")->click();
}

LoadCN* loading()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        auto* dialog = qobject_cast<LoadCN*>(window);
        if (dialog != nullptr && dialog->isVisible())
            return dialog;
    }
    return nullptr;
}

QString useBrowse(WizardDriver& driver)
{
    bool staysUp = false;
    const QStringList warnings = warningsDuring([&] {
        driver.on<QPushButton>("ContainerDNBrowse")->click();
        QElapsedTimer patience;
        patience.start();
        // A script that was not even started never ends; its dialog is the user's to close.
        const auto* process = driver.wizard.findChild<cnbrowser*>();
        while (process != nullptr && loading() != nullptr && !staysUp) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
            staysUp = patience.elapsed() > 300 && World::callsOf("mvedit").size() < 2;
        }
    });
    if (staysUp) {
        loading()->close();
        return seen(driver.page(), warnings) + ", loading until closed";
    }
    auto* browser = driver.wizard.findChild<cnbrowser*>();
    if (!browser->isVisible())
        return seen(driver.page(), warnings);
    const QAbstractItemModel* model = child<QTreeView>(browser, "browserTree")->model();
    const QModelIndex domain = model->index(0, 0, model->index(0, 0));
    return QString("browser with %1 containers").arg(model->rowCount(domain));
}

QString expectBrowse(const Fault& fault, int status)
{
    if (fault.place != Fault::InPlace)
        return seen(4, {}) + ", loading until closed";
    const bool killed = fault.signal != 0 && fault.signal != SIGSTOP;
    if (!killed && status == 0 && fault.output.contains("DC="))
        return QString("browser with %1 containers").arg(fault.output.count('\n'));
    return seen(4, {refusedBrowse()});
}

QString expectJoin(const Fault& fault, int status)
{
    if (privilegedStatus(fault, status) == 0)
        return seen(7, {});
    const bool runs = fault.place == Fault::InPlace;
    return seen(4, {asWarned(runs ? Reference::decoded(fault.output) : QString())});
}

void prepareLeave(WizardDriver& driver)
{
    driver.next();
    driver.on<QAbstractButton>("radioButton_3")->click();
}

QString expectLeave(const Fault& fault, int status)
{
    const int result = privilegedStatus(fault, status);
    if (result == 0)
        return seen(7, {});
    const QString output =
        fault.place == Fault::InPlace ? Reference::decoded(fault.output) : QString();
    const QString unexpected = QString("Unexpected error (%1).").arg(result);
    return seen(6, {asWarned(output.isEmpty() ? unexpected : output)});
}

QString expectReport(const Fault& fault, int)
{
    return seen(fault.place == Fault::InPlace ? 3 : 0, {});
}

void prepareUnbind(WizardDriver& driver)
{
    driver.next();
    driver.type("ADUser", "binder");
    driver.type("ADPass", "secret");
}

QString expectUnbind(const Fault&, int)
{
    return seen(3, {"You are unbound from Apple's Active Directory plugin."});
}

QString expectPrompt(const Fault& fault, int status)
{
    const bool granted = fault.place == Fault::InPlace && status == 0 &&
                         (fault.signal == 0 || fault.signal == SIGSTOP);
    return seen(granted ? 3 : 0, {});
}

const QList<Use>& uses()
{
    static const QList<Use> all = {
        {"greeting", "mvinfo", "mvinfo -d", Way::Shell, 0, nothing, useGreeting, expectGreeting},
        {"computer name", "scutil", "scutil", Way::Shell, 0, nothing, useComputerName,
         expectComputerName},
        {"profiles", "profiles", "profiles", Way::Shell, 0, nothing, useProfiles, expectProfiles},
        {"credential check", "mvedit", "mvedit check_domain_cred.tcl", Way::Shell, 1,
         prepareCredentials, useNext, expectCheck},
        {"containers", "mvedit", "mvedit mvedit_file_arg.tcl", Way::Process, 0, prepareJoin,
         useBrowse, expectBrowse},
        {"join", "gui_helper_tool", "gui_helper_tool", Way::Privileged, 1, prepareJoin, useNext,
         expectJoin},
        {"leave", "gui_helper_tool", "gui_helper_tool", Way::Privileged, 1, prepareLeave, useNext,
         expectLeave},
        {"binding report", "dsconfigad", "dsconfigad -show", Way::Privileged, 0, nothing, useNext,
         expectReport},
        {"unbinding", "dsconfigad", "dsconfigad -r", Way::Privileged, 0, prepareUnbind, useNext,
         expectUnbind},
        {"prompt", "authorization_prompt", "authorization_prompt", Way::Shell, 0, nothing, useNext,
         expectPrompt},
    };
    return all;
}

// --- The faults

// What a tool can write, at once and after its process id, before somebody reads.
int socketCapacity()
{
    int ends[2];
    socketpair(AF_UNIX, SOCK_STREAM, 0, ends);
    const QByteArray much(4 << 20, 'x');
    send(ends[0], much.constData(), 4, 0);
    const ssize_t taken =
        send(ends[0], much.constData(), static_cast<size_t>(much.size()), MSG_DONTWAIT);
    close(ends[0]);
    close(ends[1]);
    return static_cast<int>(taken);
}

Fault printing(const QString& name, const QByteArray& output)
{
    Fault fault;
    fault.name = name;
    fault.output = output;
    return fault;
}

QList<Fault> faults(Way way)
{
    QList<Fault> all;
    Fault fault;
    const auto add = [&all](Fault& added, const QString& name) {
        added.name = name;
        all << added;
        added = Fault();
    };
    fault.place = Fault::Missing;
    add(fault, "missing");
    fault.place = Fault::NotExecutable;
    add(fault, "not executable");
    fault.place = Fault::Folder;
    add(fault, "a folder in its place");
    for (const int signal : {SIGHUP, SIGABRT, SIGKILL, SIGSEGV, SIGTERM}) {
        fault.signal = signal;
        add(fault, QString("killed by %1").arg(strsignal(signal)).toLower());
    }
    fault.signal = SIGSTOP;
    add(fault, "stopped");
    for (const int status : {1, 2, 126, 127, 255}) {
        fault.exitStatus = status;
        add(fault, QString("exit %1").arg(status));
    }
    fault.exitStatus = 0;
    add(fault, "silent");
    fault.reportsPid = false;
    fault.output = "x";
    add(fault, "1 byte");
    fault.reportsPid = false;
    fault.output = "xyz";
    add(fault, "3 bytes, no process id");
    const int capacity = way == Way::Privileged ? socketCapacity() : 65536;
    all << printing("capacity less 1", QByteArray(capacity - 1, 'x'));
    QByteArray bytes;
    for (int i = 0; i < 1024; ++i)
        bytes += static_cast<char>(i);
    all << printing("binary", bytes) << printing("invalid utf-8", "a\xff\xc3(\xe2\x82\n\xf0\x9f!")
        << printing("nuls", QByteArray("before\0cut\nafter\0cut\n", 21))
        << printing("crlf", "first\r\nsecond\r\n")
        << printing("a line of 1 MiB", QByteArray(1 << 20, 'x'));
    QByteArray lines;
    for (int i = 1000; i < 6000; ++i)
        lines += "OU=unit " + QByteArray::number(i) + ",DC=example,DC=test\n";
    all << printing("5000 lines", lines);
    return all;
}

void plant(const Use& use, const Fault& fault, int status)
{
    switch (fault.place) {
    case Fault::Missing:
        World::removeTool(use.tool);
        return;
    case Fault::NotExecutable:
        World::replaceByPlainFile(use.tool);
        return;
    case Fault::Folder:
        World::replaceByFolder(use.tool);
        return;
    case Fault::InPlace:
        break;
    }
    Answer answer;
    answer.output = fault.output;
    answer.signal = fault.signal;
    answer.exitStatus = status;
    answer.reportsPid = use.tool == "gui_helper_tool" && fault.reportsPid;
    World::answer(use.command, answer);
}

// A tool that is stopped is waited for; so is one with administrator rights that prints more than
// its pipe holds, because it is read only after its end.
bool waits(const Use& use, const Fault& fault)
{
    const bool tooMuch = use.tool == "gui_helper_tool" && fault.output.size() > socketCapacity();
    return fault.signal == SIGSTOP || tooMuch;
}

// --- One case, in a process of its own

void readyWorld(const Use& use)
{
    World::reset();
    if (use.name == "leave")
        World::setJoined();
    if (use.name == "unbinding")
        World::setBound();
}

void runFault(const Use& use, const Fault& fault, FILE* verdict)
{
    const int status = fault.exitStatus < 0 ? use.outputStatus : fault.exitStatus;
    readyWorld(use);
    keepWorkerReady();
    const Leftovers before;
    QString seen;
    {
        if (use.prepare == nothing)
            plant(use, fault, status);
        WizardDriver driver;
        use.prepare(driver);
        plant(use, fault, status);
        seen = use.use(driver);
    }
    QString expected = use.expected(fault, status);
    // A tool that had to be killed may have been cut short anywhere.
    if (waits(use, fault) && fault.signal == 0) {
        expected = expected.section("...", 0, 0) + "...";
        seen = seen.section("...", 0, 0) + "...";
    }
    report(verdict, seen, expected, before.left());
}

void runShortage(const Use& use, const Shortage& shortage, FILE* verdict)
{
    readyWorld(use);
    keepWorkerReady();
    const Leftovers before;
    QString seen;
    {
        std::unique_ptr<WizardDriver> driver;
        const auto go = [&] {
            driver = std::make_unique<WizardDriver>();
            use.prepare(*driver);
        };
        if (use.prepare != nothing)
            go();
        const ShortageGuard guard(shortage);
        if (use.prepare == nothing)
            go();
        seen = use.use(*driver);
        driver.reset();
    }
    const QString expected = shortage.expected(use.name);
    QStringList left = before.left();
    // Of a script that could not be forked the framework's object is left behind, deliberately.
    if (shortage.kind == Shortage::Processes && use.name == "containers")
        left.removeAll("1 descriptors");
    report(verdict, seen, seen.startsWith(expected) ? seen : expected, left);
}

// A process namespace, so that a signal sent astray reaches none but the processes of this test.
void enterProcessNamespace()
{
    if (unshare(CLONE_NEWPID) != 0)
        qFatal("There is no process namespace to be had: %s", strerror(errno));
    const pid_t child = fork();
    if (child != 0) {
        int status = 1;
        waitpid(child, &status, 0);
        _exit(WIFEXITED(status) ? WEXITSTATUS(status) : 1);
    }
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getpid() != 1 || mount("proc", "/proc", "proc", 0, nullptr) != 0)
        qFatal("The process namespace can't be used: %s", strerror(errno));
}

void warmUp()
{
    // Fonts and images are loaded once. No thread may be left, which a fork would not have.
    QThreadPool::globalInstance()->setExpiryTimeout(0);
    {
        const WizardDriver driver;
    }
    QThreadPool::globalInstance()->waitForDone();
}

} // namespace

// Takes a part of a use's, fault's or shortage's name, to run only those.
int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_NO_GLIB", "1");
    const QString wanted = argc > 1 ? argv[1] : "";
    World::enter();
    enterProcessNamespace();
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    warmUp();

    setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
    Table rows;
    const QList<Use>& all = uses();
    for (const Use& use : all) {
        const QList<Fault> planted = faults(use.way);
        for (const Fault& fault : planted) {
            if ((use.name + ' ' + fault.name).contains(wanted))
                rows.run(use.name, fault.name, waits(use, fault),
                         [&](FILE* verdict) { runFault(use, fault, verdict); });
        }
        const QList<Shortage> short_of = shortages();
        for (const Shortage& shortage : short_of) {
            if ((use.name + ' ' + shortage.name).contains(wanted))
                rows.run(use.name, shortage.name, false,
                         [&](FILE* verdict) { runShortage(use, shortage, verdict); });
        }
    }
    return rows.finish();
}
