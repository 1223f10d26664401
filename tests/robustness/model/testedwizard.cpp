#include "tests/robustness/model/testedwizard.h"

#include "browser/cnbrowser.h"
#include "pages/dialogs/loadcn.h"
#include "pages/dialogs/warning.h"
#include "pages/joinflags.h"
#include "system/lowerpriv.h"
#include "tests/support/wizarddriver.h"

#include <QAction>
#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTextBrowser>
#include <QTimer>
#include <QTreeView>

#include <csignal>

using namespace Model;

namespace {

Answer saying(const QString& output, int exitStatus, int signal = 0)
{
    return {output.toUtf8(), {}, exitStatus, signal};
}

void answerAs(const Machine& machine)
{
    if (machine.joined)
        World::setJoined(domain.toUtf8(), zone.toUtf8(), computer.toUtf8());
    else
        for (const char* question : {"mvinfo -d", "mvinfo -z", "mvinfo -n"})
            World::answer(question, saying({}, 1));
    if (machine.bound)
        World::setBound(boundDomain.toUtf8());
    else
        World::answer("dsconfigad -show", saying("You are not bound to any directory.\n", 0));
}

void answerAs(Outcome outcome)
{
    const QMap<Outcome, Answer> checks = {{Outcome::CheckFails, saying(complaint, 1)},
                                          {Outcome::CheckSilent, saying({}, 1)},
                                          {Outcome::CheckKilled, saying(complaint, 0, SIGKILL)}};
    World::answer("mvedit check_domain_cred.tcl", checks.value(outcome));

    const QMap<Outcome, Answer> runs = {{Outcome::Bad, saying(failure, 5)},
                                        {Outcome::Silent, saying({}, 3)},
                                        {Outcome::Killed, saying(failure, 0, SIGTERM)}};
    Answer run = runs.value(outcome);
    World::answer("mvedit mvedit_file_arg.tcl", run);
    run.reportsPid = true;
    World::answer("gui_helper_tool", run);
    if (outcome == Outcome::Good) {
        const QStringList name(branches.rbegin(), branches.rend());
        World::answer("mvedit mvedit_file_arg.tcl", saying(name.join(',') + '\n', 0));
    }

    const bool refused = outcome == Outcome::Cancelled || outcome == Outcome::Denied;
    // The exit status of the prompt: 1 when it was cancelled, 2 when it denied.
    World::answer("authorization_prompt",
                  saying({}, refused ? outcome == Outcome::Cancelled ? 1 : 2 : 0));
    if (refused)
        g_pProcess->setupauth(); // a new session, without consent
}

QString described(const QWidget* widget)
{
    const QString end = widget->isEnabled() ? QString() : QString(" disabled");
    if (const auto* label = qobject_cast<const QLabel*>(widget))
        return label->text();
    if (const auto* edit = qobject_cast<const QLineEdit*>(widget))
        return '[' + edit->text() + ']' + end;
    if (const auto* button = qobject_cast<const QAbstractButton*>(widget)) {
        const QString state = button->isChecked() ? " on" : " off";
        return button->text() + (button->isCheckable() ? state : QString()) +
               (button->isDown() ? " down" : "") + end;
    }
    return {};
}

} // namespace

TestedWizard::TestedWizard(const Machine& machine) : detour(machine.detour)
{
    World::reset();
    if (!machine.agent) {
        for (const char* tool : {"mvinfo", "mvedit", "mvjoin", "mvleave", "gui_helper_tool"})
            World::removeTool(tool);
    }
    qApp->installEventFilter(this);
}

// Notes each warning and the About dialog, and closes it as a person would.
bool TestedWizard::eventFilter(QObject* object, QEvent* event)
{
    auto* dialog = qobject_cast<QDialog*>(object);
    if (event->type() != QEvent::Show || dialog == nullptr)
        return false;
    if (auto* warning = qobject_cast<Warning*>(dialog)) {
        dialogs << child<QTextBrowser>(warning, "WarningLabel")->toPlainText();
        auto* box = child<QDialogButtonBox>(warning, "buttonBox");
        auto* press = new QTimer(dialog); // once does not do: see Warning::done()
        connect(press, &QTimer::timeout, box->button(QDialogButtonBox::Ok),
                &QAbstractButton::click);
        press->start(0);
    } else if (dialog->objectName() == "about") {
        dialogs << dialog->objectName();
        QTimer::singleShot(0, dialog, &QDialog::reject);
    }
    return false;
}

void TestedWizard::start()
{
    wizard.reset();
    joining = enrolling = false;
    g_pProcess->setupauth();
    wizard = std::make_unique<Wizard>();
    if (detour == Machine::Cloud) {
        wizard->removePage(0);
        wizard->setPage(0, new LeadsTo(5));
    } else if (detour == Machine::AfterLast) {
        wizard->removePage(7);
        wizard->setPage(7, new LeadsTo(8));
        wizard->setPage(8, new LeadsTo(-1));
    }
    wizard->show();
}

