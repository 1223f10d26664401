#include "tests/robustness/model/model.h"

#include "tests/support/texts.h"

#include <QDataStream>

namespace Model {

const QString domain = QStringLiteral("example.test\n");
const QString zone = QStringLiteral("MacZone\n");
const QString computer = QStringLiteral("my-mac\n");
const QString boundDomain = QStringLiteral("bound.test");
const QString complaint = QStringLiteral("Bad credentials\nof this user\n");
const QString failure = QStringLiteral("It failed\nfor a reason\n");
const QString typedMeanwhile = QStringLiteral("x");
const QStringList branches = {"DC=test", "DC=example", "OU=Europe", "OU=Sales"};

namespace {

const QString notFound = QStringLiteral("sh: 1: /usr/local/bin/mvedit: not found\n");
const QString notAContainer =
    QStringLiteral("The selected distinguished name(DN) is not a container object.  Please "
                   "reselect (e.g. OU or CN)");
const QString scripts =
    QStringLiteral("/Applications/Utilities/Morvanta/Morvanta Join Assistant.app/Contents/"
                   "Resources/");

// The framework asks a page twice for the next one when it shows it: whether there is one, and
// whether the page is the last.
constexpr int asksPerVisit = 2;

QString firstLine(const QString& text)
{
    return text.section('\n', 0, 0);
}

QString edit(const QString& text, bool enabled = true)
{
    return '[' + text + (enabled ? "]" : "] disabled");
}

QString choice(const QString& text, bool checked, bool enabled = true)
{
    return text + (checked ? " on" : " off") + (enabled ? "" : " disabled");
}

Step step(Act act, Outcome outcome = Outcome::Good)
{
    Step step;
    step.act = act;
    step.outcome = outcome;
    return step;
}

Step pressing(const char* widget)
{
    Step pressed = step(Act::Press);
    pressed.widget = widget;
    return pressed;
}

Step choosing(const QString& item)
{
    Step chosen = step(Act::Choose);
    chosen.widget = item;
    return chosen;
}

Step entering(const QVector<QPair<QString, QString>>& entries)
{
    Step entered = step(Act::Enter);
    entered.entries = entries;
    return entered;
}

// The steps to the next page again, with what can be done meanwhile: all at once, and in the wide
// set also each by itself.
void addMeanwhile(QVector<Step>& steps, bool wide)
{
    const QVector<Step> without = steps;
    for (Step step : without) {
        if (step.act != Act::Next)
            continue;
        for (const auto meanwhile : {Meanwhile::Type, Meanwhile::Press, Meanwhile::Assist,
                                     Meanwhile::Close, Meanwhile::All}) {
            step.meanwhile = meanwhile;
            if (meanwhile == Meanwhile::All || wide)
                steps << step;
        }
    }
}

} // namespace

QString Step::text() const
{
    static const char* const acts[] = {"start",  "next",    "back",  "finish", "close",
                                       "about",  "press",   "enter", "browse", "choose",
                                       "cancel", "outside", "flags"};
    static const char* const outcomes[] = {"",      "check fails", "check silent", "check killed",
                                           "bad",   "silent",      "killed",       "cancelled",
                                           "denied"};
    static const char* const meanwhiles[] = {"", "type", "press", "assist", "close", "all"};
    QStringList words{acts[static_cast<int>(act)]};
    if (meanwhile != Meanwhile::Nothing)
        words << QString("(meanwhile %1)").arg(meanwhiles[static_cast<int>(meanwhile)]);
    if (outcome != Outcome::Good)
        words << '(' + QString(outcomes[static_cast<int>(outcome)]) + ')';
    if (!widget.isEmpty())
        words << widget;
    for (const auto& entry : entries)
        words << entry.first + "='" + entry.second + '\'';
    return words.join(' ');
}

QString Machine::name() const
{
    QStringList words;
    words << (agent ? joined ? "joined" : "not joined" : "agent missing");
    if (bound)
        words << "bound";
    if (detour != None)
        words << (detour == Cloud ? "to the cloud page" : "with a page after the last");
    return words.join(", ");
}

QString View::text() const
{
    QStringList lines{"page " + QString::number(page)};
    for (auto widget = widgets.cbegin(); widget != widgets.cend(); ++widget)
        lines << widget.key() + ": " + widget.value();
    for (const QString& button : buttons)
        lines << "button " + button;
    for (const QString& dialog : dialogs)
        lines << "dialog " + dialog;
    for (const QString& command : commands)
        lines << "command " + command;
    lines
        << QString("browser %1, joining %2, enrolling %3").arg(browser).arg(joining).arg(enrolling);
    return lines.join('\n');
}

Rules::Rules(const Machine& machine) : mac(machine) {}

View Rules::take(const Step& step)
{
    commands.clear();
    dialogs.clear();
    // Consent lapses before a prompt that is not answered with yes can come up again.
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
    View view;
    view.page = history.isEmpty() ? -1 : history.last();
    if (view.page >= 0) {
        view.widgets = widgets();
        view.buttons = buttons();
    }
    view.dialogs = dialogs;
    view.browser = on.browser;
    view.joining = joining;
    view.enrolling = enrolling;
    view.commands = commands;
    return view;
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

// --- What the tools are asked

void Rules::run(const QStringList& words)
{
    const bool agents = words.first().startsWith("mv") || words.first() == "gui_helper_tool";
    if (mac.agent || !agents)
        commands << words.join('|');
}

bool Rules::probeJoined()
{
    run({"mvinfo", "-d"});
    return mac.agent && mac.joined;
}

bool Rules::askForConsent(Outcome outcome)
{
    if (consented)
        return true;
    const bool refused = outcome == Outcome::Cancelled || outcome == Outcome::Denied;
    commands << "authorization_prompt";
    consented = !refused;
    return consented;
}

bool Rules::check(const QString& domain, const QString& user, const QString& password,
                  Outcome outcome)
{
    run({"mvedit", scripts + "check_domain_cred.tcl", domain, user, password});
    QString output;
    if (!mac.agent)
        output = notFound;
    else if (outcome == Outcome::CheckFails || outcome == Outcome::CheckKilled)
        output = complaint;
    else if (outcome != Outcome::CheckSilent)
        return true;
    dialogs << refusedCheck(firstLine(output));
    return false;
}

// The status of the run; *output stays as it was when the tool was not started.
int Rules::runHelper(const QStringList& arguments, Outcome outcome, QString* output)
{
    if (!askForConsent(outcome))
        return outcome == Outcome::Cancelled ? -60006 : -60005;
    run(QStringList{"gui_helper_tool"} + arguments);
    const bool speaks = outcome == Outcome::Bad || outcome == Outcome::Killed;
    *output = speaks ? failure : QString();
    switch (outcome) {
    case Outcome::Bad:
        return 5;
    case Outcome::Silent:
        return 3;
    case Outcome::Killed:
        return 998;
    default:
        return 0;
    }
}

// --- The wizard's frame

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
    probeJoined();
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
    if (page == 1) {
        for (int i = 0; i < asksPerVisit; ++i)
            nextId();
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
    default:
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
            on.reportUnread = false;
            return 2;
        }
        return probeJoined() ? 6 : 3;
    case 2:
        return 3;
    case 3:
        return 4;
    case 7:
        return 8;
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
    default:
        break;
    }
}

