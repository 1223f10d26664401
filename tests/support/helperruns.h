#pragma once

#include "tests/support/wizarddriver.h"

// What the join and the leave have in common: the agent's helper tool runs behind a progress
// dialog.

inline void answerHelper(const QByteArray& output, int exitStatus, int signal = 0)
{
    World::answer("gui_helper_tool", {output, "", exitStatus, signal, true});
}

// Presses Next while the tool is held. The progress dialog stays up, whatever is pressed in it,
// until the tool ends; then the last page comes.
template <typename Dialog> void compareProgress(WizardDriver& driver)
{
    World::hold("gui_helper_tool");
    const int page = driver.page();
    int seen = 0;
    whileRunning(
        "gui_helper_tool", [&] { driver.next(); },
        [&](QWidget* dialog) {
            ++seen;
            QVERIFY(qobject_cast<Dialog*>(dialog) != nullptr);
            QTest::keyClick(dialog, Qt::Key_Escape);
            QTest::keyClick(dialog, Qt::Key_Return);
            QVERIFY(!dialog->close());
            QVERIFY(dialog->isVisible());
            QCOMPARE(driver.page(), page);
        });
    QCOMPARE(seen, 1);
    QCOMPARE(QApplication::activeModalWidget(), nullptr);
    QCOMPARE(driver.page(), 7);
}
