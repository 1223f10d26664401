#pragma once

#include <QWizard>

class QAction;
class QMenu;

namespace Ui {
class Wizard;
}

// The main window: holds the eight pages, whose ids are their order in the form, and takes the user
// past the interim page, which only finds out where to go. Closing it ends the program.
class Wizard : public QWizard
{
    Q_OBJECT

public:
    explicit Wizard(QWidget* parent = nullptr);
    ~Wizard() override;

    // Puts right what QWizard's own step (forward or back) has left: the interim page is passed
    // through, and Back is disabled where there is no way back.
    void pageAdjustment(bool forward);

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private slots:
    void showAbout();
    void checkNext();
    void checkBack();

private:
    void takeOverButton(WizardButton which, void (Wizard::*step)());
    void passInterimPage(bool forward);
    void addAboutMenu();
    void offerAboutBesidePages();

    Ui::Wizard* ui;
    QAction* aboutAction;
    QMenu* aboutMenu;
};
