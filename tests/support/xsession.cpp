#include "tests/support/xsession.h"

#include "tests/support/world.h"

#include <QRegularExpression>
#include <QTest>

namespace {

// As decimal numbers, the form that xdotool takes and prints.
QStringList windowIds(const QByteArray& text)
{
    QStringList ids;
    QRegularExpressionMatchIterator found =
        QRegularExpression("0x[0-9a-f]+").globalMatch(QString::fromLatin1(text));
    while (found.hasNext())
        ids << QString::number(found.next().captured().toULongLong(nullptr, 16));
    return ids;
}

void end(QProcess& process)
{
    process.terminate();
    process.waitForFinished();
}

} // namespace

XSession::XSession()
{
    server.setStandardErrorFile(QProcess::nullDevice());
    // With -r no key repeats itself that a busy machine releases late.
    server.start("setpriv", {"--pdeathsig", "TERM", "Xvfb", "-r", "-displayfd", "1", "-screen", "0",
                             "1280x1024x24", "-nolisten", "tcp", "-noreset"});
    if (!server.waitForReadyRead())
        qFatal("Xvfb did not start");
    display = QLatin1Char(':') + QString::fromLatin1(server.readLine()).trimmed();

    windowManager.setProcessEnvironment(environment());
    windowManager.setStandardErrorFile(QProcess::nullDevice());
    windowManager.start("openbox", {"--sm-disable"});
    const QStringList listOfWindows{"-root", "_NET_CLIENT_LIST"};
    if (!QTest::qWaitFor([&] { return ask("xprop", listOfWindows).contains("(WINDOW)"); }, 20000))
        qFatal("openbox did not start");
    watch.setProcessEnvironment(environment());
    watch.start("xprop", QStringList{"-spy"} + listOfWindows);
    watch.waitForReadyRead();
    // The X server sets the keyboard up at its first key. Until the window manager has heard of
    // that, it misses the keys that it acts on itself, such as Alt+F4.
    key({"Shift_L"});
    awaitWindowManager();
}

XSession::~XSession()
{
    end(watch);
    end(windowManager);
    end(server);
}

QProcessEnvironment XSession::environment() const
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("DISPLAY", display);
    environment.insert("HOME", World::home());
    // Nothing of the user's own session is talked to.
    environment.insert("DBUS_SESSION_BUS_ADDRESS", "disabled:");
    environment.insert("QT_QPA_PLATFORM", "xcb");
    // The program draws without OpenGL, whose drivers leak.
    environment.insert("QT_XCB_GL_INTEGRATION", "none");
    return environment;
}

QStringList XSession::windows() const
{
    return windowIds(ask("xprop", {"-root", "_NET_CLIENT_LIST"}).toLatin1());
}

QStringList XSession::allWindowsEver() const
{
    QStringList ids;
    // The watch tells of a change a moment after it, and of no window at its start.
    const auto isUpToDate = [&] {
        watched += watch.readAllStandardOutput();
        ids = windowIds(watched);
        return !ids.isEmpty() && windowIds(watched.trimmed().split('\n').last()) == windows();
    };
    if (!QTest::qWaitFor(isUpToDate, 20000))
        qWarning("The list of windows and the watch of it differ");
    ids.removeDuplicates();
    return ids;
}

QString XSession::ask(const QString& tool, const QStringList& arguments) const
{
    QProcess process;
    process.setProcessEnvironment(environment());
    process.start(tool, arguments);
    process.waitForFinished();
    return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
}

QRect XSession::place(const QString& window) const
{
    const QStringList lines = ask("xdotool", {"getwindowgeometry", "--shell", window}).split('\n');
    const auto value = [&lines](const QString& name) {
        return lines.filter(QRegularExpression('^' + name + '=')).value(0).section('=', 1).toInt();
    };
    return {value("X"), value("Y"), value("WIDTH"), value("HEIGHT")};
}

bool XSession::isInFront(const QString& window, const QString& other) const
{
    const QStringList stack =
        windowIds(ask("xprop", {"-root", "_NET_CLIENT_LIST_STACKING"}).toLatin1());
    return stack.contains(other) && stack.indexOf(window) > stack.indexOf(other);
}

QString XSession::waitForWindow(const QString& title) const
{
    QString found;
    const bool came = QTest::qWaitFor(
        [&] {
            const QStringList ids = windows();
            for (const QString& id : ids) {
                if (ask("xdotool", {"getwindowname", id}) == title)
                    found = id;
            }
            return !found.isEmpty();
        },
        20000);
    return came ? found : QString();
}

bool XSession::pressIn(const QString& window, const QString& key) const
{
    if (!QTest::qWaitFor([&] { return ask("xdotool", {"getwindowfocus"}) == window; }, 20000))
        return false;
    ask("xdotool", {"key", key});
    return true;
}

void XSession::key(const QStringList& keys) const
{
    ask("xdotool", QStringList{"key", "--delay", "1"} + keys);
}

void XSession::pointAt(const QString& window, const QPoint& place) const
{
    ask("xdotool",
        {"mousemove", "--window", window, QString::number(place.x()), QString::number(place.y())});
}

void XSession::click() const
{
    ask("xdotool", {"click", "1"});
}

void XSession::awaitWindowManager() const
{
    // It handles requests in their order; the number of desktops is one that it answers. On a
    // loaded machine one such request was lost, so it is made until it is answered.
    const QString number = QString::number(ask("xdotool", {"get_num_desktops"}).toInt() + 1);
    const auto answers = [&] {
        ask("xdotool", {"set_num_desktops", number});
        return ask("xdotool", {"get_num_desktops"}) == number;
    };
    if (!QTest::qWaitFor(answers, 20000))
        qFatal("The window manager does not answer");
}
