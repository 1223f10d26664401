#pragma once

#include "app/wizard.h"
#include "tests/support/texts.h"
#include "tests/support/worldtest.h"

#include <QAbstractButton>
#include <QAction>
#include <QLineEdit>
#include <QWizardPage>

// The call that checks an administrator's name and password against a domain.
inline QStringList credentialCheck(const QString& domain, const QString& user,
                                   const QString& password)
{
    return {"mvedit",
            "/Applications/Utilities/Morvanta/Morvanta Join Assistant.app/Contents/"
            "Resources/check_domain_cred.tcl",
            domain, user, password};
}

// An empty page with a fixed successor, also one that no page of the program leads to.
class LeadsTo : public QWizardPage
{
public:
    explicit LeadsTo(int next) : next(next) {}
    int nextId() const override
    {
        return next;
    }

private:
    int next;
};

// A person in front of the wizard: presses its buttons and types into the current page's edits.
class WizardDriver
{
public:
    WizardDriver()
    {
        wizard.show();
    }

    int page() const
    {
        return wizard.currentId();
    }
    QWizardPage* currentPage() const
    {
        return wizard.currentPage();
    }
    QAbstractButton* button(QWizard::WizardButton which) const
    {
        return wizard.button(which);
    }

    // Presses the button as a person would and returns the texts of the warnings that came up, once
    // the wizard can be worked with again.
    QStringList press(QWizard::WizardButton which)
    {
        const QStringList texts =
            warningsDuring([&] { QTest::mouseClick(button(which), Qt::LeftButton); });
        // What was queued is handled here, so that a press that wrongly counts is seen.
        QCoreApplication::processEvents();
        waitUntilFree();
        return texts;
    }
    // During a step nothing can be pressed, and the entry About is disabled.
    void waitUntilFree() const
    {
        const auto* about = wizard.findChild<QAction*>();
        if (!QTest::qWaitFor([about] { return about->isEnabled(); }, 20000))
            qFatal("The wizard stays busy");
    }
    QStringList next()
    {
        return press(QWizard::NextButton);
    }
    QStringList back()
    {
        return press(QWizard::BackButton);
    }

    // A widget of the current page.
    template <typename Widget> Widget* on(const QString& name) const
    {
        return child<Widget>(currentPage(), name);
    }
    QString text(const QString& edit) const
    {
        return on<QLineEdit>(edit)->text();
    }
    QStringList texts(const QStringList& edits) const
    {
        QStringList found;
        for (const QString& edit : edits)
            found << text(edit);
        return found;
    }
    void type(const QString& edit, const QString& text) const
    {
        on<QLineEdit>(edit)->setText(text);
    }

    // Clicks a button of the current page, also one that is not shown.
    void click(const QString& name) const
    {
        on<QAbstractButton>(name)->click();
    }
    // On the unbind, the credentials or the leave page.
    void enterUser(const QString& user, const QString& password) const
    {
        type(page() == 2 ? "ADUser" : "UsernameEdit", user);
        type(page() == 2 ? "ADPass" : "PasswordEdit", password);
    }
    void enterCredentials(const QString& domain = "example.test", const QString& user = "admin",
                          const QString& password = "secret") const
    {
        type("DomainEdit", domain);
        enterUser(user, password);
    }

    // Begins anew at a page, without the steps that lead to it.
    void startAt(int page)
    {
        wizard.setStartId(page);
        wizard.restart();
    }
    // From page 0 to the credentials page.
    void goToCredentials()
    {
        next();
    }
    // From page 0, with valid credentials, to the join options page.
    template <typename... Credentials> void goToJoinOptions(const Credentials&... credentials)
    {
        goToCredentials();
        enterCredentials(credentials...);
        next();
    }

    Wizard wizard;
};
