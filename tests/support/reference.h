#pragma once

#include <QByteArray>
#include <QList>
#include <QStringList>

// The rules that a tool's output is read by, written plainly and without the program's code: what
// the tests and fuzz targets hold the program against.
namespace Reference {

// A tool's output as it is read: pieces of at most 511 bytes, which end at line ends, each cut at
// its first NUL.
QList<QByteArray> pieces(const QByteArray& output);
// The text of all pieces, each decoded by itself.
QString decoded(const QByteArray& output);
// The bytes of all pieces, decoded at once.
QString undecoded(const QByteArray& output);

// The container tree of the lines: each item's text, a blank before it for each level.
QStringList tree(const QString& lines);

} // namespace Reference
