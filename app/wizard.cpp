#include "app/wizard.h"
#include "ui_wizard.h"

#include "app/about.h"
#include "pages/dialogs/warning.h"
#include "pages/joinflags.h"
#include "pages/pageids.h"
#include "widgets/presentation.h"
#include "widgets/queuedinput.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QMenuBar>
#include <QPainter>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

Wizard::Wizard(QWidget* parent) : QWizard(parent), ui(new Ui_Wizard)
{
    // The images lie in a static library, from which the linker takes only what is named.
    Q_INIT_RESOURCE(Resources);
    Q_INIT_RESOURCE(Sharp);

    setWizardStyle(QWizard::MacStyle);
    setPixmap(QWizard::BackgroundPixmap, QPixmap(QStringLiteral(":/:/background.png")));
    ui->setupUi(this);
    // Next and Back call checkNext() and checkBack() in place of QWizard's steps.
    disconnect(button(QWizard::NextButton), &QAbstractButton::clicked, nullptr, nullptr);
    disconnect(button(QWizard::BackButton), &QAbstractButton::clicked, nullptr, nullptr);
    connect(button(QWizard::NextButton), &QAbstractButton::clicked, this, &Wizard::checkNext);
    connect(button(QWizard::BackButton), &QAbstractButton::clicked, this, &Wizard::checkBack);
    connect(this, &QWizard::currentIdChanged, this, [this] { messageWasLast = false; });
    qApp->installEventFilter(this);

    addAboutMenu();
}

Wizard::~Wizard()
{
    delete aboutMenu->parentWidget(); // the menu bar, which has no parent
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

// Where the desktop shows no menu bar of ours, the entry stands at the foot of the picture, and F1
// opens the dialog from every page.
void Wizard::offerAboutBesidePages()
{
    aboutAction->setShortcut(QKeySequence::HelpContents);
    addAction(aboutAction);

    auto* side = new QWidget(this);
    // So wide that the entry stands under the middle of the tree in the picture.
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

bool Wizard::event(QEvent* event)
{
    if (event->type() == QEvent::WindowBlocked)
        messageWasLast = qobject_cast<Warning*>(QApplication::activeModalWidget()) != nullptr;
    return QWizard::event(event);
}

// Paints the picture with twice the pixels where the screen shows them.
void Wizard::paintEvent(QPaintEvent*)
{
    constexpr QSize pictureSize(170, 600);
    const QRect place(QPoint(isRightToLeft() ? width() - pictureSize.width() : 0, 0), pictureSize);
    QPainter(this).drawPixmap(place, devicePixelRatioF() > 1
                                         ? QPixmap(QStringLiteral(":/sharp/background.png"))
                                         : pixmap(QWizard::BackgroundPixmap));
}

// Escape is ignored; QWizard would close and lose the entries.
void Wizard::keyPressEvent(QKeyEvent* event)
{
    if (!event->matches(QKeySequence::Cancel))
        QWizard::keyPressEvent(event);
}

// In all windows a Return that is held counts once. Repeated, it would confirm page after page and
// message after message unread, and each check of a wrong password helps to lock the account.
bool Wizard::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress) {
        const auto* press = static_cast<QKeyEvent*>(event);
        if (press->isAutoRepeat() &&
            (press->key() == Qt::Key_Return || press->key() == Qt::Key_Enter))
            return true;
    }
    return QWizard::eventFilter(watched, event);
}

void Wizard::showAbout()
{
    if (!isUnderDialog())
        about(nullptr).exec();
}

// Asks `held`, too: an assistive press comes a moment later, even if its button is disabled then.
void Wizard::checkNext()
{
    if (isUnderDialog() || !held.isEmpty())
        return;
    // Painted as pressed, after a key, too. hold(), to which next() comes first, disables the
    // button and so lets it up, but the page's check then keeps the program from painting that.
    QAbstractButton* pressed = button(QWizard::NextButton);
    pressed->setDown(true);
    pressed->repaint();
    next();
    endStep(true);
}

void Wizard::checkBack()
{
    if (isUnderDialog() || !held.isEmpty())
        return;
    back();
    endStep(false);
}

void Wizard::endStep(bool forward)
{
    pageAdjustment(forward);
    // A warning's own event loop has handled what queued up; what comes now is for this page.
    if (messageWasLast)
        return;
    hold(true);
    afterQueuedInput(this, [this] { release(); });
}

// A press counts for what was on the screen when it was made. While a tool keeps the program busy,
// presses by mouse, key or assistive tool wait, and would be taken for presses of what the next
// page shows. So the buttons are disabled, and the page takes no clicks, until these are handled.
// Text that was typed meanwhile goes to the page's edits.
void Wizard::hold(bool alsoChoices)
{
    currentPage()->setAttribute(Qt::WA_TransparentForMouseEvents);
    const QList<QAbstractButton*> buttons = findChildren<QAbstractButton*>();
    for (QAbstractButton* button : buttons) {
        const bool isChoice = qobject_cast<QPushButton*>(button) == nullptr &&
                              qobject_cast<QToolButton*>(button) == nullptr;
        // A choice that has the focus keeps it: a press on it starts nothing.
        if (!button->isEnabled() || (isChoice && (!alsoChoices || button == focusWidget())))
            continue;
        if (button == focusWidget()) {
            heldFocus = button;
            setFocus();
        }
        button->setEnabled(false);
        held.append(button);
    }
    aboutAction->setEnabled(false); // last: its button's focus is noted in heldFocus by now
}

void Wizard::release()
{
    while (!held.isEmpty())
        held.takeFirst()->setEnabled(true);
    if (heldFocus != nullptr && focusWidget() == this)
        heldFocus->setFocus();
    heldFocus = nullptr;
    currentPage()->setAttribute(Qt::WA_TransparentForMouseEvents, false);
    aboutAction->setEnabled(true);
}

// Tab stops at buttons that are held, too. If it skipped them, Tab in the page's last edit would
// lead round to the first one, and what is typed next would land there.
bool Wizard::focusNextPrevChild(bool next)
{
    if (held.isEmpty())
        return QWizard::focusNextPrevChild(next);
    release();
    const bool moved = QWizard::focusNextPrevChild(next);
    hold(true);
    return moved;
}

bool Wizard::validateCurrentPage()
{
    // The choices stay enabled, as the page's check reads which of them are checked and enabled.
    hold(false);
    const bool valid = QWizard::validateCurrentPage();
    release();
    return valid;
}

void Wizard::done(int result)
{
    if (held.isEmpty())
        QWizard::done(result);
}

void Wizard::pageAdjustment(bool forward)
{
    switch (currentId()) {
    case PageId::UserPassEntry: {
        // Once the system's own binding is removed there is nothing to go back to.
        const QList<int> visited = visitedIds();
        if (visited.size() > 2 && visited.at(visited.size() - 2) == PageId::AppleAD)
            button(QWizard::BackButton)->setEnabled(false);
        break;
    }
    case PageId::Interim:
        if (!forward) {
            back();
            break;
        }
        next();
        // The query of the system's binding was refused or did not start: back to the first page.
        if (currentId() == PageId::Interim)
            restart();
        break;
    case PageId::Cloud:
        // At present no page leads here. After a join with enrollment there is no way back.
        if (joining && enrolling)
            button(QWizard::BackButton)->setEnabled(false);
        break;
    case PageId::LeaveIntro:
        // At present nothing leads back here, as the report has no Back.
        if (!forward)
            enrolling = false;
        break;
    default:
        break;
    }
}