// Turning back from a page gives its fields the values that they had at the start, but the join
// options stay.
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
    else if (status != -60006)
        dialogs << on.leaveOutput;
    return status == 0;
}

// What is pressed or closed while the program is busy counts for nothing. What is typed is for the
// first edit of the page that follows, but not where a message or a progress dialog took it.
void Rules::hear(Meanwhile meanwhile)
{
    if ((meanwhile != Meanwhile::Type && meanwhile != Meanwhile::All) || !dialogs.isEmpty())
        return;
    if (history.last() == 2)
        on.bindUser += typedMeanwhile;
    else if (history.last() == 3)
        on.domain += typedMeanwhile;
}

// --- What a person does on a page

void Rules::enter(const QString& edit, const QString& text)
{
    const bool leaving = !history.isEmpty() && history.last() == 6;
    const QMap<QString, QString*> edits = {
        {"ADUser", &on.bindUser},
        {"ADPass", &on.bindPassword},
        {"DomainEdit", &on.domain},
        {"UsernameEdit", leaving ? &on.leaveUser : &on.user},
        {"PasswordEdit", leaving ? &on.leavePassword : &on.password},
        {"ZoneEdit", &on.zone},
        {"ComputerNameEdit", &on.computer},
        {"ContainerDNEdit", &on.containerName},
        {"PDSEdit", &on.serverName},
        {"AliasEdit", &on.aliasName},
    };
    *edits.value(edit) = text;
}

