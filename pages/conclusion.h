#pragma once

#include <QWizardPage>

class Ui_Conclusion;

// The last page: reports a join or a leave. Which of them is chosen at start-up: a leave when the
// Mac is joined then.
class Conclusion : public QWizardPage
{
    Q_OBJECT

public:
    explicit Conclusion(QWidget* parent = nullptr);
    ~Conclusion() override;

    // Puts the domain into the join's report, once.
    void initializePage() override;

private slots:
    // Not called: the form has no widget of this name.
    void on_Enrollcheck_toggled(bool checked);

private:
    Ui_Conclusion* ui;
};
