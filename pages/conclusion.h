#pragma once

#include <QWizardPage>

namespace Ui {
class Conclusion;
}

// The last page: reports the join or the leave, whichever the machine's state at start-up made the
// run's purpose.
class Conclusion : public QWizardPage
{
    Q_OBJECT

public:
    explicit Conclusion(QWidget* parent = nullptr);
    ~Conclusion() override;

    // Puts the domain into the join's report, once.
    void initializePage() override;

private slots:
    // No widget is named Enrollcheck any more, so nothing calls this; kept for forms that have one.
    void on_Enrollcheck_toggled(bool checked);

private:
    Ui::Conclusion* ui;
};
