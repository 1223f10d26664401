#pragma once

#include <QLineEdit>
#include <QWizardPage>

class Ui_AppleAD;

// Shows the binding of the operating system's own directory plug-in and removes it, so that the
// agent can join. Hands domain, name and password on in the fields "appleADDomain",
// "appleADUsername" and "appleADPassword".
class AppleAD : public QWizardPage
{
    Q_OBJECT

public:
    explicit AppleAD(QWidget* parent = nullptr);
    ~AppleAD() override;

    void initializePage() override;
    // Checks the credentials and unbinds; false, with a warning shown, when the check failed.
    bool validatePage() override;

    // Reads the bound domain with administrator rights into label and field. Where that is refused
    // both stay: the label as it was, the field empty if QWizard has emptied it on the way back.
    void setUIDomain();
    // Removes the binding; always true, since the tool's own status can't be had.
    bool leaveAppleAD();

private:
    // The fields' values, never shown. QWizard empties a field's edit when the user goes back; the
    // edits on the page are no fields, so they keep what was typed.
    QLineEdit userCarrier;
    QLineEdit passwordCarrier;
    QLineEdit domainCarrier;
    Ui_AppleAD* ui;
};
