#pragma once

#include "tests/support/worldtest.h"

#include <QVariant>

// A form's widgets as rows of test data: name, kind and text to the letter.
struct FormRow {
    const char* name;
    const char* kind;
    const char* text; // null for a widget without one
};

inline void addFormRows(std::initializer_list<FormRow> rows)
{
    addColumns<QString, QByteArray, QString>("name", "kind", "text");
    for (const FormRow& row : rows)
        addRow(row.name, row.name, QByteArray(row.kind), QString(row.text));
}

// Holds a page against the current row.
inline void compareWithFormRow(const QWidget* page)
{
    QFETCH(QString, name);
    QFETCH(QByteArray, kind);
    auto* widget = child<QWidget>(page, name);
    QVERIFY2(widget->inherits(kind), widget->metaObject()->className());
    QTEST(widget->property("text").toString(), "text");
}
