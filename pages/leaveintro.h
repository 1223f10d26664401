#pragma once

#include <QWizardPage>

class Ui_LeaveIntro;

// Shows what the Mac is joined to, and takes it out when Next, which reads "Leave" here, is
// pressed.
class LeaveIntro : public QWizardPage
{
    Q_OBJECT

public:
    explicit LeaveIntro(QWidget* parent = nullptr);
    ~LeaveIntro() override;

    void initializePage() override;
    // Checks the credentials where the directory is to be contacted, then leaves on a worker thread
    // behind a progress dialog; false when either failed or the user cancelled the prompt.
    bool validatePage() override;
    int nextId() const override;

    // Ask the agent, which blocks, and set its answers as the labels' texts, line ends included.
    void setUIComponents();
    void setActiveDirectory();
    void setJoinedZone();
    void setComputerName();
    // Hides the enrollment hint.
    void setCloudUIComponents();

    // The worker: runs the leave tool, stores its output in leaveOutput, or if that is empty, a
    // failure's code, emits finishedMVLeave() and returns the result code. `args` are the caller's.
    int runMVLeave(char** args);

signals:
    // The run's end; emitted on the worker thread.
    void finishedMVLeave();

private slots:
    void on_downloadButton_clicked();
    void on_radioButton_clicked();
    void on_radioButton_2_clicked();
    void on_radioButton_3_clicked();

private:
    QStringList leaveArguments() const;
    void explain(int status);

    Ui_LeaveIntro* ui;
    QString leaveOutput; // the worker's until its future has finished
};
