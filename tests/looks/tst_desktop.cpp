#include "tests/support/program.h"
#include "tests/support/worldtest.h"

// What only a window manager shows: where dialogs open, and what lies in front.
class TestDesktop : public WorldTest
{
    Q_OBJECT

private slots:
    void dialogsOpenOverTheWizardAndStayInFront_data();
    void dialogsOpenOverTheWizardAndStayInFront();
};

void TestDesktop::dialogsOpenOverTheWizardAndStayInFront_data()
{
    QTest::addColumn<bool>("joined");
    QTest::addColumn<QStringList>("tools"); // what each press of Next runs
    QTest::addColumn<QString>("title");
    QTest::addColumn<QSize>("size");
    QTest::newRow("join") << false << QStringList{"mvinfo", "mvedit", "gui_helper_tool"}
                          << "Joining" << QSize(440, 220);
    QTest::newRow("leave") << true << QStringList{"mvinfo", "gui_helper_tool"} << "Leaving"
                           << QSize(440, 220);
    QTest::newRow("warning") << true << QStringList{"mvinfo", "mvedit"} << "WARNING"
                             << QSize(500, 300);
}

void TestDesktop::dialogsOpenOverTheWizardAndStayInFront()
{
    QFETCH(bool, joined);
    QFETCH(QStringList, tools);
    QFETCH(QString, title);
    if (joined)
        World::setJoined();
    Answer held;
    held.reportsPid = true;
    held.held = true;
    World::answer("gui_helper_tool", held);
    if (tools.last() == "mvedit") {
        World::answer("mvedit", {"", "", 1});
    }
    Program program;
    QVERIFY(program.showsTheWizard());
    for (const QString& tool : tools)
        QVERIFY(program.nextRuns(tool));
    const QString dialog = program.session.waitForWindow(title);
    QVERIFY(!dialog.isEmpty());

    QTEST(program.session.place(dialog).size(), "size");
    // But for the title bar, which the window manager adds.
    const auto isCentred = [&] {
        const QPoint distance =
            program.session.place(dialog).center() - program.session.place(program.wizard).center();
        return qAbs(distance.x()) <= 2 && qAbs(distance.y()) <= 30;
    };
    QTRY_VERIFY(isCentred());
    QVERIFY(program.session.isInFront(dialog, program.wizard));
    program.session.clickInto(program.wizard);
    QVERIFY(program.session.isInFront(dialog, program.wizard));
    World::release("gui_helper_tool");
}

WORLD_TEST_MAIN(TestDesktop)
#include "tst_desktop.moc"
