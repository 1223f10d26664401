#pragma once

#include <QFile>

// The content of a file; empty when it can't be read.
inline QByteArray readFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Makes a file, or replaces its content; ends the test program when that fails.
inline void writeFile(const QString& path, const QByteArray& content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() || !file.flush())
        qFatal("%s can't be written: %s", qPrintable(path), qPrintable(file.errorString()));
}
