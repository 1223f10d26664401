// What a person does while a tool keeps the program busy, from outside: real keys and clicks, and
// presses of a screen reader's, at moments of a step that lasts a while. MOMENTS in the environment
// tells how many.

#include "tests/support/program.h"
#include "tests/support/screenreader.h"
#include "tests/support/worldtest.h"

#include <QElapsedTimer>

namespace {

constexpr int stepLasts = 300;    // ms
constexpr int watchedAfter = 300; // ms

const QPoint nextButton(740, 575); // in the wizard's window

std::unique_ptr<XSession> desktop;
std::unique_ptr<ScreenReader> reader;

// The program on the desktop, from its start to its end.
class Assistant
{
public:
    Assistant()
    {
        process.setProcessEnvironment(reader->environment());
        process.start(ASSISTANT_PROGRAM, QStringList());
        window = desktop->waitForWindow("Morvanta Join Assistant");
        if (window.isEmpty())
            qFatal("The wizard does not come up");
    }
    ~Assistant()
    {
        process.kill();
        process.waitForFinished();
    }

    // Presses Return once the wizard has the keyboard, and waits for the run of the tool.
    bool nextRuns(const QString& tool) const
    {
        World::forgetCalls();
        return desktop->pressIn(window, "Return") && ran(tool);
    }
    // Presses Return on the first page, and waits until the next one, which alone has a way back,
    // can be worked with.
    bool goesToFirstEntries(const QString& tool) const
    {
        return nextRuns(tool) && reader->await("Go Back");
    }
    static bool ran(const QString& tool)
    {
        return QTest::qWaitFor([&tool] { return !World::callsOf(tool).isEmpty(); }, 20000);
    }
    bool isUp() const
    {
        return process.state() == QProcess::Running && desktop->windows().contains(window);
    }

    QProcess process;
    QString window;
};

QStringList typed(const QString& text)
{
    QStringList keys;
    for (const QChar& character : text)
        keys << (character == '\t'  ? QString("Tab")
                 : character == ' ' ? QString("space")
                 : character == '.' ? QString("period")
                                    : QString(character));
    return keys;
}

// A held tool that has begun is let end after a while; the action comes at its moment, in ms from
// the tool's begin.
void duringStep(const QString& command, int moment, const std::function<void()>& action)
{
    QElapsedTimer time;
    time.start();
    bool released = false;
    bool done = false;
    while (!released || !done || time.elapsed() < stepLasts + watchedAfter) {
        if (!released && time.elapsed() >= stepLasts) {
            World::release(command);
            released = true;
        }
        if (!done && time.elapsed() >= moment) {
            action();
            done = true;
        }
        QTest::qWait(1);
    }
}

// Until the step's end, after which a press counts for the next page, or also later.
void addMoments(const QStringList& ways, int until = stepLasts)
{
    QTest::addColumn<QString>("way");
    QTest::addColumn<int>("moment");
    const int count = qMax(2, qEnvironmentVariableIntValue("MOMENTS"));
    for (const QString& way : ways) {
        for (int i = 0; i < count; ++i) {
            const int moment = i * until / count;
            QTest::addRow("%s at %d ms", qPrintable(way), moment) << way << moment;
        }
    }
}

void press(const QString& way, const QString& caption)
{
    if (way == "assistive")
        reader->press(caption);
    else if (way == "click")
        desktop->click();
    else
        desktop->key({way});
}

} // namespace

class TestBusy : public WorldTest
{
    Q_OBJECT

private slots:
    void init()
    {
        WorldTest::init();
        desktop = std::make_unique<XSession>();
        reader = std::make_unique<ScreenReader>(*desktop);
    }

    void cleanup()
    {
        reader.reset();
        desktop.reset();
        WorldTest::cleanup();
    }

    void textArrivesOnThePageThatFollows_data()
    {
        addMoments({"text"}, stepLasts + watchedAfter);
    }

