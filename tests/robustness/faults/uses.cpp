#include "tests/robustness/faults/uses.h"

#include "browser/cnbrowser.h"
#include "pages/dialogs/loadcn.h"
#include "tests/robustness/faults/watch.h"
#include "tests/support/reference.h"

#include <QCheckBox>
#include <QTextBrowser>
#include <QTreeView>

#include <csignal>
#include <cstring>

namespace {

// --- What is seen

// Shortened where it is long, in quotes.
QString quoted(const QString& text)
{
    QString shown = text;
    shown.replace('\n', "\\n").replace('\r', "\\r");
    for (QChar& character : shown) {
        if (!character.isPrint())
            character = '?';
    }
    if (shown.size() <= 72)
        return '"' + shown + '"';
    return QString("\"%1... (%2 characters, checksum %3)\"")
        .arg(shown.left(40))
        .arg(text.size())
        .arg(qHash(text, 0), 8, 16, QChar('0'));
}

QString seen(int page, const QStringList& warnings)
{
    QString text = QString("page %1").arg(page);
    for (const QString& warning : warnings)
        text += warning.isEmpty() ? QString(", empty warning") : ", warning " + quoted(warning);
    return text;
}

// A text as the warning's browser gives it back.
QString asWarned(const QString& text)
{
    QTextBrowser browser;
    browser.setText(text);
    return browser.toPlainText();
}

// --- What has to be seen

// A stopped tool is not killed: Table lets it go on.
bool isKilled(const Fault& fault)
{
    return fault.signal != 0 && fault.signal != SIGSTOP;
}

int shellStatus(const Fault& fault, int status)
{
    if (fault.place != Fault::InPlace)
        return fault.place == Fault::Missing ? 127 : 126;
    return isKilled(fault) ? 999 : status;
}

// A helper that has not reported its process id whole is not waited for and counts as a success.
int privilegedStatus(const Fault& fault, int status)
{
    if (fault.place != Fault::InPlace)
        return -60031; // errAuthorizationToolExecuteFailure
    if (!fault.reportsPid)
        return 0;
    return isKilled(fault) ? 998 : status;
}

QString checkComplaint(const Fault& fault)
{
    if (fault.place == Fault::Missing)
        return "sh: 1: /usr/local/bin/mvedit: not found";
    if (fault.place != Fault::InPlace)
        return "sh: 1: /usr/local/bin/mvedit: Permission denied";
    // The check reads what the shell says of a killed tool, too (2>&1).
    return isKilled(fault) ? QString(strsignal(fault.signal))
                           : Reference::decoded(fault.output).section('\n', 0, 0);
}

// --- The uses

QString useGreeting(WizardDriver& driver)
{
    return quoted(visibleTexts(driver.currentPage()).last());
}

QString expectGreeting(const Fault& fault, int status)
{
    if (shellStatus(fault, status) == 0)
        return quoted("You are currently joined to " + Reference::undecoded(fault.output));
    return quoted(greeting("join your Mac to your", "Domain"));
}

QString useComputerName(WizardDriver& driver)
{
    return "computer name " + quoted(child<QLineEdit>(&driver.wizard, "ComputerNameEdit")->text());
}

QString expectComputerName(const Fault& fault, int)
{
    constexpr int longestEdit = 32767;
    QString name = Reference::undecoded(fault.output).trimmed().section('.', 0, 0);
    if (fault.place != Fault::InPlace || name.contains(' '))
        name.clear();
    return "computer name " + quoted(name.left(longestEdit));
}

QString useProfiles(WizardDriver& driver)
{
    const bool enabled = child<QCheckBox>(&driver.wizard, "CloudCheck")->isEnabled();
    return enabled ? "not enrolled" : "enrolled";
}

QString expectProfiles(const Fault& fault, int)
{
    return fault.output.contains("com.morvanta.osx.MDM") ? "enrolled" : "not enrolled";
}

void prepareCredentials(WizardDriver& driver)
{
    driver.goToCredentials();
    driver.enterCredentials();
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
    driver.click("AdvancedButton");
}

QString useBrowse(WizardDriver& driver)
{
    auto* loading = windowOf<LoadCN>();
    bool staysUp = false;
    const cnbrowser* browser = nullptr;
    const QStringList warnings = warningsDuring([&] {
        driver.click("ContainerDNBrowse");
        // A script that could not be started never ends: its dialog stays until the user closes it.
        browser = driver.wizard.findChild<cnbrowser*>();
        while (loading->isVisible() && !staysUp) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
            // No child runs, and mvedit was called by the credential check alone: the script was
            // not started. In this order, as a script that has just ended has recorded its call.
            staysUp = !childRuns() && World::callsOf("mvedit").size() < 2;
        }
    });
    if (staysUp) {
        loading->close();
        return seen(driver.page(), warnings) + ", loading until closed";
    }
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
    if (!isKilled(fault) && status == 0 && fault.output.contains("DC="))
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
    driver.click("radioButton_3");
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
    const int bound = fault.output.contains("Active Directory Domain") ? 2 : 3;
    return seen(fault.place == Fault::InPlace ? bound : 0, {});
}

void prepareUnbind(WizardDriver& driver)
{
    driver.next();
    driver.enterUser("binder", "secret");
}

QString expectUnbind(const Fault&, int)
{
    return seen(3, {"You are unbound from Apple's Active Directory plugin."});
}

QString expectPrompt(const Fault& fault, int status)
{
    const bool granted = fault.place == Fault::InPlace && status == 0 && !isKilled(fault);
    return seen(granted ? 3 : 0, {});
}

} // namespace

void nothing(WizardDriver&) {}

const QList<Use>& uses()
{
    static const QList<Use> all = {
        {"greeting", "mvinfo", "mvinfo -d", 0, "example.test\n", nothing, useGreeting,
         expectGreeting},
        {"computer name", "scutil", "scutil", 0, "my-mac\n", nothing, useComputerName,
         expectComputerName},
        {"profiles", "profiles", "profiles", 0, "com.morvanta.osx.MDM\n", nothing, useProfiles,
         expectProfiles},
        {"credential check", "mvedit", "mvedit check_domain_cred.tcl", 1, "refused\n",
         prepareCredentials, useNext, expectCheck},
        {"containers", "mvedit", "mvedit mvedit_file_arg.tcl", 0, "OU=Sales,DC=example,DC=test\n",
         prepareJoin, useBrowse, expectBrowse},
        {"join", "gui_helper_tool", "gui_helper_tool", 1, "It failed\n", prepareJoin, useNext,
         expectJoin},
        {"leave", "gui_helper_tool", "gui_helper_tool", 1, "It failed\n", prepareLeave, useNext,
         expectLeave},
        // The runner takes a report's first four bytes for a process id, and they are lost.
        {"binding report", "dsconfigad", "dsconfigad -show", 0,
         "\n\n\n\nActive Directory Domain = example.test\n", nothing, useNext, expectReport},
        {"unbinding", "dsconfigad", "dsconfigad -r", 0, "", prepareUnbind, useNext, expectUnbind},
        {"prompt", "authorization_prompt", "authorization_prompt", 0, "", nothing, useNext,
         expectPrompt},
    };
    return all;
}
