// What a person could do.

#include "tests/robustness/model/model.h"

namespace Model {
namespace {

Step step(Act act, Outcome outcome = Outcome::Good)
{
    return {act, outcome, Meanwhile::Nothing, {}, {}};
}

Step pressing(const char* widget)
{
    return {Act::Press, Outcome::Good, Meanwhile::Nothing, widget, {}};
}

Step choosing(const QString& item)
{
    return {Act::Choose, Outcome::Good, Meanwhile::Nothing, item, {}};
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