void Rules::press(const QString& widget)
{
    const QMap<QString, bool*> boxes = {
        {"ForceLeave", &on.overwrite},       {"AppleUIDCheck", &on.appleIds},
        {"ContainerDNLabel", &on.container}, {"PDSLabel", &on.server},
        {"AliasLabel", &on.alias},           {"CloudCheck", &on.wantsCloud},
        {"AdvancedButton", &on.advanced},
    };
    if (boxes.contains(widget))
        *boxes.value(widget) = !*boxes.value(widget);
    if (widget == "AdvancedButton" && on.advanced) {
        on.appleIds = false;
        on.appleIdsEnabled = on.appleIdsEnabled || on.automatic;
    } else if (widget == "AutoButton" && !on.automatic) {
        on.automatic = on.appleIdsEnabled = true;
    } else if (widget == "ZoneButton" && on.automatic) {
        on.automatic = on.appleIdsEnabled = on.appleIds = false;
    } else if (widget == "radioButton") {
        on.option = 1;
    } else if (widget == "radioButton_2") {
        on.option = 2;
    } else if (widget == "radioButton_3") {
        on.option = 3;
        on.leaveUser = on.leavePassword = QString();
    }
}

void Rules::refuseBrowsing()
{
    on.containerName = QString();
    on.container = false;
    dialogs << refusedBrowse();
}

void Rules::browse(Outcome outcome)
{
    if (on.domain.isEmpty() || on.user.isEmpty() || on.password.isEmpty()) {
        refuseBrowsing();
        return;
    }
    if (on.drawnDomain != on.domain) {
        ++on.loads;
        run({"mvedit", scripts + "mvedit_file_arg.tcl", on.domain, on.user, on.password});
        on.drawnDomain = outcome == Outcome::Good ? on.domain : QString();
        if (outcome != Outcome::Good) {
            refuseBrowsing();
            return;
        }
    }
    on.browser = true;
}

// Each load of a tree has wired the button once more. A browser that was left open while a load
// failed holds no item that could be chosen.
void Rules::choose(const QString& item)
{
    const int depth = branches.indexOf(item);
    for (int load = 0; load < on.loads; ++load) {
        if (on.drawnDomain.isEmpty() || item.startsWith("DC")) {
            dialogs << notAContainer;
            continue;
        }
        QStringList name;
        for (int i = depth; i >= 0; --i)
            name << branches.at(i);
        on.containerName = name.join(',');
        on.container = true;
        on.browser = false;
    }
}

// --- What is to be seen

QStringList Rules::buttons() const
{
    const int page = history.last();
    if (last(page))
        return {"Done"};
    static const QMap<int, QString> own = {{2, "OK"}, {4, "Join"}, {6, "Leave"}};
    return {backDisabled ? "Go Back disabled" : "Go Back", own.value(page, "Continue")};
}

