#include "app/wizard.h"
#include "ui_wizard.h"

#include "app/about.h"
#include "pages/dialogs/pendinginput.h"
#include "pages/joinprogress.h"

#include <QAbstractButton>
#include <QAction>
#include <QKeyEvent>
#include <QMenuBar>
#include <QPainter>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

// Page ids as the order of the pages in the form gives them.
constexpr int interimPage = 1;
constexpr int systemDirectoryPage = 2;
constexpr int credentialsPage = 3;
constexpr int cloudPage = 5;
constexpr int leavePage = 6;

} // namespace

Wizard::Wizard(QWidget* parent) : QWizard(parent), ui(new Ui::Wizard)
{
    // The images lie in a static library, from which the linker takes only what is named.
    Q_INIT_RESOURCE(Resources);
    Q_INIT_RESOURCE(Sharp);

    setWizardStyle(QWizard::MacStyle);
    setPixmap(QWizard::BackgroundPixmap, QPixmap(QStringLiteral(":/:/background.png")));
    ui->setupUi(this);
    setOption(QWizard::NoBackButtonOnLastPage);
    takeOverButton(QWizard::NextButton, &Wizard::checkNext);
    takeOverButton(QWizard::BackButton, &Wizard::checkBack);

    addAboutMenu();
}

Wizard::~Wizard()
{
    delete aboutMenu->parentWidget();
    delete ui;
}

void Wizard::addAboutMenu()
{
    // Without a parent, a menu bar is the application's own on a Mac.
    auto* menuBar = new QMenuBar(nullptr);
    aboutMenu = menuBar->addMenu(tr("About"));
    aboutAction = new QAction(tr("About"), this);
    connect(aboutAction, &QAction::triggered, this, &Wizard::showAbout);
    aboutMenu->addAction(aboutAction);
    if (!menuBar->isNativeMenuBar())
        offerAboutBesidePages();
}

// Without a menu bar that the desktop shows, the entry stands in the lower corner of the picture,
// and F1 opens it from everywhere.
void Wizard::offerAboutBesidePages()
{
    aboutAction->setShortcut(QKeySequence::HelpContents);
    addAction(aboutAction);

    auto* side = new QWidget(this);
    // As wide as the picture, so that the entry stands under its middle.
    side->setFixedWidth(148);
    auto* aboutButton = new QToolButton(side);
    aboutButton->setObjectName(QStringLiteral("AboutButton"));
    aboutButton->setDefaultAction(aboutAction);
    aboutButton->setAutoRaise(true);
    aboutButton->setFocusPolicy(Qt::TabFocus);
    auto* layout = new QVBoxLayout(side);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addStretch();
    layout->addWidget(aboutButton, 0, Qt::AlignHCenter);
    setSideWidget(side);
    setTabOrder(button(QWizard::FinishButton), aboutButton);
}

// As QWizard paints it, but with as many pixels as a dense screen can show, and mirrored where the
// pages stand on the left.
void Wizard::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    if (isRightToLeft()) {
        painter.translate(width(), 0);
        painter.scale(-1, 1);
    }
    painter.drawPixmap(rect(), devicePixelRatioF() > 1
                                   ? QPixmap(QStringLiteral(":/sharp/background.png"))
                                   : pixmap(QWizard::BackgroundPixmap));
}

// Escape is for dialogs: it doesn't throw away what was entered here.
void Wizard::keyPressEvent(QKeyEvent* event)
{
    if (!event->matches(QKeySequence::Cancel))
        QWizard::keyPressEvent(event);
}

void Wizard::takeOverButton(WizardButton which, void (Wizard::*step)())
{
    QAbstractButton* taken = button(which);
    disconnect(taken, &QAbstractButton::clicked, nullptr, nullptr);
    connect(taken, &QAbstractButton::clicked, this, step);
}

void Wizard::showAbout()
{
    about dialog(nullptr);
    dialog.exec();
}

void Wizard::checkNext()
{
    // The button stays pressed, also after a key, as long as the page's check keeps the wizard
    // busy.
    QAbstractButton* pressed = button(QWizard::NextButton);
    pressed->setDown(true);
    pressed->repaint();
    next();
    pageAdjustment(true);
    // A second press while the check ran must not start what the next page does.
    forgetPendingInput();
    pressed->setDown(false);
}

void Wizard::checkBack()
{
    back();
    pageAdjustment(false);
}

void Wizard::pageAdjustment(bool forward)
{
    switch (currentId()) {
    case credentialsPage: {
        // Once the system's own binding is removed there is nothing to go back to.
        const QList<int> visited = visitedIds();
        if (visited.size() > 2 && visited.at(visited.size() - 2) == systemDirectoryPage)
            button(QWizard::BackButton)->setEnabled(false);
        break;
    }
    case interimPage:
        passInterimPage(forward);
        break;
    case cloudPage:
        // Who has joined to enroll can't step back into the join.
        if (joining && enrolling)
            button(QWizard::BackButton)->setEnabled(false);
        break;
    case leavePage:
        // Deliberately not on a forward arrival: the wish to enroll ends only when the user turns
        // back.
        if (!forward)
            enrolling = false;
        break;
    default:
        break;
    }
}

void Wizard::passInterimPage(bool forward)
{
    if (!forward) {
        back();
        return;
    }
    next();
    if (currentId() == interimPage)
        restart();
}
