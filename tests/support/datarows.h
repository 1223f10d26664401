#pragma once

#include <QTest>

// A test function's data, with a whole row in one call.

template <typename... Types, typename... Names> void addColumns(Names... names)
{
    (QTest::addColumn<Types>(names), ...);
}

template <typename... Values> void addRow(const char* name, const Values&... values)
{
    (QTest::newRow(name) << ... << values);
}
