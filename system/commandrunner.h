#pragma once

#include <QString>
#include <QStringList>

#include <string>

// Command lines without special rights, and small helpers for texts and files. All functions are
// stateless, block, and may be called from any thread. The program does not call the last four.

// What runCmd() returns for a shell that was killed or whose status can't be had; no exit status is
// as high.
constexpr int abnormalShellEnd = 999;

// Runs a complete shell command line (UTF-8) through /bin/sh and appends what it prints on standard
// output to *output: of each chunk of StreamReader what is before a NUL, read as UTF-8. Returns the
// exit status 0 to 255 or abnormalShellEnd; 0 as well where no shell could be started.
int runCmd(const char* command, QString* output);

// Runs a command line like runCmd() and returns the bytes of its standard output, of each chunk
// those before a NUL; its exit status is discarded. Empty when no shell could be started.
std::string getReturnValue(const char* command);

// The text up to, not including, the first line end; the whole text when there is none.
QString getFirstLine(QString text);

// A heap array of heap copies of the items in the local 8-bit encoding, ended by a null pointer.
// The caller owns the array and each string, and keeps them until the command that uses them ended.
char** convertQSLtoArray(QStringList list);

// The user in user@domain form; a user that already names a domain is returned unchanged.
QString appendDomainName(QString user, QString domain);

// Creates an empty, uniquely named file that only the owner can read and write, and returns its
// path: the base, of at most 248 bytes, a full stop and six further characters. The file stays open
// until the process ends. When none can be made, the returned name does not exist; there is no
// other sign of it.
QString randomizeFileName(QString base);

// Whether the path itself is a symbolic link; false for a path that does not exist.
bool isSymlink(const char* path);

// Whether the path, following links, can be examined; a dangling link does not exist.
bool doesExist(const char* path);
