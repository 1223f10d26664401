#pragma once

#include <QWizard>

class QAbstractButton;
class QAction;
class QMenu;
class Ui_Wizard;

// The main window: holds the eight pages, whose ids are their order in the form, and takes the user
// past the interim page, which only finds out where to go. Closing it ends the program.
class Wizard : public QWizard
{
    Q_OBJECT

public:
    explicit Wizard(QWidget* parent = nullptr);
    ~Wizard() override;

    // Puts right what QWizard's own step (forward or back) has left: the interim page is passed
    // through, Back is disabled where there is no way back, and going back to the leave page ends
    // enrolling.
    void pageAdjustment(bool forward);

    // As QWizard's, with the push buttons disabled while a check, a join or a leave is under way.
    bool validateCurrentPage() override;
    // Finishes or closes; does nothing during a step, whose outcome would be lost.
    void done(int result) override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private slots:
    void showAbout();
    void checkNext();
    void checkBack();

private:
    void endStep(bool forward);
    void hold(bool alsoChoices); // choices are check boxes and radio buttons
    void release();
    void addAboutMenu();
    void offerAboutBesidePages();

    Ui_Wizard* ui;
    QAction* aboutAction;
    QMenu* aboutMenu;
    QList<QAbstractButton*> held;         // disabled until release()
    QAbstractButton* heldFocus = nullptr; // the one of them that had the keyboard focus
    bool messageWasLast = false;          // the latest dialog over this page was a Warning
};
