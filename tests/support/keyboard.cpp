#include "tests/support/keyboard.h"

#include <QDialogButtonBox>
#include <QTextBrowser>

void pressKey(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    QWidget* focus = QApplication::focusWidget();
    QTest::keyClick(focus != nullptr ? focus : QApplication::activeWindow(), key, modifiers);
}

void typeText(const QString& text)
{
    QTest::keyClicks(QApplication::focusWidget(), text);
}

void retype(const QString& text)
{
    pressKey(Qt::Key_A, Qt::ControlModifier);
    typeText(text);
}

QString focusName()
{
    const QWidget* focus = QApplication::focusWidget();
    if (focus == nullptr)
        return "nothing";
    if (const auto* wizard = qobject_cast<const QWizard*>(focus->window())) {
        if (focus == wizard->button(QWizard::NextButton))
            return "Next";
        if (focus == wizard->button(QWizard::BackButton))
            return "Back";
        if (focus == wizard->button(QWizard::FinishButton))
            return "Finish";
    }
    if (const auto* box = qobject_cast<const QDialogButtonBox*>(focus->parentWidget()))
        return box->objectName();
    return focus->objectName();
}

KeyDriver::KeyDriver()
{
    if (!QTest::qWaitForWindowActive(&wizard))
        qFatal("The wizard does not get the focus");
}

void KeyDriver::activateAgain()
{
    wizard.activateWindow();
    if (!QTest::qWaitForWindowActive(&wizard))
        qFatal("The focus does not come back to the wizard");
}

QStringList KeyDriver::pressReturn()
{
    QStringList texts;
    withModalDialogs([] { pressKey(Qt::Key_Return); },
                     [&texts](QWidget* dialog) {
                         auto* text = dialog->findChild<QTextBrowser*>();
                         if (text == nullptr)
                             return;
                         texts << text->toPlainText();
                         QTest::keyClick(dialog->focusWidget(), Qt::Key_Return);
                     });
    activateAgain();
    waitUntilFree();
    return texts;
}

void KeyDriver::toggle(Qt::Key key, const char* name) const
{
    pressKey(key, Qt::ControlModifier | Qt::ShiftModifier);
    const auto* button = on<QAbstractButton>(QString::fromLatin1(name));
    if (!QTest::qWaitFor([button] { return button->isChecked(); }))
        qFatal("%s is not toggled", name);
}

void KeyDriver::enterCredentials()
{
    pressReturn();
    typeText("example.test");
    pressKey(Qt::Key_Tab);
    retype("admin");
    pressKey(Qt::Key_Tab);
    typeText("secret");
    pressReturn();
}
