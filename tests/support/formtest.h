#pragma once

#include "tests/support/worldtest.h"

#include <QVariant>

// One of a form's widgets: name, kind and text to the letter.
struct FormRow {
    const char* name;
    const char* kind;
    const char* text; // null for a widget without one
};

// Compares a page with the rows of its form, whose window title is still the designer's.
inline void compareForm(const QWidget* page, std::initializer_list<FormRow> rows)
{
    QCOMPARE(page->windowTitle(), QString("WizardPage"));
    for (const FormRow& row : rows) {
        const auto* widget = child<QWidget>(page, row.name);
        QVERIFY2(widget->inherits(row.kind), row.name);
        const QString text = widget->property("text").toString();
        QVERIFY2(text == QString(row.text), qPrintable(row.name + (" reads " + text)));
    }
}
