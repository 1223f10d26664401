#pragma once

#include <QByteArray>
#include <QList>
#include <QStringList>

// The rules that a tool's output is read by, written plainly and without the program's code: what
// the tests and fuzz targets hold the program against.
namespace Reference {

// A tool's output as it is read: pieces that end with a line, or after 511 bytes, each cut at its
// first NUL.
QList<QByteArray> pieces(const QByteArray& output);
// The text of all pieces, each decoded by itself, as runCmd() does.
QString decoded(const QByteArray& output);
// The text of all pieces, joined before it is decoded, as callers of getReturnValue() do.
QString undecoded(const QByteArray& output);

// The container tree of the lines: each item's text, a blank before it for each level.
QStringList tree(const QString& lines);

} // namespace Reference