    void textArrivesOnThePageThatFollows()
    {
        QFETCH(int, moment);
        Assistant assistant;
        World::hold("dsconfigad", "You are not bound to any directory.\n");
        QVERIFY(assistant.nextRuns("dsconfigad"));
        duringStep("dsconfigad", moment, [] { desktop->key(typed("corp.test\tadm\tsec ret")); });
        QVERIFY(assistant.nextRuns("mvedit"));
        QCOMPARE(World::callsOf("mvedit").first().arguments.mid(1),
                 QStringList({"corp.test", "adm", "sec ret"}));
    }

    void textBeyondTheLastEditIsForNone_data()
    {
        addMoments({"text"}, stepLasts + watchedAfter);
    }

    // Of the three texts the page has edits for two; the third must not land in the first edit,
    // which shows what it holds.
    void textBeyondTheLastEditIsForNone()
    {
        QFETCH(int, moment);
        Assistant assistant;
        World::hold("dsconfigad -show", "\nActive Directory Forest = example.test\n"
                                        "Active Directory Domain = example.test\n");
        QVERIFY(assistant.nextRuns("dsconfigad"));
        duringStep("dsconfigad -show", moment,
                   [] { desktop->key(typed("corp.test\tadm\tsecret")); });
        QCOMPARE(World::callsOf("mvedit").size(), 0);
        desktop->key({"shift+Tab"}); // from the button behind the edits
        QVERIFY(assistant.nextRuns("mvedit"));
        QCOMPARE(World::callsOf("mvedit").first().arguments.mid(1),
                 QStringList({"example.test", "corp.test", "adm"}));
    }

    void aMessageTakesNoText_data()
    {
        addMoments({"text"});
    }

    void aMessageTakesNoText()
    {
        QFETCH(int, moment);
        Assistant assistant;
        QVERIFY(assistant.goesToFirstEntries("mvinfo"));
        desktop->key(typed("corp.test"));
        World::answer("mvedit", {"No such domain\n", "", 1, 0, false, true});
        QVERIFY(assistant.nextRuns("mvedit"));
        duringStep("mvedit", moment, [] {
            desktop->key(typed("more") + QStringList{"Escape", "space", "Return"});
        });
        const QString warning = desktop->waitForWindow("WARNING");
        QVERIFY(!warning.isEmpty());
        QVERIFY(desktop->pressIn(warning, "Return"));
        QVERIFY(assistant.nextRuns("mvedit"));
        QCOMPARE(World::callsOf("mvedit").first().arguments.mid(1),
                 QStringList({"corp.test", "Administrator", ""}));
    }

    void pressesDuringACheckJoinNobody_data()
    {
        addMoments({"assistive", "Return", "click", "space"});
    }

    void pressesDuringACheckJoinNobody()
    {
        QFETCH(QString, way);
        QFETCH(int, moment);
        Assistant assistant;
        QVERIFY(assistant.goesToFirstEntries("mvinfo"));
        QVERIFY(way != "assistive" || reader->await("Continue"));
        desktop->pointAt(assistant.window, nextButton);
        if (way == "space")
            desktop->key({"Tab", "Tab", "Tab", "Tab"}); // from the first edit to the button
        World::hold("mvedit");
        World::forgetCalls();
        // The check is begun in the same way, which shows that this way presses the button.
        press(way, "Continue");
        QVERIFY(Assistant::ran("mvedit"));
        duringStep("mvedit", moment, [&way] {
            for (int i = 0; i < 3; ++i)
                press(way, "Continue");
        });
        QVERIFY(reader->await("Join"));
        QCOMPARE(World::callsOf("mvedit").size(), 1);
        QCOMPARE(World::callsOf("gui_helper_tool").size(), 0);
    }

    void pressesDuringAJoinStartNoSecond_data()
    {
        addMoments({"Join", "Go Back", "Browse", "About"});
    }

    void pressesDuringAJoinStartNoSecond()
    {
        QFETCH(QString, way);
        QFETCH(int, moment);
        Assistant assistant;
        QVERIFY(assistant.goesToFirstEntries("mvinfo"));
        desktop->key(typed("corp.test\tadm\tsecret"));
        QVERIFY(assistant.nextRuns("mvedit"));
        QVERIFY(reader->await("Join"));
        QVERIFY(desktop->pressIn(assistant.window, "ctrl+shift+A"));
        QVERIFY(reader->await(way));
        World::hold("gui_helper_tool");
        QVERIFY(assistant.nextRuns("gui_helper_tool"));
        duringStep("gui_helper_tool", moment, [&way] { reader->press(way); });
        QVERIFY(reader->await("Done"));
        QCOMPARE(World::callsOf("gui_helper_tool").size(), 1);
        QCOMPARE(World::callsOf("mvedit").size(), 0);
        QCOMPARE(desktop->windows(), QStringList{assistant.window});
    }