QMap<QString, QString> Rules::widgets() const
{
    switch (history.last()) {
    case 0:
        if (mac.detour == Machine::Cloud)
            return {};
        if (!on.startedJoined)
            return {{"Join_label", greeting("join your Mac to your", "Domain")}};
        return {{"Leave_label", greeting("leave your Mac from your", "domain")},
                {"Domain_label", "You are currently joined to " + on.greetedDomain}};
    case 2:
        return {{"label", "This machine is currently joined using Apple's Directory Utility to "
                          "the domain:"},
                {"ADName", on.boundName},
                {"label_3", "To unbind from Apple's Directory Utility and use Morvanta Join "
                            "Assistant to join your domain, enter an Active Directory "
                            "administrator username and password and press OK."},
                {"label_2", "Active Directory Username:"},
                {"ADUser", edit(on.bindUser)},
                {"label_4", "Active Directory Password:"},
                {"ADPass", edit(on.bindPassword)}};
    case 3:
        return {{"label", "Active Directory Domain:"},
                {"DomainEdit", edit(on.domain)},
                {"label_2", "Active Directory Username:"},
                {"UsernameEdit", edit(on.user)},
                {"label_3", "Active Directory Password:"},
                {"PasswordEdit", edit(on.password)},
                {"label_4", "Please enter the name of your Active Directory domain to join, and "
                            "an Active Directory administrator's username and password."}};
    case 4: {
        QMap<QString, QString> seen = {
            {"AutoButton", choice("Auto", on.automatic)},
            {"label_2", "Recommended for most installations.  All Active Directory users can "
                        "login to your Mac.  User attributes such as UID, GID and home directory "
                        "will be created automatically."},
            {"ZoneButton", choice("Zone", !on.automatic)},
            {"ZoneEdit", edit(on.zone)},
            {"label_4", "Recommended for installations in which fine-grained access control is "
                        "required.  You must enter a name of a Zone that was previously created "
                        "using the Morvanta Access Manager.  Example of a zone name would be "
                        "\"MacZone\"."},
            {"label_5", "Computer Name: "},
            {"ComputerNameEdit", edit(on.computer)},
            {"AdvancedButton", choice("", on.advanced)},
            {"label_3", "Advanced Options"}};
        if (on.advanced) {
            seen["ForceLeave"] = choice("Overwrite existing joined computer", on.overwrite);
            seen["AppleUIDCheck"] =
                choice("Utilize Apple UID generation scheme (Only usable in Auto-Zone mode)",
                       on.appleIds, on.appleIdsEnabled);
            seen["ContainerDNLabel"] = choice("Container DN:", on.container);
            seen["ContainerDNEdit"] = edit(on.containerName);
            seen["ContainerDNBrowse"] = "Browse";
            seen["PDSLabel"] = choice("Preferred Domain Server:", on.server);
            seen["PDSEdit"] = edit(on.serverName);
            seen["AliasLabel"] = choice("Computer Alias Name:", on.alias);
            seen["AliasEdit"] = edit(on.aliasName);
        }
        return seen;
    }
    case 5:
        return {{"label", "To enroll with Morvanta Endpoint Services, get Morvanta Agent for Mac"},
                {"downloadButton", "Download"}};
    case 6:
        return {
            {"label", "Leaving your domain"},
            {"ComputerName", "Computer Name:"},
            {"ActiveDirectory", "Active Directory:"},
            {"JoinedZone", "Joined Zone:"},
            {"ComputerName_Val", on.leaveName},
            {"ActiveDirectory_Val", on.leaveDomain},
            {"JoinedZone_Val", on.leaveZone},
            {"label_5", "Active Directory Computer Object options:"},
            {"radioButton", choice("Disable Computer Object in Active Directory", on.option == 1)},
            {"radioButton_2", choice("Remove Computer Object in Active Directory", on.option == 2)},
            {"radioButton_3", choice("Leave without contacting Active Directory", on.option == 3)},
            {"label_2", "Active Directory Username:"},
            {"UsernameEdit", edit(on.leaveUser, on.option != 3)},
            {"label_3", "Active Directory Password:"},
            {"PasswordEdit", edit(on.leavePassword, on.option != 3)}};
    case 7:
        if (mac.detour == Machine::AfterLast)
            return {};
        if (on.startedJoined)
            return {{"Left_label",
                     "You have successfully left your Mac from your Active Directory domain."}};
        return {{"Complete_label", on.report}};
    default:
        return {};
    }
}

// --- What a person could do

