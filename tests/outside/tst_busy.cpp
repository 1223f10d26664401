// What a person does while a tool keeps the program busy, from outside: real keys and clicks, and
// presses of a screen reader's, at moments of a step that lasts a while. MOMENTS in the environment
// is their number, 2 at least.

#include "tests/support/program.h"
#include "tests/support/worldtest.h"

#include <QElapsedTimer>

namespace {

constexpr int stepLasts = 300;    // ms
constexpr int watchedAfter = 300; // ms

const int moments = qMax(2, qEnvironmentVariableIntValue("MOMENTS"));
const QPoint nextButton(740, 575); // in the wizard's window

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

// Lets a held tool, which runs by now, end `stepLasts` ms from now, and does the action `moment` ms
// from now. These two keep their order, however busy the machine is.
void duringStep(const QString& command, int moment, const std::function<void()>& action)
{
    QElapsedTimer time;
    time.start();
    bool released = false;
    bool done = false;
    while (!released || !done || time.elapsed() < stepLasts + watchedAfter) {
        if (!done && (released || moment < stepLasts) && time.elapsed() >= moment) {
            action();
            done = true;
        }
        if (!released && time.elapsed() >= stepLasts) {
            World::release(command);
            released = true;
        }
        QTest::qWait(1);
    }
}

// A row for each way and moment. After the step's end, presses count for the next page, so most
// tests try moments up to it alone.
void addMoments(const QStringList& ways, int until = stepLasts)
{
    QTest::addColumn<QString>("way");
    QTest::addColumn<int>("moment");
    for (const QString& way : ways) {
        for (int i = 0; i < moments; ++i) {
            const int moment = i * until / moments;
            QTest::addRow("%s at %d ms", qPrintable(way), moment) << way << moment;
        }
    }
}

void press(Program& program, const QString& way, const QString& caption)
{
    if (way == "assistive")
        program.reader.press(caption);
    else if (way == "click")
        program.session.click();
    else
        program.session.key({way});
}

} // namespace

class TestBusy : public WorldTest
{
    Q_OBJECT

private slots:
    void textArrivesOnThePageThatFollows_data()
    {
        addMoments({"text"}, stepLasts + watchedAfter);
    }

    void textArrivesOnThePageThatFollows()
    {
        QFETCH(int, moment);
        Program program;
        World::hold("dsconfigad", "You are not bound to any directory.\n");
        QVERIFY(program.nextRuns("dsconfigad"));
        duringStep("dsconfigad", moment,
                   [&program] { program.session.key(typed("corp.test\tadm\tsec ret")); });
        QVERIFY(program.nextRuns("mvedit"));
        QCOMPARE(World::callsOf("mvedit").first().arguments.mid(1),
                 QStringList({"corp.test", "adm", "sec ret"}));
    }

    void textBeyondTheLastEditIsForNone_data()
    {
        addMoments({"1 Tab", "2 Tabs", "3 Tabs"}, stepLasts + watchedAfter);
    }

    // The page has edits for two of the three texts, then Back, Next and About. The third, a
    // password, must not land in the first edit, which shows its text.
    void textBeyondTheLastEditIsForNone()
    {
        QFETCH(QString, way);
        QFETCH(int, moment);
        const int tabs = way.left(1).toInt();
        Program program;
        World::hold("dsconfigad -show", "\nActive Directory Forest = example.test\n"
                                        "Active Directory Domain = example.test\n");
        QVERIFY(program.nextRuns("dsconfigad"));
        duringStep("dsconfigad -show", moment, [&program, tabs] {
            program.session.key(typed("corp.test\tadm" + QString(tabs, '\t') + "secret"));
        });
        QVERIFY(program.isFree());
        QCOMPARE(World::callsOf("mvedit").size(), 0);
        for (int i = 0; i < tabs; ++i) // back to the edits from the buttons behind them
            program.session.key({"shift+Tab"});
        QVERIFY(program.nextRuns("mvedit"));
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
        Program program;
        QVERIFY(program.nextRuns("mvinfo") && program.isFree());
        program.session.key(typed("corp.test"));
        World::answer("mvedit", {"No such domain\n", "", 1, 0, false, true});
        QVERIFY(program.nextRuns("mvedit"));
        duringStep("mvedit", moment, [&program] {
            program.session.key(typed("more") + QStringList{"Escape", "space", "Return"});
        });
        const QString warning = program.session.waitForWindow("WARNING");
        QVERIFY(!warning.isEmpty() && program.reader.await("OK"));
        QVERIFY(program.session.pressIn(warning, "Return"));
        QVERIFY(program.nextRuns("mvedit"));
        QCOMPARE(World::callsOf("mvedit").first().arguments.mid(1),
                 QStringList({"corp.test", "Administrator", ""}));
    }

