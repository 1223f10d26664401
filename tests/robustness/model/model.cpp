#include "tests/robustness/model/model.h"

#include <QDataStream>
#include <QIODevice>

namespace Model {

const QString domain = "example.test\n";
const QString zone = "MacZone\n";
const QString computer = "my-mac\n";
const QString boundDomain = "bound.test";
const QString complaint = "Bad credentials\nof this user\n";
const QString failure = "It failed\nfor a reason\n";
const QString typedMeanwhile = "x";
const QStringList branches = {"DC=test", "DC=example", "OU=Europe", "OU=Sales"};

Rules::Rules(const Machine& machine) : mac(machine) {}

View Rules::take(const Step& step)
{
    commands.clear();
    dialogs.clear();
    // A prompt comes up only without consent, and only a prompt can be refused: so the walk takes
    // an earlier consent back before such a step.
    if (step.outcome == Outcome::Cancelled || step.outcome == Outcome::Denied)
        consented = false;
    switch (step.act) {
    case Act::Start:
        start();
        break;
    case Act::Next:
        next(step.outcome);
        hear(step.meanwhile);
        break;
    case Act::Back:
        back();
        adjust(false, step.outcome);
        break;
    case Act::Finish:
    case Act::Close:
        history.clear();
        on.browser = false;
        break;
    case Act::About:
        dialogs << "about";
        break;
    case Act::Press:
        press(step.widget);
        break;
    case Act::Enter:
        for (const auto& entry : step.entries)
            enter(entry.first, entry.second);
        break;
    case Act::Browse:
        browse(step.outcome);
        break;
    case Act::Choose:
        choose(step.widget);
        break;
    case Act::Cancel:
        on.browser = false;
        break;
    case Act::Outside:
        mac.joined = !mac.joined;
        break;
    case Act::Flags:
        std::swap(joining, enrolling);
        joining = !joining;
        break;
    }
    if (history.isEmpty())
        return {-1, {}, {}, dialogs, on.browser, joining, enrolling, commands};
    return {history.last(), widgets(), buttons(), dialogs,
            on.browser,     joining,   enrolling, commands};
}

QByteArray Rules::state() const
{
    QByteArray state;
    QDataStream stream(&state, QIODevice::WriteOnly);
    stream << mac.name() << history << backDisabled << consented << joining << enrolling
           << on.greetedDomain << on.startedJoined << on.reportUnread << on.boundName << on.bindUser
           << on.bindPassword << on.carriedUser << on.carriedPassword << on.carriedDomain
           << on.domain << on.user << on.password << on.automatic << on.zone << on.computer
           << on.advanced << on.overwrite << on.appleIds << on.appleIdsEnabled << on.container
           << on.server << on.alias << on.containerName << on.serverName << on.aliasName
           << on.wantsCloud << on.joinOutput << on.browser << on.drawnDomain << on.loads
           << on.option << on.leaveUser << on.leavePassword << on.leaveDomain << on.leaveZone
           << on.leaveName << on.leaveOutput << on.report;
    return state;
}

// --- From page to page

bool Rules::last(int page) const
{
    return mac.detour == Machine::AfterLast ? page == 8 : page == 7;
}

void Rules::start()
{
    on = Contents();
    joining = enrolling = consented = false;
    history.clear();
    on.startedJoined = probeJoined();
    if (on.startedJoined) {
        run({"mvinfo", "-d"});
        on.greetedDomain = domain;
    }
    run({"scutil", "--get", "LocalHostName"});
    on.computer = computer.trimmed();
    run({"profiles", "-C"});
    probeJoined(); // the last page asks for itself
    on.report = "You have successfully joined your Mac to your Active Directory domain at %1.";
    show(0, true);
}

void Rules::restart()
{
    for (int i = history.size() - 1; i >= 0; --i)
        cleanUp(history.at(i));
    history.clear();
    show(0, true);
}

void Rules::show(int page, bool forward)
{
    if (forward) {
        initialize(page);
        history << page;
    }
    backDisabled = history.size() < 2;
    if (page == 1) { // the other pages know their next one without running a tool
        nextId();    // the framework asks whether there is one
        nextId();    // and whether the page is the last
    }
}

void Rules::next(Outcome outcome)
{
    if (validate(outcome))
        show(nextId(), true);
    adjust(true, outcome);
}

void Rules::back()
{
    cleanUp(history.takeLast());
    show(history.last(), false);
}

void Rules::adjust(bool forward, Outcome outcome)
{
    switch (history.last()) {
    case 1:
        if (!forward)
            back();
        else if (validate(outcome))
            show(nextId(), true);
        else
            restart();
        break;
    case 3:
        if (history.size() > 2 && history.at(history.size() - 2) == 2)
            backDisabled = true;
        break;
    case 5:
        if (joining && enrolling)
            backDisabled = true;
        break;
    case 6:
        if (!forward)
            enrolling = false;
        break;
    }
}

int Rules::nextId()
{
    switch (history.last()) {
    case 0:
        return mac.detour == Machine::Cloud ? 5 : 1;
    case 1:
        if (on.reportUnread) {
            on.reportUnread = false; // asking reads dsconfigad's line of the domain
            return 2;
        }
        return probeJoined() ? 6 : 3;
    case 2:
        return 3;
    case 3:
        return 4;
    case 7:
        return 8; // a page that only some of the walk's wizards have
    default:
        return 7;
    }
}

void Rules::initialize(int page)
{
    switch (page) {
    case 2:
        run({"dsconfigad", "-show"});
        if (mac.bound)
            on.boundName = on.carriedDomain = boundDomain;
        break;
    case 3:
        on.user = on.carriedUser.isEmpty() ? "Administrator" : on.carriedUser;
        on.password = on.carriedPassword;
        on.domain = on.carriedDomain;
        break;
    case 6:
        run({"mvinfo", "-d"});
        run({"mvinfo", "-z"});
        run({"mvinfo", "-n"});
        on.leaveDomain = mac.joined ? domain : QString();
        on.leaveZone = mac.joined ? zone : QString();
        on.leaveName = mac.joined ? computer : QString();
        break;
    case 7:
        if (joining)
            on.report.replace("%1", on.domain);
        break;
    }
}

// Turning back from a page, or a restart, empties its wizard fields: on page 2 these are the hidden
// edits, while those that are seen keep their texts. The join options stay.
void Rules::cleanUp(int page)
{
    if (page == 2)
        on.carriedUser = on.carriedPassword = on.carriedDomain = QString();
    if (page == 3)
        on.domain = on.user = on.password = QString();
}

bool Rules::validate(Outcome outcome)
{
    switch (history.last()) {
    case 1:
        on.reportUnread = false;
        if (!askForConsent(outcome))
            return false;
        run({"dsconfigad", "-show"});
        on.reportUnread = mac.bound;
        return true;
    case 2:
        on.carriedUser = on.bindUser;
        on.carriedPassword = on.bindPassword;
        if (!check(on.carriedDomain, on.carriedUser, on.carriedPassword, outcome))
            return false;
        if (askForConsent(outcome)) {
            run({"dsconfigad", "-r", "-f", "-u", on.carriedUser, "-p", on.carriedPassword});
            mac.bound = false;
        }
        // Said whatever came of it (docs/known-behaviour.md).
        dialogs << "You are unbound from Apple's Active Directory plugin.";
        return true;
    case 3:
        return check(on.domain, on.user, on.password, outcome);
    case 4:
        return join(outcome);
    case 6:
        return leave(outcome);
    default:
        return true;
    }
}

bool Rules::join(Outcome outcome)
{
    joining = true;
    QStringList words{"/usr/local/sbin/mvjoin", "-u", on.user, "-p", on.password, on.domain};
    if (on.overwrite)
        words << "-f";
    if (on.automatic)
        words << "-w";
    else
        words << "-z" << on.zone;
    if (on.automatic && on.appleIdsEnabled && on.appleIds)
        words << "-e";
    if (on.container)
        words << "-c" << on.containerName;
    if (on.server)
        words << "-s" << on.serverName;
    if (on.alias)
        words << "-a" << on.aliasName;
    if (!on.computer.isEmpty())
        words << "-n" << on.computer;
    if (runHelper(words, outcome, &on.joinOutput) != 0) {
        dialogs << on.joinOutput;
        return false;
    }
    if (on.wantsCloud)
        enrolling = true;
    mac.joined = true;
    return true;
}

bool Rules::leave(Outcome outcome)
{
    if (on.option != 3 && !check(on.leaveDomain.trimmed(), on.leaveUser, on.leavePassword, outcome))
        return false;
    QStringList words{"/usr/local/sbin/mvleave"};
    if (on.option == 3)
        words << "-f";
    if (on.option == 2)
        words << "-r";
    if (on.option != 3)
        words << "-u" << on.leaveUser << "-p" << on.leavePassword;
    const int status = runHelper(words, outcome, &on.leaveOutput);
    if (status != 0 && on.leaveOutput.isEmpty())
        on.leaveOutput = QString("Unexpected error (%1).").arg(status);
    if (status == 0)
        mac.joined = false;
    else if (status != -60006) // errAuthorizationCanceled
        dialogs << on.leaveOutput;
    return status == 0;
}

// What is pressed or closed while the program is busy counts for nothing. What is typed goes to the
// widget with the focus on the page that follows: on pages 2 and 3 the first edit, on 4 and 6 a
// choice, which has no use for it. A message or a progress dialog takes it instead.
void Rules::hear(Meanwhile meanwhile)
{
    if ((meanwhile != Meanwhile::Type && meanwhile != Meanwhile::All) || !dialogs.isEmpty())
        return;
    if (history.last() == 2)
        on.bindUser += typedMeanwhile;
    else if (history.last() == 3)
        on.domain += typedMeanwhile;
}

} // namespace Model