View TestedWizard::take(const Step& step, const Machine& machine)
{
    World::forgetCalls();
    dialogs.clear();
    answerAs(machine);
    answerAs(step.outcome);
    switch (step.act) {
    case Act::Start:
        start();
        break;
    case Act::Next:
        queue(step.meanwhile);
        wizard->button(QWizard::NextButton)->click();
        break;
    case Act::Back:
        wizard->button(QWizard::BackButton)->click();
        break;
    case Act::Finish:
        wizard->button(QWizard::FinishButton)->click();
        break;
    case Act::Close:
        wizard->close();
        break;
    case Act::About:
        // The About entry has no object name.
        child<QAction>(wizard.get(), "")->trigger();
        break;
    case Act::Press:
        press(step.widget);
        break;
    case Act::Enter:
        for (const auto& entry : step.entries)
            child<QLineEdit>(wizard->currentPage(), entry.first)->setText(entry.second);
        break;
    case Act::Browse:
        browse();
        break;
    case Act::Choose:
        choose(step.widget);
        break;
    case Act::Cancel:
        child<QPushButton>(openBrowser(), "cancelButton")->click();
        break;
    case Act::Outside:
        break; // answerAs() has done it
    case Act::Flags:
        std::swap(joining, enrolling);
        joining = !joining;
        break;
    }
    // During a step the About entry is disabled.
    const auto* about = child<QAction>(wizard.get(), "");
    while (!about->isEnabled())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);

    QStringList commands;
    const QList<Call> calls = World::calls();
    for (const Call& call : calls) {
        QStringList words = call.words();
        if (words.first() == "authorization_prompt")
            words = words.mid(0, 1);
        commands << words.join('|');
    }
    if (!wizard->isVisible())
        return {-1, {}, {}, dialogs, false, joining, enrolling, commands};
    const bool browser = openBrowser() != nullptr;
    return {wizard->currentId(), widgets(), buttons(), dialogs, browser, joining,
            enrolling,           commands};
}

// Posts what is done while the tools run. The program handles it after their end, or while they
// run where a join or leave has an event loop of its own.
void TestedWizard::queue(Meanwhile meanwhile) const
{
    QWindow* window = wizard->windowHandle();
    const bool all = meanwhile == Meanwhile::All;
    const auto type = [window](int key, const QString& text) {
        QCoreApplication::postEvent(window,
                                    new QKeyEvent(QEvent::KeyPress, key, Qt::NoModifier, text));
    };
    if (all || meanwhile == Meanwhile::Type) {
        // The join and leave pages open with the focus on a choice. In an edit a letter that
        // reaches the page would be seen.
        const QString edit = QMap<int, QString>{{4, "ComputerNameEdit"}, {6, "UsernameEdit"}}.value(
            wizard->currentId());
        if (!edit.isEmpty())
            child<QLineEdit>(wizard->currentPage(), edit)->setFocus();
        type(Qt::Key_X, typedMeanwhile);
    }
    if (all || meanwhile == Meanwhile::Press) {
        type(Qt::Key_Return, "\r");
        type(Qt::Key_Escape, {});
        clickUnheard(wizard->button(QWizard::NextButton));
    }
    if (all || meanwhile == Meanwhile::Assist) {
        for (const auto which : {QWizard::NextButton, QWizard::BackButton, QWizard::FinishButton})
            pressAssistivelyUnheard(wizard->button(which));
    }
    if (all || meanwhile == Meanwhile::Close)
        QCoreApplication::postEvent(window, new QEvent(QEvent::Close));
}

void TestedWizard::press(const QString& widget)
{
    auto* button = child<QAbstractButton>(wizard->currentPage(), widget);
    // Never shown, but a join reads it all the same.
    if (widget == "CloudCheck")
        button->setChecked(!button->isChecked());
    else if (button->isVisible())
        button->click();
}

void TestedWizard::browse()
{
    press("ContainerDNBrowse");
    const auto* loading = windowOf<LoadCN>();
    while (loading != nullptr && loading->isVisible())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

void TestedWizard::choose(const QString& item)
{
    auto* tree = child<QTreeView>(openBrowser(), "browserTree");
    // After a failed load there is nothing to select.
    if (tree->model() != nullptr) {
        QModelIndex index = tree->model()->index(0, 0);
        while (index.isValid() && index.data().toString() != item)
            index = tree->model()->index(0, 0, index);
        tree->setCurrentIndex(index);
    }
    child<QPushButton>(openBrowser(), "chooseButton")->click();
}

QDialog* TestedWizard::openBrowser() const
{
    auto* browser = wizard->findChild<cnbrowser*>();
    return browser != nullptr && browser->isVisible() ? browser : nullptr;
}

QMap<QString, QString> TestedWizard::widgets() const
{
    QMap<QString, QString> seen;
    const QList<QWidget*> all = wizard->currentPage()->findChildren<QWidget*>();
    for (const QWidget* widget : all) {
        if (!widget->isVisible() || widget->window() != wizard.get())
            continue;
        if (widget->inherits("QLabel") || widget->inherits("QLineEdit") ||
            widget->inherits("QAbstractButton"))
            seen[widget->objectName()] = described(widget);
    }
    return seen;
}

QStringList TestedWizard::buttons() const
{
    QStringList seen;
    for (const auto which : {QWizard::BackButton, QWizard::NextButton, QWizard::FinishButton,
                             QWizard::CancelButton, QWizard::HelpButton}) {
        const QAbstractButton* button = wizard->button(which);
        if (button->isVisible())
            seen << described(button);
    }
    return seen;
}
