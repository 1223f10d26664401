// What a person could do.

#include "tests/robustness/model/model.h"

namespace Model {
namespace {

Step pressing(const char* widget)
{
    return {Act::Press, Outcome::Good, Meanwhile::Nothing, widget};
}

Step choosing(const QString& item)
{
    return {Act::Choose, Outcome::Good, Meanwhile::Nothing, item};
}

Step entering(const QVector<QPair<QString, QString>>& entries)
{
    return {Act::Enter, Outcome::Good, Meanwhile::Nothing, {}, entries};
}

// Adds each press of Next again with what is done meanwhile: all kinds of it at once, and in the
// wide set also each kind by itself.
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

QVector<Step> Rules::steps(bool wide) const
{
    if (history.isEmpty())
        return {Step{Act::Start}};
    const int page = history.last();
    QVector<Step> found;
    if (last(page))
        return {Step{Act::Finish}};
    found << Step{Act::Next};
    if (!backDisabled)
        found << Step{Act::Back};
    if (page == 0 && mac.detour != Machine::Cloud)
        found << Step{Act::Next, Outcome::Cancelled};
    if (page == 2) {
        found << Step{Act::Next, Outcome::CheckFails} << Step{Act::Next, Outcome::Denied}
              << entering({{"ADUser", "binder"}, {"ADPass", "pass word"}});
    }
    if (page == 3) {
        found << Step{Act::Next, Outcome::CheckFails}
              << entering({{"DomainEdit", "example.test"},
                           {"UsernameEdit", "admin"},
                           {"PasswordEdit", "secret"}});
    }
    if ((page == 2 || page == 3) && wide)
        found << Step{Act::Next, Outcome::CheckSilent} << Step{Act::Next, Outcome::CheckKilled};
    if (page == 3 && wide) {
        found << entering({{"DomainEdit", "other.test"}, {"PasswordEdit", "two  words $HOME"}})
              << entering({{"PasswordEdit", ""}});
    }
    if (page == 4)
        addJoinOptions(found, wide);
    if (page == 6)
        addLeaveSteps(found, wide);
    if (on.browser) {
        found << choosing(branches.at(3)) << Step{Act::Cancel};
        if (wide)
            found << choosing(branches.at(0)) << choosing(branches.at(2));
    }
    if (mac.detour != Machine::None)
        found << Step{Act::Flags};
    addMeanwhile(found, wide);
    if (wide)
        found << Step{Act::About} << Step{Act::Outside} << Step{Act::Close};
    return found;
}

void Rules::addJoinOptions(QVector<Step>& steps, bool wide) const
{
    steps << Step{Act::Next, Outcome::Bad} << Step{Act::Next, Outcome::Cancelled}
          << pressing("AdvancedButton") << pressing(on.automatic ? "ZoneButton" : "AutoButton");
    if (on.advanced) {
        steps << pressing("ForceLeave") << pressing("ContainerDNLabel") << Step{Act::Browse}
              << Step{Act::Browse, Outcome::Bad};
        if (on.appleIdsEnabled)
            steps << pressing("AppleUIDCheck");
    }
    if (!wide)
        return;
    steps << Step{Act::Next, Outcome::Silent} << Step{Act::Next, Outcome::Killed}
          << Step{Act::Next, Outcome::Denied}
          << pressing(on.automatic ? "AutoButton" : "ZoneButton") << pressing("CloudCheck")
          << entering({{"ZoneEdit", "Zone of 'Macs'"}, {"ComputerNameEdit", ""}})
          << entering({{"ZoneEdit", ""}, {"ComputerNameEdit", "other-mac"}});
    if (on.advanced) {
        steps << pressing("PDSLabel") << pressing("AliasLabel")
              << entering({{"PDSEdit", "dc1.example.test"}, {"AliasEdit", "my alias"}})
              << entering({{"ContainerDNEdit", "CN=Computers,DC=example,DC=test"}})
              << Step{Act::Browse, Outcome::Silent} << Step{Act::Browse, Outcome::Killed};
    }
}

void Rules::addLeaveSteps(QVector<Step>& steps, bool wide) const
{
    steps << Step{Act::Next, Outcome::Bad} << Step{Act::Next, Outcome::Cancelled}
          << pressing("radioButton") << pressing("radioButton_2") << pressing("radioButton_3");
    if (on.option != 3) {
        steps << Step{Act::Next, Outcome::CheckFails}
              << entering({{"UsernameEdit", "admin"}, {"PasswordEdit", "a b"}});
    }
    if (wide)
        steps << Step{Act::Next, Outcome::Silent} << Step{Act::Next, Outcome::Killed}
              << Step{Act::Next, Outcome::Denied};
    if (wide && on.option != 3)
        steps << Step{Act::Next, Outcome::CheckKilled};
}

} // namespace Model