    void pressesDuringACheckStartNoJoin_data()
    {
        addMoments({"assistive", "Return", "click", "space"});
    }

    void pressesDuringACheckStartNoJoin()
    {
        QFETCH(QString, way);
        QFETCH(int, moment);
        Program program;
        QVERIFY(program.nextRuns("mvinfo") && program.isFree());
        QVERIFY(way != "assistive" || program.reader.await("Continue"));
        program.session.pointAt(program.wizard, nextButton);
        if (way == "space")
            program.session.key({"Tab", "Tab", "Tab", "Tab"}); // from the first edit to the button
        World::hold("mvedit");
        World::forgetCalls();
        // The check is begun in the same way, which shows that this way presses the button.
        press(program, way, "Continue");
        QVERIFY(Program::ran("mvedit"));
        duringStep("mvedit", moment, [&program, &way] {
            for (int i = 0; i < 3; ++i)
                press(program, way, "Continue");
        });
        QVERIFY(program.reader.await("Join"));
        QCOMPARE(World::callsOf("mvedit").size(), 1);
        QCOMPARE(World::callsOf("gui_helper_tool").size(), 0);
    }

    void pressesDuringARunStartNoSecond_data()
    {
        addMoments({"join: Join", "join: Go Back", "join: Browse", "join: About", "leave: Leave",
                    "leave: Go Back", "leave: About"});
    }

    void pressesDuringARunStartNoSecond()
    {
        QFETCH(QString, way);
        QFETCH(int, moment);
        const bool leaves = way.startsWith("leave");
        const QString caption = way.section(": ", 1);
        if (leaves)
            World::setJoined();
        Program program;
        QVERIFY(program.nextRuns("mvinfo") && program.isFree());
        if (!leaves) {
            program.session.key(typed("corp.test\tadm\tsecret"));
            QVERIFY(program.nextRuns("mvedit"));
            QVERIFY(program.reader.await("Join"));
            QVERIFY(program.session.pressIn(program.wizard, "ctrl+shift+A"));
        }
        QVERIFY(program.reader.await(caption));
        World::hold("gui_helper_tool");
        QVERIFY(program.nextRuns("gui_helper_tool"));
        duringStep("gui_helper_tool", moment, [&] { program.reader.press(caption); });
        QVERIFY(program.reader.await("Done"));
        QCOMPARE(World::callsOf("gui_helper_tool").size(), 1);
        QCOMPARE(World::callsOf("mvedit").size(), leaves ? 1 : 0); // a leave begins with its check
        QVERIFY(program.showsOnlyTheWizard());
    }

    void closingDuringAStepKeepsItsOutcome_data()
    {
        addMoments({"check refused", "check passed", "unbinding"});
    }

    void closingDuringAStepKeepsItsOutcome()
    {
        QFETCH(QString, way);
        QFETCH(int, moment);
        const bool passes = way == "check passed";
        if (way == "unbinding")
            World::setBound();
        Program program;
        QVERIFY(program.nextRuns("dsconfigad"));
        World::answer("mvedit", {"refused\n", "", way == "check refused", 0, false, true});
        QVERIFY(program.nextRuns("mvedit"));
        duringStep("mvedit", moment, [&program] {
            program.session.key({"alt+F4"});
            program.session.awaitWindowManager(); // which asks the window to close
        });
        if (!passes) {
            const QString warning = program.session.waitForWindow("WARNING");
            QVERIFY(!warning.isEmpty() && program.reader.await("OK"));
            QVERIFY(program.isUp());
            QVERIFY(program.session.pressIn(warning, "Return"));
        }
        QVERIFY(program.reader.await(passes ? "Join" : "Continue"));
        QVERIFY(program.isUp());
        // The same key closes a wizard that is not busy.
        QVERIFY(program.close());
    }

    void aPressCountsAsSoonAsThePageIsUp()
    {
        for (int i = 0; i < moments; ++i) {
            Program program;
            QVERIFY(program.nextRuns("mvinfo"));
            QVERIFY(program.nextRuns("mvedit"));
            QVERIFY(program.reader.await("Join"));
            program.session.key({"Return"});
            QVERIFY(Program::ran("gui_helper_tool"));
        }
    }

    void aPressClosesAMessageAsSoonAsItIsUp()
    {
        for (int i = 0; i < moments; ++i) {
            World::answer("mvedit", {"", "", 1});
            Program program;
            QVERIFY(program.nextRuns("mvinfo"));
            QVERIFY(program.nextRuns("mvedit"));
            QVERIFY(program.reader.await("OK"));
            program.reader.press("OK");
            QVERIFY(program.isFree());
        }
    }
};

WORLD_TEST_MAIN(TestBusy)
#include "tst_busy.moc"
