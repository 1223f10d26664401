#include "tests/support/program.h"
#include "tests/support/worldtest.h"

// What only a window manager shows: where dialogs open, and what lies in front.
class TestDesktop : public WorldTest
{
    Q_OBJECT

private slots:
    void dialogsOpenOverTheWizardAndStayInFront_data()
    {
        // The tools are those that each press of Next runs last.
        addColumns<bool, QStringList, QString>("joined", "tools", "title");
        addRow("join", false, QStringList{"mvinfo", "mvedit", "gui_helper_tool"}, "Joining");
        addRow("leave", true, QStringList{"mvinfo", "gui_helper_tool"}, "Leaving");
        addRow("warning", true, QStringList{"mvinfo", "mvedit"}, "WARNING");
    }

    void dialogsOpenOverTheWizardAndStayInFront()
    {
        QFETCH(bool, joined);
        QFETCH(QStringList, tools);
        QFETCH(QString, title);
        if (joined)
            World::setJoined();
        World::hold("gui_helper_tool");
        if (tools.last() == "mvedit")
            World::answer("mvedit", {"", "", 1});
        Program program;
        for (const QString& tool : tools)
            QVERIFY(program.nextRuns(tool));
        const QString dialog = program.session.waitForWindow(title);
        QVERIFY(!dialog.isEmpty());
        // Not exactly, because of the title bar, which the window manager adds.
        const auto isCentred = [&] {
            const QPoint distance = program.session.place(dialog).center() -
                                    program.session.place(program.wizard).center();
            return qAbs(distance.x()) <= 2 && qAbs(distance.y()) <= 30;
        };
        QTRY_VERIFY(isCentred());
        QTRY_VERIFY(program.session.isInFront(dialog, program.wizard));
        program.session.pointAt(program.wizard, {20, 20});
        program.session.click(); // as a person does to bring it to the front
        program.session.awaitWindowManager();
        QVERIFY(program.session.isInFront(dialog, program.wizard));
    }
};

WORLD_TEST_MAIN(TestDesktop)
#include "tst_desktop.moc"
