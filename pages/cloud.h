#pragma once

#include <QWizardPage>

namespace Ui {
class Cloud;
}

// Sends the user to the download of the agent for Mac. No page leads here, and none is to: it
// waits, complete, until enrolling is offered again.
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
    Ui::Cloud* ui;
};
