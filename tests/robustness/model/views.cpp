// What is to be seen, and the texts in which the walk tells of it.

#include "tests/robustness/model/model.h"

#include "tests/support/texts.h"

namespace Model {
namespace {

QString edit(const QString& text, bool enabled = true)
{
    return '[' + text + (enabled ? "]" : "] disabled");
}

QString choice(const QString& text, bool checked, bool enabled = true)
{
    return text + (checked ? " on" : " off") + (enabled ? "" : " disabled");
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
        return {{"label",
                 "This machine is currently joined using Apple's Directory Utility to the domain:"},
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
                {"label_4", "Please enter the name of your Active Directory domain to join, and an "
                            "Active Directory administrator's username and password."}};
    case 4: {
        QMap<QString, QString> seen = {
            {"AutoButton", choice("Auto", on.automatic)},
            {"label_2", "Recommended for most installations.  All Active Directory users can login "
                        "to your Mac.  User attributes such as UID, GID and home directory will be "
                        "created automatically."},
            {"ZoneButton", choice("Zone", !on.automatic)},
            {"ZoneEdit", edit(on.zone)},
            {"label_4",
             "Recommended for installations in which fine-grained access control is required.  You "
             "must enter a name of a Zone that was previously created using the Morvanta Access "
             "Manager.  Example of a zone name would be \"MacZone\"."},
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

} // namespace Model