    void pressesDuringALeaveStartNoSecond_data()
    {
        addMoments({"Leave", "Go Back", "About"});
    }

    void pressesDuringALeaveStartNoSecond()
    {
        QFETCH(QString, way);
        QFETCH(int, moment);
        World::setJoined();
        Assistant assistant;
        QVERIFY(assistant.goesToFirstEntries("mvinfo"));
        QVERIFY(reader->await(way));
        World::hold("gui_helper_tool");
        QVERIFY(assistant.nextRuns("gui_helper_tool"));
        duringStep("gui_helper_tool", moment, [&way] { reader->press(way); });
        QVERIFY(reader->await("Done"));
        QCOMPARE(World::callsOf("gui_helper_tool").size(), 1);
        QCOMPARE(desktop->windows(), QStringList{assistant.window});
    }

    void closingDuringAStepKeepsItsOutcome_data()
    {
        QTest::addColumn<bool>("bound");
        QTest::addColumn<int>("status");
        QTest::addColumn<int>("moment");
        const int count = qMax(2, qEnvironmentVariableIntValue("MOMENTS"));
        for (int i = 0; i < count; ++i) {
            const int moment = i * stepLasts / count;
            QTest::addRow("check refused, %d ms", moment) << false << 1 << moment;
            QTest::addRow("check passed, %d ms", moment) << false << 0 << moment;
            QTest::addRow("unbinding, %d ms", moment) << true << 0 << moment;
        }
    }

    void closingDuringAStepKeepsItsOutcome()
    {
        QFETCH(bool, bound);
        QFETCH(int, status);
        QFETCH(int, moment);
        if (bound)
            World::setBound();
        Assistant assistant;
        QVERIFY(assistant.goesToFirstEntries("dsconfigad"));
        World::answer("mvedit", {"refused\n", "", status, 0, false, true});
        QVERIFY(assistant.nextRuns("mvedit"));
        duringStep("mvedit", moment, [] { desktop->key({"alt+F4"}); });
        if (bound || status != 0) {
            const QString warning = desktop->waitForWindow("WARNING");
            QVERIFY(!warning.isEmpty());
            QVERIFY(assistant.isUp());
            QVERIFY(desktop->pressIn(warning, "Return"));
        }
        QVERIFY(reader->await(status == 0 && !bound ? "Join" : "Continue"));
        QVERIFY(assistant.isUp());
        // The same key closes a wizard that is not busy.
        QVERIFY(desktop->pressIn(assistant.window, "alt+F4"));
        QTRY_COMPARE(assistant.process.state(), QProcess::NotRunning);
    }

    void aPressCountsAsSoonAsThePageIsUp()
    {
        for (int i = 0; i < qMax(2, qEnvironmentVariableIntValue("MOMENTS")); ++i) {
            Assistant assistant;
            QVERIFY(assistant.goesToFirstEntries("mvinfo"));
            QVERIFY(assistant.nextRuns("mvedit"));
            QVERIFY(reader->await("Join"));
            desktop->key({"Return"});
            QVERIFY(Assistant::ran("gui_helper_tool"));
        }
    }

    void aPressClosesAMessageAsSoonAsItIsUp()
    {
        for (int i = 0; i < qMax(2, qEnvironmentVariableIntValue("MOMENTS")); ++i) {
            World::answer("mvedit", {"", "", 1});
            Assistant assistant;
            QVERIFY(assistant.goesToFirstEntries("mvinfo"));
            QVERIFY(assistant.nextRuns("mvedit"));
            QVERIFY(reader->await("OK"));
            reader->press("OK");
            QTRY_COMPARE(desktop->windows(), QStringList{assistant.window});
        }
    }
};

WORLD_TEST_MAIN(TestBusy)
#include "tst_busy.moc"
