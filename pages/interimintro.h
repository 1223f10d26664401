#pragma once

#include <QWizardPage>

#include <memory>

class BindingReport;

namespace Ui {
class InterimIntro;
}

// Never seen: the wizard passes through it. Asks the system for a binding of its own, with
// administrator rights, and chooses between the unbind, leave and credentials pages.
class InterimIntro : public QWizardPage
{
    Q_OBJECT

public:
    explicit InterimIntro(QWidget* parent = nullptr);
    ~InterimIntro() override;

    // Runs the query; false when it was refused.
    bool validatePage() override;
    // 2 for a binding of the system's own, 6 for a Mac that is joined, else 3. Consumes the query's
    // output up to the line that decides.
    int nextId() const override;

private:
    std::unique_ptr<BindingReport> report; // the latest
    Ui::InterimIntro* ui;
};
