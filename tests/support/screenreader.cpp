#include "tests/support/screenreader.h"

#include <QTest>

ScreenReader::ScreenReader(const XSession& desktop) : variables(desktop.environment())
{
    bus.start(QStringLiteral("dbus-daemon"), {"--session", "--nofork", "--print-address"});
    if (!bus.waitForReadyRead())
        qFatal("The message bus did not start");
    variables.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"),
                     QString::fromLatin1(bus.readLine()).trimmed());

    reader.setProcessEnvironment(variables);
    reader.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    reader.start(QStringLiteral("/usr/bin/python3"), {SCREEN_READER});
    if (answer() != QLatin1String("ready\n"))
        qFatal("The screen reader did not start");
}

ScreenReader::~ScreenReader()
{
    for (QProcess* process : {&reader, &bus}) {
        process->terminate();
        process->waitForFinished();
    }
}

QProcessEnvironment ScreenReader::environment() const
{
    return variables;
}

bool ScreenReader::await(const QString& caption)
{
    return tell("await " + caption) == QLatin1String("shown\n");
}

void ScreenReader::press(const QString& caption)
{
    tell("press " + caption);
}

QString ScreenReader::tell(const QString& command)
{
    reader.write(command.toUtf8() + '\n');
    return answer();
}

QString ScreenReader::answer()
{
    while (!reader.canReadLine() && reader.waitForReadyRead(30000)) {
    }
    return QString::fromUtf8(reader.readLine());
}
