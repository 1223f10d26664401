#pragma once

#include "browser/cnbrowsererror.h"

#include <QWizardPage>

class LoadCN;
class Ui_JoinType;
class cnbrowser;

// Lets the user choose how the Mac is joined, and joins it when Next, which reads "Join" here, is
// pressed. Registers "DomainContainerDN", which no page reads.
class JoinType : public QWizardPage
{
    Q_OBJECT

public:
    explicit JoinType(QWidget* parent = nullptr);
    ~JoinType() override;

    void initializePage() override;
    // Does nothing: QWizardPage would empty the container, while all other choices stay.
    void cleanupPage() override;
    // Joins the Mac on a worker thread behind a progress dialog and returns when that has ended;
    // false, with a warning shown, when the join failed.
    bool validatePage() override;
    int nextId() const override;

    // The worker: runs the join tool, leaves its output in joinOutput, emits finishedMVJoin() and
    // returns the run's result code. `args` stays the caller's.
    int runMVJoin(char** args);

protected:
    void changeEvent(QEvent* event) override;

signals:
    // The run's end; emitted on the worker thread.
    void finishedMVJoin();

private slots:
    void containerDNBrowseChose(QString distinguishedName);
    void checkTreeDrawingStatus(CNBROWSER_ERROR status);
    void giveUpLoading();
    void on_AdvancedButton_toggled(bool checked);
    void on_ContainerDNBrowse_clicked();
    void on_AutoButton_toggled(bool checked);

private:
    void strengthenPlaceholder();
    void alignChoicesWithDescriptions();
    void addShortcutsAndDescriptions();
    QStringList joinArguments() const;
    void refuseBrowsing();

    QString joinOutput; // the worker's until its future has finished
    Ui_JoinType* ui;
    cnbrowser* browser = nullptr; // made on first use, a child of this page
    LoadCN* loadCN;
};
