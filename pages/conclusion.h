#pragma once

#include <QWizardPage>

class Ui_Conclusion;

// The last page: reports a leave where the Mac is joined when the program starts, or else a join.
class Conclusion : public QWizardPage
{
    Q_OBJECT

public:
    explicit Conclusion(QWidget* parent = nullptr);
    ~Conclusion() override;

    // Puts the domain into the join's report, once, where a join was tried.
    void initializePage() override;

private slots:
    // Not called: the form has no widget of this name, of which Qt warns at each start.
    void on_Enrollcheck_toggled(bool checked);

private:
    Ui_Conclusion* ui;
};
