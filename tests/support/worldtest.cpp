#include "tests/support/worldtest.h"

#include "pages/dialogs/warning.h"
#include "pages/joinflags.h"
#include "system/lowerpriv.h"
#include "widgets/queuedinput.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QLabel>
#include <QMouseEvent>
#include <QMutex>
#include <QPointer>
#include <QPushButton>
#include <QTextBrowser>
#include <QThread>
#include <QThreadPool>
#include <QTimer>
#include <QTreeView>
#include <QWindow>

#include <fcntl.h>
#include <sys/wait.h>

namespace {

QMutex logMutex;
QStringList logged;
QStringList unexpected;
QStringList allowed;
QtMessageHandler previousHandler = nullptr;
QList<int> descriptorsBefore;
int threadsBefore = 0;

void logMessage(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    const QMutexLocker locker(&logMutex);
    logged << text;
    const auto isContained = [&text](const QString& part) { return text.contains(part); };
    if (type == QtWarningMsg || type == QtCriticalMsg) {
        if (std::any_of(allowed.cbegin(), allowed.cend(), isContained))
            return;
        unexpected << text;
    }
    previousHandler(type, context, text);
}

} // namespace

QStringList WorldTest::messages()
{
    const QMutexLocker locker(&logMutex);
    return logged;
}

void WorldTest::allowWarning(const QString& text)
{
    allowed << text;
}

void WorldTest::init()
{
    World::reset();
    joining = false;
    enrolling = false;
    // A new authorization session, without a grant.
    g_pProcess->setupauth();
    // Threads of the pool end as soon as they are idle; cleanup() waits for the others.
    QThreadPool::globalInstance()->setExpiryTimeout(0);
    logged.clear();
    unexpected.clear();
    allowed = QStringList{
        // The conclusion page has a slot for a widget that its form lacks.
        QString("No matching signal for on_Enrollcheck_toggled"),
        // The display without a desktop can do neither.
        QString("This plugin does not support raise()"),
        QString("This plugin does not support propagateSizeHints()"),
    };
    previousHandler = qInstallMessageHandler(logMessage);
    descriptorsBefore = openDescriptors();
    threadsBefore = World::threads();
}

void WorldTest::cleanup()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QThreadPool::globalInstance()->waitForDone();
    qInstallMessageHandler(previousHandler);
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows)
        qWarning() << "left:" << window;
    QVERIFY2(windows.isEmpty(), "a window is left");
    QVERIFY2(!hasChildren(), "a child process is left");
    QTRY_COMPARE(openDescriptors(), descriptorsBefore);
    QTRY_COMPARE(World::threads(), threadsBefore);
    QCOMPARE(unexpected, QStringList());
}

void withModalDialogs(const std::function<void()>& action,
                      const std::function<void(QWidget*)>& handle)
{
    QTimer poll;
    QWidget* handled = nullptr;
    QObject::connect(&poll, &QTimer::timeout, [&] {
        QWidget* dialog = QApplication::activeModalWidget();
        if (dialog == nullptr || dialog == handled || !dialog->isVisible())
            return;
        handled = dialog;
        QObject::connect(dialog, &QObject::destroyed, &poll, [&handled] { handled = nullptr; });
        // A message can be closed only once what a person did before it has been handled. The
        // handler may be gone when the dialog still is there, but not before the poll.
        afterQueuedInput(&poll, [&handle, dialog = QPointer<QWidget>(dialog)] {
            if (dialog != nullptr)
                handle(dialog);
        });
    });
    poll.start(1);
    action();
}

QStringList warningsDuring(const std::function<void()>& action)
{
    QStringList texts;
    withModalDialogs(action, [&texts](QWidget* dialog) {
        auto* warning = qobject_cast<Warning*>(dialog);
        if (warning == nullptr)
            return;
        texts << child<QTextBrowser>(warning, "WarningLabel")->toPlainText();
        auto* box = child<QDialogButtonBox>(warning, "buttonBox");
        QTest::mouseClick(box->button(QDialogButtonBox::Ok), Qt::LeftButton);
    });
    return texts;
}

NoDescriptors::NoDescriptors()
{
    getrlimit(RLIMIT_NOFILE, &before);
    const rlimit none = {0, before.rlim_max};
    setrlimit(RLIMIT_NOFILE, &none);
}

NoDescriptors::~NoDescriptors()
{
    setrlimit(RLIMIT_NOFILE, &before);
}

QList<int> openDescriptors()
{
    QList<int> found;
    const QStringList names =
        QDir("/dev/fd").entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
    for (const QString& name : names) {
        // The folder's own descriptor is closed again by now.
        if (fcntl(name.toInt(), F_GETFD) >= 0)
            found << name.toInt();
    }
    return found;
}

bool hasChildren()
{
    siginfo_t info = {};
    return waitid(P_ALL, 0, &info, WEXITED | WNOHANG | WNOWAIT) == 0;
}

void whileRunning(const QString& tool, const std::function<void()>& action,
                  const std::function<void(QWidget*)>& inspect)
{
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, [&] {
        if (World::callsOf(tool).isEmpty())
            return;
        poll.stop();
        inspect(QApplication::activeModalWidget());
        World::release(tool); // the action waits for its end
    });
    poll.start(1);
    action();
    if (poll.isActive())
        qFatal("%s has not run", qPrintable(tool));
}

void waitForIdleThreads()
{
    while (QThreadPool::globalInstance()->activeThreadCount() > 0)
        QThread::msleep(1);
}

void clickThroughWindow(QWidget* widget)
{
    QWidget* window = widget->window();
    QTest::mouseClick(window->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                      widget->mapTo(window, QPoint(10, widget->height() / 2)));
}

void clickUnheard(const QWidget* widget)
{
    const QWidget* window = widget->window();
    const QPointF position = widget->mapTo(window, QPoint(10, widget->height() / 2));
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        const bool down = type == QEvent::MouseButtonPress;
        QCoreApplication::postEvent(
            window->windowHandle(),
            new QMouseEvent(type, position, window->mapToGlobal(position.toPoint()), Qt::LeftButton,
                            down ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier));
    }
}

void pressAssistivelyUnheard(QAbstractButton* button, const QString& action)
{
    QMetaObject::invokeMethod(
        button,
        [=] { QAccessible::queryAccessibleInterface(button)->actionInterface()->doAction(action); },
        Qt::QueuedConnection);
}

QByteArray rest(FILE* stream)
{
    QByteArray all;
    char chunk[512];
    while (const size_t count = fread(chunk, 1, sizeof chunk, stream))
        all.append(chunk, static_cast<int>(count));
    return all;
}

void selectItem(QTreeView* tree, const QString& text)
{
    const QModelIndexList found =
        tree->model()->match(tree->model()->index(0, 0), Qt::DisplayRole, text, 1,
                             Qt::MatchExactly | Qt::MatchCaseSensitive | Qt::MatchRecursive);
    QCOMPARE(found.isEmpty(), text.isEmpty());
    tree->setCurrentIndex(found.value(0));
}

QStringList visibleTexts(const QWidget* widget)
{
    QStringList texts;
    const QList<QLabel*> labels = widget->findChildren<QLabel*>();
    for (const QLabel* label : labels) {
        if (label->isVisible() && !label->text().isEmpty())
            texts << label->text();
    }
    return texts;
}