QVector<Step> Rules::steps(bool wide) const
{
    if (history.isEmpty())
        return {step(Act::Start)};
    const int page = history.last();
    QVector<Step> found;
    if (last(page))
        return {step(Act::Finish)};
    found << step(Act::Next);
    if (!backDisabled)
        found << step(Act::Back);
    if (page == 0 && mac.detour != Machine::Cloud)
        found << step(Act::Next, Outcome::Cancelled);
    if (page == 2) {
        found << step(Act::Next, Outcome::CheckFails) << step(Act::Next, Outcome::Denied)
              << entering({{"ADUser", "binder"}, {"ADPass", "pass word"}});
    }
    if (page == 3) {
        found << step(Act::Next, Outcome::CheckFails)
              << entering({{"DomainEdit", "example.test"},
                           {"UsernameEdit", "admin"},
                           {"PasswordEdit", "secret"}});
    }
    if ((page == 2 || page == 3) && wide)
        found << step(Act::Next, Outcome::CheckSilent) << step(Act::Next, Outcome::CheckKilled);
    if (page == 3 && wide) {
        found << entering({{"DomainEdit", "other.test"}, {"PasswordEdit", "two  words $HOME"}})
              << entering({{"PasswordEdit", ""}});
    }
    if (page == 4)
        addJoinOptions(found, wide);
    if (page == 6)
        addLeaveSteps(found, wide);
    if (on.browser) {
        found << choosing(branches.at(3)) << step(Act::Cancel);
        if (wide)
            found << choosing(branches.at(0)) << choosing(branches.at(2));
    }
    if (mac.detour != Machine::None)
        found << step(Act::Flags);
    addMeanwhile(found, wide);
    if (wide)
        found << step(Act::About) << step(Act::Outside) << step(Act::Close);
    return found;
}

void Rules::addJoinOptions(QVector<Step>& steps, bool wide) const
{
    steps << step(Act::Next, Outcome::Bad) << step(Act::Next, Outcome::Cancelled)
          << pressing("AdvancedButton") << pressing(on.automatic ? "ZoneButton" : "AutoButton");
    if (on.advanced) {
        steps << pressing("ForceLeave") << pressing("ContainerDNLabel") << step(Act::Browse)
              << step(Act::Browse, Outcome::Bad);
        if (on.appleIdsEnabled)
            steps << pressing("AppleUIDCheck");
    }
    if (!wide)
        return;
    steps << step(Act::Next, Outcome::Silent) << step(Act::Next, Outcome::Killed)
          << step(Act::Next, Outcome::Denied)
          << pressing(on.automatic ? "AutoButton" : "ZoneButton") << pressing("CloudCheck")
          << entering({{"ZoneEdit", "Zone of 'Macs'"}, {"ComputerNameEdit", ""}})
          << entering({{"ZoneEdit", ""}, {"ComputerNameEdit", "other-mac"}});
    if (on.advanced) {
        steps << pressing("PDSLabel") << pressing("AliasLabel")
              << entering({{"PDSEdit", "dc1.example.test"}, {"AliasEdit", "my alias"}})
              << entering({{"ContainerDNEdit", "CN=Computers,DC=example,DC=test"}})
              << step(Act::Browse, Outcome::Silent) << step(Act::Browse, Outcome::Killed);
    }
}

void Rules::addLeaveSteps(QVector<Step>& steps, bool wide) const
{
    steps << step(Act::Next, Outcome::Bad) << step(Act::Next, Outcome::Cancelled)
          << pressing("radioButton") << pressing("radioButton_2") << pressing("radioButton_3");
    if (on.option != 3) {
        steps << step(Act::Next, Outcome::CheckFails)
              << entering({{"UsernameEdit", "admin"}, {"PasswordEdit", "a b"}});
    }
    if (wide)
        steps << step(Act::Next, Outcome::Silent) << step(Act::Next, Outcome::Killed)
              << step(Act::Next, Outcome::Denied);
    if (wide && on.option != 3)
        steps << step(Act::Next, Outcome::CheckKilled);
}

} // namespace Model
