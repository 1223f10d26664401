#pragma once

#include "tests/support/wizarddriver.h"

#include <QLabel>
#include <QThread>

// What the join and the leave have in common: the agent's helper tool runs behind a progress
// dialog.

inline void answerHelper(const QByteArray& output, int exitStatus, int signal = 0,
                         bool held = false)
{
    World::answer("gui_helper_tool", {output, "", exitStatus, signal, true, held});
}

// Presses Next while the tool is held. The progress dialog stays up, whatever is pressed in it,
// until the tool ends; then the last page comes.
template <typename Dialog>
void compareProgress(WizardDriver& driver, const QString& title, const QString& text)
{
    answerHelper("", 0, 0, true);
    const int page = driver.page();
    int seen = 0;
    whileRunning(
        "gui_helper_tool", [&] { driver.next(); },
        [&](QWidget* dialog) {
            ++seen;
            QVERIFY(qobject_cast<Dialog*>(dialog) != nullptr);
            QCOMPARE(dialog->windowTitle(), title);
            QCOMPARE(child<QLabel>(dialog, "label")->text(), text);
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

// Clicks on one choice before the tool runs, which counts; while it runs, clicks on another and on
// Next and Back, which count for nothing.
inline void compareInputMeanwhile(WizardDriver& driver, const QString& before,
                                  const QString& meanwhile)
{
    answerHelper("", 1, 0, true);
    const int page = driver.page();
    clickThroughWindow(driver.on<QWidget>(before));
    QVERIFY(driver.on<QAbstractButton>(before)->isChecked());
    whileRunning(
        "gui_helper_tool", [&] { driver.next(); },
        [&](QWidget*) {
            clickThroughWindow(driver.on<QWidget>(meanwhile));
            QVERIFY(!driver.on<QAbstractButton>(meanwhile)->isChecked());
            clickThroughWindow(driver.button(QWizard::NextButton));
            clickThroughWindow(driver.button(QWizard::BackButton));
            QCOMPARE(driver.page(), page);
        });
    QCOMPARE(World::callsOf("gui_helper_tool").size(), 1);
}

// Presses Next; returns the thread on which the page tells of the tool's end.
template <typename Page> QThread* threadOfRun(WizardDriver& driver, void (Page::*finished)())
{
    QThread* worker = nullptr;
    auto* page = qobject_cast<Page*>(driver.currentPage());
    QObject::connect(
        page, finished, page, [&worker] { worker = QThread::currentThread(); },
        Qt::DirectConnection);
    driver.next();
    return worker;
}
