#include "tests/looks/scenes.h"

#include "app/about.h"
#include "browser/cnbrowser.h"
#include "pages/dialogs/loadcn.h"
#include "pages/dialogs/loadjoin.h"
#include "pages/dialogs/loadleave.h"
#include "pages/dialogs/warning.h"
#include "pages/joinflags.h"
#include "tests/support/wizarddriver.h"
#include "widgets/queuedinput.h"

#include <QTreeView>

namespace Scenes {
namespace {

const char containers[] = "DC=ad,DC=example,DC=com\n"
                          "CN=Builtin,DC=ad,DC=example,DC=com\n"
                          "CN=Computers,DC=ad,DC=example,DC=com\n"
                          "OU=Domain Controllers,DC=ad,DC=example,DC=com\n"
                          "OU=Europe,DC=ad,DC=example,DC=com\n"
                          "OU=Sales,OU=Europe,DC=ad,DC=example,DC=com\n"
                          "OU=Workshop,OU=Europe,DC=ad,DC=example,DC=com\n"
                          "OU=Macs,DC=ad,DC=example,DC=com\n";

// What a tool that fails has to say.
const QString refusal = "Can't authenticate as Administrator: the password is wrong.\n";

class Page : public Scene, public WizardDriver
{
public:
    QWidget* window() const override
    {
        return const_cast<Wizard*>(&wizard);
    }
    QWidget* content() const override
    {
        return wizard.currentPage();
    }
};

template <typename Dialog> class DialogScene : public Scene
{
public:
    template <typename... Arguments>
    explicit DialogScene(Arguments... arguments) : dialog(arguments...)
    {
    }
    QWidget* window() const override
    {
        return const_cast<Dialog*>(&dialog);
    }

    Dialog dialog;
};

using Opened = std::unique_ptr<Scene>;

std::unique_ptr<Page> introduction()
{
    return std::make_unique<Page>();
}

std::unique_ptr<Page> afterNext(std::unique_ptr<Page> page)
{
    page->next();
    return page;
}

std::unique_ptr<Page> joined(const Setting& setting)
{
    World::setJoined(setting.domain + '\n', setting.zone + '\n', setting.computer + '\n');
    return introduction();
}

std::unique_ptr<Page> unbind(const Setting& setting)
{
    World::setBound(setting.domain);
    return afterNext(introduction());
}

std::unique_ptr<Page> joinOptions(const Setting& setting)
{
    World::answer("scutil", {setting.computer + '\n', ""});
    auto page = introduction();
    page->goToJoinOptions(setting.domain);
    return page;
}

std::unique_ptr<Page> advancedOptions(const Setting& setting)
{
    auto page = joinOptions(setting);
    page->click("AdvancedButton");
    return page;
}

std::unique_ptr<Page> cloud()
{
    auto page = introduction();
    page->startAt(5);
    return page;
}

std::unique_ptr<Page> leave(const Setting& setting)
{
    return afterNext(joined(setting));
}

std::unique_ptr<Page> leaveWithoutContact(const Setting& setting)
{
    auto page = leave(setting);
    page->click("radioButton_3");
    return page;
}

Opened warning(const QString& text)
{
    auto scene = std::make_unique<DialogScene<Warning>>();
    scene->dialog.setWarning(text);
    return scene;
}

Opened containerBrowser(const Setting& setting)
{
    World::answer("mvedit", {containers, ""});
    auto scene = std::make_unique<DialogScene<cnbrowser>>(nullptr);
    bool drawn = false;
    QObject::connect(&scene->dialog, &cnbrowser::treeDrawingDone, [&drawn] { drawn = true; });
    scene->dialog.setDomainInfo(setting.domain, "admin", "secret");
    scene->dialog.createTree();
    if (!QTest::qWaitFor([&drawn] { return drawn; }))
        qFatal("The container tree is not drawn");
    scene->dialog.disconnect();
    scene->dialog.findChild<QTreeView*>()->keyboardSearch("OU=M");
    return scene;
}

template <typename Dialog> Opened dialog()
{
    return std::make_unique<DialogScene<Dialog>>();
}

struct Entry {
    const char* name;
    std::function<Opened(const Setting&)> open;
    bool needsTools = true;
};

const std::vector<Entry>& entries()
{
    static const std::vector<Entry> all = {
        {"introduction-join", [](const Setting&) { return introduction(); }},
        {"introduction-leave", joined},
        {"unbind", unbind},
        {"credentials", [](const Setting&) { return afterNext(introduction()); }},
        {"join-options", joinOptions},
        {"join-options-advanced", advancedOptions},
        {"cloud", [](const Setting&) { return cloud(); }},
        {"leave", leave},
        {"leave-without-contact", leaveWithoutContact},
        {"conclusion-join", [](const Setting& setting) { return afterNext(joinOptions(setting)); }},
        {"conclusion-leave",
         [](const Setting& setting) { return afterNext(leaveWithoutContact(setting)); }},
        {"progress-join", [](const Setting&) { return dialog<LoadJoin>(); }, false},
        {"progress-containers", [](const Setting&) { return dialog<LoadCN>(); }, false},
        {"progress-leave", [](const Setting&) { return dialog<LoadLeave>(); }, false},
        {"containers", containerBrowser},
        {"warning", [](const Setting&) { return warning(refusedCheck(refusal)); }, false},
        {"warning-long", [](const Setting&) { return warning(refusal.repeated(40)); }, false},
        {"about", [](const Setting&) { return std::make_unique<DialogScene<about>>(nullptr); },
         false},
    };
    return all;
}

} // namespace

QStringList names()
{
    QStringList all;
    for (const Entry& entry : entries()) {
        if (World::hasTools() || !entry.needsTools)
            all << QString::fromLatin1(entry.name);
    }
    return all;
}

std::unique_ptr<Scene> open(const QString& name, const Setting& setting)
{
    World::reset();
    joining = false;
    for (const Entry& entry : entries()) {
        if (name != QLatin1String(entry.name))
            continue;
        Opened scene = entry.open(setting);
        scene->window()->show();
        scene->window()->activateWindow();
        if (!QTest::qWaitForWindowActive(scene->window()))
            qFatal("%s does not get the focus", entry.name);
        bool canBeClosed = false;
        afterQueuedInput(scene->window(), [&canBeClosed] { canBeClosed = true; });
        if (!QTest::qWaitFor([&canBeClosed] { return canBeClosed; }))
            qFatal("%s does not come up", entry.name);
        return scene;
    }
    qFatal("There is no scene %s", qPrintable(name));
}

} // namespace Scenes
