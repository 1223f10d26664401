#pragma once

#include <QWizardPage>

class Ui_Cloud;

// Sends the user to the download of the agent for Mac. Complete, but unreachable: no page leads to
// it, since enrolling is not offered at present.
class Cloud : public QWizardPage
{
    Q_OBJECT

public:
    explicit Cloud(QWidget* parent = nullptr);

    void initializePage() override;
    bool validatePage() override;
    int nextId() const override;

private slots:
    // Goes on even when the browser could not be opened.
    void on_downloadButton_clicked();

private:
    Ui_Cloud* ui;
};
