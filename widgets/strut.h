#pragma once

#include <QLayoutItem>

// Takes as much room in a layout as a widget that lies in another one, and leaves it there: two
// layouts, one on top of the other, with each other's widgets as struts have the same rows and
// columns. The widget must outlive the layout.
class Strut : public QWidgetItem
{
public:
    using QWidgetItem::QWidgetItem;

    void setGeometry(const QRect&) override {}
    bool isEmpty() const override
    {
        return false;
    }
};
