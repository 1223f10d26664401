#pragma once

#include "system/bindingreport.h"

#include <QWizardPage>

#include <optional>

class Ui_InterimIntro;

// Never shown: the wizard passes through it. Asks, with administrator rights, whether macOS itself
// is bound to a domain, and chooses between the unbind, leave and credentials pages.
class InterimIntro : public QWizardPage
{
    Q_OBJECT

public:
    explicit InterimIntro(QWidget* parent = nullptr);
    ~InterimIntro() override;

    // Runs the query; false when it was refused or could not be started.
    bool validatePage() override;
    // The unbind page where macOS is bound, the leave page where the Mac is joined, else the
    // credentials page. Consumes the query's output up to the line that decides.
    int nextId() const override;

private:
    mutable std::optional<BindingReport> report; // the latest; nextId() reads on in it
    Ui_InterimIntro* ui;
};
