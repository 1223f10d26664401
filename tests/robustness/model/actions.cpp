// What a person does on a page, and what the tools are asked.

#include "tests/robustness/model/model.h"

#include "tests/support/texts.h"

namespace Model {
namespace {

const QString notFound = "sh: 1: /usr/local/bin/mvedit: not found\n";
const QString notAContainer = "The selected distinguished name(DN) is not a container object.  "
                              "Please reselect (e.g. OU or CN)";
const QString scripts = "/Applications/Utilities/Morvanta/Morvanta Join Assistant.app/Contents/"
                        "Resources/";

} // namespace

void Rules::run(const QStringList& words)
{
    const bool ofTheAgent = words.first().startsWith("mv") || words.first() == "gui_helper_tool";
    if (mac.agent || !ofTheAgent)
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
    commands << "authorization_prompt";
    consented = outcome != Outcome::Cancelled && outcome != Outcome::Denied;
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
    dialogs << refusedCheck(output.section('\n', 0, 0));
    return false;
}

// The status of the run; *output stays as it was when the tool was not started.
int Rules::runHelper(const QStringList& arguments, Outcome outcome, QString* output)
{
    if (!askForConsent(outcome))
        return outcome == Outcome::Cancelled ? -60006 : -60005; // errAuthorizationCanceled, -Denied
    run(QStringList{"gui_helper_tool"} + arguments);
    const bool speaks = outcome == Outcome::Bad || outcome == Outcome::Killed;
    *output = speaks ? failure : QString();
    static const QMap<Outcome, int> failures = {
        {Outcome::Bad, 5}, {Outcome::Silent, 3}, {Outcome::Killed, 998}};
    return failures.value(outcome, 0);
}

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

// Each load of a tree has connected the Choose button once more. A browser that stayed open while a
// load failed holds no item that could be chosen.
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

} // namespace Model
